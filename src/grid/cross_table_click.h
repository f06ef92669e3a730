#ifndef VOREK_GRID_CROSS_TABLE_CLICK_H_
#define VOREK_GRID_CROSS_TABLE_CLICK_H_

#include <cstdint>

#include "grid/report_context.h"

namespace vorek {

// A click on a cell of flxTranspose. On a header it sorts by the column, up and down in turn, dates
// as texts; a header whose text is an outline number behind "+" or "-" opens or closes the columns
// below it instead. On a mark in column 0 it shows or hides the sub-rows. Elsewhere, and outside
// the grid, nothing.
void ClickCrossTable(ReportContext& report, std::int32_t row, std::int32_t col);

// Shows all sub-rows, as a click on every "+" of column 0 does.
void OpenCrossTable(Grid& table);

}  // namespace vorek

#endif  // VOREK_GRID_CROSS_TABLE_CLICK_H_
