#ifndef VOREK_APPS_VOREK_ASK_H_
#define VOREK_APPS_VOREK_ASK_H_

#include <istream>
#include <ostream>

#include "adapters/system/console_windows.h"
#include "parameters/vorek_parameters.h"

namespace vorek {

// Asks at a terminal for each visible parameter of the form, with its label, kind, choices and
// default, and confirms. An answer that a widget refuses is asked for again, and so is a form that
// isn't accepted. False at the end of input: nothing is confirmed then.
bool AskParameters(VorekParameters& panel, std::istream& in, std::ostream& out);

// A screen that asks in place of the prompt dialog and writes what other forms say.
class AskingWindows : public ConsoleWindows {
 public:
  AskingWindows(std::istream& in, std::ostream& out) : ConsoleWindows(out), in_(in), out_(out) {}
  void ShowModal(Form& form) override;
  bool ErrorShown() const { return error_shown_; }

 private:
  std::istream& in_;
  std::ostream& out_;
  bool error_shown_ = false;
};

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_ASK_H_
