#include <iostream>
#include <memory>

#include "command.h"
#include "grid/cross_table_click.h"
#include "grid_writer.h"
#include "printable.h"
#include "shown_report.h"

namespace vorek {
namespace {

struct ShowOptions {
  ReportOptions report;
  std::string format = "table";
};

void WriteGrid(ReportControl& control, const std::string& format) {
  OpenCrossTable(control.flxTranspose);
  const Grid& grid = control.Context().GridOnView();
  if (format == "tsv") {
    WriteTsv(GridTable(grid), std::cout);
  } else if (format == "csv") {
    WriteCsv(GridTable(grid), std::cout);
  } else if (format == "json") {
    WriteJson(grid, control.state.ReportID, control.state.Title, std::cout);
  } else {
    std::cout << Printable(control.state.Title) << '\n';
    WriteTable(GridTable(grid), std::cout);
  }
}

void Show(const ShowOptions& options) {
  ShownReport shown(options.report);
  shown.LetInterruptsEnd();
  WriteGrid(shown.Control(), options.format);
}

}  // namespace

void AddShowCommand(CLI::App& app) {
  auto options = std::make_shared<ShowOptions>();
  CLI::App* const command = app.add_subcommand("show", "Run a report and print its grid");
  AddReportOptions(*command, options->report);
  command
      ->add_option("--format", options->format,
                   "table (hidden columns left out), tsv or csv (all columns), or json (hidden "
                   "columns marked)")
      ->check(CLI::IsMember({"table", "tsv", "csv", "json"}));
  command->callback([options] { Show(*options); });
}

}  // namespace vorek
