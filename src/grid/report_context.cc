#include "grid/report_context.h"

namespace vorek {

void ResetGrid(Grid& grid) {
  grid.Clear();
  grid.SetRows(2);
  grid.SetCols(2);
  grid.SetFixedRows(1);
  grid.SetFixedCols(1);
}

}  // namespace vorek
