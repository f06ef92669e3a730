#ifndef VOREK_EXPORT_EXPORTED_COLUMNS_H_
#define VOREK_EXPORT_EXPORTED_COLUMNS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "export/plain_money.h"
#include "grid/grid.h"

namespace vorek {

// A column on its way into a file, looked up once for all of its cells. REQUIRES: the grid doesn't
// change meanwhile.
class ExportedColumn {
 public:
  // With money its cells come as that writes them; null for as they are shown.
  ExportedColumn(const Grid& grid, std::int32_t col, const PlainMoney* money)
      : number_(col),
        cells_(&grid.ColumnCells(col)),
        plain_(money != nullptr && money->Takes(grid, col)),
        numbers_(!plain_ && cells_->AnySource() != nullptr && cells_->AnySource()->GivesNumbers()) {
  }

  std::int32_t Number() const { return number_; }
  // The cell of the row with that handle. The view lives until the next call with the same scratch.
  std::string_view Text(std::uint32_t handle, std::string& scratch) const {
    return plain_ && handle != 0 ? PlainMoney::TextOf(*cells_, handle, scratch)
                                 : cells_->View(handle, scratch);
  }
  // True if the cell shows a number as its field gives it, or nothing, with no plain form: digits,
  // signs and an exponent.
  bool ShowsNumber(std::uint32_t handle) const { return numbers_ && cells_->IsSourced(handle); }
  // Appends such a cell.
  void Append(std::uint32_t handle, std::string& out) const { cells_->Append(handle, out); }

 private:
  std::int32_t number_;
  const GridColumn* cells_;
  bool plain_;
  bool numbers_;
};

// The columns that an export takes: those from 1 on that have a width.
std::vector<ExportedColumn> ExportedColumns(const Grid& grid, const PlainMoney* money);

}  // namespace vorek

#endif  // VOREK_EXPORT_EXPORTED_COLUMNS_H_
