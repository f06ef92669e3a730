#include "export/exported_columns.h"

namespace vorek {

std::vector<ExportedColumn> ExportedColumns(const Grid& grid, const PlainMoney* money) {
  std::vector<ExportedColumn> columns;
  for (std::int32_t col = 1; col < grid.Cols(); ++col) {
    if (grid.ColWidth(col) != 0) columns.emplace_back(grid, col, money);
  }
  return columns;
}

}  // namespace vorek
