#include "grid/marked_rows.h"

namespace vorek {
namespace {

void SelectRow(Grid& grid, std::int32_t row) {
  grid.SetRow(row);
  grid.SetCol(1);
  grid.SetColSel(grid.Cols() - 1);
}

}  // namespace

void ToggleMark(Grid& grid, std::int32_t row) {
  SelectRow(grid, row);
  if (grid.FormatAt(row, 1).back_color != kMarkColor) {
    grid.SetCellBackColor(kMarkColor);
    return;
  }
  for (std::int32_t other = 1; other < grid.Rows(); ++other) {
    const std::int32_t color = grid.FormatAt(other, grid.Cols() - 1).back_color;
    if (color == kMarkColor) continue;
    grid.SetCellBackColor(color);
    return;
  }
}

}  // namespace vorek
