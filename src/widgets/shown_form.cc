#include "vorek/shown_form.h"

#include "widgets/form.h"
#include "widgets/reachable.h"

namespace vorek {

ShownForm TextOf(const Form& form) {
  return {form.Name(), form.Caption(), form.MainText(), form.DetailText()};
}

void CloseByBox(Form& form) { form.CloseBox(); }

bool PressButton(Form& form, std::string_view name) {
  Control* const button = Reachable(form, name);
  if (button == nullptr) return false;
  button->Click();
  return true;
}

}  // namespace vorek
