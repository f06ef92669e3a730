#include <memory>

#include "engine/report_control.h"
#include "export/attachment.h"
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

// Returns what the user should know.
std::string WriteWorkbook(ReportControl& control, const ExportOptions& options,
                          std::unique_ptr<OutputFile> out) {
  ReportContext report = control.Context();
  const bool filled = options.template_number >= 0 || !options.template_path.empty();
  const std::string path = filled ? TemplateOf(control, options) : "";
  const bool formatted = ExcelCellFormatting(control.world.process);
  PlainMoney money(report);
  if (filled) return FillExcelTemplate(report, GridOnShow(report), path, money, *out);
  const std::size_t sheets =
      WriteNewWorkbook(report, money, {formatted, report.state.LockPrintPreview}, std::move(out));
  if (sheets < 2) return {};
  return "سطرهاي گزارش در يك برگه جا نشد و در " + std::to_string(sheets) + " برگه نوشته شد.";
}

std::string Export(ReportControl& control, const ExportOptions& options) {
  Files* const files = control.world.process.services.files.get();
  if (files == nullptr) throw Error(ErrorNumber::kPathAccess, "There are no files here.");
  ReportContext report = control.Context();
  const std::string format = FormatOf(options);
  TextFileOptions text;
  const bool is_text = TakeTextFormat(format, options, text);
  if (!is_text && format != "xlsx" && format != "json" && format != "html") {
    throw Error(ErrorNumber::kInvalidCall,
                "قالب فايل «" + options.path + "» شناخته نشد: xlsx، csv، tsv، txt، json يا html.");
  }
  if (format != "xlsx" && (options.template_number >= 0 || !options.template_path.empty())) {
    throw Error(ErrorNumber::kInvalidCall, "الگو فقط براي فايل xlsx است.");
  }
  if (options.open_sub_rows) OpenCrossTable(control.flxTranspose);
  std::unique_ptr<OutputFile> out = files->Create(options.path);
  if (format == "xlsx") return WriteWorkbook(control, options, std::move(out));
  if (is_text) WriteTextFile(report, text, *out);
  if (format == "json") WriteJsonFile(report, *out);
  if (format == "html") WriteHtmlFile(report, *out);
  out->Commit();
  return {};
}

}  // namespace

std::string ExportReport(VorekReport1& report, const ExportOptions& options) {
  std::string note;
  ForHost([&] { note = Export(report.Impl(), options); });
  return note;
}

}  // namespace vorek
