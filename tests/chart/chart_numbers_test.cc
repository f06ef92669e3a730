#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "chart/chart_axis.h"
#include "chart/chart_shares.h"
#include "chart/chart_thinning.h"

namespace vorek {
namespace {

constexpr FixedPoint kUnit = 10000;
constexpr FixedPoint kMost = std::numeric_limits<FixedPoint>::max();

std::string Told(const ChartAxis& axis, bool times) {
  ChartModel chart;
  chart.times = times;
  std::string text;
  for (const FixedPoint tick : axis.ticks) text += (text.empty() ? "" : " ") + chart.Text(tick);
  return text;
}

TEST(ChartAxis, HasRoundSteps) {
  struct Case {
    FixedPoint least, greatest;
    bool times, whole;
    int most;
    const char* ticks;
  };
  const Case cases[] = {
      {0, 10 * kUnit, false, true, 6, "0 2 4 6 8 10"},
      {0, 11 * kUnit, false, true, 6, "0 5 10 15"},
      {0, 3 * kUnit, false, true, 11, "0 1 2 3"},
      {0, 3 * kUnit, false, false, 11, "0 0.5 1 1.5 2 2.5 3"},
      {0, 22'894'639'295 * kUnit, false, true, 6,
       "0 5/000/000/000 10/000/000/000 15/000/000/000 20/000/000/000 25/000/000/000"},
      {-7 * kUnit, 12 * kUnit, false, true, 6, "(10) (5) 0 5 10 15"},
      {-5000, 5000, false, false, 6, "(0.5) 0 0.5"},
      {-12 * kUnit, -7 * kUnit, false, true, 7, "(12) (11) (10) (9) (8) (7)"},
      {101 * kUnit, 109 * kUnit, false, true, 6, "100 102 104 106 108 110"},
      {0, 95 * kUnit, true, true, 6, "00:00 00:30 01:00 01:30 02:00"},
      {0, 20 * kUnit, true, true, 6, "00:00 00:05 00:10 00:15 00:20"},
      {0, 7000 * kUnit, true, true, 6, "00:00 50:00 100:00 150:00"},
      {0, 0, false, true, 6, "0 1"},
      {5 * kUnit, 5 * kUnit, false, true, 6, "0 1 2 3 4 5"},
      {-5 * kUnit, -5 * kUnit, false, true, 6, "(5) (4) (3) (2) (1) 0"},
      {0, 1, false, false, 6, "0 0.0001"},
  };
  for (const Case& c : cases) {
    const ChartAxis axis = MakeAxis(c.least, c.greatest, c.times, c.whole, c.most);
    EXPECT_EQ(Told(axis, c.times), c.ticks) << c.least << " " << c.greatest;
  }
}

// The ends lie around the values, no more ticks than asked for, equal steps, up to the last values
// that a cell can hold.
TEST(ChartAxis, HoldsAllValues) {
  std::mt19937_64 random(5);
  for (int turn = 0; turn < 20'000; ++turn) {
    const auto shift = random() % 63;
    auto least = static_cast<FixedPoint>(random()) >> shift;
    auto greatest = static_cast<FixedPoint>(random()) >> (random() % 63);
    if (turn % 50 == 0) greatest = kMost;
    if (turn % 70 == 0) least = -kMost;
    if (least > greatest) std::swap(least, greatest);
    const int most = 3 + static_cast<int>(random() % 10);
    const ChartAxis axis = MakeAxis(least, greatest, turn % 3 == 0, turn % 2 == 0, most);
    ASSERT_LE(axis.low, least);
    ASSERT_GE(axis.high, greatest);
    ASSERT_LE(axis.ticks.size(), static_cast<std::size_t>(most));
    ASSERT_TRUE(std::is_sorted(axis.ticks.begin(), axis.ticks.end()));
    for (std::size_t i = 2; i < axis.ticks.size(); ++i) {
      ASSERT_EQ(axis.ticks[i] - axis.ticks[i - 1], axis.ticks[1] - axis.ticks[0]);
    }
    ASSERT_GE(axis.Part(least), 0);
    ASSERT_LE(axis.Part(greatest), 1);
  }
}

std::vector<ChartValue> RandomValues(std::mt19937& random, std::size_t count) {
  std::vector<ChartValue> values(count);
  for (ChartValue& value : values) {
    if (random() % 5 != 0) value = static_cast<FixedPoint>(random() % 1000) - 500;
  }
  return values;
}

// Held against a plain reading: each run's extremes are there, in order, and no more than allowed.
TEST(ChartThinning, KeepsExtremes) {
  std::mt19937 random(7);
  for (int turn = 0; turn < 2000; ++turn) {
    const std::size_t count = random() % 300;
    const std::size_t most = 2 + random() % 60;
    const std::vector<ChartValue> low = RandomValues(random, count);
    const std::vector<ChartValue> high = turn % 2 == 0 ? low : RandomValues(random, count);
    const std::vector<std::uint32_t> kept = Thinned(low, high, most);
    ASSERT_LE(kept.size(), most);
    ASSERT_TRUE(std::is_sorted(kept.begin(), kept.end()));
    ASSERT_EQ(std::adjacent_find(kept.begin(), kept.end()), kept.end());
    if (count <= most) {
      ASSERT_EQ(kept.size(), count);
      continue;
    }
    const std::size_t runs = most / 2;
    for (std::size_t run = 0; run < runs; ++run) {
      const std::size_t begin = run * count / runs;
      const std::size_t end = (run + 1) * count / runs;
      ChartValue least, greatest, kept_least, kept_greatest;
      bool any = false;
      for (std::size_t at = begin; at < end; ++at) {
        const bool stays = std::binary_search(kept.begin(), kept.end(), at);
        any = any || stays;
        if (low[at]) least = std::min(least.value_or(kMost), *low[at]);
        if (high[at]) greatest = std::max(greatest.value_or(-kMost), *high[at]);
        if (stays && low[at]) kept_least = std::min(kept_least.value_or(kMost), *low[at]);
        if (stays && high[at]) {
          kept_greatest = std::max(kept_greatest.value_or(-kMost), *high[at]);
        }
      }
      ASSERT_TRUE(any);
      ASSERT_EQ(kept_least, least);
      ASSERT_EQ(kept_greatest, greatest);
    }
  }
}

ChartModel Sales(std::vector<ChartValue> values) {
  ChartModel chart;
  for (std::size_t i = 0; i < values.size(); ++i) {
    chart.categories.emplace_back(1, static_cast<char>('a' + i));
  }
  chart.series.push_back({"فروش", std::move(values)});
  return chart;
}

TEST(ChartShares, AreOrderedAndJoined) {
  const ChartModel chart =
      Sales({10 * kUnit, std::nullopt, 50 * kUnit, 0, 10 * kUnit, 25 * kUnit, 5 * kUnit});
  std::string told;
  for (const ChartShare& share : SharesOf(chart, 0, 4)) {
    told += share.name + "=" + chart.Text(share.total) + "=" + PercentText(share.part) + " ";
  }
  EXPECT_EQ(told, "c=50=50.0% f=25=25.0% a=10=10.0% ساير (2)=15=15.0% ");
  EXPECT_EQ(SharesOf(chart, 0, 5).size(), 5U);
  // More than a fixed-point value together.
  const ChartModel large = Sales({kMost, kMost, kMost});
  EXPECT_EQ(PercentText(SharesOf(large, 0, 2)[1].part), "66.7%");
}

TEST(ChartModel, RefusesWhatAKindCannotShow) {
  EXPECT_EQ(Sales({1, 2}).Refusal(ChartKind::kShares), "");
  EXPECT_EQ(Sales({kUnit, -1234 * kUnit}).Refusal(ChartKind::kShares),
            "نمودار سهم مقدار منفي را نشان نمي دهد: «فروش»، «b»: (1/234)");
  EXPECT_EQ(Sales({0, std::nullopt}).Refusal(ChartKind::kShares),
            "جمع «فروش» صفر است و سهمي ندارد.");
  ChartModel heap = Sales({kMost, 5});
  EXPECT_EQ(heap.Refusal(ChartKind::kStackedBars), "");
  heap.series.push_back({"خريد", {-kMost, 1}});
  EXPECT_EQ(heap.Refusal(ChartKind::kStackedBars), "") << "either side of zero";
  heap.series.push_back({"سود", {1, 1}});
  EXPECT_EQ(heap.Refusal(ChartKind::kStackedBars),
            "جمع مقدارهاي «a» بزرگتر از آن است که روي هم رسم شود.");
  EXPECT_EQ(heap.Refusal(ChartKind::kBars), "");
}

TEST(ChartModel, HeapsUpWhatIsShown) {
  ChartModel chart = Sales({1 * kUnit, -2 * kUnit, std::nullopt});
  chart.series.push_back({"خريد", {10 * kUnit, -20 * kUnit, std::nullopt}});
  chart.series.push_back({"سود", {-100 * kUnit, 200 * kUnit, std::nullopt}});
  const ChartHeaps all = HeapsOf(chart, {true, true, true});
  EXPECT_EQ(all.high[0], 11 * kUnit);
  EXPECT_EQ(all.low[0], -100 * kUnit);
  EXPECT_EQ(all.low[1], -22 * kUnit);
  EXPECT_EQ(all.high[2], std::nullopt);
  EXPECT_EQ(HeapsOf(chart, {true, false, true}).high[0], 1 * kUnit);
  // The axis is as long as the heaps, bars begin at zero, and lines where their values are.
  const auto ticks = [&](ChartKind kind, const std::vector<bool>& shown) {
    return Told(AxisOf(chart, kind, shown, 6), false);
  };
  EXPECT_EQ(ticks(ChartKind::kStackedBars, {true, true, false}), "(30) (20) (10) 0 10 20");
  EXPECT_EQ(ticks(ChartKind::kBars, {true, false, false}), "(2) (1) 0 1");
  chart.series[0].values = {11 * kUnit, 12 * kUnit, std::nullopt};
  EXPECT_EQ(ticks(ChartKind::kLines, {true, false, false}), "11 12");
  EXPECT_EQ(ticks(ChartKind::kBars, {true, false, false}), "0 5 10 15");
  EXPECT_EQ(ticks(ChartKind::kLines, {false, false, false}), "0 1");
}

}  // namespace
}  // namespace vorek
