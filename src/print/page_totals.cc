#include "print/page_totals.h"

#include <utility>

#include "grid/summary_label.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::print {
namespace {

// 0 for none.
std::int32_t SumRow(const Grid& grid) {
  for (std::int32_t back = TrailingSummaryRows(grid); back > 0; --back) {
    if (HasLabel(grid, grid.Rows() - back, kSumLabel)) return grid.Rows() - back;
  }
  return 0;
}

// A summary row that stands among the others isn't counted.
std::vector<bool> Uncounted(const Grid& grid, const PrintedRows& rows) {
  std::vector<bool> uncounted;
  if (grid.IsSourced(0)) return uncounted;
  uncounted.resize(rows.Count());
  for (std::size_t place = 0; place < rows.Count(); ++place) {
    uncounted[place] = IsSummaryRow(grid, rows.RowAt(place));
  }
  return uncounted;
}

ColumnTotals Total(const ReportContext& report, const PrintedRows& rows, const PageBreaks& breaks,
                   const std::vector<bool>& uncounted, std::int32_t column) {
  const Grid& grid = report.ActiveGrid();
  ColumnTotals totals{column, SummedKindOf(report.state, column), {}};
  totals.before.reserve(breaks.Count() + 1);
  FixedTotal total;
  totals.before.push_back(total);
  for (std::size_t page = 0; page < breaks.Count(); ++page) {
    const PageBreaks::Rows on = breaks.On(page);
    for (std::size_t place = on.first; place < on.end; ++place) {
      if (!uncounted.empty() && uncounted[place]) continue;
      total.Add(CountedInTotal(grid, rows.RowAt(place), column, totals.kind));
    }
    totals.before.push_back(total);
  }
  return totals;
}

}  // namespace

std::string ColumnTotals::OnPage(std::size_t page) const {
  FixedTotal total = before[page + 1];
  total.Add(before[page].Negated());
  return TotalText(total.Text(), kind);
}

std::vector<std::int32_t> SummedColumns(const Grid& grid,
                                        const std::vector<std::int32_t>& columns) {
  std::vector<std::int32_t> summed;
  const std::int32_t sum = SumRow(grid);
  if (sum == 0 || grid.RowHeight(sum) == 0) return summed;
  for (const std::int32_t col : columns) {
    if (col > 0 && !text::Trim(grid.TextMatrix(sum, col)).empty()) summed.push_back(col);
  }
  return summed;
}

std::vector<ColumnTotals> TotalsOfPages(const ReportContext& report,
                                        const std::vector<std::int32_t>& summed,
                                        const PrintedRows& rows, const PageBreaks& breaks) {
  const Grid& grid = report.ActiveGrid();
  const std::int32_t sum = SumRow(grid);
  std::vector<ColumnTotals> all;
  const std::vector<bool> uncounted = Uncounted(grid, rows);
  for (const std::int32_t column : summed) {
    IgnoreErrors([&] {
      ColumnTotals totals = Total(report, rows, breaks, uncounted, column);
      const bool agrees = totals.Before(breaks.Count()) == grid.TextMatrix(sum, column);
      if (agrees) all.push_back(std::move(totals));
    });
  }
  return all;
}

}  // namespace vorek::print
