#include "grid/cross_table.h"

#include "grid/cross_table_click.h"
#include "support/random_report.h"
#include "support/steps/cross_table.h"

namespace vorek {
namespace {

// The texts, heights and back colours of a grid.
std::string Texts(const Grid& grid) {
  std::string all;
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      all += grid.TextMatrix(row, col) + "{" + std::to_string(grid.FormatAt(row, col).back_color) +
             "}|";
    }
    all += std::to_string(grid.RowHeight(row)) + "\n";
  }
  return all;
}

const std::vector<MemoryColumn> kLayoutColumns = {
    {"ColumnNumber", kInteger}, {"Alignment", kSmallInt},    {"Width", kInteger},
    {"MergeType", kInteger},    {"TransposeType", kInteger}, {"MakeSum", kBoolean}};

// A report with the roles of its columns: 1 spread, 2 base, 0 value.
void SetRoles(RandomReport& report, const std::vector<int>& roles) {
  std::vector<MemoryRow> rows;
  report.state.TransposeRowColumn = -1;
  report.state.TransposeColumns.clear();
  for (std::size_t i = 0; i < roles.size(); ++i) {
    const auto column = static_cast<std::int32_t>(i) + 1;
    rows.push_back({std::to_string(column), "4", "1000", "0", std::to_string(roles[i]), "0"});
    if (roles[i] == 1) report.state.TransposeRowColumn = column;
    if (roles[i] == 2) report.state.TransposeColumns.push_back(column);
  }
  report.database->Answer("tblVorekReportLayout", MakeResult(kLayoutColumns, rows));
  report.database->Answer("tblVorekReportTranspose", MakeResult(kLayoutColumns, {}));
}

TEST(CrossTable, IsWhatItsStepsMake) {
  int with_sub_rows = 0;
  for (unsigned seed = 1; seed <= 2000 && !testing::Test::HasFailure(); ++seed) {
    RandomReport fast(seed);
    RandomReport plain(seed);
    for (RandomReport* report : {&fast, &plain}) {
      report->Fill(seed % 2 == 0);
      std::vector<int> roles(static_cast<std::size_t>(report->flxMain.Cols()) - 1);
      for (int& role : roles) role = report->Below(3) == 0 ? 0 : 2;
      const std::size_t spread = report->Below(roles.size());
      // A sub-row needs a base row.
      roles[(spread + 1) % roles.size()] = 2;
      roles[spread] = 1;
      SetRoles(*report, roles);
    }
    ReportContext fast_context = fast.Context();
    ReportContext plain_context = plain.Context();
    ApplyTranspose(fast_context);
    if (!fast.state.isTransposedResult) continue;
    steps::FillTranspose(plain_context);
    EXPECT_EQ(Texts(fast.flxTranspose), Texts(plain.flxTranspose)) << "seed " << seed;
    EXPECT_EQ(Texts(fast.flxMain), Texts(plain.flxMain)) << "seed " << seed;
    EXPECT_TRUE(fast.flxTranspose.Visible());
    EXPECT_FALSE(fast.flxMain.Visible());
    if (fast.flxTranspose.TextMatrix(0, 0).empty()) ++with_sub_rows;
  }
  EXPECT_GT(with_sub_rows, 200);
}

class CrossTableTest : public testing::Test {
 protected:
  void Fill(const std::vector<MemoryColumn>& columns, const std::vector<MemoryRow>& rows,
            const std::vector<int>& roles) {
    report.database->Answer("rows", MakeResult(columns, rows));
    report.Fill(false);
    SetRoles(report, roles);
  }
  void Apply() {
    ReportContext context = report.Context();
    ApplyTranspose(context);
  }

  RandomReport report{1};
};

