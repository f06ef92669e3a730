#include "grid/format_store.h"

#include <algorithm>

#include "vorek/error.h"

namespace vorek {

const CellFormat& FormatStore::At(std::uint32_t handle, std::int32_t col) const {
  if (!cells_.empty()) {
    const auto found = cells_.find(Key(handle, col));
    if (found != cells_.end()) return table_[found->second];
  }
  const RowFormat row = RowAt(handle);
  return table_[col >= 1 && col < row.cols ? row.format : 0];
}

void FormatStore::SetRowBackColor(std::uint32_t handle, std::int32_t color, std::int32_t cols) {
  const auto change = [color](CellFormat& format) { format.back_color = color; };
  const RowFormat from = RowAt(handle);
  if (!cells_.empty() || from.format != last_from_ || color != last_color_ || !Covers(from, cols)) {
    ChangeRow(handle, cols, change);
    last_from_ = from.format;
    last_color_ = color;
    last_to_ = RowAt(handle).format;
    return;
  }
  SetRow(handle, {last_to_, static_cast<std::uint16_t>(cols)});
}

void FormatStore::Drop(std::uint32_t handle, std::int32_t cols) {
  if (handle < rows_.size()) rows_[handle] = {};
  for (std::int32_t col = 0; !cells_.empty() && col < cols; ++col) cells_.erase(Key(handle, col));
}

void FormatStore::DropColumns(std::int32_t cols) {
  for (RowFormat& row : rows_) {
    if (row.cols > cols) row.cols = static_cast<std::uint16_t>(cols);
  }
  std::erase_if(cells_, [cols](const auto& cell) {
    return static_cast<std::int32_t>(cell.first & 0xFFFFFFFFU) >= cols;
  });
}

void FormatStore::KeepFirstRow() {
  if (rows_.size() > 1) {
    rows_.resize(1);
    rows_.shrink_to_fit();
  }
  std::erase_if(cells_, [](const auto& cell) { return (cell.first >> 32U) != 0; });
}

void FormatStore::Clear() { *this = FormatStore(); }

void FormatStore::SetRow(std::uint32_t handle, RowFormat format) {
  if (handle >= rows_.size()) rows_.resize(handle + 1);
  rows_[handle] = format;
}

std::uint16_t FormatStore::Intern(const CellFormat& format) {
  // A report uses a handful of formats, so the newest are looked at first.
  const auto found = std::find(table_.rbegin(), table_.rend(), format);
  if (found != table_.rend()) return static_cast<std::uint16_t>(table_.rend() - found - 1);
  if (table_.size() > 0xFFFF) {
    throw Error(ErrorNumber::kOverflow, "A grid holds at most 65536 different cell formats.");
  }
  table_.push_back(format);
  return static_cast<std::uint16_t>(table_.size() - 1);
}

}  // namespace vorek
