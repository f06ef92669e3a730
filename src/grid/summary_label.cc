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

std::vector<std::string> TakeSumRowsOut(Grid& grid) {
  std::vector<std::string> texts;
  for (std::int32_t row = 1; row < grid.Rows();) {
    if (grid.IsNumbered(row) || !HasLabel(grid, row, kSumLabel)) {
      ++row;
      continue;
    }
    texts.clear();
    for (std::int32_t column = 0; column < grid.Cols(); ++column) {
      texts.push_back(grid.TextMatrix(row, column));
    }
    if (grid.Rows() == 2) {
      grid.SetRows(1);
    } else {
      grid.RemoveItem(row);
    }
  }
  return texts;
}

void PutSumRowLast(Grid& grid, const std::vector<std::string>& texts) {
  const std::int32_t row = grid.Rows();
  grid.AddItem(std::to_string(row));
  for (std::size_t column = 0; column < texts.size(); ++column) {
    grid.WriteCell(row, static_cast<std::int32_t>(column), texts[column]);
  }
  Emphasise(grid, row);
}

void Emphasise(Grid& grid, std::int32_t row) {
  grid.SetRow(row);
  grid.SetCol(0);
  grid.SetColSel(grid.Cols() - 1);
  grid.SetCellFontBold(true);
  grid.SetCellTextStyle(1);
}

}  // namespace vorek
