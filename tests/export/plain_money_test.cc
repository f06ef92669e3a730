#include "export/plain_money.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "export/text_export.h"
#include "platform/memory_files.h"
#include "support/random_report.h"
#include "text/cell_text.h"
#include "text/utf8.h"
#include "vorek/spreadsheet.h"

namespace vorek {
namespace {

// The fourth character from the right tells, of texts up to their point.
bool LooksLikeMoneyRead(const Grid& grid, std::int32_t col) {
  bool witness = false;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    std::string text = grid.TextMatrix(row, col);
    if (text.find('.') != 0) text = text.substr(0, text.find('.'));
    const std::size_t letters = text::Length(text);
    if (letters < 4) continue;
    if (text.find('/') == std::string::npos) return false;
    if (text::Mid(text, letters - 3, 1) == "/") witness = true;
  }
  return witness;
}

// The rules read plainly, on copies of all texts of a grid. Its texts tell money only on show.
class PlainReading {
 public:
  PlainReading(const Grid& grid, const std::set<std::int32_t>& money, bool on_show) {
    for (std::int32_t row = 0; row < grid.Rows(); ++row) {
      texts_.emplace_back();
      for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        texts_.back().push_back(grid.TextMatrix(row, col));
      }
    }
    for (std::int32_t col = 1; col < grid.Cols(); ++col) {
      const bool looks = on_show && LooksLikeMoneyRead(grid, col);
      if (looks || money.contains(col)) replaced_.push_back(static_cast<std::size_t>(col));
    }
    for (const std::size_t col : replaced_) {
      for (std::size_t row = 1; row < texts_.size(); ++row) {
        texts_[row][col] = UnformatNumber(texts_[row][col]);
      }
    }
  }
  const std::string& Text(std::int32_t row, std::int32_t col) const {
    return texts_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
  }
  void PutBack() {
    for (const std::size_t col : replaced_) {
      for (std::size_t row = 1; row < texts_.size(); ++row) FormatMoney(texts_[row][col]);
    }
  }

 private:
  std::vector<std::vector<std::string>> texts_;
  std::vector<std::size_t> replaced_;
};

std::set<std::int32_t> MoneyFields(const RandomReport& random) {
  std::set<std::int32_t> columns;
  for (std::int32_t col = 1; const FieldInfo& field : random.state.QueryFields) {
    if (IsMoneyField(field.type)) columns.insert(col);
    ++col;
  }
  return columns;
}

// Texts as a cross table has them; the columns that its layout calls money.
std::set<std::int32_t> FillCrossTable(RandomReport& random) {
  std::set<std::int32_t> money;
  Grid& table = random.flxTranspose;
  table.SetRows(static_cast<std::int32_t>(1 + random.Below(6)));
  table.SetCols(static_cast<std::int32_t>(2 + random.Below(5)));
  for (std::int32_t col = 1; col < table.Cols(); ++col) {
    const bool stored = random.Below(3) == 0;
    random.process.main.TransposeLayouts[col].is_money_column = stored;
    if (stored) money.insert(col);
    const bool amounts = stored || random.Below(2) == 0;
    for (std::int32_t row = 0; row < table.Rows(); ++row) {
      table.WriteCell(row, col,
                      amounts ? random.Pick({"1/234", "(5/678.5)", "12", "", "98/765/432"})
                              : random.Pick({"1/234", "متن", "7654321", "-3", "كتابها"}));
    }
  }
  return money;
}

TEST(PlainMoney, WritesAndPutsBackAsThePlainRulesDo) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    RandomReport random(seed);
    random.Fill(seed % 2 == 1);
    random.Disturb();
    const bool crossed = seed % 4 > 1;
    random.state.ReportDistributed = crossed ? "نمايش معمولي" : "توزيع شده";
    const std::set<std::int32_t> laid_out = FillCrossTable(random);
    std::pair<Grid*, PlainReading> grids[] = {
        {&random.flxMain, {random.flxMain, MoneyFields(random), !crossed}},
        {&random.flxTranspose,
         {random.flxTranspose, crossed ? laid_out : std::set<std::int32_t>(), crossed}}};
    for (const auto& [grid, expected] : grids) {
      for (std::int32_t col = 1; col < grid->Cols(); ++col) {
        ASSERT_EQ(LooksLikeMoney(*grid, col), LooksLikeMoneyRead(*grid, col)) << seed << "," << col;
      }
    }
    ReportContext report = random.Context();
    PlainMoney money(report);
    std::string scratch;
    const auto compare = [&](const char* when, const auto& text) {
      for (const auto& [grid, expected] : grids) {
        for (std::int32_t row = 0; row < grid->Rows(); ++row) {
          for (std::int32_t col = 1; col < grid->Cols(); ++col) {
            ASSERT_EQ(text(*grid, row, col), expected.Text(row, col))
                << when << ", seed " << seed << ", " << row << "," << col;
          }
        }
      }
    };
    const auto shown = [](const Grid& grid, std::int32_t row, std::int32_t col) {
      return grid.TextMatrix(row, col);
    };
    compare("written", [&](const Grid& grid, std::int32_t row, std::int32_t col) {
      return std::string(money.Text(grid, row, col, scratch));
    });
    if (seed % 3 == 0) {
      money.TakeOut();
      compare("taken out", shown);
    }
    money.PutBack();
    for (auto& [grid, expected] : grids) expected.PutBack();
    compare("put back", shown);
  }
}

