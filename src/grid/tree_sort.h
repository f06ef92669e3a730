#ifndef VOREK_GRID_TREE_SORT_H_
#define VOREK_GRID_TREE_SORT_H_

#include <cstdint>
#include <string_view>

#include "grid/report_context.h"

namespace vorek {

// Sorts the top rows of a tree by a column, each with all that stands below it: descending at
// first, the other way round if it is the last sorted column; 0 sorts by that one. A top row is one
// without a parent.
void SortTree(ReportContext& report, Grid& grid, std::int32_t column);

// Plain numbers, each the text of its own number, by their value; all else by the bytes of the
// texts. Not an order: 60 stands before 500 and 500 before 55/000, which stands before 60.
bool TreeCompareLess(std::string_view a, std::string_view b);
bool TreeCompareGreater(std::string_view a, std::string_view b);

}  // namespace vorek

#endif  // VOREK_GRID_TREE_SORT_H_
