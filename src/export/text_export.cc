#include "export/text_export.h"

#include <memory>
#include <vector>

#include "export/exported_columns.h"
#include "export/form_send_to_text_file.h"
#include "export/long_work.h"
#include "export/plain_money.h"
#include "export/text_output.h"
#include "platform/attempt.h"
#include "text/character_set.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/spreadsheet.h"

namespace vorek {
namespace {

using Kind = TextFileOptions::Kind;

constexpr int kHourglass = 11;

// One row after the other, cell by cell.
class RowsAsText {
 public:
  RowsAsText(const TextFileOptions& options, OutputFile& out)
      : options_(options),
        delimiter_(text::ValidUtf8(options.delimiter)),
        runs_together_(options.kind == Kind::kDelimited && options.delimiter.empty()),
        text_(out, options.kind == Kind::kDelimited ? TextOutput::Encoding::kUtf16
                                                    : TextOutput::Encoding::kUtf8) {
    if (options.kind != Kind::kTab) text_.Put("\uFEFF");
  }

  void Cell(const ExportedColumn& column, std::uint32_t handle) {
    if (column.ShowsNumber(handle) && !options_.guard) {
      column.Append(handle, text_.Buffer());
    } else {
      PutText(column.Text(handle, scratch_));
    }
    if (options_.kind == Kind::kDelimited) text_.Put(delimiter_);
  }
  void Between() {
    if (options_.kind != Kind::kDelimited) text_.Put(options_.kind == Kind::kComma ? "," : "\t");
  }
  void LineBreak() { text_.Put("\r\n"); }
  void End() { text_.Finish(); }

 private:
  void PutText(std::string_view text) {
    const bool odd = NeedsWork(text);
    if (!odd && !runs_together_) return text_.Put(text);
    const std::string worked = odd ? Worked(text) : std::string(text);
    text_.Put(runs_together_ ? text::ValidUtf8(worked) : worked);
  }
  bool NeedsWork(std::string_view text) const {
    if (text.empty()) return false;
    return Odd().AnyIn(text) || (options_.guard && IsFormula(text));
  }
  const text::CharacterSet& Odd() const {
    static constexpr text::CharacterSet kLineEnds("\r\n");
    static constexpr text::CharacterSet kOfComma(",\"\r\n");
    static constexpr text::CharacterSet kOfTab("\t\r\n");
    if (options_.kind == Kind::kDelimited) return kLineEnds;
    return options_.kind == Kind::kComma ? kOfComma : kOfTab;
  }
  static bool IsFormula(std::string_view text) {
    constexpr std::string_view kHeads = "=+-@\t\r";
    return kHeads.find(text.front()) != std::string_view::npos && !IsSheetNumber(text);
  }
  std::string Worked(std::string_view text) const {
    std::string out;
    if (options_.guard && IsFormula(text)) out += '\'';
    for (const char c : text) {
      if (c == '\r' || c == '\n') continue;
      if (c == '"' && options_.kind == Kind::kComma) out += '"';
      out += c == '\t' && options_.kind == Kind::kTab ? ' ' : c;
    }
    const bool quoted =
        options_.kind == Kind::kComma && out.find_first_of(",\"") != std::string::npos;
    return quoted ? "\"" + out + "\"" : out;
  }

  const TextFileOptions& options_;
  std::string delimiter_;
  bool runs_together_;  // nothing stands between two cells
  TextOutput text_;
  std::string scratch_;
};

void WriteRows(ReportContext& report, const TextFileOptions& options, const PlainMoney* money,
               RowsAsText& rows) {
  const Grid& grid = report.ActiveGrid();
  const std::vector<ExportedColumn> columns = ExportedColumns(grid, money);
  LongWork work(report, grid.Rows());
  for (std::int32_t row = options.header ? 0 : 1; row < grid.Rows(); ++row) {
    const std::uint32_t handle = grid.RowHandle(row);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (i > 0) rows.Between();
      rows.Cell(columns[i], handle);
    }
    if (row < grid.Rows() - 1 || options.new_line) rows.LineBreak();
    work.Step();
  }
}

std::string Refusal(ReportContext& report, const std::string& file_name, const Error& error) {
  return "فايل متني با نام «" + file_name +
         "» نوشته نشد: " + report.notices.ReasonOf(error.Description());
}

void WriteNamedFile(ReportContext& report, const TextFileOptions& options,
                    const std::string& file_name) {
  Files* const files = report.process.services.files.get();
  if (files == nullptr) throw Error(ErrorNumber::kPathAccess, "There are no files here.");
  const std::unique_ptr<OutputFile> out = files->Create(file_name);
  WriteTextFile(report, options, *out);
  out->Commit();
}

}  // namespace

void WriteTextFile(ReportContext& report, const TextFileOptions& options, OutputFile& out) {
  std::unique_ptr<PlainMoney> money;
  if (options.remove_money) money = std::make_unique<PlainMoney>(report);
  RowsAsText rows(options, out);
  WriteRows(report, options, money.get(), rows);
  rows.End();
  if (money != nullptr) money->PutBack();
}

void ExportTextFile(ReportContext& report) {
  FormSendToTextFile form(report.process, report.notices);
  TextFileOptions options;
  std::string file_name;
  if (!form.getTextFileName(file_name, options.delimiter, options.new_line, options.header,
                            options.remove_money)) {
    return;
  }
  Windows& windows = report.process.windows();
  windows.SetMousePointer(kHourglass);
  const auto error = Attempt([&] { WriteNamedFile(report, options, file_name); });
  windows.SetMousePointer(0);
  if (error) {
    const bool told =
        error->Is(ErrorNumber::kCancelled) && windows.TellCancelled("ساختن فايل لغو شد.");
    if (!told) report.notices.ShowMessage("خطا", Refusal(report, file_name, *error));
    return;
  }
  report.notices.ShowMessage("اطلاع", "فايل متني با نام «" + file_name + "» ذخيره شد.");
}

}  // namespace vorek
