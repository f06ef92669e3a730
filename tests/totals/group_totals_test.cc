#include "totals/group_totals.h"

#include <map>

#include "support/random_report.h"
#include "support/steps/group_totals.h"
#include "totals/group_reports.h"
#include "totals/summary_rows.h"

namespace vorek {
namespace {

// The reports as their rules have them, apart from the table of the system.
const std::map<std::int32_t, steps::GroupShape> kShapes = {
    {2844, {11, 0, 0, {11, 12, 16, 17}, {}, {}}},
    {2847, {5, 0, 0, {5, 6, 9, 10}, {}, {}}},
    {2851, {4, 2, 0, {8, 9, 10, 11}, {4, 5, 6, 7}, {}}},
    {2852, {7, 3, 3, {8, 9, 10, 11}, {}, {}}},
    {2853, {7, 3, 3, {12, 13, 14, 15}, {8, 9, 10, 11}, {}}},
    {2857, {4, 2, 0, {4, 5, 6, 7}, {}, {}}},
    {2858, {10, 2, 14, {10, 11, 12, 13}, {}, {}}},
    {2859, {10, 2, 14, {16, 17, 18, 19}, {10, 11, 12, 13}, {}}},
};

std::vector<std::int32_t> CompanionsOf(std::int32_t report, std::int32_t g) {
  const auto with = [&](std::vector<std::int32_t> right, std::vector<std::int32_t> left) {
    if (std::count(right.begin(), right.end(), g) > 0) return std::vector<std::int32_t>{g + 1};
    if (std::count(left.begin(), left.end(), g) > 0) return std::vector<std::int32_t>{g - 1};
    return std::vector<std::int32_t>{};
  };
  switch (report) {
    case 2844:
      return with({1, 6, 8}, {5, 7, 9});
    case 2847:
      return with({1}, {});
    case 2852:
    case 2853:
      if (g == 4) return {3, 2, 1};
      return with({1, 3}, {2});
    case 2858:
    case 2859:
      if (g == 7) return {6, 5, 4, 3, 2};
      return with({1, 3, 5}, {2, 4, 6});
    default:
      return {};
  }
}

// A ledger made at random, twice alike for each seed.
class Ledger : public RandomReport {
 public:
  Ledger(unsigned seed, std::int32_t report) : RandomReport(seed) {
    std::vector<MemoryColumn> columns;
    const std::size_t count = 19 + Below(2);
    for (std::size_t i = 0; i < count; ++i) {
      // What the rows may be sorted by holds no digit groups, which a sort would read as strokes.
      const bool sorted_by = i < 10 || i == 13;
      const int type = sorted_by ? (Below(2) == 0 ? kInteger : kVarWChar)
                                 : (Below(2) == 0 ? kCurrency : kDouble);
      columns.push_back({"ستون " + std::to_string(i), type});
    }
    std::vector<MemoryRow> rows;
    for (std::size_t row = 1 + Below(12); row > 0; --row) {
      MemoryRow cells;
      for (const MemoryColumn& column : columns) cells.push_back(CellFor(column.ado_type));
      cells[0] = "1";
      rows.push_back(cells);
    }
    database->Answer("rows", MakeResult(columns, rows));
    state.ReportID = report;
    Fill(seed % 3 == 0);
    process.main.ReportCache.clear();
  }

