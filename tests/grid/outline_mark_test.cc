#include "grid/outline_mark.h"

#include <gtest/gtest.h>

#include "grid/summary_label.h"

namespace vorek {
namespace {

struct MarkCase {
  Outline kind;
  std::int32_t row;
  std::int32_t col;
  const char* text;
  const char* beside;
  char sign;
  std::int32_t depth;
  bool in_outline;
};

TEST(OutlineMark, IsReadByTheKindOfTheOutline) {
  Grid grid(nullptr, "flx");
  grid.SetRows(5);
  grid.SetCols(6);
  const auto tree = Outline::kTree;
  const auto cross = Outline::kCrossTable;
  const std::vector<MarkCase> cases = {
      {tree, 3, 0, "3", "3", '\0', 0, true},
      {tree, 3, 0, "3+", "3", '+', 0, true},
      {tree, 3, 0, "3-", "3", '-', 0, true},
      {tree, 4, 0, "2-3+", "2-3", '+', 1, true},
      {tree, 4, 0, "2-3  ", "2-3", '\0', 1, true},
      {tree, 4, 0, "12-2-3-", "12-2-3", '-', 2, true},
      {tree, 4, 0, "مجموع", "مجموع", '\0', 0, false},
      {tree, 4, 0, "", "", '\0', 0, false},
      {tree, 4, 1, "3+", "3+", '\0', 0, false},
      {tree, 0, 0, "3+", "3+", '\0', 0, false},
      {cross, 2, 0, "+", "", '+', 0, true},
      {cross, 2, 0, "-", "", '-', 0, true},
      {cross, 2, 0, "2", "2", '\0', 0, false},
      {cross, 2, 1, "+", "+", '\0', 0, false},
      {cross, 0, 2, "+1-2", "1-2", '+', 0, true},
      {cross, 0, 2, "-1-2", "1-2", '-', 0, true},
      {cross, 0, 2, "-500", "-500", '\0', 0, false},
      {cross, 0, 2, "1-2", "1-2", '\0', 0, false},
      {cross, 0, 5, "+1-2", "+1-2", '\0', 0, false},  // the last column opens nothing
      {Outline::kNone, 3, 0, "3+", "3+", '\0', 0, false}};
  for (const MarkCase& c : cases) {
    grid.SetOutlineKind(c.kind);
    const OutlineMark mark = MarkOf(grid, c.row, c.col, c.text);
    EXPECT_EQ(mark.text, c.beside) << c.text;
    EXPECT_EQ(mark.sign, c.sign) << c.text;
    EXPECT_EQ(mark.depth, c.depth) << c.text;
    EXPECT_EQ(mark.in_outline, c.in_outline) << c.text << " in column " << c.col;
  }
}

TEST(SummaryRows, AreCountedAtTheEndAlone) {
  Grid grid(nullptr, "flx");
  grid.SetRows(4);
  const auto labelled = [&](std::initializer_list<const char*> labels) {
    std::int32_t row = 0;
    for (const char* const label : labels) grid.WriteCell(++row, 0, label);
    return TrailingSummaryRows(grid);
  };
  EXPECT_EQ(labelled({"1", "2", "3"}), 0);
  EXPECT_EQ(labelled({"1", "2", "مجموع"}), 1);
  EXPECT_EQ(labelled({"1", "ميانگين", "مجموع"}), 2);
  EXPECT_EQ(labelled({"مجموع", "2", "ميانگين"}), 1);
  EXPECT_EQ(labelled({"1", "مجموع", "3"}), 0);
  EXPECT_EQ(labelled({"1", "2", "مجموع "}), 0);
  EXPECT_EQ(labelled({"مجموع", "مجموع", "مجموع"}), 3);
}

TEST(SortMark, HoldsUntilTheRowsAreInAnotherOrder) {
  Grid grid(nullptr, "flx");
  grid.SetRows(4);
  grid.SetSortedBy({1, true});
  grid.WriteCell(1, 1, "b");
  grid.AddItem("4");
  EXPECT_EQ(grid.Get("SortedBy"), "1 descending");
  grid.Sort(1);
  EXPECT_EQ(grid.Get("SortedBy"), "0");
  grid.SetSortedBy({1, false});
  EXPECT_EQ(grid.Get("SortedBy"), "1 ascending");
  grid.Clear();
  EXPECT_EQ(grid.SortedBy(), SortMark{});
}

}  // namespace
}  // namespace vorek
