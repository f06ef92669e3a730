#include "grid/summary_label.h"

#include <string>

namespace vorek {

bool HasLabel(const Grid& grid, std::int32_t row, std::string_view label) {
  std::string scratch;
  return grid.CellView(row, 0, scratch) == label;
}

void Emphasise(Grid& grid, std::int32_t row) {
  grid.SetRow(row);
  grid.SetCol(0);
  grid.SetColSel(grid.Cols() - 1);
  grid.SetCellFontBold(true);
  grid.SetCellTextStyle(1);
}

}  // namespace vorek