// Brackets keep 15 digits: what is written, and what shows afterwards, is that.
TEST(PlainMoney, PutsLongBracketedAmountsBackAsTheyWereWritten) {
  RandomReport random(1);
  random.database->Answer("rows", MakeResult({{"مبلغ", kCurrency}},
                                             {{"-12345678901234.5678"}, {"-0.5"}, {std::nullopt}}));
  random.Bind();
  random.flxMain.ReformColumn(1, CellForm::kMoney);
  random.state.ReportDistributed = "توزيع شده";
  ReportContext report = random.Context();
  const Grid& grid = random.flxMain;
  EXPECT_EQ(grid.TextMatrix(1, 1), "(12/345/678/901/234.5678)");
  PlainMoney money(report);
  std::string scratch;
  EXPECT_EQ(money.Text(grid, 1, 1, scratch), "-12345678901234.6");
  EXPECT_EQ(money.Text(grid, 2, 1, scratch), "0.5");
  EXPECT_EQ(money.Text(grid, 3, 1, scratch), "");
  money.PutBack();
  EXPECT_EQ(grid.TextMatrix(1, 1), "(12/345/678/901/234.6)");
  EXPECT_EQ(grid.TextMatrix(2, 1), "0.5");
  EXPECT_EQ(grid.TextMatrix(3, 1), "");
}

TEST(LooksLikeMoney, NeedsAWitnessAndNothingAgainst) {
  struct Case {
    std::vector<std::string> texts;
    bool looks;
  };
  const Case cases[] = {
      {{"1/234"}, true},
      {{"1/234", "12"}, true},
      {{"1/234", "123"}, true},
      {{"1/234", "1234"}, false},
      {{"1/234.5"}, true},
      {{"1/234.5678", ""}, true},
      {{".1/234"}, true},    // a point in front cuts nothing
      {{"(1/234)"}, false},  // the bracket stands where the group ends
      {{"(1/234)", "5/678"}, true},
      {{"12", "345"}, false},
      {{"1404/01/02"}, false},
      {{"1404/012"}, true},
      {{"مبلغ/234"}, true},
      {{"1/234", "متن"}, true},    // three letters
      {{"1/234", "متنن"}, false},  // four
      {{}, false},
  };
  for (const Case& tried : cases) {
    Grid grid(nullptr, "grid");
    grid.SetRows(static_cast<std::int32_t>(tried.texts.size()) + 1);
    std::string all;
    for (std::size_t i = 0; i < tried.texts.size(); ++i) {
      grid.WriteCell(static_cast<std::int32_t>(i) + 1, 1, tried.texts[i]);
      all += tried.texts[i] + " ";
    }
    grid.WriteCell(0, 1, "1234");  // the header is no witness
    EXPECT_EQ(LooksLikeMoney(grid, 1), tried.looks) << all;
  }
}

TEST(LooksLikeMoney, TakesASumBelowTheSmallNumbersOfAField) {
  RandomReport random(1);
  random.database->Answer(
      "rows", MakeResult({{"a", kInteger}, {"b", kInteger}}, {{"500", "500"}, {"900", "1900"}}));
  random.Bind();
  Grid& grid = random.flxMain;
  EXPECT_FALSE(LooksLikeMoney(grid, 1));
  grid.AddItem("مجموع");
  for (const std::int32_t col : {1, 2}) grid.WriteCell(3, col, "2/400");
  EXPECT_TRUE(LooksLikeMoney(grid, 1));
  EXPECT_FALSE(LooksLikeMoney(grid, 2));
}

// The bytes of a small grid's file.
std::string TextOf(const TextFileOptions& options) {
  RandomReport random(1);
  random.state.QueryFields = {{"a", kVarWChar}, {"b", kCurrency}, {"c", kVarWChar}};
  random.state.ReportDistributed = "توزيع شده";
  Grid& grid = random.flxMain;
  grid.Clear();
  grid.SetRows(3);
  grid.SetCols(4);
  const char* const texts[3][4] = {{"رديف", "a", "b", "c"},
                                   {"1", "x\r\ny\rz\n", "(1/234)", "hid"},
                                   {"مجموع", "=1,\"2\"\t", "abc", "-5"}};
  for (std::int32_t row = 0; row < 3; ++row) {
    for (std::int32_t col = 0; col < 4; ++col) grid.WriteCell(row, col, texts[row][col]);
  }
  grid.SetColWidth(3, options.guard ? 1000 : 0);
  grid.SetRowHeight(2, 0);
  MemoryFiles files;
  ReportContext report = random.Context();
  const auto out = files.Create("f");
  WriteTextFile(report, options, *out);
  out->Commit();
  if (options.remove_money) {
    EXPECT_EQ(grid.TextMatrix(1, 2), "(1/234)");
    EXPECT_EQ(grid.TextMatrix(2, 2), "0");
  }
  return files.contents["f"];
}

