#include "engine/report_export.h"

#include <memory>
#include <optional>

#include "chart/chart_reader.h"
#include "engine/report_control.h"
#include "export/attachment.h"
#include "export/chart_sheet.h"
#include "export/excel_export.h"
#include "export/table_export.h"
#include "export/template_fill.h"
#include "export/text_export.h"
#include "grid/cross_table_click.h"
#include "platform/attempt.h"
#include "text/utf8.h"
#include "vorek/export.h"

namespace vorek {
namespace {

std::string FormatOf(const ExportOptions& options) {
  const std::string& path = options.path;
  const std::size_t point = path.rfind('.');
  const std::string ending = point == std::string::npos ? "" : path.substr(point + 1);
  return text::ToLower(options.format.empty() ? ending : options.format);
}

// A text format's rules; false for another format.
bool TakeTextFormat(const std::string& format, const ExportOptions& options,
                    TextFileOptions& text) {
  using Kind = TextFileOptions::Kind;
  if (format != "csv" && format != "tsv" && format != "txt") return false;
  text.kind = format == "csv" ? Kind::kComma : format == "tsv" ? Kind::kTab : Kind::kDelimited;
  text.delimiter = options.delimiter;
  text.header = options.header;
  text.remove_money = options.remove_money;
  text.guard = options.guard;
  return true;
}

std::string TemplateOf(ReportControl& control, const ExportOptions& options) {
  if (options.template_number < 0) return options.template_path;
  return FetchAttachment(control.world.process, control.world.messages, kTemplateFormType,
                         control.state.ReportID,
                         static_cast<std::int16_t>(options.template_number));
}

bool HasTemplate(const ExportOptions& options) {
  return options.template_number >= 0 || !options.template_path.empty();
}

std::string FillTemplate(ReportControl& control, const ExportOptions& options, OutputFile& out) {
  ReportContext report = control.Context();
  const std::string path = TemplateOf(control, options);
  PlainMoney money(report);
  return FillExcelTemplate(report, GridOnShow(report), path, money, out);
}

// Returns what the user should know.
std::string WriteWorkbook(ReportControl& control, const SheetChart* chart,
                          std::unique_ptr<OutputFile> out) {
  ReportContext report = control.Context();
  const NewWorkbookOptions options = {.formatted = ExcelCellFormatting(control.world.process),
                                      .locked = report.state.LockPrintPreview,
                                      .chart = chart};
  PlainMoney money(report);
  const std::size_t sheets = WriteNewWorkbook(report, money, options, std::move(out));
  if (sheets < 2) return {};
  return "سطرهاي گزارش در يك برگه جا نشد و در " + std::to_string(sheets) + " برگه نوشته شد.";
}

std::optional<SheetChart> ChartFor(ReportControl& control, const ExportOptions& options) {
  if (!options.chart.has_value()) return {};
  const ReportContext report = control.Context();
  const ColumnView view(report.ActiveGrid());
  return SheetChartOf(ReadChart(report, view, options.chart_turned), *options.chart);
}

Files& FilesOf(ReportControl& control) {
  Files* const files = control.world.process.services.files.get();
  if (files == nullptr) throw Error(ErrorNumber::kPathAccess, "There are no files here.");
  return *files;
}

// What only workbooks can have.
void CheckExtras(const std::string& format, const ExportOptions& options) {
  if (HasTemplate(options) && format != "xlsx") {
    throw Error(ErrorNumber::kInvalidCall, "الگو فقط براي فايل xlsx است.");
  }
  if (options.chart.has_value() && (HasTemplate(options) || format != "xlsx")) {
    throw Error(ErrorNumber::kInvalidCall, "نمودار فقط براي فايل xlsx بدون الگو است.");
  }
}

std::string Export(ReportControl& control, const ExportOptions& options) {
  Files& files = FilesOf(control);
  ReportContext report = control.Context();
  const std::string format = FormatOf(options);
  TextFileOptions text;
  const bool is_text = TakeTextFormat(format, options, text);
  if (!is_text && format != "xlsx" && format != "json" && format != "html") {
    throw Error(ErrorNumber::kInvalidCall,
                "قالب فايل «" + options.path + "» شناخته نشد: xlsx، csv، tsv، txt، json يا html.");
  }
  CheckExtras(format, options);
  if (options.open_sub_rows) OpenCrossTable(control.flxTranspose);
  const std::optional<SheetChart> chart = ChartFor(control, options);
  std::unique_ptr<OutputFile> out = files.Create(options.path);
  if (HasTemplate(options)) return FillTemplate(control, options, *out);
  if (format == "xlsx") {
    return WriteWorkbook(control, chart.has_value() ? &*chart : nullptr, std::move(out));
  }
  if (is_text) WriteTextFile(report, text, *out);
  if (format == "json") WriteJsonFile(report, *out);
  if (format == "html") WriteHtmlFile(report, *out);
  out->Commit();
  return {};
}

}  // namespace

std::string ExportWithChart(ReportControl& control, const std::string& path,
                            const SheetChart& chart) {
  return WriteWorkbook(control, &chart, FilesOf(control).Create(path));
}

std::string ExportReport(VorekReport1& report, const ExportOptions& options) {
  std::string note;
  ForHost([&] { note = Export(report.Impl(), options); });
  return note;
}

}  // namespace vorek
