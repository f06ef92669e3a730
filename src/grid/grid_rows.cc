#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "grid/grid.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr std::int32_t kMostRows = 0x7FFFFFF0;

}  // namespace

std::uint32_t Grid::NewHandle() {
  if (free_handles_.empty()) return next_handle_++;
  const std::uint32_t handle = free_handles_.back();
  free_handles_.pop_back();
  return handle;
}

// Empties the row that the handle stood for, so that a new row may take it. A bound row keeps its
// handle: its texts are the source's.
void Grid::DropHandle(std::uint32_t handle) {
  row_heights_.erase(handle);
  if (handle >= 1 && handle <= bound_rows_) return;
  for (GridColumn& column : columns_) column.Write(handle, {}, *arena_);
  formats_.Drop(handle, Cols());
  if (handle + 1 == next_handle_) {
    --next_handle_;
  } else {
    free_handles_.push_back(handle);
  }
}

void Grid::SetRows(std::int32_t rows) {
  if (rows < 0 || rows > kMostRows) {
    throw Error(ErrorNumber::kInvalidCall,
                "Rows of " + Name() + " can't be " + std::to_string(rows));
  }
  if (rows == Rows()) return;
  while (Rows() > rows) {
    DropHandle(order_.back());
    order_.pop_back();
  }
  ForgetDroppedRows();
  if (order_.capacity() > 4 * order_.size() + 1024) order_.shrink_to_fit();
  order_.reserve(static_cast<std::size_t>(rows));
  while (Rows() < rows) order_.push_back(NewHandle());
  fixed_rows_ = std::min(fixed_rows_, std::max(rows - 1, 0));
  KeepSelectionInside();
  Touch("Rows");
}

// When the header row alone is left, nothing of the others needs to be kept: the result that they
// showed is let go, and new rows take the first handles.
void Grid::ForgetDroppedRows() {
  if (order_.size() != 1 || order_.front() != 0) return;
  auto arena = std::make_unique<TextArena>();
  for (GridColumn& column : columns_) column.KeepFirst(*arena);
  arena_ = std::move(arena);
  formats_.KeepFirstRow();
  StartHandlesAt(1);
}

void Grid::StartHandlesAt(std::uint32_t next) {
  next_handle_ = next;
  bound_rows_ = 0;
  free_handles_ = {};
  order_.shrink_to_fit();
}

void Grid::AddItem(std::string_view text, std::int32_t index) {
  const std::int32_t at = index < 0 ? Rows() : index;
  if (at > Rows()) CheckRow(at);
  CheckCol(0);
  order_.insert(order_.begin() + at, NewHandle());
  WriteCell(at, 0, text);
  Touch("Rows");
}

void Grid::RemoveItem(std::int32_t index) {
  const std::size_t at = CheckRow(index);
  DropHandle(order_[at]);
  order_.erase(order_.begin() + index);
  fixed_rows_ = std::min(fixed_rows_, std::max(Rows() - 1, 0));
  KeepSelectionInside();
  Touch("Rows");
}

bool Grid::RowsAreInOrder() const {
  for (std::size_t row = 0; row < order_.size(); ++row) {
    if (order_[row] != row) return false;
  }
  return true;
}

// Bound rows get their numbers from a source, however they were moved; the others one by one.
void Grid::NumberRows() {
  if (Rows() < 1 || Cols() < 1) return;
  const std::string header = TextMatrix(0, 0);
  if (RowsAreInOrder()) {
    columns_[0].Show(std::make_shared<CountSource>(static_cast<std::size_t>(Rows()) - 1));
  } else {
    columns_[0].Show(NumbersOfBoundRows());
  }
  WriteCell(0, 0, header);
  for (std::int32_t row = 1; row < Rows(); ++row) {
    if (!IsNumbered(row)) WriteCell(row, 0, std::to_string(row));
  }
}

std::shared_ptr<const TextSource> Grid::NumbersOfBoundRows() const {
  std::vector<std::uint32_t> numbers(bound_rows_);
  for (std::uint32_t row = 1; row < order_.size(); ++row) {
    const std::uint32_t handle = order_[row];
    if (handle >= 1 && handle <= bound_rows_) numbers[handle - 1] = row;
  }
  return std::make_shared<NumberSource>(std::move(numbers));
}

void Grid::InsertRows(std::int32_t index, std::int32_t count) {
  if (index > Rows()) CheckRow(index);
  std::vector<std::uint32_t> handles(static_cast<std::size_t>(std::max(count, 0)));
  for (std::uint32_t& handle : handles) handle = NewHandle();
  order_.insert(order_.begin() + index, handles.begin(), handles.end());
  Touch("Rows");
}

void Grid::RemoveRows(std::int32_t index, std::int32_t count) {
  if (count < 1) return;
  CheckRow(index);
  CheckRow(index + count - 1);
  for (std::int32_t row = index; row < index + count; ++row) {
    DropHandle(order_[static_cast<std::size_t>(row)]);
  }
  order_.erase(order_.begin() + index, order_.begin() + index + count);
  fixed_rows_ = std::min(fixed_rows_, std::max(Rows() - 1, 0));
  KeepSelectionInside();
  Touch("Rows");
}

void Grid::KeepRows(const std::vector<std::int32_t>& rows) {
  std::vector<std::uint32_t> kept(rows.size());
  std::vector<bool> stays(order_.size(), false);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    stays[CheckRow(rows[i])] = true;
    kept[i] = order_[static_cast<std::size_t>(rows[i])];
  }
  for (std::size_t row = 0; row < order_.size(); ++row) {
    if (!stays[row]) DropHandle(order_[row]);
  }
  order_ = std::move(kept);
  fixed_rows_ = std::min(fixed_rows_, std::max(Rows() - 1, 0));
  KeepSelectionInside();
  Touch("Rows");
}

void Grid::Rearrange(const std::vector<std::int32_t>& order) {
  std::vector<std::uint32_t> moved(order.size());
  for (std::size_t row = 0; row < order.size(); ++row) moved[row] = order_[CheckRow(order[row])];
  order_ = std::move(moved);
  sort_mark_ = {};
  Touch("Cells");
}

}  // namespace vorek
