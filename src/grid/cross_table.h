#ifndef VOREK_GRID_CROSS_TABLE_H_
#define VOREK_GRID_CROSS_TABLE_H_

#include <cstdint>

#include "grid/report_context.h"

// The cross table: each distinct value of one column of flxMain becomes a column of flxTranspose,
// each distinct combination of the base columns' texts a row. With two value columns or more a row
// has hidden sub-rows, one a value column.
namespace vorek {

// Builds the cross table and shows it in place of flxMain, whose rows are left sorted by the base
// columns. Without a column to spread flxMain stays on view. A table of more than 2500 columns
// isn't built: the user is told which report and column it is, and flxMain stays on view.
void ApplyTranspose(ReportContext& report);

// The column is one of the base columns.
bool isTransposeColumn(const ReportState& state, std::int32_t column);

}  // namespace vorek

#endif  // VOREK_GRID_CROSS_TABLE_H_
