#ifndef VOREK_APPS_VOREK_TERMINAL_WINDOWS_H_
#define VOREK_APPS_VOREK_TERMINAL_WINDOWS_H_

#include <atomic>
#include <cstddef>
#include <string_view>

#include "adapters/system/console_windows.h"
#include "progress_line.h"
#include "widgets/basic_controls.h"

namespace vorek {

// The screen of a command that runs a report: asks for the parameters where it is to, writes what
// forms say, tells how far the run is, and stops it when the command is interrupted.
class TerminalWindows : public ConsoleWindows {
 public:
  explicit TerminalWindows(bool asks);

  void ShowModal(Form& form) override;
  bool TellCancelled(std::string_view line) override;
  bool PassGoesOn() override;

  // Rows read so far; false if the command was interrupted.
  bool RowsGoOn(std::size_t rows);
  // What tells how far a pass is; null for nothing. It must live until another is given.
  void Follow(const VorekProgressBar* progress) { progress_ = progress; }
  bool ErrorShown() const { return error_shown_; }
  // May be called from any thread.
  void Interrupt() { interrupted_ = true; }
  bool Interrupted() const { return interrupted_; }

 private:
  bool asks_;
  bool error_shown_ = false;
  std::atomic<bool> interrupted_ = false;
  const VorekProgressBar* progress_ = nullptr;
  ProgressLine line_;
};

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_TERMINAL_WINDOWS_H_
