#include "terminal_windows.h"

#include <iostream>
#include <string>

#include "ask.h"
#include "parameters/form_ask_user.h"

namespace vorek {

TerminalWindows::TerminalWindows(bool asks) : ConsoleWindows(std::cerr), asks_(asks) {}

void TerminalWindows::ShowModal(Form& form) {
  line_.Clear();
  auto* const ask = asks_ ? dynamic_cast<FormAskUser*>(&form) : nullptr;
  if (ask != nullptr) {
    VorekParameters& panel = ask->VorekParameters1;
    if (!AskParameters(panel, std::cin, std::cerr)) panel.cmdCancel.Click();
    return;
  }
  error_shown_ = error_shown_ || form.Name() == "FormError";
  ConsoleWindows::ShowModal(form);
}

bool TerminalWindows::TellCancelled(std::string_view line) {
  line_.Clear();
  if (interrupted_) std::cerr << line << '\n';
  return interrupted_;
}

bool TerminalWindows::PassGoesOn() {
  if (progress_ != nullptr && line_.Due()) line_.Show(std::to_string(progress_->Value()) + "%");
  return !interrupted_;
}

bool TerminalWindows::RowsGoOn(std::size_t rows) {
  if (line_.Due()) line_.Show(std::to_string(rows) + " rows");
  return !interrupted_;
}

}  // namespace vorek
