#include "export/chart_sheet.h"

#include <gtest/gtest.h>

#include "vorek/error.h"

namespace vorek {
namespace {

constexpr FixedPoint kUnit = 10000;

// Sales and returns of three months; the second month has no returns.
ChartModel Months() {
  ChartModel chart;
  chart.title = "فروش";
  chart.category_title = "ماه";
  chart.categories = {"فروردين", "ارديبهشت", "خرداد"};
  chart.series = {{"خالص", {1500 * kUnit, 20 * kUnit, 300 * kUnit}},
                  {"برگشت", {12 * kUnit + 5000, std::nullopt, -7 * kUnit - 1}}};
  return chart;
}

TEST(ChartSheet, HoldsTheNumbersExactly) {
  const SheetChart sheet = SheetChartOf(Months(), ChartKind::kBars);
  ASSERT_EQ(sheet.series.size(), 2U);
  EXPECT_EQ(sheet.series[0].values, (std::vector<std::string>{"1500", "20", "300"}));
  EXPECT_EQ(sheet.series[1].values, (std::vector<std::string>{"12.5", "", "-7.0001"}));
  EXPECT_EQ(sheet.number_format, "#,##0.0000;(#,##0.0000)");
  EXPECT_EQ(sheet.categories, Months().categories);
}

TEST(ChartSheet, LeavesHiddenSeriesOut) {
  const SheetChart sheet = SheetChartOf(Months(), ChartKind::kLines, {true, false});
  ASSERT_EQ(sheet.series.size(), 1U);
  EXPECT_EQ(sheet.series[0].name, "خالص");
  EXPECT_EQ(sheet.number_format, "#,##0;(#,##0)");
  EXPECT_THROW(SheetChartOf(Months(), ChartKind::kLines, {false, false}), Error);
}

TEST(ChartSheet, SharesAreThoseOfThePicture) {
  const SheetChart sheet = SheetChartOf(Months(), ChartKind::kShares, {true, false, true}, 0);
  EXPECT_EQ(sheet.categories, (std::vector<std::string>{"فروردين", "ارديبهشت"}));
  EXPECT_EQ(sheet.series.at(0).values, (std::vector<std::string>{"1500", "20"}));
  // The other one has a value below zero.
  EXPECT_THROW(SheetChartOf(Months(), ChartKind::kShares, {}, 1), Error);
}

TEST(ChartSheet, TimesArePartsOfADay) {
  ChartModel chart = Months();
  chart.times = true;
  chart.series = {{"كاركرد", {1440 * kUnit, 90 * kUnit, std::nullopt}}};
  const SheetChart sheet = SheetChartOf(chart, ChartKind::kBars);
  EXPECT_EQ(sheet.series[0].values, (std::vector<std::string>{"1", "0.0625", ""}));
  EXPECT_EQ(sheet.number_format, "[hh]:mm");
}

TEST(ChartSheet, ANumberThatAWorkbookWouldChangeIsRefused) {
  struct Case {
    FixedPoint value;
    bool fits;
  };
  for (const Case& tried :
       {Case{900'000'000'000'000 * kUnit, true}, Case{12'345'678'901'2345, true},
        Case{1'234'567'890'123'456, false}, Case{-1'234'567'890'123'456, false}}) {
    ChartModel chart = Months();
    chart.series = {{"خالص", {tried.value, 0, 0}}};
    if (tried.fits) {
      EXPECT_NO_THROW(SheetChartOf(chart, ChartKind::kBars)) << tried.value;
    } else {
      EXPECT_THROW(SheetChartOf(chart, ChartKind::kBars), Error) << tried.value;
    }
  }
}

}  // namespace
}  // namespace vorek
