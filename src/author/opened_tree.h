#ifndef VOREK_AUTHOR_OPENED_TREE_H_
#define VOREK_AUTHOR_OPENED_TREE_H_

#include <cstdint>
#include <string>

#include "grid/report_context.h"

namespace vorek {

// How far a tree is opened.
struct TreeLimits {
  std::int32_t levels = 20;  // below the first one; a row that descends from itself has no end
  std::int32_t openings = 10'000;  // rows that are opened
  std::int32_t rows = 100'000;     // of the grid, from which on no more row is opened
};

// Opens the rows of a tree in flxMain from the top down, as a click on each "+" does but by one run
// of the query, and makes the calculated columns for all of them. Gives "" once no closed row is
// left, and for any other report; else which limit left rows closed. Throws Error where opening a
// row does.
std::string OpenTree(ReportContext& report, const TreeLimits& limits = {});

}  // namespace vorek

#endif  // VOREK_AUTHOR_OPENED_TREE_H_
