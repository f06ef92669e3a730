#include "drive/script_component.h"

#include "drive/words.h"

namespace vorek::drive {
namespace {

std::string ToText(const ComponentValue& value) {
  const auto* const text = std::get_if<std::string>(&value);
  return text != nullptr ? *text : std::to_string(std::get<std::int32_t>(value));
}

}  // namespace

void ScriptComponent::Set(const std::string& property, const ComponentValue& value) {
  print_("component " + prog_id_ + " " + property + " " + Quote(ToText(value)));
}

void ScriptComponent::Call(const std::string& method,
                           const std::vector<ComponentValue>& arguments) {
  print_("component " + prog_id_ + " " + method + " " +
         Quote(arguments.empty() ? "" : ToText(arguments[0])));
}

}  // namespace vorek::drive
