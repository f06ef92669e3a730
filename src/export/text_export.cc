#include "export/text_export.h"

#include <memory>
#include <vector>

#include "export/exported_columns.h"
#include "export/form_send_to_text_file.h"
#include "export/long_work.h"
#include "export/plain_money.h"
#include "export/row_blocks.h"
#include "platform/attempt.h"
#include "text/character_set.h"
#include "text/utf16.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/spreadsheet.h"

namespace vorek {
namespace {

using Kind = TextFileOptions::Kind;

constexpr int kHourglass = 11;

// Rows of a grid as a text file holds them, in UTF-8.
class TextRows {
 public:
  TextRows(const Grid& grid, const TextFileOptions& options, const PlainMoney* money)
      : grid_(grid),
        columns_(ExportedColumns(grid, money)),
        options_(options),
        delimiter_(options.kind == Kind::kDelimited ? text::ValidUtf8(options.delimiter) : ""),
        between_(options.kind == Kind::kComma ? ","
                 : options.kind == Kind::kTab ? "\t"
                                              : ""),
        runs_together_(options.kind == Kind::kDelimited && options.delimiter.empty()) {}

  RowRange Rows() const { return {options_.header ? 0 : 1, grid_.Rows()}; }
  void Append(RowRange rows, std::string& out) const {
    std::string scratch;
    for (std::int32_t row = rows.first; row < rows.end; ++row) {
      AppendCells(grid_.RowHandle(row), scratch, out);
      if (row < grid_.Rows() - 1 || options_.new_line) out += "\r\n";
    }
  }

 private:
  void AppendCells(std::uint32_t handle, std::string& scratch, std::string& out) const {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (i > 0) out += between_;
      if (columns_[i].ShowsNumber(handle) && !options_.guard) {
        columns_[i].Append(handle, out);
      } else {
        AppendText(columns_[i].Text(handle, scratch), out);
      }
      out += delimiter_;
    }
  }
  void AppendText(std::string_view text, std::string& out) const {
    const bool odd = NeedsWork(text);
    if (!odd && !runs_together_) {
      out += text;
      return;
    }
    const std::string worked = odd ? Worked(text) : std::string(text);
    out += runs_together_ ? text::ValidUtf8(worked) : worked;
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

  const Grid& grid_;
  std::vector<ExportedColumn> columns_;
  const TextFileOptions& options_;
  std::string delimiter_;  // behind each cell
  std::string between_;    // two cells
  bool runs_together_;     // nothing stands between two cells
};

void WriteUtf16(const TextRows& rows, OutputFile& out, LongWork& work) {
  std::string mark;
  text::AppendUtf16("\uFEFF", mark);
  out.Write(mark);
  WriteInBlocks(rows.Rows(), out, work, [&rows](RowRange block, std::string& text) {
    std::string utf8;
    rows.Append(block, utf8);
    text::AppendUtf16(utf8, text);
  });
}

void WriteUtf8(const TextRows& rows, bool mark, OutputFile& out, LongWork& work) {
  if (mark) out.Write("\uFEFF");
  WriteInBlocks(rows.Rows(), out, work,
                [&rows](RowRange block, std::string& text) { rows.Append(block, text); });
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
  const Grid& grid = report.ActiveGrid();
  const TextRows rows(grid, options, money.get());
  {
    LongWork work(report, grid.Rows());
    if (options.kind == Kind::kDelimited) {
      WriteUtf16(rows, out, work);
    } else {
      WriteUtf8(rows, options.kind == Kind::kComma, out, work);
    }
  }
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
