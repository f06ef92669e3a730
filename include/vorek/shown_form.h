#ifndef VOREK_SHOWN_FORM_H_
#define VOREK_SHOWN_FORM_H_

#include <string>
#include <string_view>

namespace vorek {

class Form;

// What a screen of a host's own can tell of a form that it is given (Windows::ShowModal), and what
// it can do with it. Windows that show every control are in qt.h.
struct ShownForm {
  std::string name;     // "FormMessage"
  std::string caption;  // of its window
  std::string main;     // its message or question; empty for a form of many fields
  std::string detail;   // what stands behind it, such as a server's own words
};
ShownForm TextOf(const Form& form);

// From Windows::ShowModal or Show until the form is answered, closed or hidden by what stands in
// it.
bool IsShown(const Form& form);

// As its close box would: a question stays without an answer, a dialog is cancelled.
void CloseByBox(Form& form);

// Presses a button of the form by its name ("cmdYes"), with all that a click leads to. False, and
// nothing happens, if there is no such control, or it or what it stands in is disabled or
// hidden.
bool PressButton(Form& form, std::string_view name);

}  // namespace vorek

#endif  // VOREK_SHOWN_FORM_H_
