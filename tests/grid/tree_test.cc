#include "support/steps/tree.h"

#include "grid/tree_rows.h"
#include "grid/tree_sort.h"
#include "support/random_report.h"

namespace vorek {
namespace {

// A tree of rows (ID, PARENTID, name, amount) whose top level is on view.
class RandomTree : public RandomReport {
 public:
  explicit RandomTree(unsigned seed, bool own_ancestors = false) : RandomReport(seed) {
    std::vector<MemoryRow> rows;
    const std::size_t count = 3 + Below(25);
    for (std::size_t id = 1; id <= count; ++id) {
      const bool top = Below(3) == 0 || id == 1;
      std::optional<std::string> parent;
      if (!top) parent = std::to_string(1 + Below(own_ancestors ? count : id - 1));
      rows.push_back({std::to_string(id), parent,
                      Pick({"ب", "الف", "12", "7", "abc", "", "1/000", "100"}),
                      std::to_string(static_cast<int>(Below(3000)) - 200)});
    }
    database->Answer(
        "rows",
        MakeResult(
            {{"ID", kInteger}, {"ParentID", kInteger}, {"نام", kVarWChar}, {"مبلغ", kCurrency}},
            rows));
    Recordset& query = process.dten().rssqlQuery;
    query.SetFilter("ParentID = NULL");
    Fill(false);
    state.IDColumn = 0;
    state.ParentIDColumn = 1;
    state.MakeTreeFlag = true;
    state.QuerySource = "rows";
    query.SetFilter("");
    ReportContext report = Context();
    MarkTopRows(report, query);
  }
};

TEST(TreeRows, OpenAndCloseAsTheirStepsDo) {
  for (unsigned seed = 1; seed <= 1500 && !testing::Test::HasFailure(); ++seed) {
    RandomTree fast(seed);
    RandomTree plain(seed);
    for (int click = 0; click < 8; ++click) {
      const auto row = static_cast<std::int32_t>(
          1 + fast.Below(static_cast<std::size_t>(fast.flxMain.Rows() - 1)));
      const auto column = static_cast<std::int32_t>(fast.Below(5));
      ReportContext fast_context = fast.Context();
      ReportContext plain_context = plain.Context();
      const char mark = TreeMark(fast.flxMain, row);
      if (click % 3 == 2) {
        SortTree(fast_context, fast.flxMain, column);
        steps::SortTops(plain_context, column);
      } else {
        EXPECT_EQ(ClickTreeMark(fast_context, row), mark == '+' || mark == '-');
        std::int32_t at = row;
        if (mark == '+') steps::Expand(plain_context, row);
        if (mark == '-') steps::Collapse(plain_context, at);
      }
      EXPECT_EQ(RandomReport::Picture(fast.flxMain), RandomReport::Picture(plain.flxMain))
          << "seed " << seed << ", click " << click << ", row " << row << ", column " << column;
    }
  }
}

TEST(TreeRows, WhoseRowsAreTheirOwnAncestorsEndInOrder) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    RandomTree tree(seed, true);
    ReportContext context = tree.Context();
    const std::int32_t tops = tree.flxMain.Rows();
    for (int click = 0; click < 12; ++click) {
      ClickTreeMark(context, static_cast<std::int32_t>(1 + tree.Below(static_cast<std::size_t>(
                                                               tree.flxMain.Rows() - 1))));
    }
    for (std::int32_t row = tree.flxMain.Rows() - 1; row >= 1; --row) {
      if (row < tree.flxMain.Rows() && TreeMark(tree.flxMain, row) == '-') {
        CollapseTreeRow(context, row);
      }
    }
    EXPECT_EQ(tree.flxMain.Rows(), tops) << "seed " << seed;
  }
}

TEST(TreeRows, OpenWithoutAStatementARow) {
  RandomTree tree(5);
  ReportContext context = tree.Context();
  const std::size_t before = tree.database->Texts().size();
  ExpandTreeRow(context, 1);
  EXPECT_EQ(tree.database->Texts().size(), before + 1);
}

TEST(TreeRows, GetPalerAndHaveLevels) {
  EXPECT_EQ(ShadeColor(16243138, 1), 0xFFEDD6);
  EXPECT_EQ(ShadeColor(0xFFEDD6, 1), 0xFFFFEA);
  EXPECT_EQ(ShadeColor(0x0A1400, -1), 0);
  const struct {
    const char* text;
    std::int32_t level;
  } cases[] = {{"12", 1}, {"-3", 1}, {"+1-2", 2}, {"-1-2-3", 3}, {"abc", 1}, {"", 1}};
  for (const auto& c : cases) EXPECT_EQ(TreeLevel(c.text), c.level) << c.text;
}

TEST(TreeSort, SelectsAsItsStepsDoWhereTheComparisonIsNoOrder) {
  EXPECT_TRUE(TreeCompareLess("60", "500"));
  EXPECT_TRUE(TreeCompareLess("500", "55/000"));
  EXPECT_TRUE(TreeCompareLess("55/000", "60"));
  EXPECT_TRUE(TreeCompareGreater("55/000", "500"));
  EXPECT_FALSE(TreeCompareGreater("7", "7"));
  for (unsigned seed = 1; seed <= 400 && !testing::Test::HasFailure(); ++seed) {
    RandomReport fast(seed);
    RandomReport plain(seed);
    for (RandomReport* report : {&fast, &plain}) {
      Grid& grid = report->flxMain;
      grid.SetRows(static_cast<std::int32_t>(2 + report->Below(80)));
      grid.SetCols(4);
      grid.WriteCell(0, 1, "ID");
      grid.WriteCell(0, 2, "PARENTID");
      report->state.IDColumn = 0;
      report->state.ParentIDColumn = 1;
      for (std::int32_t row = 1; row < grid.Rows(); ++row) {
        if (row > 1 && report->Below(4) == 0) grid.WriteCell(row, 2, "1");
        const std::size_t number = report->Below(400);
        grid.WriteCell(row, 0, std::to_string(row));
        grid.WriteCell(row, 3,
                       report->Pick({std::to_string(number), std::to_string(number) + "/000", "",
                                     "متن", "(" + std::to_string(number) + ")"}));
      }
    }
    for (int click = 0; click < 3; ++click) {
      ReportContext fast_context = fast.Context();
      ReportContext plain_context = plain.Context();
      SortTree(fast_context, fast.flxMain, click == 2 ? 0 : 3);
      steps::SortTops(plain_context, click == 2 ? 0 : 3);
      for (std::int32_t row = 0; row < fast.flxMain.Rows(); ++row) {
        EXPECT_EQ(fast.flxMain.TextMatrix(row, 0), plain.flxMain.TextMatrix(row, 0))
            << "seed " << seed << ", click " << click << ", row " << row;
      }
    }
  }
}

}  // namespace
}  // namespace vorek
