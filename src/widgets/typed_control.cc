#include "widgets/typed_control.h"

#include <utility>

#include "widgets/property.h"

namespace vorek {

void TypedControl::Type(const std::string& text) {
  if (!Enabled()) return;
  std::string reason = TakeTyped(text);
  if (reason.empty()) {
    DropRefusal();
  } else {
    Refuse(text, std::move(reason));
  }
}

void TypedControl::DropRefusal() {
  if (Refuses()) Refuse({}, {});
}

void TypedControl::Refuse(std::string text, std::string reason) {
  refused_text_ = std::move(text);
  refusal_ = std::move(reason);
  Changed("Refusal");
  if (on_refusal) on_refusal();
}

const PropertyTable& TypedControl::OwnProperties() const {
  static const PropertyTable table = {{"Refusal",
                                       [](Control& c, const std::vector<std::string>&) {
                                         return static_cast<TypedControl&>(c).Refusal();
                                       },
                                       nullptr},
                                      {"RefusedText",
                                       [](Control& c, const std::vector<std::string>&) {
                                         return static_cast<TypedControl&>(c).RefusedText();
                                       },
                                       nullptr}};
  return table;
}

}  // namespace vorek
