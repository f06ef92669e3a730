#ifndef VOREK_AUTHOR_GRID_DIFFERENCE_H_
#define VOREK_AUTHOR_GRID_DIFFERENCE_H_

#include <cstddef>
#include <string>
#include <vector>

#include "author/grid_text.h"

namespace vorek {

// One thing that isn't as it was.
struct GridChange {
  enum class Kind {
    kReport,  // a word of the report itself: its title, its parameters, why it failed
    kColumn,  // a header, a width or an alignment
    kCell,
    kRowAdded,
    kRowRemoved,
  } kind;
  std::string what = {};  // of kReport and kColumn: "title", "width" ...
  std::size_t row = 0;  // of the grid: of the later one, of the earlier one for a row that is gone
  std::size_t column = 0;  // of kColumn and kCell
  std::string header = {};
  std::string before = {};
  std::string after = {};
};

// What changed between two times, cell by cell. Rows are matched by what they hold, so that one
// that came in doesn't move all others; a mere row number in column 0 doesn't count.
std::vector<GridChange> CompareGrids(const GridText& before, const GridText& after);

}  // namespace vorek

#endif  // VOREK_AUTHOR_GRID_DIFFERENCE_H_
