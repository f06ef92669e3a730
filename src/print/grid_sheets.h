#ifndef VOREK_PRINT_GRID_SHEETS_H_
#define VOREK_PRINT_GRID_SHEETS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "grid/column_view.h"
#include "grid/grid.h"
#include "print/page_setup.h"

namespace vorek::print {

// The columns that a print shows, in their order: as the user arranged them behind the fixed ones.
struct PrintedColumns {
  explicit PrintedColumns(const ColumnView& view, const Grid& grid);

  std::vector<std::int32_t> shown;
  std::size_t fixed = 0;  // how many of them, at the beginning, are the grid's fixed ones
  std::size_t still = 0;  // with those that the user lets stand still
};

// A grid's column on a sheet, in millimetres.
struct SheetColumn {
  std::int32_t column = 0;
  double before = 0;  // from the edge at which the grid's columns begin
  double width = 0;
};

using Sheet = std::vector<SheetColumn>;

// The columns on as many sheets side by side as they need, at least one. Those that stand still are
// on each, as far as they leave room for others.
struct GridSheets {
  double scale = 1;  // of all measures and letters of the grid
  std::vector<Sheet> sheets;
};

GridSheets SpreadColumns(const Grid& grid, const PrintedColumns& columns, const PageSetup& setup);

double WidthOf(const Sheet& sheet);

// A4 upright, on its long side where the columns have no room else.
PageSetup PaperFor(const Grid& grid, const PrintedColumns& columns);

}  // namespace vorek::print

#endif  // VOREK_PRINT_GRID_SHEETS_H_
