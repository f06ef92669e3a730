#ifndef VOREK_GRID_COLUMN_SORT_H_
#define VOREK_GRID_COLUMN_SORT_H_

#include <cstdint>

#include "grid/report_context.h"

namespace vorek {

// Sorts flxMain by a column, the other way round if it is the last sorted one; 0 sorts by that one
// again and keeps the way. Dates are sorted as texts. Money and double fields show digit groups
// afterwards, calculated columns are made anew, and runs of equal values share a colour. A column
// that isn't there does nothing; a failure leaves the grid as it stands.
void SortflxMain(ReportContext& report, std::int32_t column);

// A click on a header: sorts, then puts the sum row last again and numbers the rows. Nothing in a
// grid of fewer than three rows.
void SortByHeader(ReportContext& report, std::int32_t column);

// True if the column's text in row 1, or else in the last row, is ten characters long with two "/"
// or
// "\" in it.
bool IsDateColumn(const Grid& grid, std::int32_t column);

// Rows in white and light blue, another one wherever the column's text changes.
void ColourBySortColumn(Grid& grid, std::int32_t column);

}  // namespace vorek

#endif  // VOREK_GRID_COLUMN_SORT_H_
