#include "shown_report.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "ask.h"
#include "engine/stop_reason.h"
#include "engine/world_state.h"
#include "given_parameters.h"
#include "text/utf8.h"

namespace vorek {

void AddReportOptions(CLI::App& command, ReportOptions& options) {
  command.add_option("ID", options.report, "number of the report")->required();
  AddDatabaseOption(command, options.connect);
  AddUserOptions(command, options.connect);
  command.add_option("--params", options.parameters,
                     "values of the parameters as SQL texts: \"@1=5&@2='x'\"");
  command.add_flag("--ask", options.ask, "ask for the parameters at the terminal");
  AddLimitOptions(command, options.limits);
}

bool IsTemplateNumber(const std::string& text) {
  return !text.empty() && text.size() < 6 &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

ShownReport::ShownReport(const ReportOptions& options, WorldOptions with, CalculationTrace* trace)
    : options_(options), windows_(std::make_shared<TerminalWindows>(options.ask)) {
  with.windows = windows_;
  with.limits = options.limits.Limits();
  world_ = std::make_unique<World>(std::move(with));
  report_ = std::make_unique<VorekReport1>(*world_);
  Connect();
  Watch();
  Control().state.Trace = trace;
  const ReportState& state = Control().state;
  CheckParameters();
  const bool shown = report_->View(options.report, options.parameters);
  if (!shown || state.Missing) {
    const bool marked = text::Contains(state.roughSQL, "@");
    Refuse(!marked                       ? StopReasonOf(state)
           : !options.parameters.empty() ? "--params left a parameter without a value in the query"
           : options.ask                 ? "cancelled"
                                         : "asks for its parameters: give --ask or --params");
  }
  const bool waits = text::Contains(state.QueryText, "@") && options.parameters.empty();
  if (waits && !options.ask) Refuse("waits for its parameters: give --ask or --params");
  if (waits && state.ShowFlatternParameters) AskPanel();
}

void ShownReport::NeedWhatIsRead() const {
  const ReportContext report = report_->Impl().Context();
  if (&report.ActiveGrid() == &report.GridOnView()) return;
  Refuse("MakeTranspose is 1, but no column of the layout has TransposeType 1: it would be empty");
}

void ShownReport::Refuse(const std::string& reason) const {
  if (!reason.empty()) std::cerr << "report " << options_.report << ": " << reason << '\n';
  throw CLI::RuntimeError(windows_->Interrupted() ? InterruptWatch::kExitCode : 1);
}

void ShownReport::Watch() {
  windows_->Follow(&Control().Progress);
  world_->State().process.data.SetProgress(
      [this](std::size_t rows) { return windows_->RowsGoOn(rows); });
  watch_.emplace([this] {
    windows_->Interrupt();
    world_->Cancel();
  });
}

void ShownReport::Connect() {
  const ConnectOptions& connect = options_.connect;
  report_->SetOleConnectionString(ConnectionString(connect));
  report_->SetUserID(connect.user);
  report_->SetPositionID(connect.position);
  report_->SetEmployeeID(connect.employee);
  report_->SetPeriodID(connect.period);
}

void ShownReport::CheckParameters() {
  if (options_.parameters.empty()) return;
  Process& process = world_->State().process;
  process.data.Rebind(ConnectionString(options_.connect));
  CheckGivenParameters(process, options_.report, options_.parameters);
}

// Answers the panel of a report that waits for it.
void ShownReport::AskPanel() {
  if (!AskParameters(Control().VorekParameters1, std::cin, std::cerr)) Refuse("cancelled");
  if (windows_->ErrorShown() || Control().state.QueryRecordCount < 0) Refuse("");
}

}  // namespace vorek
