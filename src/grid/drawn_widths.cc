#include "grid/drawn_widths.h"

#include <algorithm>

namespace vorek {

void NoteDrawnWidth(DrawnWidths& widths, const Grid& grid, std::int32_t col) {
  const DrawnWidth drawn{col, grid.TextMatrix(0, col), grid.ColWidth(col)};
  const auto found = std::find_if(widths.begin(), widths.end(),
                                  [col](const DrawnWidth& width) { return width.col == col; });
  if (found == widths.end()) {
    widths.push_back(drawn);
  } else {
    *found = drawn;
  }
}

void ApplyDrawnWidths(const DrawnWidths& widths, Grid& grid) {
  for (const DrawnWidth& drawn : widths) {
    if (drawn.col < 0 || drawn.col >= grid.Cols() || grid.Rows() < 1) continue;
    if (grid.TextMatrix(0, drawn.col) == drawn.header) grid.SetColWidth(drawn.col, drawn.twips);
  }
}

}  // namespace vorek
