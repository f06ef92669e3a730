#include "shown_report.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "engine/stop_reason.h"
#include "text/utf8.h"

namespace vorek {

void AddReportOptions(CLI::App& command, ReportOptions& options) {
  command.add_option("ID", options.report, "number of the report")->required();
  AddDatabaseOption(command, options.connect);
  AddUserOptions(command, options.connect);
  command.add_option("--params", options.parameters,
                     "values of the parameters as SQL texts: \"@1=5&@2='x'\"");
  command.add_flag("--ask", options.ask, "ask for the parameters at the terminal");
}

bool IsTemplateNumber(const std::string& text) {
  return !text.empty() && text.size() < 6 &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

ShownReport::ShownReport(const ReportOptions& options, std::shared_ptr<AskingWindows> windows,
                         WorldOptions with)
    : options_(options) {
  const bool own = windows != nullptr;
  if (!own) windows = std::make_shared<AskingWindows>(std::cin, std::cerr);
  if (options.ask || own) with.windows = windows;
  world_ = std::make_unique<World>(std::move(with));
  report_ = std::make_unique<VorekReport1>(*world_);
  Connect();
  const ReportState& state = Control().state;
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
  if (waits && state.ShowFlatternParameters) AskPanel(*windows);
}

void ShownReport::Refuse(const std::string& reason) const {
  if (!reason.empty()) std::cerr << "report " << options_.report << ": " << reason << '\n';
  throw CLI::RuntimeError(1);
}

void ShownReport::Connect() {
  const ConnectOptions& connect = options_.connect;
  report_->SetOleConnectionString(ConnectionString(connect));
  report_->SetUserID(connect.user);
  report_->SetPositionID(connect.position);
  report_->SetEmployeeID(connect.employee);
  report_->SetPeriodID(connect.period);
}

// Answers the panel of a report that waits for it.
void ShownReport::AskPanel(const AskingWindows& windows) {
  if (!AskParameters(Control().VorekParameters1, std::cin, std::cerr)) Refuse("cancelled");
  if (windows.ErrorShown() || Control().state.QueryRecordCount < 0) Refuse("");
}

}  // namespace vorek
