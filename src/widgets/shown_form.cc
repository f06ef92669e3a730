#include "vorek/shown_form.h"

#include "vorek/shown_control.h"
#include "widgets/form.h"

namespace vorek {

ShownForm TextOf(const Form& form) {
  return {form.Name(), form.Caption(), form.MainText(), form.DetailText()};
}

bool IsShown(const Form& form) { return form.Shown(); }

void CloseByBox(Form& form) { form.CloseBox(); }

bool PressButton(Form& form, std::string_view name) { return Press(form, name); }

}  // namespace vorek
