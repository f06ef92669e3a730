#ifndef VOREK_APPS_VOREK_SHOWN_REPORT_H_
#define VOREK_APPS_VOREK_SHOWN_REPORT_H_

#include <memory>
#include <optional>
#include <string>

#include "command.h"
#include "engine/report_control.h"
#include "interrupt_watch.h"
#include "limit_options.h"
#include "terminal_windows.h"

namespace vorek {

// Which report a command runs, and with which values.
struct ReportOptions {
  ConnectOptions connect;
  std::int32_t report = -1;
  std::string parameters;
  bool ask = false;
  LimitOptions limits = {};
};
void AddReportOptions(CLI::App& command, ReportOptions& options);

// True if what was given for a template is the number of a stored one, and no file.
bool IsTemplateNumber(const std::string& text);

// A report that a command has run. A command whose report can't be shown ends, with the reason on
// standard error.
class ShownReport {
 public:
  // trace: of a cell that is asked about; null for none.
  explicit ShownReport(const ReportOptions& options, WorldOptions with = ConsoleWorld(),
                       CalculationTrace* trace = nullptr);

  VorekReport1& Report() { return *report_; }
  ReportControl& Control() { return report_->Impl(); }
  // Ctrl+C ends the program again: nothing is left that must be brought to an end.
  void LetInterruptsEnd() { watch_.reset(); }
  // Refuses a report whose rows are on view and not where exports and prints read: it is to be
  // spread, and no column of its layout says by what.
  void NeedWhatIsRead() const;
  // Tells why nothing can be shown and ends the command.
  [[noreturn]] void Refuse(const std::string& reason) const;

 private:
  void Connect();
  void CheckParameters();
  // Tells how far the run is, and stops it at Ctrl+C.
  void Watch();
  void AskPanel();

  ReportOptions options_;
  std::shared_ptr<TerminalWindows> windows_;
  std::unique_ptr<World> world_;
  std::unique_ptr<VorekReport1> report_;
  std::optional<InterruptWatch> watch_;
};

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_SHOWN_REPORT_H_
