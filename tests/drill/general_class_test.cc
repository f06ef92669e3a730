#include "drill/general_class.h"

#include <gtest/gtest.h>

#include <random>

namespace vorek {
namespace {

class SetClock : public Clock {
 public:
  DateTime Now() const override { return now; }
  DateTime now{2026, 11, 24, 10, 30, 0};
};

class ScrollKeeper : public testing::Test {
 protected:
  ScrollKeeper() {
    grid.SetCols(30);
    grid.on_scroll = [this] { keeper.Scroll(grid); };
    keeper.Add(grid);
  }

  SetClock clock;
  Grid grid{nullptr, "flxMain"};
  GeneralClass keeper{clock};
};

TEST_F(ScrollKeeper, TakesBackAScrollOfTheSameSecondAlone) {
  grid.SetLeftCol(4);
  clock.now.second = 1;
  keeper.MouseDown(grid);
  EXPECT_EQ(grid.LeftCol(), 4);
  grid.ScrollByUser(1, 9);
  keeper.MouseDown(grid);
  EXPECT_EQ(grid.LeftCol(), 4);
  grid.SetLeftCol(7);
  clock.now.hour = 11;
  keeper.MouseDown(grid);
  EXPECT_EQ(grid.LeftCol(), 4);
  grid.SetLeftCol(8);
  clock.now.minute = 31;
  keeper.MouseDown(grid);
  EXPECT_EQ(grid.LeftCol(), 8);
}

TEST_F(ScrollKeeper, LeavesAGridAloneThatWasntAddedAndAPlaceThatIsGone) {
  Grid other(nullptr, "flxOther");
  other.SetCols(10);
  other.SetLeftCol(5);
  keeper.Scroll(other);
  keeper.MouseDown(other);
  keeper.AddReport(other, 7);
  EXPECT_EQ(other.LeftCol(), 5);
  grid.SetLeftCol(20);
  grid.SetCols(3);
  clock.now.second = 5;
  keeper.MouseDown(grid);
  EXPECT_EQ(grid.LeftCol(), 2);
  keeper.Clear();
  grid.SetLeftCol(1);
  keeper.MouseDown(grid);
  EXPECT_EQ(grid.LeftCol(), 1);
}

// The record as its rules tell it.
struct PlainRecord {
  int cur = 1;
  int prev = 1;
  int second = 0;
};

TEST_F(ScrollKeeper, KeepsWhatItsStepsKeep) {
  std::mt19937 random(5);
  PlainRecord plain;
  int shown = 1;
  for (int step = 0; step < 5000; ++step) {
    clock.now.second = static_cast<int>(random() % 3);
    clock.now.minute = static_cast<int>(random() % 2);
    const int now = clock.now.minute * 60 + clock.now.second;
    if (random() % 2 == 0) {
      const auto to = static_cast<std::int32_t>(1 + random() % 20);
      if (to == shown) continue;
      grid.SetLeftCol(to);
      plain = {to, plain.cur, now};
      shown = to;
      continue;
    }
    keeper.MouseDown(grid);
    const int to = now == plain.second ? plain.prev : plain.cur;
    if (to != shown) plain.second = now;
    plain.cur = plain.prev = shown = to;
    ASSERT_EQ(grid.LeftCol(), shown) << step;
  }
}

}  // namespace
}  // namespace vorek
