#include <unistd.h>

#include <fstream>
#include <iostream>
#include <memory>
#include <utility>

#include "chart_kinds.h"
#include "command.h"
#include "messages/persian_reason.h"
#include "shown_report.h"
#include "text/utf8.h"
#include "vorek/export.h"
#include "vorek/system.h"
#include "vorek/temporary_files.h"

namespace vorek {
namespace {

struct CommandOptions {
  ReportOptions report;
  std::string to;
  std::string format;
  std::string with_template;
  std::string delimiter = "^t";
  std::string chart;
  bool turned = false;
  bool no_header = false;
  bool plain = false;
  bool guard = false;
};

ExportOptions OptionsFor(const CommandOptions& command) {
  ExportOptions options;
  options.path = command.to;
  options.format = command.format;
  if (IsTemplateNumber(command.with_template)) {
    options.template_number = std::stoi(command.with_template);
  } else {
    options.template_path = command.with_template;
  }
  if (!command.chart.empty()) options.chart = ChartKindsByName().at(command.chart);
  options.chart_turned = command.turned;
  options.header = !command.no_header;
  options.remove_money = command.plain;
  options.guard = command.guard;
  options.open_sub_rows = true;
  const bool tab = text::EqualsIgnoreCase(text::TrimView(command.delimiter), "^t");
  options.delimiter = tab ? "\t" : command.delimiter;
  return options;
}

// A file that goes when it has been read.
class PassingFile {
 public:
  PassingFile() {
    const std::shared_ptr<TemporaryFiles> temporary = MachineTemporaryFiles();
    path_ = temporary->Folder() + "/" + temporary->NewName();
  }
  PassingFile(const PassingFile&) = delete;
  PassingFile& operator=(const PassingFile&) = delete;
  ~PassingFile() { ::unlink(path_.c_str()); }
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

std::string Write(ShownReport& shown, ExportOptions options) {
  if (options.path != "-") return ExportReport(shown.Report(), options);
  const PassingFile file;
  options.path = file.Path();
  const std::string note = ExportReport(shown.Report(), options);
  std::ifstream made(file.Path(), std::ios::binary);
  std::cout << made.rdbuf();
  return note;
}

void Export(const CommandOptions& command) {
  if (command.to == "-" && command.format.empty()) {
    std::cerr << "standard output needs a --format\n";
    throw CLI::RuntimeError(2);
  }
  ShownReport shown(command.report);
  shown.NeedWhatIsRead();
  std::string note;
  try {
    note = Write(shown, OptionsFor(command));
  } catch (const Error& error) {
    shown.Refuse(PersianReason(error.Description()));
  }
  if (!note.empty()) std::cerr << note << '\n';
}

}  // namespace

void AddExportCommand(CLI::App& app) {
  auto options = std::make_shared<CommandOptions>();
  CLI::App* const command = app.add_subcommand("export", "Run a report and write it into a file");
  AddReportOptions(*command, options->report);
  command
      ->add_option("--to", options->to,
                   "the file: .xlsx, .csv, .tsv, .txt, .json or .html; - for standard output")
      ->required();
  command->add_option("--format", options->format, "the format, if the file's name doesn't tell it")
      ->check(CLI::IsMember({"xlsx", "csv", "tsv", "txt", "json", "html"}));
  command->add_option("--template", options->with_template,
                      "fill a workbook: a file, or the number of a template of the report");
  CLI::Option* const chart = command->add_option(
      "--chart", options->chart, "add a chart to a new workbook: bars, stacked, lines or shares");
  chart->check(CLI::IsMember(ChartKindsByName()));
  command->add_flag("--turned", options->turned, "change the sides of a cross table's chart")
      ->needs(chart);
  command->add_option("--delimiter", options->delimiter,
                      "text behind each cell of .txt; ^t is a tab");
  command->add_flag("--no-header", options->no_header, "leave the header row out of a text file");
  command->add_flag("--plain", options->plain,
                    "write money without digit groups and brackets into a text file");
  command->add_flag("--guard", options->guard,
                    "put ' before a text that a spreadsheet program would take for a formula");
  command->callback([options] { Export(*options); });
}

}  // namespace vorek
