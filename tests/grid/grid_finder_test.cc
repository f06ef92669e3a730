#include "grid/grid_finder.h"

#include "support/random_report.h"
#include "text/utf8.h"

namespace vorek {
namespace {

TEST(GridFinder, FindsWhatEachCellHolds) {
  std::size_t found = 0;
  for (unsigned seed = 1; seed <= 400; ++seed) {
    RandomReport report(seed);
    report.Fill(seed % 2 == 0);
    report.Disturb();
    Grid& grid = report.flxMain;
    if (grid.Cols() > 2 && seed % 3 == 0) grid.SetColWidth(2, 0);
    const std::string text = report.Pick({"1", "12", "علی", "ali", "1404/01", "(3", "4.5", "ن"});
    GridFinder finder(grid, text);
    while (!finder.Step(3)) {
    }
    std::string wanted = text;
    std::erase_if(wanted, [](char c) { return c == '/' || c == '('; });
    std::vector<GridFinder::Hit> plain;
    for (std::int32_t row = 1; row < grid.Rows(); ++row) {
      for (std::int32_t col = 1; col < grid.Cols(); ++col) {
        if (grid.RowHeight(row) == 0 || grid.ColWidth(col) == 0) continue;
        if (CellSearch(wanted).FoundIn(grid.TextMatrix(row, col))) plain.push_back({row, col});
      }
    }
    EXPECT_EQ(finder.Hits(), plain) << seed << " " << text;
    found += plain.size();
  }
  EXPECT_GT(found, 400U);
}

TEST(GridFinder, GoesRoundInBothDirections) {
  Grid grid(nullptr, "flx");
  grid.SetRows(4);
  grid.SetCols(3);
  grid.WriteCell(1, 2, "x");
  grid.WriteCell(3, 1, "x");
  GridFinder finder(grid, "x");
  EXPECT_TRUE(finder.Step(100));
  const auto at = [&](std::int32_t row, std::int32_t col, bool forward) {
    return finder.NextFrom({row, col}, forward).value_or(99);
  };
  EXPECT_EQ(at(1, 1, true), 0U);
  EXPECT_EQ(at(1, 2, true), 1U);
  EXPECT_EQ(at(3, 1, true), 0U);
  EXPECT_EQ(at(3, 1, false), 0U);
  EXPECT_EQ(at(1, 2, false), 1U);
  EXPECT_EQ(at(2, 0, false), 0U);
  GridFinder none(grid, "y");
  none.Step(100);
  EXPECT_FALSE(none.NextFrom({1, 1}, true));
  EXPECT_FALSE(none.NextFrom({1, 1}, false));
  EXPECT_FALSE(GridFinder::CanFind(" / "));
}

}  // namespace
}  // namespace vorek
