#ifndef VOREK_AUTHOR_GRID_TEXT_H_
#define VOREK_AUTHOR_GRID_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "grid/grid.h"

namespace vorek {

// A report as it stood on a screen once, or why it didn't.
struct GridText {
  std::int32_t report = 0;
  std::string title = {};
  std::string parameters = {};             // the parameter string that it ran with
  std::string failure = {};                // why it isn't on show; "" if it is
  std::vector<std::string> messages = {};  // what it said beside
  std::string cut = {};                    // what left rows out; "" if all are there
  // Of the columns from 0 on.
  std::vector<std::string> headers = {};
  std::vector<std::string> widths = {};      // twips
  std::vector<std::string> alignments = {};  // the grid's codes
  std::vector<std::vector<std::string>> rows = {};

  bool operator==(const GridText&) const = default;
};

// Takes over the cells of a grid, hidden ones too.
void TakeGrid(const Grid& grid, GridText& text);

// A line of a keyword and its values with tabs between for each row, so that two of them can be
// compared line by line; tabs, line ends and backslashes in a value are written with a backslash.
std::string FormatGridText(const GridText& text);
// Lines with other keywords are passed over.
GridText ParseGridText(std::string_view text);

}  // namespace vorek

#endif  // VOREK_AUTHOR_GRID_TEXT_H_
