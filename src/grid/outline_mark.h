#ifndef VOREK_GRID_OUTLINE_MARK_H_
#define VOREK_GRID_OUTLINE_MARK_H_

#include <cstdint>
#include <string_view>

#include "grid/grid.h"

// The "+" and "-" in a grid's texts by which rows and columns open and close, apart from the texts
// that they stand in, so that a window can draw them as marks.
namespace vorek {

struct OutlineMark {
  bool in_outline = false;  // the cell is one of those that marks may stand in
  char sign = '\0';         // '+' closed, '-' open, '\0' nothing to open
  std::int32_t depth = 0;   // of a tree's row; 0 for the first level
  std::string_view text;    // what is left without the sign; the whole text outside an outline
};

// By the grid's OutlineKind. text is that of the cell.
OutlineMark MarkOf(const Grid& grid, std::int32_t row, std::int32_t col, std::string_view text);

// The sign of a cross table's header that opens or closes the columns behind it, '\0' for none: a
// number with its sign is a value, not an outline.
char HeaderSign(const Grid& grid, std::int32_t col, std::string_view header);

}  // namespace vorek

#endif  // VOREK_GRID_OUTLINE_MARK_H_
