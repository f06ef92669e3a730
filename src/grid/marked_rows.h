#ifndef VOREK_GRID_MARKED_ROWS_H_
#define VOREK_GRID_MARKED_ROWS_H_

#include <cstdint>

#include "grid/grid.h"

namespace vorek {

// The back colour of a row that the user has marked, from column 1 to the last one.
constexpr std::int32_t kMarkColor = 0xC0FFFF;

// Marks a row, or takes its mark away: it then gets the colour that the last column of the first
// unmarked row has; with no such row it stays marked. The row becomes the selection.
void ToggleMark(Grid& grid, std::int32_t row);

}  // namespace vorek

#endif  // VOREK_GRID_MARKED_ROWS_H_
