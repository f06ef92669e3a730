#ifndef VOREK_APPS_VOREK_GRID_WRITER_H_
#define VOREK_APPS_VOREK_GRID_WRITER_H_

#include <cstdint>
#include <ostream>
#include <string>

#include "grid/grid.h"

namespace vorek {

// Writers of a grid, column 0 first.

// Columns side by side with a line below the header; hidden columns and rows are left out. Widths
// are those of a terminal's cells.
void WriteTable(const Grid& grid, std::ostream& out);
// Every row a line, cells with tabs between; tabs and line ends in a text become blanks.
void WriteTsv(const Grid& grid, std::ostream& out);
// One object: the report's number and title, the columns with their measures, the data rows.
void WriteJson(const Grid& grid, std::int32_t report_id, const std::string& title,
               std::ostream& out);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_GRID_WRITER_H_
