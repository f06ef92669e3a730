#ifndef VOREK_ADAPTERS_SYSTEM_CONSOLE_WINDOWS_H_
#define VOREK_ADAPTERS_SYSTEM_CONSOLE_WINDOWS_H_

#include <ostream>

#include "vorek/no_windows.h"
#include "widgets/form.h"

namespace vorek {

// Writes what a modal form says and closes it: for programs without a screen.
class ConsoleWindows : public NoWindows {
 public:
  explicit ConsoleWindows(std::ostream& out) : out_(out) {}
  void ShowModal(Form& form) override;

 private:
  std::ostream& out_;
};

}  // namespace vorek

#endif  // VOREK_ADAPTERS_SYSTEM_CONSOLE_WINDOWS_H_
