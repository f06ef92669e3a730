#ifndef VOREK_ADAPTERS_QT_VISIBLE_ROWS_H_
#define VOREK_ADAPTERS_QT_VISIBLE_ROWS_H_

#include <cstdint>
#include <vector>

#include "grid/grid.h"

namespace vorek::qt {

// The rows below the fixed ones that have a height, by their place among each other. While no row
// of the grid has a height of its own, a place is a plain sum and nothing is kept.
class VisibleRows {
 public:
  explicit VisibleRows(const Grid& grid) : grid_(grid) {}

  // Rows, heights or their order may be others now.
  void Invalidate() { known_ = false; }

  std::int32_t Count() const;
  // REQUIRES: place < Count().
  std::int32_t RowAt(std::int32_t place) const;
  // The place of the row, or of the next one that shows; Count() behind the last.
  std::int32_t PlaceOf(std::int32_t row) const;

 private:
  bool Listed() const;

  const Grid& grid_;
  mutable bool known_ = false;
  mutable std::vector<std::int32_t> rows_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_VISIBLE_ROWS_H_