std::string Utf16(const std::string& ascii) {
  std::string out;
  for (const char c : ascii) out += {c, '\0'};
  return out;
}

TEST(TextFile, HasTheRowsInEveryKind) {
  using Kind = TextFileOptions::Kind;
  EXPECT_EQ(TextOf({.kind = Kind::kDelimited,
                    .delimiter = ";",
                    .new_line = false,
                    .header = false,
                    .remove_money = true}),
            "\xFF\xFE" + Utf16("xyz;-1234;\r\n=1,\"2\"\t;abc;"));
  EXPECT_EQ(TextOf({.kind = Kind::kDelimited, .delimiter = "", .new_line = true, .header = true}),
            "\xFF\xFE" + Utf16("ab\r\nxyz(1/234)\r\n=1,\"2\"\tabc\r\n"));
  EXPECT_EQ(TextOf({.kind = Kind::kComma, .guard = true}),
            "\xEF\xBB\xBF"
            "a,b,c\r\nxyz,(1/234),hid\r\n\"'=1,\"\"2\"\"\t\",abc,-5\r\n");
  EXPECT_EQ(TextOf({.kind = Kind::kTab}), "a\tb\r\nxyz\t(1/234)\r\n=1,\"2\" \tabc\r\n");
}

TEST(TextFile, LettersBeyondTheFirstPlaneBecomePairs) {
  MemoryFiles files;
  const auto out = files.Create("f");
  RandomReport random(1);
  random.flxMain.Clear();
  random.flxMain.SetRows(2);
  random.flxMain.SetCols(3);
  random.flxMain.WriteCell(1, 1, "ک🙂\xD9");
  random.flxMain.WriteCell(1, 2, "\x85");  // no letter with the byte in front of it
  ReportContext report = random.Context();
  WriteTextFile(report, {.delimiter = "", .new_line = false, .header = false}, *out);
  out->Commit();
  EXPECT_EQ(files.contents["f"], std::string("\xFF\xFE\xA9\x06\x3D\xD8\x42\xDE\xFD\xFF\xFD\xFF"));
}

// The rows of a file with tabs, read off the cells one by one.
std::string Tabbed(const Grid& grid, bool guard) {
  std::string file;
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    bool first = true;
    for (std::int32_t col = 1; col < grid.Cols(); ++col) {
      if (grid.ColWidth(col) == 0) continue;
      const std::string text = grid.TextMatrix(row, col);
      const bool formula =
          !text.empty() && std::string("=+-@\t\r").find(text[0]) != std::string::npos;
      if (!std::exchange(first, false)) file += '\t';
      if (guard && formula && !IsSheetNumber(text)) file += '\'';
      for (const char c : text) {
        if (c != '\r' && c != '\n') file += c == '\t' ? ' ' : c;
      }
    }
    if (row < grid.Rows() - 1) file += "\r\n";
  }
  return file;
}

// A sheet can't hold such a number, so that it would be read as a formula.
TEST(TextFile, GuardsALongNegativeNumberOfAField) {
  RandomReport random(1);
  random.database->Answer("rows", MakeResult({{"n", kBigInt}}, {{"-1234567890123456"}, {"-5"}}));
  random.Bind();
  MemoryFiles files;
  const auto out = files.Create("f");
  ReportContext report = random.Context();
  WriteTextFile(report, {.kind = TextFileOptions::Kind::kTab, .header = false, .guard = true},
                *out);
  out->Commit();
  EXPECT_EQ(files.contents["f"], "'-1234567890123456\r\n-5\r\n");
}

TEST(TextFile, HoldsTheCellsOfABoundGridAsTheyAreShown) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    RandomReport random(seed);
    random.Fill(seed % 2 == 1);
    random.Disturb();
    const bool guard = seed % 4 < 2;
    MemoryFiles files;
    const auto out = files.Create("f");
    ReportContext report = random.Context();
    WriteTextFile(
        report,
        {.kind = TextFileOptions::Kind::kTab, .new_line = false, .header = true, .guard = guard},
        *out);
    out->Commit();
    ASSERT_EQ(files.contents["f"], Tabbed(random.flxMain, guard)) << seed;
  }
}

}  // namespace
}  // namespace vorek
