#include <iostream>
#include <memory>

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

void Show(const ShowOptions& options) {
  World world(ConsoleWorld());
  VorekReport1 report(world);
  report.SetOleConnectionString(ConnectionString(options.connect.db));
  report.SetUserID(options.connect.user);
  report.SetPositionID(options.connect.position);
  report.SetEmployeeID(options.connect.employee);
  report.SetPeriodID(options.connect.period);
  ReportControl& control = report.Impl();
  if (!report.View(options.report, options.parameters)) {
    if (text::Contains(control.state.roughSQL, "@")) {
      std::cerr << "report " << options.report
                << ": --params left a parameter without a value in the query\n";
    }
    throw CLI::RuntimeError(1);
  }
  if (text::Contains(control.state.QueryText, "@") && options.parameters.empty()) {
    std::cerr << "report " << options.report << " waits for its parameters: give --params\n";
    throw CLI::RuntimeError(1);
  }
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
  command
      ->add_option("--format", options->format,
                   "table (hidden columns left out), tsv, or json (hidden columns marked)")
      ->check(CLI::IsMember({"table", "tsv", "json"}));
  command->callback([options] { Show(*options); });
}

}  // namespace vorek
