#include "adapters/qt/visible_rows.h"

#include <algorithm>

namespace vorek::qt {

// True if the rows have to be listed, and then they are.
bool VisibleRows::Listed() const {
  if (!grid_.RowHeightsDiffer()) {
    rows_ = {};
    return false;
  }
  if (known_) return true;
  rows_.clear();
  for (std::int32_t row = grid_.FixedRows(); row < grid_.Rows(); ++row) {
    if (grid_.RowHeight(row) > 0) rows_.push_back(row);
  }
  return known_ = true;
}

std::int32_t VisibleRows::Count() const {
  if (Listed()) return static_cast<std::int32_t>(rows_.size());
  return std::max(grid_.Rows() - grid_.FixedRows(), 0);
}

std::int32_t VisibleRows::RowAt(std::int32_t place) const {
  return Listed() ? rows_[static_cast<std::size_t>(place)] : place + grid_.FixedRows();
}

std::int32_t VisibleRows::PlaceOf(std::int32_t row) const {
  if (!Listed()) return std::clamp(row - grid_.FixedRows(), 0, Count());
  return static_cast<std::int32_t>(std::lower_bound(rows_.begin(), rows_.end(), row) -
                                   rows_.begin());
}

}  // namespace vorek::qt
