#ifndef VOREK_PRINT_PAGE_TOTALS_H_
#define VOREK_PRINT_PAGE_TOTALS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "grid/report_context.h"
#include "print/page_breaks.h"
#include "print/printed_rows.h"
#include "totals/fixed_total.h"
#include "totals/summed_column.h"

namespace vorek::print {

// A column that the grid sums, with its total of all pages before each one, and of all at the end.
struct ColumnTotals {
  std::int32_t column = 0;
  SummedKind kind = SummedKind::kPlain;
  std::vector<FixedTotal> before;

  std::string Before(std::size_t page) const { return TotalText(before[page].Text(), kind); }
  std::string OnPage(std::size_t page) const;
  std::string Through(std::size_t page) const { return Before(page + 1); }
};

// Those of the columns in which the grid's sum row stands.
std::vector<std::int32_t> SummedColumns(const Grid& grid, const std::vector<std::int32_t>& columns);

// The totals of summed columns over the printed rows, in the sum row's own arithmetic. A column
// whose pages don't add up to what its sum row shows, as one with hidden rows in the sum, is left
// out: its totals would tell something else than the grid.
std::vector<ColumnTotals> TotalsOfPages(const ReportContext& report,
                                        const std::vector<std::int32_t>& summed,
                                        const PrintedRows& rows, const PageBreaks& breaks);

}  // namespace vorek::print

#endif  // VOREK_PRINT_PAGE_TOTALS_H_
