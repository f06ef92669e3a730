#include "grid/format_store.h"

#include <algorithm>

#include "vorek/error.h"

namespace vorek {

const CellFormat& FormatStore::At(std::uint32_t handle, std::int32_t col) const {
  if (HasCells(handle)) {
    const auto found = cells_.find(Key(handle, col));
    if (found != cells_.end()) return table_[found->second];
  }
  const RowFormat row = RowAt(handle);
  return table_[col >= 1 && col < row.cols ? row.format : 0];
}

void FormatStore::SetRowBackColor(std::uint32_t handle, std::int32_t color, std::int32_t cols) {
  const auto change = [color](CellFormat& format) { format.back_color = color; };
  const RowFormat from = RowAt(handle);
  const auto known = std::find_if(steps_.begin(), steps_.end(), [&](const Step& step) {
    return step.from == from.format && step.color == color;
  });
  if (!HasCells(handle) && known != steps_.end() && Covers(from, cols)) {
    SetRow(handle, {known->to, static_cast<std::uint16_t>(cols)});
    return;
  }
  ChangeRow(handle, cols, change);
  steps_[1] = steps_[0];
  steps_[0] = {from.format, color, RowAt(handle).format};
}

void FormatStore::Drop(std::uint32_t handle, std::int32_t cols) {
  if (handle < rows_.size()) rows_[handle] = {};
  if (!HasCells(handle)) return;
  for (std::int32_t col = 0; col < cols; ++col) cells_.erase(Key(handle, col));
  has_cells_[handle] = false;
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
  if (has_cells_.size() > 1) has_cells_.resize(1);
}

void FormatStore::Clear() { *this = FormatStore(); }

void FormatStore::SetCell(std::uint32_t handle, std::int32_t col, std::uint16_t format) {
  if (handle >= has_cells_.size()) has_cells_.resize(handle + 1);
  has_cells_[handle] = true;
  cells_[Key(handle, col)] = format;
}

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
