#include "grid/format_store.h"

#include <algorithm>

#include "vorek/error.h"

namespace vorek {

const CellFormat& FormatStore::At(std::uint32_t handle, std::int32_t col) const {
  if (!cells_.empty()) {
    const auto found = cells_.find(Key(handle, col));
    if (found != cells_.end()) return table_[found->second];
  }
  return table_[col >= 1 ? RowFormat(handle) : 0];
}

void FormatStore::SetRowBackColor(std::uint32_t handle, std::int32_t color, std::int32_t cols) {
  const auto change = [color](CellFormat& format) { format.back_color = color; };
  const std::uint16_t from = RowFormat(handle);
  if (!cells_.empty() || from != last_from_ || color != last_color_) {
    ChangeRow(handle, cols, change);
    last_from_ = from;
    last_color_ = color;
    last_to_ = RowFormat(handle);
    return;
  }
  SetRow(handle, last_to_);
}

void FormatStore::Drop(std::uint32_t handle, std::int32_t cols) {
  if (handle < rows_.size()) rows_[handle] = 0;
  for (std::int32_t col = 0; !cells_.empty() && col < cols; ++col) cells_.erase(Key(handle, col));
}

void FormatStore::Clear() { *this = FormatStore(); }

void FormatStore::SetRow(std::uint32_t handle, std::uint16_t format) {
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
