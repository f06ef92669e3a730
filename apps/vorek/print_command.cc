#include <QGuiApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <iostream>
#include <memory>
#include <utility>

#include "command.h"
#include "export/attachment.h"
#include "export/crystal_print.h"
#include "messages/persian_reason.h"
#include "platform/files.h"
#include "print/grid_template.h"
#include "shown_report.h"
#include "vorek/qt.h"
#include "vorek/system.h"
#include "vorek/xml.h"

namespace vorek {
namespace {

struct PrintOptions {
  ReportOptions report;
  std::string with_template;
  std::string to;
};

std::string GridTemplate(ShownReport& shown) {
  ReportContext context = shown.Control().Context();
  return print::WriteTemplate(print::TemplateForGrid(context));
}

// A template in a folder of its own, as long as it is needed.
struct ListFile {
  explicit ListFile(const std::string& text) { MachineFiles()->WritePrivate(path, text); }

  const QTemporaryDir folder;
  const std::string path = folder.filePath("list.xml").toStdString();
};

// What Qt says of its surroundings is nothing to the user of a command.
void PassOver(QtMsgType, const QMessageLogContext&, const QString&) {}

// The file of the template: one that was given, or a stored one's.
std::string TemplateFile(ReportContext& report, const std::string& given) {
  if (!IsTemplateNumber(given)) return given;
  return FetchAttachment(report.process, report.notices, kTemplateFormType, report.state.ReportID,
                         static_cast<std::int16_t>(std::min(std::stoi(given), 32767)));
}

void PrintShown(ShownReport& shown, const std::string& with_template) {
  ReportContext context = shown.Control().Context();
  if (!with_template.empty()) {
    PrintCrystal(context, TemplateFile(context, with_template));
    return;
  }
  const ListFile list(GridTemplate(shown));
  PrintList(context, list.path);
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
  with.print_jobs =
      PrintsThroughTemplates(with, PugiXmlReader(), PdfFile(QString::fromStdString(options.to)));
  ShownReport shown(options.report, nullptr, std::move(with));
  try {
    PrintShown(shown, options.with_template);
  } catch (const Error& error) {
    shown.Refuse(PersianReason(error.Description()));
  }
}

void WriteTemplateOf(const PrintOptions& options) {
  ShownReport shown(options.report);
  std::cout << GridTemplate(shown);
}

}  // namespace

void AddPrintCommand(CLI::App& app) {
  auto options = std::make_shared<PrintOptions>();
  CLI::App* const command = app.add_subcommand("print", "Print a report to a PDF");
  AddReportOptions(*command, options->report);
  command->add_option("--template", options->with_template,
                      "a print template: a file, or the number of one stored with the report; a "
                      "plain list without one");
  command->add_option("--to", options->to, "the PDF")->required();
  command->callback([options] { Print(*options); });
  auto made = std::make_shared<PrintOptions>();
  CLI::App* const first =
      app.add_subcommand("print-template", "Write a first print template for a report");
  AddReportOptions(*first, made->report);
  first->callback([made] { WriteTemplateOf(*made); });
}

}  // namespace vorek
