#include <algorithm>
#include <string>

#include "grid/grid.h"

namespace vorek {

void Grid::PointAt(std::int32_t row, std::int32_t col) {
  mouse_row_ = row;
  mouse_col_ = col;
}

void Grid::SelectByUser(std::int32_t row, std::int32_t col, std::int32_t row_sel,
                        std::int32_t col_sel) {
  CheckRow(row);
  CheckCol(col);
  CheckRow(row_sel);
  CheckCol(col_sel);
  Select(row, col, row_sel, col_sel);
}

void Grid::ScrollByUser(std::int32_t top_row, std::int32_t left_col) {
  CheckRow(top_row);
  CheckCol(left_col);
  top_row_ = top_row;
  left_col_ = left_col;
  if (on_scroll) on_scroll();
}

std::string Grid::Clip() const {
  const auto [top, bottom] = std::minmax(row_, row_sel_);
  const auto [first, last] = std::minmax(col_, col_sel_);
  std::string clip;
  std::string scratch;
  for (std::int32_t row = top; row <= bottom; ++row) {
    AskAt(row);
    if (row > top) clip += '\r';
    for (std::int32_t col = first; col <= last; ++col) {
      if (col > first) clip += '\t';
      clip += CellView(row, col, scratch);
    }
  }
  return clip;
}

void Grid::KeepSelectionInside() {
  const auto hold = [](std::int32_t& value, std::int32_t count) {
    value = std::clamp(value, 0, std::max(count - 1, 0));
  };
  std::int32_t top_row = top_row_;
  std::int32_t left_col = left_col_;
  for (std::int32_t* row : {&row_, &row_sel_, &top_row}) hold(*row, Rows());
  for (std::int32_t* col : {&col_, &col_sel_, &left_col}) hold(*col, Cols());
  MoveView(top_row, left_col);
}

// Who keeps the position hears of it, by whatever it was moved.
void Grid::MoveView(std::int32_t top_row, std::int32_t left_col) {
  if (top_row == top_row_ && left_col == left_col_) return;
  top_row_ = top_row;
  left_col_ = left_col;
  if (on_scroll) on_scroll();
}

void Grid::Select(std::int32_t row, std::int32_t col, std::int32_t row_sel, std::int32_t col_sel) {
  if (row == row_ && col == col_ && row_sel == row_sel_ && col_sel == col_sel_) return;
  row_ = row;
  col_ = col;
  row_sel_ = row_sel;
  col_sel_ = col_sel;
  Touch("Selection");
  if (redraw_ && on_sel_change) on_sel_change();
}

void Grid::SetRow(std::int32_t row) {
  CheckRow(row);
  Select(row, col_, row, col_);
}

void Grid::SetCol(std::int32_t col) {
  CheckCol(col);
  Select(row_, col, row_, col);
}

void Grid::SetRowSel(std::int32_t row) {
  CheckRow(row);
  Select(row_, col_, row, col_sel_);
}

void Grid::SetColSel(std::int32_t col) {
  CheckCol(col);
  Select(row_, col_, row_sel_, col);
}

void Grid::SetTopRow(std::int32_t row) {
  CheckRow(row);
  if (top_row_ == row) return;
  top_row_ = row;
  Touch("TopRow");
  if (on_scroll) on_scroll();
}

void Grid::SetLeftCol(std::int32_t col) {
  CheckCol(col);
  if (left_col_ == col) return;
  left_col_ = col;
  Touch("LeftCol");
  if (on_scroll) on_scroll();
}

}  // namespace vorek
