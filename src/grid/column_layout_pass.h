#ifndef VOREK_GRID_COLUMN_LAYOUT_PASS_H_
#define VOREK_GRID_COLUMN_LAYOUT_PASS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "grid/report_context.h"

// How each grid column gets its alignment, its width and the form of its texts: by the stored
// layout, or by default from the type of its field. What is known is held in the layout tables.
namespace vorek {

std::vector<FieldInfo> FieldsOf(const Recordset& recordset);

// At the end of a definition's load: fills both layout tables from the stored layouts and empties
// flxTranspose to one column. Errors go to the caller.
void ReadColumnLayout(ReportContext& report);

// At the start of a run, before the grid is bound: measures of flxMain and its layout table from
// the stored rows. From the first row on a failing statement is passed over; before it, errors go
// to the caller unless ignore_errors is set.
void ApplyStoredLayout(ReportContext& report, bool ignore_errors);

// After the grid is bound: the texts of each field's column by the field's type.
void FormCells(ReportContext& report, const std::vector<FieldInfo>& fields);

// Defaults for the columns that the stored layout doesn't reach, and the header texts. Throws
// Error(kSubscript) beyond column 2500.
void CompleteLayouts(ReportContext& report, const std::vector<FieldInfo>& fields);

// Puts the layout tables on both grids. retrive_from_db reads the stored layout of the visible grid
// first, in the order of its rows.
void AlignFlexes(ReportContext& report, bool retrive_from_db);

// Drops the transposed columns that the grid doesn't have.
void DropMissingTransposeColumns(ReportContext& report);

// Rows light blue, or light blue and white in turn: even rows are coloured.
void ColorRows(ReportContext& report);
constexpr std::int32_t kLightBlue = 16243138;
constexpr std::int32_t kWhite = 16777215;

}  // namespace vorek

#endif  // VOREK_GRID_COLUMN_LAYOUT_PASS_H_
