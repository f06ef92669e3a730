#ifndef VOREK_DRILL_CELL_NUMBER_H_
#define VOREK_DRILL_CELL_NUMBER_H_

#include "grid/grid.h"
#include "text/number.h"

namespace vorek {

// The number at the head of a cell's text, as a whole one. Throws Error(kSubscript) outside of the
// grid, Error(kOverflow).
inline std::int32_t CellWholeNumber(const Grid& grid, std::int32_t row, std::int32_t col) {
  std::string scratch;
  return text::ToInt32(text::NumericPrefix(grid.CellView(row, col, scratch)));
}

}  // namespace vorek

#endif  // VOREK_DRILL_CELL_NUMBER_H_
