#include "vorek/shown_form.h"

#include "widgets/form.h"

namespace vorek {

ShownForm TextOf(const Form& form) {
  return {form.Name(), form.Caption(), form.MainText(), form.DetailText()};
}

void CloseByBox(Form& form) { form.CloseBox(); }

bool PressButton(Form& form, std::string_view name) {
  Control* const button = form.Find(name);
  if (button == nullptr || !button->Visible() || !button->Enabled()) return false;
  button->Click();
  return true;
}

}  // namespace vorek
