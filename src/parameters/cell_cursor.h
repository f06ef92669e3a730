#ifndef VOREK_PARAMETERS_CELL_CURSOR_H_
#define VOREK_PARAMETERS_CELL_CURSOR_H_

#include <cstdint>

namespace vorek {

// Walks over the cells of the form's grid. Rows and columns count from 0.
struct CellCursor {
  struct Cell {
    std::int64_t row = 0;
    std::int64_t column = 0;
  };

  std::int32_t columns = 1;
  Cell current;                   // the next free cell; behind Reserve, the cell reserved
  std::int64_t tallest_span = 0;  // the greatest height in the current row

  // Begins a new line, unless the current one is empty or has a free cell behind this one for a
  // partner.
  void BeginPair(std::int32_t span) {
    if (current.column == 0 || current.column + span <= columns - 1) return;
    current.column = 0;
    ++current.row;
  }

  // Reserves cells for a widget of this span and height, moving to a new line where it doesn't fit.
  // Returns the next free cell.
  Cell Reserve(std::int32_t span, std::int32_t height) {
    if (tallest_span < 1) tallest_span = 1;
    const bool fits = columns - current.column >= span;
    if (!fits) {
      current = {current.row + tallest_span, 0};
      tallest_span = height;
    } else if (height > tallest_span) {
      tallest_span = height;
    }
    Cell next{current.row, current.column + span};
    if (next.column < columns || span > columns) return next;
    next = {next.row + (fits ? tallest_span : 1), 0};
    if (fits) tallest_span = 1;
    return next;
  }

  // Grid rows in use once `next` is the next free cell.
  std::int64_t UsedRows(const Cell& next) const {
    const std::int64_t used = next.row + (tallest_span < 1 ? 1 : tallest_span);
    return next.column == 0 && next.row >= 1 && used > 1 ? used - 1 : used;
  }
};

}  // namespace vorek

#endif  // VOREK_PARAMETERS_CELL_CURSOR_H_