TEST_F(CrossTableTest, JoinsTheBaseTextsWithoutAnythingBetween) {
  Fill({{"A", kVarWChar}, {"B", kVarWChar}, {"ماه", kVarWChar}, {"مبلغ", kCurrency}},
       {{"ab", "c", "2", "1000"},
        {"a", "bc", "1", "-5"},
        {"x", "", "2", "7"},
        {"a", "bc", "2", "9"}},
       {2, 2, 1, 0});
  Apply();
  Grid& table = report.flxTranspose;
  ASSERT_EQ(table.Rows(), 3);
  EXPECT_EQ(table.TextMatrix(0, 3) + table.TextMatrix(0, 4), "12");
  // One key: the first row's texts, and for a cell the last row's value.
  EXPECT_EQ(table.TextMatrix(1, 1) + "|" + table.TextMatrix(1, 2), "a|bc");
  EXPECT_EQ(table.TextMatrix(1, 3) + "|" + table.TextMatrix(1, 4), "(5)|9");
  EXPECT_EQ(table.ColWidth(3), 1200);
  EXPECT_EQ(table.ColAlignment(3), 7);
  EXPECT_EQ(report.state.ReportDistributed, "نمايش معمولي");
}

TEST_F(CrossTableTest, TakesItsStoredLayoutAndSortsAfterwards) {
  Fill({{"A", kVarWChar}, {"ماه", kVarWChar}, {"N", kInteger}},
       {{"a", "1", "30"}, {"b", "1", "4"}, {"c", "1", "100"}}, {2, 1, 0});
  report.database->Answer("SortedAfterTransporting",
                          MakeResult({{"ColumnNumber", kInteger},
                                      {"Alignment", kInteger},
                                      {"Width", kInteger},
                                      {"SortedAfterTransporting", kBoolean}},
                                     {{"1", "7", "555", "0"},
                                      {"9", "7", "1", "1"},
                                      {std::nullopt, "7", "1", "1"},
                                      {"2", std::nullopt, "666", "1"}}));
  Apply();
  Grid& table = report.flxTranspose;
  EXPECT_EQ(table.ColWidth(1), 555);
  EXPECT_EQ(table.ColWidth(2), 666);
  EXPECT_EQ(table.TextMatrix(1, 0) + table.TextMatrix(1, 1), "1b");
  EXPECT_EQ(table.TextMatrix(3, 0) + table.TextMatrix(3, 1), "3c");
}

TEST_F(CrossTableTest, LeavesTheResultOnViewWhenItCantBeBuilt) {
  std::vector<MemoryRow> rows;
  for (int i = 0; i < 2501; ++i) rows.push_back({"a", std::to_string(i), "1"});
  Fill({{"A", kVarWChar}, {"شماره", kInteger}, {"N", kInteger}}, rows, {2, 1, 0});
  report.state.Title = "پهن";
  // As after a run of the same report that still had room.
  report.flxMain.SetVisible(false);
  report.flxTranspose.SetVisible(true);
  Apply();
  EXPECT_FALSE(report.flxTranspose.Visible());
  ASSERT_EQ(report.notices.told.size(), 1U);
  for (const char* part : {"گزارش 7 «پهن»", "ستون «شماره» 2501 مقدار"}) {
    EXPECT_NE(report.notices.told[0].find(part), std::string::npos) << report.notices.told[0];
  }
  EXPECT_TRUE(report.flxMain.Visible());
  EXPECT_FALSE(report.state.isTransposedResult);
  EXPECT_EQ(report.flxMain.Rows(), 2502);
  // Sub-rows without a base row to stand under.
  Fill({{"ماه", kVarWChar}, {"N", kInteger}, {"M", kInteger}}, {{"1", "2", "3"}}, {1, 0, 0});
  Apply();
  EXPECT_EQ(report.notices.told.back(), "اشکال|ستونهاي پايه به درستي انتخاب نشده است.");
  // Nothing to spread: no word, and the flag stays.
  Fill({{"ماه", kVarWChar}, {"N", kInteger}}, {{"1", "2"}}, {2, 0});
  Apply();
  EXPECT_EQ(report.notices.told.size(), 2U);
  EXPECT_TRUE(report.state.isTransposedResult);
  EXPECT_TRUE(report.flxMain.Visible());
}

