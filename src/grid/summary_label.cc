#include "grid/summary_label.h"

#include <algorithm>
#include <string>

namespace vorek {

bool HasLabel(const Grid& grid, std::int32_t row, std::string_view label) {
  std::string scratch;
  return grid.CellView(row, 0, scratch) == label;
}

bool IsSummaryRow(const Grid& grid, std::int32_t row) {
  if (grid.IsNumbered(row)) return false;
  return HasLabel(grid, row, kSumLabel) || HasLabel(grid, row, kAverageLabel);
}

std::int32_t TrailingSummaryRows(const Grid& grid) {
  constexpr std::int32_t kMost = 4;
  const std::int32_t most = std::min(grid.Rows() - grid.FixedRows(), kMost);
  std::int32_t count = 0;
  while (count < most && IsSummaryRow(grid, grid.Rows() - count - 1)) ++count;
  return count;
}

void Emphasise(Grid& grid, std::int32_t row) {
  grid.SetRow(row);
  grid.SetCol(0);
  grid.SetColSel(grid.Cols() - 1);
  grid.SetCellFontBold(true);
  grid.SetCellTextStyle(1);
}

}  // namespace vorek
