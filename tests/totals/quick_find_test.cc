#include "totals/quick_find.h"

#include "grid/cell_search.h"
#include "support/random_report.h"
#include "support/steps/quick_find.h"

namespace vorek {
namespace {

ScriptedWindows& Screen(RandomReport& report) {
  return dynamic_cast<ScriptedWindows&>(report.process.windows());
}

// A piece of a cell as it is shown or as it is searched, in another script, or a text of no cell.
std::string SearchedText(RandomReport& report, std::int32_t column) {
  const Grid& grid = report.flxMain;
  const auto row =
      static_cast<std::int32_t>(report.Below(static_cast<std::size_t>(grid.Rows() - 1)) + 1);
  std::string cell = grid.TextMatrix(row, column);
  if (report.Below(3) != 0) cell = UnformatNumber(cell);
  const std::size_t length = text::Length(cell);
  std::string piece = text::Mid(cell, report.Below(length + 1), 1 + report.Below(4));
  if (report.Below(4) == 0) piece = text::Replace(piece, "1", report.Pick({"۱", "١"}));
  if (report.Below(4) == 0) piece = text::ToUpper(piece);
  return piece.empty() ? report.Pick({"", "7", "-", "xyz", "0", "ن", "e"}) : piece;
}

TEST(QuickFind, IsWhatItsStepsDo) {
  int found = 0;
  for (unsigned seed = 1; seed <= 600 && !testing::Test::HasFailure(); ++seed) {
    RandomReport fast(seed);
    RandomReport plain(seed);
    for (RandomReport* report : {&fast, &plain}) {
      report->Fill(seed % 2 == 0);
      report->Disturb();
      if (report->flxMain.Rows() == 1) report->flxMain.SetRows(2);
    }
    std::string text;
    for (int search = 0; search < 6; ++search) {
      const auto columns = static_cast<std::size_t>(fast.flxMain.Cols());
      const auto column = static_cast<std::int32_t>(fast.Below(columns + 2)) - 1;
      const bool other = search == 0 || fast.Below(2) == 0;
      if (other) text = SearchedText(fast, std::clamp(column, 1, fast.flxMain.Cols() - 1));
      ReportContext fast_context = fast.Context();
      ReportContext plain_context = plain.Context();
      const bool hit = QuickFind(fast_context, text, column);
      found += hit ? 1 : 0;
      EXPECT_EQ(hit, steps::QuickFind(plain_context, text, column)) << seed << " " << text;
      EXPECT_EQ(RandomReport::Picture(fast.flxMain), RandomReport::Picture(plain.flxMain)) << seed;
      EXPECT_EQ(fast.flxMain.TopRow(), plain.flxMain.TopRow());
      EXPECT_EQ(Screen(fast).beeps, Screen(plain).beeps) << "seed " << seed << " " << text;
    }
  }
  EXPECT_GT(found, 600);
}

struct SearchCase {
  const char* text;
  const char* cell;
  bool found;
};

TEST(CellSearch, TakesForTheSameWhatLooksTheSame) {
  const SearchCase kCases[] = {
      {"1234", "(1/234)", true},
      {"1/234", "(1/234)", false},
      {"-1234", "(1/234)", true},
      {"138502", "1385/02/14", true},
      {"1385/02", "1385/02/14", false},
      {"كتاب", "کتاب", true},
      {"علی", "علي رضا", true},
      {"۱۲", "112", true},
      {"12", "١٢", true},
      {"ABC", "xabcx", true},
      {"привет", "ПРИВЕТ", true},
      {"متن", "(متن)", true},
      {"متن", "مت/ن", true},
      {"اصف", "xا/صف", true},
      {"اصف", "صف", false},
      {"باژ", "بب/اژ", true},
      {"باژ", "(12) ب)اژ", true},

      {"a b", " a b ", true},
      {" a", " a", false},
      {"ab", "aab", true},
      {"ab", "a", false},
      {"(", "(a)", false},
      {"5", "(abc", false},
      {"-3", "-3", true},
      {"😀", "x😀", true},
      {"ی", "", false},
  };
  for (const SearchCase& expected : kCases) {
    EXPECT_EQ(CellSearch(expected.text).FoundIn(expected.cell), expected.found)
        << expected.text << " in " << expected.cell;
  }
}

TEST(QuickFind, PassesOverHiddenRowsOfACrossTable) {
  RandomReport report(3);
  Grid& grid = report.flxTranspose;
  grid.SetRows(5);
  grid.SetCols(3);
  for (std::int32_t row = 1; row < 5; ++row) grid.WriteCell(row, 1, "تهران");
  grid.SetRowHeight(1, 0);
  grid.SetRowHeight(2, 0);
  report.state.isTransposedResult = true;
  ReportContext context = report.Context();
  EXPECT_TRUE(QuickFind(context, "تهران", 1));
  EXPECT_EQ(grid.Row(), 3);
  EXPECT_EQ(report.flxMain.Row(), 1);
}

}  // namespace
}  // namespace vorek
