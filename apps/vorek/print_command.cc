#include <QGuiApplication>
#include <QTemporaryDir>
#include <iostream>
#include <memory>

#include "command.h"
#include "engine/report_control.h"
#include "export/crystal_print.h"
#include "platform/files.h"
#include "print/grid_template.h"
#include "vorek/qt.h"
#include "vorek/system.h"
#include "vorek/xml.h"

namespace vorek {
namespace {

struct PrintOptions {
  ConnectOptions connect;
  std::int32_t report = -1;
  std::string parameters;
  std::string template_file;
  std::string to;
};

// The report on show, or the end of the command.
void View(VorekReport1& report, const PrintOptions& options) {
  report.SetOleConnectionString(ConnectionString(options.connect));
  report.SetUserID(options.connect.user);
  report.SetPositionID(options.connect.position);
  report.SetEmployeeID(options.connect.employee);
  report.SetPeriodID(options.connect.period);
  const bool shown = report.View(options.report, options.parameters);
  if (shown && report.Impl().state.QueryRecordCount >= 0) return;
  if (shown)
    std::cerr << "report " << options.report << ": waits for its parameters: give --params\n";
  throw CLI::RuntimeError(1);
}

std::string GridTemplate(VorekReport1& report) {
  ReportContext context = report.Impl().Context();
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
  World world(std::move(with));
  VorekReport1 report(world);
  View(report, options);
  ReportContext context = report.Impl().Context();
  if (!options.template_file.empty()) {
    PrintCrystal(context, options.template_file);
    return;
  }
  const ListFile list(GridTemplate(report));
  PrintList(context, list.path);
}

void WriteTemplateOf(const PrintOptions& options) {
  World world(ConsoleWorld());
  VorekReport1 report(world);
  View(report, options);
  std::cout << GridTemplate(report);
}

CLI::App* AddCommand(CLI::App& app, const char* name, const char* what,
                     const std::shared_ptr<PrintOptions>& options) {
  CLI::App* const command = app.add_subcommand(name, what);
  command->add_option("ID", options->report, "number of the report")->required();
  AddDatabaseOption(*command, options->connect);
  AddUserOptions(*command, options->connect);
  command->add_option("--params", options->parameters,
                      "values of the parameters as SQL texts: \"@1=5&@2='x'\"");
  return command;
}

}  // namespace

void AddPrintCommand(CLI::App& app) {
  auto options = std::make_shared<PrintOptions>();
  CLI::App* const command = AddCommand(app, "print", "Print a report to a PDF", options);
  command
      ->add_option("--template", options->template_file,
                   "file of a print template; a plain list without one")
      ->check(CLI::ExistingFile);
  command->add_option("--to", options->to, "the PDF")->required();
  command->callback([options] { Print(*options); });
  auto made = std::make_shared<PrintOptions>();
  AddCommand(app, "print-template", "Write a first print template for a report", made)
      ->callback([made] { WriteTemplateOf(*made); });
}

}  // namespace vorek
