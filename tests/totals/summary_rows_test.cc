#include "totals/summary_rows.h"

#include "support/random_report.h"
#include "support/steps/summary_row.h"
#include "totals/fixed_total.h"

namespace vorek {
namespace {

TEST(SummaryRows, AreWhatTheirStepsMake) {
  for (unsigned seed = 1; seed <= 1500 && !testing::Test::HasFailure(); ++seed) {
    RandomReport fast(seed);
    RandomReport plain(seed);
    for (RandomReport* report : {&fast, &plain}) {
      report->Fill(seed % 2 == 0);
      report->Disturb();
      report->state.isTransposedResult = seed % 5 == 0;
      if (seed % 5 == 0) report->flxTranspose.SetRows(2 + static_cast<std::int32_t>(seed % 4));
    }
    for (int press = 0; press < 4; ++press) {
      const bool average = fast.Below(3) == 0;
      plain.Below(3);
      const std::int32_t cols = fast.Context().ActiveGrid().Cols();
      const auto column = static_cast<std::int32_t>(1 + (seed + static_cast<unsigned>(press) / 2) %
                                                            static_cast<unsigned>(cols - 1));
      ReportContext fast_context = fast.Context();
      ReportContext plain_context = plain.Context();
      fast_context.ActiveGrid().SetCol(column);
      plain_context.ActiveGrid().SetCol(column);
      if (average) {
        MakeAvgRow(fast_context);
      } else {
        MakeSumRow(fast_context);
      }
      steps::SummaryRow(plain_context, average);
      EXPECT_EQ(RandomReport::Picture(fast_context.ActiveGrid()),
                RandomReport::Picture(plain_context.ActiveGrid()))
          << "seed " << seed << ", press " << press << ", column " << column;
    }
  }
}

TEST(SummaryRows, AddBeyondAFixedPointValueAndWithoutRows) {
  RandomReport report(1);
  Grid& grid = report.flxMain;
  grid.SetRows(4);
  grid.SetCols(3);
  report.state.QueryFields = {{"A", kInteger}, {"B", kCurrency}};
  for (std::int32_t row = 1; row < 4; ++row) {
    grid.WriteCell(row, 1, "-900000000000000.5");
    grid.WriteCell(row, 2, "900/000/000/000/000");
  }
  ReportContext context = report.Context();
  for (const std::int32_t column : {1, 2}) {
    grid.SetCol(column);
    MakeSumRow(context);
  }
  EXPECT_EQ(grid.TextMatrix(4, 1), "-2700000000000001.5");
  EXPECT_EQ(grid.TextMatrix(4, 2), "2/700/000/000/000/000");
  grid.SetRows(1);
  grid.SetCol(2);
  MakeAvgRow(context);
  EXPECT_EQ(grid.TextMatrix(1, 2), "0");
  EXPECT_EQ(grid.TextMatrix(1, 0), "ميانگين");
}

TEST(SummaryRows, AreTakenAwayByTheMarksOfTheirColumns) {
  RandomReport report(2);
  report.Fill(false);
  Grid& grid = report.flxMain;
  ReportContext context = report.Context();
  const std::int32_t rows = grid.Rows();
  mnuDelete_Click(context);
  EXPECT_EQ(grid.Rows(), rows);
  grid.PointAt(0, 1);
  mnuAvg_Click(context);
  mnuDelete_Click(context);
  EXPECT_EQ(grid.Rows(), rows + 1);
  mnuSum_Click(context);
  EXPECT_EQ(grid.Rows(), rows + 2);
  mnuDelete_Click(context);
  EXPECT_EQ(grid.Rows(), rows + 1);
  EXPECT_FALSE(report.process.main.ColumnLayouts[1].make_sum);
  EXPECT_TRUE(report.process.main.ColumnLayouts[1].make_average);
}

TEST(FixedTotal, AddsIn128Bits) {
  FixedTotal total;
  EXPECT_EQ(total.Text(), "0");
  for (int i = 0; i < 1000; ++i) total.Add(INT64_MAX);
  EXPECT_EQ(total.Text(), "922337203685477580.7");
  for (int i = 0; i < 2000; ++i) total.Add(INT64_MIN);
  EXPECT_EQ(total.Text(), "-922337203685477580.9");
  total = FixedTotal();
  total.Add(-1);
  EXPECT_EQ(total.Text(), "-0.0001");
}

}  // namespace
}  // namespace vorek
