#include <iostream>
#include <memory>

#include "ask.h"
#include "command.h"
#include "engine/report_control.h"
#include "grid_writer.h"
#include "text/utf8.h"

namespace vorek {
namespace {

struct ShowOptions {
  ConnectOptions connect;
  std::int32_t report = -1;
  std::string parameters;
  bool ask = false;
  std::string format = "table";
};

void WriteGrid(ReportControl& control, const std::string& format) {
  const Grid& grid = control.Context().ActiveGrid();
  if (format == "tsv") {
    WriteTsv(grid, std::cout);
  } else if (format == "json") {
    WriteJson(grid, control.state.ReportID, control.state.Title, std::cout);
  } else {
    std::cout << control.state.Title << '\n';
    WriteTable(grid, std::cout);
  }
}

// Tells why nothing can be shown and ends the command.
[[noreturn]] void Refuse(const ShowOptions& options, const std::string& reason) {
  if (!reason.empty()) std::cerr << "report " << options.report << ": " << reason << '\n';
  throw CLI::RuntimeError(1);
}

void Connect(VorekReport1& report, const ConnectOptions& connect) {
  report.SetOleConnectionString(ConnectionString(connect));
  report.SetUserID(connect.user);
  report.SetPositionID(connect.position);
  report.SetEmployeeID(connect.employee);
  report.SetPeriodID(connect.period);
}

// Answers the panel of a report that waits for it.
void AskPanel(const ShowOptions& options, ReportControl& control, const AskingWindows& windows) {
  if (!AskParameters(control.VorekParameters1, std::cin, std::cerr)) Refuse(options, "cancelled");
  if (windows.ErrorShown() || control.state.QueryRecordCount < 0) Refuse(options, "");
}

void Show(const ShowOptions& options) {
  WorldOptions with = ConsoleWorld();
  const auto asking = std::make_shared<AskingWindows>(std::cin, std::cerr);
  if (options.ask) with.windows = asking;
  World world(std::move(with));
  VorekReport1 report(world);
  Connect(report, options.connect);
  ReportControl& control = report.Impl();
  if (!report.View(options.report, options.parameters)) {
    const bool marked = text::Contains(control.state.roughSQL, "@");
    Refuse(options, !marked                       ? ""
                    : !options.parameters.empty() ? "--params left a parameter without a value in "
                                                    "the query"
                    : options.ask                 ? "cancelled"
                                                  : "asks for its parameters: give --ask or "
                                                    "--params");
  }
  const bool waits = text::Contains(control.state.QueryText, "@") && options.parameters.empty();
  if (waits && !options.ask) Refuse(options, "waits for its parameters: give --ask or --params");
  if (waits && control.state.ShowFlatternParameters) AskPanel(options, control, *asking);
  WriteGrid(control, options.format);
}

}  // namespace

void AddShowCommand(CLI::App& app) {
  auto options = std::make_shared<ShowOptions>();
  CLI::App* const command = app.add_subcommand("show", "Run a report and print its grid");
  command->add_option("ID", options->report, "number of the report")->required();
  AddDatabaseOption(*command, options->connect);
  AddUserOptions(*command, options->connect);
  command->add_option("--params", options->parameters,
                      "values of the parameters as SQL texts: \"@1=5&@2='x'\"");
  command->add_flag("--ask", options->ask, "ask for the parameters at the terminal");
  command
      ->add_option("--format", options->format,
                   "table (hidden columns left out), tsv, or json (hidden columns marked)")
      ->check(CLI::IsMember({"table", "tsv", "json"}));
  command->callback([options] { Show(*options); });
}

}  // namespace vorek
