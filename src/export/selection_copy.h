#ifndef VOREK_EXPORT_SELECTION_COPY_H_
#define VOREK_EXPORT_SELECTION_COPY_H_

#include <cstdint>
#include <string>
#include <vector>

#include "grid/grid.h"

namespace vorek {

enum class CopyForm {
  kShown,        // the texts of the cells
  kPlain,        // numbers without digit groups, negative ones with a sign
  kWithHeaders,  // the texts below their headers
};

struct CopiedCells {
  std::string text;  // tabs between cells, a line feed between rows
  std::string html;  // the same as a right-to-left table
};

// The selected rows in these columns; what isn't shown, hidden rows and columns, isn't copied.
// Tabs and line ends within a cell become blanks.
CopiedCells CopySelection(const Grid& grid, const std::vector<std::int32_t>& columns,
                          CopyForm form);

}  // namespace vorek

#endif  // VOREK_EXPORT_SELECTION_COPY_H_
