#ifndef VOREK_PRINT_PRINTED_ROWS_H_
#define VOREK_PRINT_PRINTED_ROWS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "grid/grid.h"

namespace vorek::print {

// The rows of a grid that a print shows, in their order: without the fixed and the hidden ones. The
// summary rows at the grid's end are counted by themselves.
class PrintedRows {
 public:
  explicit PrintedRows(const Grid& grid);

  std::size_t Count() const { return count_; }
  std::size_t SummaryCount() const { return summary_; }
  // The grid's row at a place from 0 on; summary rows stand behind the others.
  std::int32_t RowAt(std::size_t place) const {
    return rows_.empty() ? first_ + static_cast<std::int32_t>(place) : rows_[place];
  }

 private:
  std::int32_t first_ = 1;
  std::size_t count_ = 0;
  std::size_t summary_ = 0;
  std::vector<std::int32_t> rows_;  // empty while no row is hidden
};

}  // namespace vorek::print

#endif  // VOREK_PRINT_PRINTED_ROWS_H_
