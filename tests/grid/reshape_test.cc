#include "grid/column_sort.h"
#include "grid/merged_rows.h"
#include "support/random_report.h"
#include "support/steps/merge_rows.h"
#include "support/steps/sort.h"

namespace vorek {
namespace {

TEST(MergedRows, AreWhatTheirStepsMake) {
  for (unsigned seed = 1; seed <= 1500 && !testing::Test::HasFailure(); ++seed) {
    RandomReport fast(seed);
    RandomReport plain(seed);
    for (RandomReport* report : {&fast, &plain}) {
      report->Bind();
      report->state.MakeMergeFlag = true;
      for (std::int32_t column = 1; column < report->flxMain.Cols(); ++column) {
        report->process.main.ColumnLayouts[column].merge_type =
            static_cast<std::int32_t>(report->Below(5));
      }
      if (seed % 3 == 0) {
        report->flxMain.SetTextMatrix(1, 1, "7654321");
        report->flxMain.AddItem("x");
      }
    }
    ReportContext fast_context = fast.Context();
    ReportContext plain_context = plain.Context();
    MakeFlexMerged(fast_context);
    steps::MergeRows(plain_context);
    EXPECT_EQ(RandomReport::Picture(fast.flxMain), RandomReport::Picture(plain.flxMain))
        << "seed " << seed;
  }
}

TEST(MergedRows, AddExactValuesBeyondFifteenDigits) {
  RandomReport report(1);
  report.database->Answer(
      "rows",
      MakeResult({{"K", kInteger}, {"M", kCurrency}},
                 {{"1", "123456789012.3456"}, {"1", "900000000000.0001"}, {"1", "-0.0001"}}));
  report.Bind();
  report.state.MakeMergeFlag = true;
  report.process.main.ColumnLayouts[1].merge_type = 1;
  report.process.main.ColumnLayouts[2].merge_type = 2;
  ReportContext context = report.Context();
  MakeFlexMerged(context);
  EXPECT_EQ(report.flxMain.Rows(), 2);
  EXPECT_EQ(report.flxMain.TextMatrix(1, 2), "1023456789012.3456");
}

TEST(ColumnSort, IsWhatItsStepsMake) {
  for (unsigned seed = 1; seed <= 1500 && !testing::Test::HasFailure(); ++seed) {
    RandomReport fast(seed);
    RandomReport plain(seed);
    for (RandomReport* report : {&fast, &plain}) {
      report->Fill(seed % 2 == 0);
      if (seed % 3 != 0) report->Disturb();
    }
    for (int click = 0; click < 4; ++click) {
      const auto column =
          static_cast<std::int32_t>(fast.Below(static_cast<std::size_t>(fast.flxMain.Cols()) + 1));
      plain.Below(static_cast<std::size_t>(plain.flxMain.Cols()) + 1);
      ReportContext fast_context = fast.Context();
      ReportContext plain_context = plain.Context();
      if (seed % 4 == 0) {
        SortflxMain(fast_context, column);
        steps::SortMain(plain_context, column);
      } else if (column > 0 && column < fast.flxMain.Cols()) {
        SortByHeader(fast_context, column);
        steps::HeaderClick(plain_context, column);
      }
      EXPECT_EQ(RandomReport::Picture(fast.flxMain), RandomReport::Picture(plain.flxMain))
          << "seed " << seed << ", click " << click << ", column " << column;
    }
  }
}

TEST(ColumnSort, KeepsWhatTheWayOverSmallNumbersWouldLose) {
  RandomReport report(1);
  report.database->Answer(
      "rows", MakeResult({{"B", kBigInt}}, {{"6037991234567890"}, {"6037991234567889"}, {"5"}}));
  report.Fill(false);
  ReportContext context = report.Context();
  SortflxMain(context, 1);
  EXPECT_EQ(report.flxMain.TextMatrix(1, 1), "5");
  EXPECT_EQ(report.flxMain.TextMatrix(3, 1), "6037991234567890");
  // Joined texts in a number's column.
  report.flxMain.SetTextMatrix(1, 1, "1234567,8");
  SortflxMain(context, 1);
  EXPECT_EQ(report.flxMain.TextMatrix(3, 1), "1234567,8");
}

}  // namespace
}  // namespace vorek
