#ifndef VOREK_GRID_EXPRESSION_COLUMNS_H_
#define VOREK_GRID_EXPRESSION_COLUMNS_H_

#include "grid/report_context.h"

namespace vorek {

// Appends the report's calculated columns to flxMain and fills them row by row. A row whose column
// 0 reads "مجموع" is left out. A caller that fills them anew first sets Cols back to the query's
// columns. Errors of reading the formulas go to the caller; a cell that fails becomes empty.
void MakeExpressionColumns(ReportContext& report);

}  // namespace vorek

#endif  // VOREK_GRID_EXPRESSION_COLUMNS_H_
