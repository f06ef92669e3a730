#ifndef VOREK_GRID_SCALED_SORT_H_
#define VOREK_GRID_SCALED_SORT_H_

#include <cstdint>

#include "grid/grid.h"

// The sort of long numbers as texts: they are divided by a million for its time and multiplied
// again behind it. The texts stay as they are: those of up to 15 digits come back from the way
// there and back, and longer ones, which wouldn't, must not be lost.
namespace vorek {

// True for a number field of which the first or the last text has seven characters or more, in a
// grid of three rows or more.
bool NeedsScaling(const Grid& grid, std::int32_t column, int field_type);

// Sorts the rows below the fixed ones by the texts of the small numbers, ascending: 0.012 stands
// before 0.9 and behind 0.0111. Rows that are equal keep their order.
void SortSmallTexts(Grid& grid, std::int32_t column);

}  // namespace vorek

#endif  // VOREK_GRID_SCALED_SORT_H_
