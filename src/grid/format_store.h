#ifndef VOREK_GRID_FORMAT_STORE_H_
#define VOREK_GRID_FORMAT_STORE_H_

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "vorek/grid.h"

namespace vorek {

// The formats of a grid's cells by row handle: one for all data columns of a row, and single cells
// that differ from it. Equal formats are kept once.
class FormatStore {
 public:
  FormatStore() : table_(1) {}

  const CellFormat& At(std::uint32_t handle, std::int32_t col) const;

  // Changes what `change` does to a format, in one cell or in all data columns of a row.
  template <typename Change>
  void ChangeCell(std::uint32_t handle, std::int32_t col, const Change& change) {
    CellFormat format = At(handle, col);
    change(format);
    cells_[Key(handle, col)] = Intern(format);
  }
  template <typename Change>
  void ChangeRow(std::uint32_t handle, std::int32_t cols, const Change& change) {
    if (!cells_.empty()) ChangeCells(handle, cols, change);
    CellFormat format = table_[RowFormat(handle)];
    change(format);
    SetRow(handle, Intern(format));
  }

  // The back colour of all data columns of a row, for passes over many rows.
  void SetRowBackColor(std::uint32_t handle, std::int32_t color, std::int32_t cols);

  // Forgets the formats of a row, or all.
  void Drop(std::uint32_t handle, std::int32_t cols);
  void Clear();

 private:
  static std::uint64_t Key(std::uint32_t handle, std::int32_t col) {
    return (static_cast<std::uint64_t>(handle) << 32U) | static_cast<std::uint32_t>(col);
  }
  std::uint16_t RowFormat(std::uint32_t handle) const {
    return handle < rows_.size() ? rows_[handle] : 0;
  }
  template <typename Change>
  void ChangeCells(std::uint32_t handle, std::int32_t cols, const Change& change) {
    for (std::int32_t col = 1; col < cols; ++col) {
      const auto found = cells_.find(Key(handle, col));
      if (found == cells_.end()) continue;
      CellFormat format = table_[found->second];
      change(format);
      found->second = Intern(format);
    }
  }
  void SetRow(std::uint32_t handle, std::uint16_t format);
  std::uint16_t Intern(const CellFormat& format);

  std::vector<CellFormat> table_;    // entry 0 is the default format
  std::vector<std::uint16_t> rows_;  // by handle
  std::unordered_map<std::uint64_t, std::uint16_t> cells_;
  std::uint16_t last_from_ = 0;   // SetRowBackColor's last step: this format and colour
  std::int32_t last_color_ = -2;  // gave last_to_
  std::uint16_t last_to_ = 0;
};

}  // namespace vorek

#endif  // VOREK_GRID_FORMAT_STORE_H_
