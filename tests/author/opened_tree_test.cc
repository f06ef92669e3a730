#include "author/opened_tree.h"

#include <optional>

#include "grid/tree_rows.h"
#include "support/random_report.h"
#include "text/utf8.h"

namespace vorek {
namespace {

// Rows of an ID and a parent, whose top level is on view.
class Tree : public RandomReport {
 public:
  explicit Tree(const std::vector<MemoryRow>& rows, bool calculated = false) : RandomReport(1) {
    database->Answer("rows", MakeResult({{"ID", kInteger}, {"ParentID", kInteger}}, rows));
    Recordset& query = process.dten().rssqlQuery;
    query.SetFilter("ParentID = NULL");
    Fill(calculated);
    state.IDColumn = 0;
    state.ParentIDColumn = 1;
    state.QuerySource = "rows";
    query.SetFilter("");
    ReportContext report = Context();
    MarkTopRows(report, query);
  }

  // What the opening tells, and the row numbers and IDs then.
  std::string Opened(const TreeLimits& limits = {}) {
    ReportContext report = Context();
    std::string all = OpenTree(report, limits) + "|";
    for (std::int32_t row = 1; row < flxMain.Rows(); ++row) {
      all += " " + text::Trim(flxMain.TextMatrix(row, 0)) + ":" + flxMain.TextMatrix(row, 1);
    }
    return all;
  }
};

TEST(OpenedTree, HoldsAllLevelsUpToItsLimits) {
  const std::vector<MemoryRow> rows = {{"1", std::nullopt}, {"2", "1"},          {"3", "2"},
                                       {"4", "1"},          {"5", std::nullopt}, {"6", "5"}};
  const struct {
    TreeLimits limits;
    const char* opened;
  } cases[] = {
      {{}, "| 1-:1 1-1-:2 1-1-1:3 2-1:4 2-:5 1-2:6"},
      {{.levels = 1}, "rows stay closed: more than 1 levels| 1-:1 1-1+:2 2-1:4 2-:5 1-2:6"},
      {{.openings = 1}, "rows stay closed: more than 1 opened rows| 1-:1 1-1+:2 2-1:4 2+:5"},
      {{.rows = 5}, "rows stay closed: more than 5 rows| 1-:1 1-1+:2 2-1:4 2+:5"},
  };
  for (const auto& c : cases) EXPECT_EQ(Tree(rows).Opened(c.limits), c.opened) << c.opened;
  EXPECT_EQ(Tree({{"1", std::nullopt}}).Opened(), "| 1:1");
}

// C1*2-P2: also for the one row that was opened.
TEST(OpenedTree, CalculatesTheRowsThatItOpened) {
  Tree tree({{"1", std::nullopt}, {"2", "1"}}, true);
  EXPECT_EQ(tree.Opened(), "| 1-:1 1-1:2");
  EXPECT_EQ(tree.flxMain.Cols(), 4);
  EXPECT_EQ(tree.flxMain.TextMatrix(1, 3) + "|" + tree.flxMain.TextMatrix(2, 3), "2|4");
}

TEST(OpenedTree, EndsWhereARowIsItsOwnAncestor) {
  const std::string opened =
      Tree({{"1", std::nullopt}, {"2", "1"}, {"2", "2"}}).Opened({.levels = 3});
  EXPECT_EQ(opened.substr(0, opened.find('|')), "rows stay closed: more than 3 levels");
}

}  // namespace
}  // namespace vorek
