#include "text/utf8.h"
#include "vorek/components.h"
#include "vorek/error.h"

namespace vorek {

void ComponentFactories::Add(const std::string& prog_id, Factory factory) {
  factories_[text::ToLower(prog_id)] = std::move(factory);
}

std::unique_ptr<Component> ComponentFactories::Create(const std::string& prog_id,
                                                      std::int32_t form_type) {
  const auto found = factories_.find(text::ToLower(prog_id));
  if (found != factories_.end()) {
    if (std::unique_ptr<Component> made = found->second(form_type)) return made;
  } else if (next_ != nullptr) {
    return next_->Create(prog_id, form_type);
  }
  throw Error(ErrorNumber::kNoComponent, "فرم " + prog_id + " يافت نشد.");
}

void ComponentFactories::Register(const std::string& file_name) {
  if (next_ != nullptr) next_->Register(file_name);
}

}  // namespace vorek
