#include <QGuiApplication>
#include <algorithm>
#include <iostream>
#include <memory>
#include <utility>

#include "command.h"
#include "engine/grid_heading.h"
#include "export/attachment.h"
#include "export/crystal_print.h"
#include "messages/persian_reason.h"
#include "print/grid_print.h"
#include "print/grid_template.h"
#include "print/print_output.h"
#include "shown_report.h"
#include "vorek/qt.h"
#include "vorek/system.h"
#include "vorek/xml.h"

namespace vorek {
namespace {

struct PrintOptions {
  ReportOptions report;
  std::string with_template;
  bool grid = false;
  bool landscape = false;
  bool portrait = false;
  bool all_wide = false;
  double margin = print::PageSetup().margin;
  std::string to;
};

std::string GridTemplate(ShownReport& shown) {
  ReportContext context = shown.Control().Context();
  return print::WriteTemplate(print::TemplateForGrid(context));
}

// What Qt says of its surroundings is nothing to the user of a command.
void PassOver(QtMsgType, const QMessageLogContext&, const QString&) {}

// The file of the template: one that was given, or a stored one's.
std::string TemplateFile(ReportContext& report, const std::string& given) {
  if (!IsTemplateNumber(given)) return given;
  return FetchAttachment(report.process, report.notices, kTemplateFormType, report.state.ReportID,
                         static_cast<std::int16_t>(std::min(std::stoi(given), 32767)));
}

print::PageSetup PaperOf(const PrintOptions& options, print::PageSetup paper) {
  if (options.landscape || options.portrait) paper.landscape = options.landscape;
  paper.fit_width = !options.all_wide;
  paper.margin = options.margin;
  return paper;
}

// The grid as it is shown.
void PrintGrid(ReportContext& report, const PrintOptions& options, print::PrintOutput& output) {
  const Grid& grid = report.ActiveGrid();
  const print::PrintedColumns columns(ColumnView(grid), grid);
  const print::PageSetup paper = PaperOf(options, print::PaperFor(grid, columns));
  const auto pages = std::make_shared<print::GridPrint>(report, columns, HeadingOf(report), paper);
  output.Show(pages, report.state.Title);
}

void PrintShown(ShownReport& shown, const PrintOptions& options, print::PrintOutput& output) {
  ReportContext context = shown.Control().Context();
  if (options.with_template.empty()) {
    PrintGrid(context, options, output);
  } else {
    PrintCrystal(context, TemplateFile(context, options.with_template));
  }
}

// Fonts need an application, and no screen.
void Print(const PrintOptions& options) {
  qInstallMessageHandler(PassOver);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int count = 1;
  char name[] = "vorek";
  char* arguments[] = {name, nullptr};
  const QGuiApplication application(count, arguments);
  WorldOptions with = ConsoleWorld();
  const auto output = PdfFile(QString::fromStdString(options.to));
  with.print_jobs = PrintsThroughTemplates(with, PugiXmlReader(), output);
  ShownReport shown(options.report, std::move(with));
  shown.NeedWhatIsRead();
  try {
    PrintShown(shown, options, *output);
  } catch (const Error& error) {
    shown.Refuse(PersianReason(error.Description()));
  }
}

void WriteTemplateOf(const PrintOptions& options) {
  ShownReport shown(options.report);
  shown.NeedWhatIsRead();
  std::cout << GridTemplate(shown);
}

void AddPaperOptions(CLI::App& command, PrintOptions& options, CLI::Option& with_template) {
  CLI::Option* const landscape =
      command
          .add_flag("--landscape", options.landscape,
                    "the paper on its long side; without a word, where the columns need it")
          ->excludes(&with_template);
  command.add_flag("--portrait", options.portrait, "the paper upright")
      ->excludes(&with_template)
      ->excludes(landscape);
  command
      .add_flag("--all-wide", options.all_wide,
                "columns as wide as they are shown, on as many sheets side by side as they need")
      ->excludes(&with_template);
  command.add_option("--margin", options.margin, "of the paper, in millimetres")
      ->check(CLI::Range(0.0, 60.0))
      ->excludes(&with_template);
}

}  // namespace

void AddPrintCommand(CLI::App& app) {
  auto options = std::make_shared<PrintOptions>();
  CLI::App* const command = app.add_subcommand("print", "Print a report to a PDF");
  AddReportOptions(*command, options->report);
  CLI::Option* const with_template =
      command->add_option("--template", options->with_template,
                          "a print template: a file, or the number of one stored with the report");
  command->add_flag("--grid", options->grid, "the grid as it is shown; so it is without --template")
      ->excludes(with_template);
  AddPaperOptions(*command, *options, *with_template);
  command->add_option("--to", options->to, "the PDF")->required();
  command->callback([options] { Print(*options); });
  auto made = std::make_shared<PrintOptions>();
  CLI::App* const first =
      app.add_subcommand("print-template", "Write a first print template for a report");
  AddReportOptions(*first, made->report);
  first->callback([made] { WriteTemplateOf(*made); });
}

}  // namespace vorek
