#include "print/printed_rows.h"

#include "grid/summary_label.h"

namespace vorek::print {

PrintedRows::PrintedRows(const Grid& grid) : first_(grid.FixedRows()) {
  const std::int32_t summary_from = grid.Rows() - TrailingSummaryRows(grid);
  if (!grid.RowHeightsDiffer()) {
    count_ = static_cast<std::size_t>(summary_from - first_);
    summary_ = static_cast<std::size_t>(grid.Rows() - summary_from);
    return;
  }
  for (std::int32_t row = first_; row < grid.Rows(); ++row) {
    if (grid.RowHeight(row) == 0) continue;
    rows_.push_back(row);
    ++(row < summary_from ? count_ : summary_);
  }
}

}  // namespace vorek::print
