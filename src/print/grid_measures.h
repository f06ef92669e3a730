#ifndef VOREK_PRINT_GRID_MEASURES_H_
#define VOREK_PRINT_GRID_MEASURES_H_

#include <cstddef>
#include <string>

#include "grid/grid.h"
#include "print/grid_sheets.h"

namespace vorek::print {

// How high things stand on the pages of a grid, in millimetres, so that the rows of a page can be
// told without a font at hand.
struct GridMeasures {
  double points = 8;       // letters of the grid
  double row = 5;          // of any row
  double header = 6;       // the column headers together
  double header_row = 6;   // one row of them
  double title = 10;       // of the first page
  double conditions = 0;   // of the first page
  double later_title = 7;  // of the others
  double padding = 0.7;    // beside a text in its cell

  double FirstTop() const { return title + conditions; }

  static constexpr double kFooter = 7;
  static constexpr double kTitlePoints = 14;
  static constexpr double kHeadingPoints = 9;
};

GridMeasures Measure(const Grid& grid, const GridSheets& sheets, const std::string& conditions,
                     double room_across);

// About how wide a text is, in millimetres: never taken for the room of a figure.
double AboutWidth(std::size_t letters, double points);

}  // namespace vorek::print

#endif  // VOREK_PRINT_GRID_MEASURES_H_
