#include <algorithm>
#include <utility>

#include "grid/grid.h"

namespace vorek {

void Grid::ResizeByUser(std::int32_t col, std::int32_t twips) {
  SetColWidth(col, twips);
  if (on_user_resize) on_user_resize(col);
}

std::int32_t Grid::CellLeft() const {
  std::int32_t before = 0;
  for (std::int32_t col = 0; col < col_; ++col) {
    if (col < fixed_cols_ || col >= left_col_) before += ColWidth(col);
  }
  return RightToLeft() ? Width() - before - ColWidth(col_) : before;
}

std::int32_t Grid::RowHeight(std::int32_t row) const {
  const auto found = row_heights_.find(order_[CheckRow(row)]);
  if (found != row_heights_.end()) {
    return found->second == 0 ? 0 : std::max(found->second, row_height_min_);
  }
  return std::max(kDefaultRowHeight, row_height_min_);
}

CellFormat Grid::FormatAt(std::int32_t row, std::int32_t col) const {
  CheckCol(col);
  return formats_.At(order_[CheckRow(row)], col);
}

void Grid::SetColWidth(std::int32_t col, std::int32_t twips) {
  if (std::exchange(Column(col).width, std::max(twips, 0)) != twips) Touch("ColWidth");
}

void Grid::SetRowHeight(std::int32_t row, std::int32_t twips) {
  row_heights_[order_[CheckRow(row)]] = std::max(twips, 0);
  Touch("RowHeight");
}

void Grid::SetRowHeightMin(std::int32_t twips) {
  if (std::exchange(row_height_min_, std::max(twips, 0)) != twips) Touch("RowHeight");
}

void Grid::SetColAlignment(std::int32_t col, std::int32_t alignment) {
  if (std::exchange(Column(col).alignment, alignment) != alignment) Touch("ColAlignment");
}

void Grid::SetFixedAlignment(std::int32_t col, std::int32_t alignment) {
  if (std::exchange(Column(col).fixed_alignment, alignment) != alignment) Touch("ColAlignment");
}

template <typename Change>
void Grid::ChangeSelection(const Change& change) {
  const auto [top, bottom] = std::minmax(row_, row_sel_);
  const auto [first, last] = std::minmax(col_, col_sel_);
  for (std::int32_t row = top; row <= bottom; ++row) {
    const std::uint32_t handle = order_[CheckRow(row)];
    if (first <= 1 && last == Cols() - 1 && last >= 1 && Cols() <= FormatStore::kMostRowColumns) {
      formats_.ChangeRow(handle, Cols(), change);
      if (first == 0) formats_.ChangeCell(handle, 0, change);
      continue;
    }
    for (std::int32_t col = first; col <= last; ++col) formats_.ChangeCell(handle, col, change);
  }
  Touch("Formats");
}

void Grid::SetCellBackColor(std::int32_t color) {
  ChangeSelection([color](CellFormat& format) { format.back_color = color; });
}

void Grid::SetCellForeColor(std::int32_t color) {
  ChangeSelection([color](CellFormat& format) { format.fore_color = color; });
}

void Grid::SetCellAlignment(std::int32_t alignment) {
  ChangeSelection(
      [alignment](CellFormat& format) { format.alignment = static_cast<std::int16_t>(alignment); });
}

void Grid::SetCellTextStyle(std::int32_t style) {
  ChangeSelection(
      [style](CellFormat& format) { format.text_style = static_cast<std::int8_t>(style); });
}

void Grid::SetCellFontBold(bool bold) {
  ChangeSelection([bold](CellFormat& format) { format.bold = bold; });
}

void Grid::SetRowBackColor(std::int32_t row, std::int32_t color) {
  const std::uint32_t handle = order_[CheckRow(row)];
  const auto change = [color](CellFormat& format) { format.back_color = color; };
  if (Cols() <= FormatStore::kMostRowColumns) {
    formats_.SetRowBackColor(handle, color, Cols());
  } else {
    for (std::int32_t col = 1; col < Cols(); ++col) formats_.ChangeCell(handle, col, change);
  }
  Touch("Formats");
}

}  // namespace vorek
