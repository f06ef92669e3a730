#ifndef VOREK_TOTALS_SUMMARY_ROWS_H_
#define VOREK_TOTALS_SUMMARY_ROWS_H_

#include "grid/report_context.h"

// The rows at a grid's end that total or average its columns.
namespace vorek {

// Totals the current column of the grid that is on view and marks the column, so that later runs
// total it too. On flxMain the sum row is filled or made and becomes the current one; on
// flxTranspose hidden rows don't count, and the row is made anew each time.
void MakeSumRow(ReportContext& report);

// Averages the current column in the same way, as a whole number, halves to even; 0 without rows.
void MakeAvgRow(ReportContext& report);

// The menu entries: the column under the pointer.
void mnuSum_Click(ReportContext& report);
void mnuAvg_Click(ReportContext& report);

// Takes the sum marks of all columns away and, if there was one, the last row of the grid on view,
// be it the sum's or the average's.
void mnuDelete_Click(ReportContext& report);

}  // namespace vorek

#endif  // VOREK_TOTALS_SUMMARY_ROWS_H_