 private:
  std::optional<std::string> CellFor(int type) {
    if (Below(9) == 0) return std::nullopt;
    if (type == kVarWChar) return Pick({"الف", "ب", "ب ", "12", "(5)"});
    if (type == kInteger) return Pick({"1234567", "2", "1000", "98765432", "2"});
    return Pick({"1500", "-0.5", "2500.25", "-3000", "0", "123456789"});
  }
};

TEST(GroupTotals, AreWhatTheirStepsMake) {
  for (unsigned seed = 1; seed <= 2000 && !testing::Test::HasFailure(); ++seed) {
    auto with = kShapes.begin();
    std::advance(with, seed % kShapes.size());
    Ledger fast(seed, with->first);
    Ledger plain(seed, with->first);
    const bool keep = seed % 2 == 0;
    const bool prepare = seed % 5 != 0;
    const auto column = static_cast<std::int32_t>(1 + seed % 11);
    for (Ledger* ledger : {&fast, &plain}) {
      ReportContext context = ledger->Context();
      if (seed % 4 == 0) {
        context.flxMain.SetCol(12);
        MakeSumRow(context);
      }
      if (seed % 7 == 0) {
        context.flxMain.SetCol(11);
        MakeAvgRow(context);
      }
      context.flxMain.SetCol(column);
    }
    ReportContext fast_context = fast.Context();
    ReportContext plain_context = plain.Context();
    MakeGroupTotals(fast_context, keep, prepare);
    steps::GroupShape shape = with->second;
    shape.companions = CompanionsOf(with->first, column);
    steps::GroupTotals(plain_context, shape, keep, prepare);
    EXPECT_EQ(RandomReport::Picture(fast.flxMain), RandomReport::Picture(plain.flxMain))
        << "seed " << seed << ", report " << with->first << ", column " << column;
  }
}

// The subtotal of a group stays what it is when an amount fills all the digits that a cell can
// hold, and one without a number in it counts nothing.
TEST(GroupTotals, AreExactAndPassOverWhatIsNoNumber) {
  Ledger ledger(1, 2857);
  Grid& grid = ledger.flxMain;
  grid.SetRows(4);
  for (std::int32_t row = 1; row < 4; ++row) {
    for (std::int32_t col = 1; col < 8; ++col) grid.WriteCell(row, col, "ب");
    grid.WriteCell(row, 4, "400/000/000/000/000.0001");
  }
  for (std::int32_t row = 1; row < 3; ++row) grid.WriteCell(row, 5, "600/000/000/000/000");
  ReportContext context = ledger.Context();
  grid.SetCol(1);
  MakeGroupTotals(context, true, false);
  ASSERT_EQ(grid.Rows(), 5);
  EXPECT_EQ(grid.TextMatrix(4, 4), "1/200/000/000/000/000.0003");
  EXPECT_EQ(grid.TextMatrix(4, 5), "1/200/000/000/000/000");
  EXPECT_EQ(grid.TextMatrix(4, 6), "0.0003");
  EXPECT_EQ(grid.TextMatrix(4, 7), "0");
}

// A report with fewer columns than its subtotals need says so and is left as it is.
TEST(GroupTotals, AreRefusedWhereColumnsAreMissing) {
  Ledger ledger(3, 2859);
  ledger.state.QueryFields.resize(17);
  ledger.flxMain.SetCol(7);
  const std::string before = RandomReport::Picture(ledger.flxMain);
  ReportContext context = ledger.Context();
  try {
    MakeGroupTotals(context, true, true);
    ADD_FAILURE();
  } catch (const Error& error) {
    EXPECT_NE(error.Description().find("2859"), std::string::npos);
    EXPECT_NE(error.Description().find("19"), std::string::npos);
  }
  EXPECT_EQ(RandomReport::Picture(ledger.flxMain), before);
}

TEST(GroupTotals, AreDroppedWhileTheirRowsAreThere) {
  Ledger ledger(4, 2857);
  Grid& grid = ledger.flxMain;
  ReportContext context = ledger.Context();
  grid.SetCol(1);
  const std::int32_t rows = grid.Rows();
  MakeGroupTotals(context, true, false);
  EXPECT_GT(grid.Rows(), rows);
  EXPECT_TRUE(DropGroupTotals(grid));
  EXPECT_EQ(grid.Rows(), rows);
  grid.SetCol(1);
  MakeGroupTotals(context, false, false);
  EXPECT_FALSE(DropGroupTotals(grid));
}

}  // namespace
}  // namespace vorek
