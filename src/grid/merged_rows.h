#ifndef VOREK_GRID_MERGED_ROWS_H_
#define VOREK_GRID_MERGED_ROWS_H_

#include "grid/report_context.h"

namespace vorek {

// Folds the rows of flxMain that share the text of the key column, the first one with merge type 1:
// sorts by it and combines each row with those behind it. Columns of type 2 are added, of type 3
// joined with ","; of any other the first row's text stands. Rows are numbered afresh. Nothing
// happens without MakeMergeFlag or a key.
void MakeFlexMerged(ReportContext& report);

}  // namespace vorek

#endif  // VOREK_GRID_MERGED_ROWS_H_
