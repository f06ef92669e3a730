#ifndef VOREK_GRID_DRAWN_WIDTHS_H_
#define VOREK_GRID_DRAWN_WIDTHS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "grid/grid.h"

namespace vorek {

// A width that a user drew. It holds for the column of that number as long as it has that header.
struct DrawnWidth {
  std::int32_t col = 0;
  std::string header;
  std::int32_t twips = 0;
  bool operator==(const DrawnWidth&) const = default;
};
using DrawnWidths = std::vector<DrawnWidth>;

// Takes the column's present width down.
void NoteDrawnWidth(DrawnWidths& widths, const Grid& grid, std::int32_t col);
// Gives the columns their drawn widths back, after a run has set its own.
void ApplyDrawnWidths(const DrawnWidths& widths, Grid& grid);

}  // namespace vorek

#endif  // VOREK_GRID_DRAWN_WIDTHS_H_