TEST_F(CrossTableTest, AnswersClicksOnMarksAndHeaders) {
  Fill({{"A", kVarWChar}, {"ماه", kVarWChar}, {"N", kInteger}, {"M", kCurrency}},
       {{"a", "1", "30", "5"}, {"b", "1", "4", "6"}}, {2, 1, 0, 0});
  Apply();
  Grid& table = report.flxTranspose;
  ReportContext context = report.Context();
  const auto heights = [&] {
    std::string all;
    for (std::int32_t row = 1; row < table.Rows(); ++row) {
      all += table.TextMatrix(row, 0) + std::to_string(table.RowHeight(row)) + " ";
    }
    return all;
  };
  EXPECT_EQ(heights(), "+240 0 0 +240 0 0 ");
  ClickCrossTable(context, 1, 0);
  EXPECT_EQ(heights(), "-240 310 310 +240 0 0 ");
  ClickCrossTable(context, 4, 0);
  ClickCrossTable(context, 1, 0);
  EXPECT_EQ(heights(), "+240 0 0 -240 310 310 ");
  ClickCrossTable(context, 2, 0);
  ClickCrossTable(context, 1, 1);
  ClickCrossTable(context, 99, 0);
  ClickCrossTable(context, 0, -1);
  EXPECT_EQ(heights(), "+240 0 0 -240 310 310 ");
}

TEST_F(CrossTableTest, SortsByAHeaderInBothWays) {
  Fill({{"A", kVarWChar}, {"ماه", kVarWChar}, {"N", kInteger}},
       {{"a", "-5", "30"}, {"b", "-5", "4"}, {"c", "-5", "100"}}, {2, 1, 0});
  Apply();
  Grid& table = report.flxTranspose;
  ReportContext context = report.Context();
  const auto order = [&] {
    return table.TextMatrix(1, 1) + table.TextMatrix(2, 1) + table.TextMatrix(3, 1);
  };
  ClickCrossTable(context, 0, 2);
  EXPECT_EQ(order(), "bac");
  ClickCrossTable(context, 0, 2);
  EXPECT_EQ(order(), "cab");
  // The way is one for all columns.
  ClickCrossTable(context, 0, 1);
  EXPECT_EQ(order(), "abc");
  // A negative number is no outline.
  ClickCrossTable(context, 0, 2);
  EXPECT_EQ(table.TextMatrix(0, 2), "-5");
}

TEST_F(CrossTableTest, OpensAndClosesColumnsByTheirOutline) {
  Grid& table = report.flxTranspose;
  table.SetCols(8);
  const char* const headers[] = {"", "-1-2", "-1-2-1", "3-1-2-1", "+1-2-2", "+1-3", "+1-3-1", "x"};
  for (std::int32_t col = 0; col < 8; ++col) table.WriteCell(0, col, headers[col]);
  table.SetColWidth(0, 500);
  ReportContext context = report.Context();
  const auto widths = [&] {
    std::string all;
    for (std::int32_t col = 1; col < 8; ++col) {
      all += table.TextMatrix(0, col) + ":" + std::to_string(table.ColWidth(col)) + " ";
    }
    return all;
  };
  ClickCrossTable(context, 0, 1);
  EXPECT_EQ(widths(), "+1-2:1200 +1-2-1:0 3-1-2-1:0 +1-2-2:0 +1-3:1200 +1-3-1:1200 x:1200 ");
  ClickCrossTable(context, 0, 1);
  EXPECT_EQ(widths(), "-1-2:1200 +1-2-1:500 3-1-2-1:0 +1-2-2:0 +1-3:1200 +1-3-1:1200 x:1200 ");
  ClickCrossTable(context, 0, 5);
  EXPECT_EQ(table.TextMatrix(0, 5) + ":" + std::to_string(table.ColWidth(6)), "-1-3:500");
}

}  // namespace
}  // namespace vorek
