#include "grid/column_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace vorek {
namespace {

using Columns = std::vector<std::int32_t>;

class ColumnViewTest : public testing::Test {
 protected:
  ColumnViewTest() {
    grid.SetRows(2);
    grid.SetCols(6);
    for (std::int32_t col = 1; col < 6; ++col) grid.WriteCell(0, col, std::string(1, Letter(col)));
  }
  static char Letter(std::int32_t col) { return static_cast<char>('a' + col); }

  Grid grid{nullptr, "flx"};
  ColumnView view{grid};
};

TEST_F(ColumnViewTest, ShowsTheColumnsAsTheyAreWished) {
  EXPECT_EQ(view.Shown(), (Columns{1, 2, 3, 4, 5}));
  view.Move(5, -3);
  EXPECT_EQ(view.Shown(), (Columns{1, 5, 2, 3, 4}));
  view.Hide(2);
  EXPECT_EQ(view.Shown(), (Columns{1, 5, 3, 4}));
  EXPECT_TRUE(view.IsHidden(2));
  view.Move(5, 1);
  EXPECT_EQ(view.Shown(), (Columns{1, 3, 5, 4})) << "past the hidden one";
  view.Show(2);
  EXPECT_EQ(view.Shown(), (Columns{1, 2, 3, 5, 4}));
  view.Move(1, 100);
  EXPECT_EQ(view.Shown(), (Columns{2, 3, 5, 4, 1}));
  EXPECT_EQ(view.Between(1, 5), (Columns{5, 4, 1})) << "as it is seen";
  EXPECT_EQ(view.PlaceOf(4), 3);
  grid.SetColWidth(5, 0);
  view.Invalidate();
  EXPECT_EQ(view.Shown(), (Columns{2, 3, 4, 1})) << "the report's own hidden columns stay so";
}

TEST_F(ColumnViewTest, MeansAColumnByItsNumberAndHeader) {
  view.Hide(3);
  view.Move(1, 2);
  const ColumnWishes wishes = view.Wishes();
  grid.WriteCell(0, 3, "another");
  grid.SetCols(7);
  view.Invalidate();
  EXPECT_EQ(view.Shown(), (Columns{2, 4, 1, 5, 3, 6})) << "columns that came stand behind";
  EXPECT_FALSE(view.IsHidden(3));
  ColumnView other(grid);
  other.SetWishes(wishes);
  EXPECT_EQ(other.Shown(), view.Shown());
}

TEST_F(ColumnViewTest, LeavesAColumnToScroll) {
  view.FreezeTo(2);
  EXPECT_EQ(view.Frozen(), 2);
  view.FreezeTo(5);
  EXPECT_EQ(view.Frozen(), 4);
  view.FreezeTo(-1);
  EXPECT_EQ(view.Frozen(), 0);
  for (std::int32_t col = 1; col < 6; ++col) view.Hide(col);
  EXPECT_EQ(view.Shown(), (Columns{5})) << "the last one stays";
  EXPECT_EQ(view.Frozen(), 0);
}

// Whatever is wished, each column with a width is shown once or hidden.
TEST_F(ColumnViewTest, LosesNoColumn) {
  std::mt19937 random(7);
  const auto below = [&](int limit) {
    return static_cast<std::int32_t>(random() % static_cast<unsigned>(limit));
  };
  for (int step = 0; step < 3000; ++step) {
    const std::int32_t col = 1 + below(5);
    const int kind = below(4);
    if (kind == 0) view.Move(col, below(9) - 4);
    if (kind == 1) view.Hide(col);
    if (kind == 2) view.Show(col);
    if (kind == 3) view.FreezeTo(below(7) - 1);
    Columns all = view.Shown();
    for (std::int32_t each = 1; each < 6; ++each) {
      if (view.IsHidden(each)) all.push_back(each);
    }
    std::sort(all.begin(), all.end());
    ASSERT_EQ(all, (Columns{1, 2, 3, 4, 5})) << step;
    ASSERT_FALSE(view.Shown().empty());
    ASSERT_LT(view.Frozen(), static_cast<std::int32_t>(view.Shown().size()));
  }
}

}  // namespace
}  // namespace vorek
