#ifndef VOREK_TOTALS_GROUP_TOTALS_H_
#define VOREK_TOTALS_GROUP_TOTALS_H_

#include "grid/report_context.h"

// Subtotals of the ledger reports (totals/group_reports.h): a row below each run of rows of flxMain
// that share the text of one column. It has an empty text in column 0, counts as a data row to sums
// and averages, and is told by TellsSubtotal.
namespace vorek {

// Groups flxMain by its current column. keep_detail: the rows stay above their subtotals, else they
// are dropped. prepare: the rows are sorted first, with a sum row kept apart and put last again.
// Does nothing for a report without subtotals, a column that it isn't grouped by, or no rows.
// Throws Error(kSubscript), and leaves the grid, if the report has fewer columns than its subtotals
// need; Error(kCancelled) from within a sort, and leaves the grid.
void MakeGroupTotals(ReportContext& report, bool keep_detail, bool prepare);

// What a run of the report does at its end: the reports that show subtotals from the first moment
// get them.
void MakeFirstGroupTotals(ReportContext& report);

// True if the row is a subtotal. REQUIRES: the grid is flxMain of a report with subtotals.
bool TellsSubtotal(const Grid& grid, std::int32_t row);

// Takes the subtotals out again. False, and nothing done, if the rows between them aren't there.
bool DropGroupTotals(Grid& grid);

}  // namespace vorek

#endif  // VOREK_TOTALS_GROUP_TOTALS_H_
