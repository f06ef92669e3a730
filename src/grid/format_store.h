#ifndef VOREK_GRID_FORMAT_STORE_H_
#define VOREK_GRID_FORMAT_STORE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "vorek/grid.h"

namespace vorek {

// The formats of a grid's cells by row handle: one for the data columns that a row had when it was
// set, and single cells that differ from it. Equal formats are kept once.
class FormatStore {
 public:
  FormatStore() : table_(1) {}

  // Rows of more columns take their formats cell by cell.
  static constexpr std::int32_t kMostRowColumns = 0xFFFF;
  static constexpr std::size_t kRowBytes = 4;  // that a row takes

  const CellFormat& At(std::uint32_t handle, std::int32_t col) const;

  // Changes what `change` does to a format, in one cell or in all data columns of a row.
  template <typename Change>
  void ChangeCell(std::uint32_t handle, std::int32_t col, const Change& change) {
    CellFormat format = At(handle, col);
    change(format);
    SetCell(handle, col, Intern(format));
  }
  // REQUIRES: cols <= kMostRowColumns.
  template <typename Change>
  void ChangeRow(std::uint32_t handle, std::int32_t cols, const Change& change) {
    if (HasCells(handle)) ChangeCells(handle, cols, change);
    const RowFormat old = RowAt(handle);
    CellFormat format = table_[old.format];
    change(format);
    const RowFormat changed{Intern(format), static_cast<std::uint16_t>(cols)};
    if (!Covers(old, cols)) ChangeUncovered(handle, old, changed, change);
    SetRow(handle, changed);
  }

  // The back colour of all data columns of a row, for passes over many rows.
  void SetRowBackColor(std::uint32_t handle, std::int32_t color, std::int32_t cols);

  // Forgets the formats of a row, of the columns from `cols` on, of all rows but the one of handle
  // 0, or all.
  void Drop(std::uint32_t handle, std::int32_t cols);
  void DropColumns(std::int32_t cols);
  void KeepFirstRow();
  void Clear();

 private:
  static constexpr std::int32_t kNoColor = -2;  // that no cell has

  static std::uint64_t Key(std::uint32_t handle, std::int32_t col) {
    return (static_cast<std::uint64_t>(handle) << 32U) | static_cast<std::uint32_t>(col);
  }
  // A column that is added later has no format of its row's.
  struct RowFormat {
    std::uint16_t format = 0;
    std::uint16_t cols = 0;  // the columns from 1 to this less 1
  };
  // A back colour that makes one format out of another.
  struct Step {
    std::uint16_t from = 0;
    std::int32_t color = kNoColor;
    std::uint16_t to = 0;
  };
  RowFormat RowAt(std::uint32_t handle) const {
    return handle < rows_.size() ? rows_[handle] : RowFormat();
  }
  static bool Covers(RowFormat row, std::int32_t cols) {
    return row.format == 0 || row.cols >= cols;
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
  // The columns behind those that the old format covers start from the default.
  template <typename Change>
  void ChangeUncovered(std::uint32_t handle, RowFormat old, RowFormat changed,
                       const Change& change) {
    CellFormat format;
    change(format);
    const std::uint16_t behind = Intern(format);
    if (behind == changed.format) return;
    for (std::int32_t col = old.cols; col < changed.cols; ++col) {
      if (cells_.count(Key(handle, col)) == 0) SetCell(handle, col, behind);
    }
  }
  bool HasCells(std::uint32_t handle) const {
    return handle < has_cells_.size() && has_cells_[handle];
  }
  void SetCell(std::uint32_t handle, std::int32_t col, std::uint16_t format);
  void SetRow(std::uint32_t handle, RowFormat format);
  std::uint16_t Intern(const CellFormat& format);

  std::vector<CellFormat> table_;  // entry 0 is the default format
  std::vector<RowFormat> rows_;    // by handle
  std::unordered_map<std::uint64_t, std::uint16_t> cells_;
  std::vector<bool> has_cells_;  // by handle: one of cells_ may be the row's
  std::array<Step, 2> steps_;    // the last ones of SetRowBackColor: colours go in turn
};

}  // namespace vorek

#endif  // VOREK_GRID_FORMAT_STORE_H_
