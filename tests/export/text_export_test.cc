#include "export/text_export.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "platform/memory_files.h"
#include "support/random_report.h"
#include "text/utf8.h"
#include "vorek/spreadsheet.h"

namespace vorek {
namespace {

using Kind = TextFileOptions::Kind;

std::string Written(RandomReport& report, const TextFileOptions& options) {
  MemoryFiles files;
  ReportContext context = report.Context();
  const auto out = files.Create("made");
  WriteTextFile(context, options, *out);
  out->Commit();
  return files.contents["made"];
}

std::string WithoutLineEnds(std::string text) {
  text = text::Replace(text, "\r\n", "");
  return text::Replace(text::Replace(text, "\r", ""), "\n", "");
}

bool LooksLikeFormula(const std::string& text) {
  return !text.empty() && !IsSheetNumber(text) &&
         std::string_view("=+-@\t\r").find(text[0]) != std::string_view::npos;
}

std::string Cell(const std::string& shown, const TextFileOptions& options) {
  const std::string guard = options.guard && LooksLikeFormula(shown) ? "'" : "";
  const std::string text = guard + WithoutLineEnds(shown);
  if (options.kind == Kind::kDelimited) return text + options.delimiter;
  if (options.kind == Kind::kTab) return text::Replace(text, "\t", " ");
  const bool quoted = text::Contains(text, ",") || text::Contains(text, "\"");
  return quoted ? "\"" + text::Replace(text, "\"", "\"\"") + "\"" : text;
}

std::string Utf16(std::string_view text) {
  std::string out;
  const auto put = [&out](char32_t unit) {
    out += static_cast<char>(unit & 0xFFU);
    out += static_cast<char>(unit >> 8U);
  };
  for (std::size_t at = 0; at < text.size();) {
    const char32_t letter = text::DecodeAt(text, at);
    if (letter < 0x10000) {
      put(letter);
    } else {
      put(0xD800 + (letter - 0x10000) / 0x400);
      put(0xDC00 + (letter - 0x10000) % 0x400);
    }
  }
  return out;
}

std::string Expected(const Grid& grid, const TextFileOptions& options) {
  std::string text = options.kind == Kind::kTab ? "" : "\uFEFF";
  for (std::int32_t row = options.header ? 0 : 1; row < grid.Rows(); ++row) {
    bool first = true;
    for (std::int32_t col = 1; col < grid.Cols(); ++col) {
      if (grid.ColWidth(col) == 0) continue;
      if (!std::exchange(first, false) && options.kind != Kind::kDelimited) {
        text += options.kind == Kind::kComma ? "," : "\t";
      }
      text += Cell(grid.TextMatrix(row, col), options);
    }
    if (row < grid.Rows() - 1 || options.new_line) text += "\r\n";
  }
  return options.kind == Kind::kDelimited ? Utf16(text) : text;
}

// Texts written by hand, odd ones among them.
void Scatter(RandomReport& report) {
  static const char* const kTexts[] = {"",
                                       "12/345",
                                       "(1/234.5)",
                                       "a,b",
                                       "a\"b\"",
                                       "\"",
                                       "x\r\ny\n",
                                       "\r\t=1",
                                       "-5",
                                       "-0.25",
                                       "+7",
                                       "=SUM(A1)",
                                       "-a",
                                       "@x",
                                       "\tنام",
                                       "شركت بازرگاني",
                                       "نام\tو\tكد",
                                       "\r",
                                       "😀 یک",
                                       ",",
                                       "a,\r\n\"b\"",
                                       "+98 912",
                                       "1234567890123",
                                       "حساب-۱۲",
                                       "a;b",
                                       "-",
                                       "=",
                                       "\n,\n"};
  Grid& grid = report.flxMain;
  grid.Clear();
  grid.SetRows(1 + static_cast<std::int32_t>(report.Below(9)));
  grid.SetCols(1 + static_cast<std::int32_t>(report.Below(6)));
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      grid.WriteCell(row, col, kTexts[report.Below(std::size(kTexts))]);
    }
    if (report.Below(4) == 0) grid.SetRowHeight(row, 0);
  }
}

void HideColumns(RandomReport& report) {
  for (std::int32_t col = 1; col < report.flxMain.Cols(); ++col) {
    if (report.Below(4) == 0) report.flxMain.SetColWidth(col, 0);
  }
}

TEST(TextExport, WritesWhatItsStepsMake) {
  static const char* const kDelimiters[] = {"\t", ";", "", " | ", "؛"};
  for (unsigned seed = 1; seed <= 3000 && !testing::Test::HasFailure(); ++seed) {
    RandomReport report(seed);
    if (seed % 2 == 0) {
      report.Fill(seed % 4 == 0);  // numbers of the database, as they are formed
      report.Disturb();
    } else {
      Scatter(report);
    }
    HideColumns(report);
    const TextFileOptions options = {.kind = static_cast<Kind>(report.Below(3)),
                                     .delimiter = kDelimiters[report.Below(5)],
                                     .new_line = report.Below(2) == 0,
                                     .header = report.Below(2) == 0,
                                     .guard = report.Below(2) == 0};
    EXPECT_EQ(Written(report, options), Expected(report.flxMain, options)) << "seed " << seed;
  }
}

}  // namespace
}  // namespace vorek
