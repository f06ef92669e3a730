#include "state/column_layout.h"

#include <utility>

#include "vorek/error.h"

namespace vorek {

const ColumnLayout& ColumnLayoutTable::operator[](std::int32_t column) const {
  if (column >= 0 && column <= kLast + 1) return records_[static_cast<std::size_t>(column)];
  throw Error(ErrorNumber::kSubscript, "Subscript out of range: column " + std::to_string(column) +
                                           " is beyond the " + std::to_string(kLast) +
                                           " columns that a report can have.");
}

ColumnLayout& ColumnLayoutTable::operator[](std::int32_t column) {
  return const_cast<ColumnLayout&>(std::as_const(*this)[column]);
}

}  // namespace vorek
