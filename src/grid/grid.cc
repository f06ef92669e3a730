#include "grid/grid.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "catalog/recordset.h"
#include "vorek/error.h"

namespace vorek {

Grid::Grid(Control* parent, std::string name)
    : Control(parent, std::move(name)), arena_(std::make_unique<TextArena>()) {
  columns_.resize(2);
  order_ = {NewHandle(), NewHandle()};
}

std::size_t Grid::CheckRow(std::int32_t row) const {
  if (row >= 0 && row < Rows()) return static_cast<std::size_t>(row);
  throw Error(ErrorNumber::kSubscript, "Subscript out of range: row " + std::to_string(row) +
                                           " of " + Name() + " (" + std::to_string(Rows()) +
                                           " rows)");
}

std::size_t Grid::CheckCol(std::int32_t col) const {
  if (col >= 0 && col < Cols()) return static_cast<std::size_t>(col);
  throw Error(ErrorNumber::kSubscript, "Subscript out of range: column " + std::to_string(col) +
                                           " of " + Name() + " (" + std::to_string(Cols()) +
                                           " columns)");
}

void Grid::Touch(std::string_view property) {
  if (Drawn()) {
    Changed(property);
  } else {
    dirty_ = true;
  }
}

std::string Grid::TextMatrix(std::int32_t row, std::int32_t col) const {
  std::string scratch;
  return std::string(CellView(row, col, scratch));
}

std::string_view Grid::CellView(std::int32_t row, std::int32_t col, std::string& scratch) const {
  return Column(col).View(order_[CheckRow(row)], scratch);
}

std::string_view Grid::CellPlain(std::int32_t row, std::int32_t col, std::string& scratch) const {
  return Column(col).Plain(order_[CheckRow(row)], scratch);
}

bool Grid::IsNumber(std::int32_t row, std::int32_t col) const {
  return Column(col).IsNumber(order_[CheckRow(row)]);
}

double Grid::CellValue(std::int32_t row, std::int32_t col) const {
  return Column(col).Number(order_[CheckRow(row)]);
}

std::int64_t Grid::CellFixed(std::int32_t row, std::int32_t col) const {
  return Column(col).Fixed(order_[CheckRow(row)]);
}

bool Grid::SameText(std::int32_t row, std::int32_t other, std::int32_t col) const {
  return Column(col).SameText(order_[CheckRow(row)], order_[CheckRow(other)]);
}

std::vector<bool> Grid::Changes(std::int32_t col) const {
  const auto fixed = static_cast<std::size_t>(fixed_rows_);
  std::vector<bool> changes(order_.size(), true);
  if (IsSourced(col) && fixed == 1 && order_.front() == 0) {
    std::vector<std::uint32_t> records;
    records.reserve(order_.size() - 1);
    for (std::size_t i = 1; i < order_.size(); ++i) records.push_back(order_[i] - 1);
    const std::vector<bool> below = ColumnSource(col)->Changes(records);
    std::copy(below.begin(), below.end(), changes.begin() + 1);
    return changes;
  }
  for (std::int32_t row = fixed_rows_ + 1; row < Rows(); ++row) {
    AskAt(row);
    changes[static_cast<std::size_t>(row)] = !SameText(row, row - 1, col);
  }
  return changes;
}

bool Grid::IsSourced(std::int32_t row, std::int32_t col) const {
  return Column(col).IsSourced(order_[CheckRow(row)]);
}

bool Grid::IsSourced(std::int32_t col) const {
  const TextSource* const source = Column(col).Source();
  const bool all_bound = next_handle_ == bound_rows_ + 1;
  return all_bound && source != nullptr && source->Size() == bound_rows_;
}

bool Grid::IsNumbered(std::int32_t row) const { return IsSourced(row, 0); }

void Grid::SetCols(std::int32_t cols) {
  if (cols < 0) {
    throw Error(ErrorNumber::kInvalidCall,
                "Cols of " + Name() + " can't be " + std::to_string(cols));
  }
  if (cols == Cols()) return;
  if (cols < Cols()) formats_.DropColumns(cols);
  columns_.resize(static_cast<std::size_t>(cols));
  fixed_cols_ = std::min(fixed_cols_, std::max(cols - 1, 0));
  KeepSelectionInside();
  Touch("Cols");
}

void Grid::SetFixedRows(std::int32_t rows) {
  if (rows < 0 || rows >= std::max(Rows(), 1)) {
    throw Error(ErrorNumber::kInvalidCall, "FixedRows must be below Rows");
  }
  if (Assign(fixed_rows_, rows, "FixedRows")) top_row_ = std::max(top_row_, rows);
}

void Grid::SetFixedCols(std::int32_t cols) {
  if (cols < 0 || cols >= std::max(Cols(), 1)) {
    throw Error(ErrorNumber::kInvalidCall, "FixedCols must be below Cols");
  }
  if (Assign(fixed_cols_, cols, "FixedCols")) left_col_ = std::max(left_col_, cols);
}

void Grid::WriteCell(std::int32_t row, std::int32_t col, std::string_view text) {
  Column(col).Write(order_[CheckRow(row)], text, *arena_);
  if (arena_->Used() > compact_at_) CompactArena();
  Touch("Cells");
}

// Texts that were written over stay in the arena until more than half of it is waste.
void Grid::CompactArena() {
  std::size_t live = 0;
  for (const GridColumn& column : columns_) live += column.ArenaBytes();
  if (live < arena_->Used() / 2) {
    auto arena = std::make_unique<TextArena>();
    for (GridColumn& column : columns_) column.Rehome(*arena);
    arena_ = std::move(arena);
  }
  compact_at_ = std::max(std::size_t{1} << 24U, arena_->Used() * 2);
}

void Grid::Clear() {
  for (GridColumn& column : columns_) column.Clear();
  arena_ = std::make_unique<TextArena>();
  formats_.Clear();
  row_heights_.clear();
  std::iota(order_.begin(), order_.end(), 0U);
  StartHandlesAt(static_cast<std::uint32_t>(order_.size()));
  sort_mark_ = {};
  outline_ = Outline::kNone;
  Touch("Cells");
}

void Grid::Bind(const Recordset& recordset) {
  const ResultSetPtr result = recordset.SharedResult();
  if (result == nullptr) recordset.RecordCount();  // throws: the recordset is closed
  const std::int32_t records = recordset.RecordCount();
  Clear();
  order_.resize(static_cast<std::size_t>(records) + 1);
  std::iota(order_.begin(), order_.end(), 0U);
  StartHandlesAt(static_cast<std::uint32_t>(order_.size()));
  bound_rows_ = next_handle_ - 1;
  SetCols(static_cast<std::int32_t>(result->columns.size()) + 1);
  for (std::size_t field = 0; field < result->columns.size(); ++field) {
    columns_[field + 1].Show(
        std::make_shared<FieldSource>(result, field, recordset.SharedRecords(), CellForm::kPlain));
    WriteCell(0, static_cast<std::int32_t>(field) + 1, result->columns[field].Name());
  }
  fixed_rows_ = std::min(1, Rows() - 1);
  row_ = row_sel_ = std::min(1, Rows() - 1);
  col_ = col_sel_ = std::min(fixed_cols_, Cols() - 1);
  MoveView(row_, col_);
  Touch("Rows");
}

void Grid::SetRedraw(bool on) {
  redraw_ = on;
  DrawAgain();
}

Grid::Hold::~Hold() {
  --grid_.holds_;
  grid_.DrawAgain();
}

void Grid::DrawAgain() {
  if (!Drawn() || !std::exchange(dirty_, false)) return;
  for (const char* const property : {"Rows", "Cells", "Selection"}) Changed(property);
}

void Grid::ReformColumn(std::int32_t col, CellForm form) {
  GridColumn& column = Column(col);
  const auto* const source = dynamic_cast<const FieldSource*>(column.Source());
  const bool by_source = source != nullptr && source->Form() == CellForm::kPlain;
  const std::size_t sourced = by_source ? source->Size() : 0;
  if (by_source) column.Exchange(source->With(form));
  // Rows that were added beside the source's are formed one by one.
  const bool all_bound = by_source && next_handle_ == bound_rows_ + 1;
  std::string scratch;
  for (std::int32_t row = 1; !all_bound && row < Rows(); ++row) {
    const std::uint32_t handle = order_[static_cast<std::size_t>(row)];
    if (handle <= sourced) continue;
    column.Write(handle, FormText(CellView(row, col, scratch), form), *arena_);
  }
  Touch("Cells");
}

void Grid::ReformSource(std::int32_t col, CellForm form) {
  GridColumn& column = Column(col);
  const auto* const source = dynamic_cast<const FieldSource*>(column.AnySource());
  if (source == nullptr || source->Form() == form) return;
  column.Exchange(source->With(form));
  Touch("Cells");
}

std::optional<CellForm> Grid::SourceForm(std::int32_t col) const {
  const auto* const source = dynamic_cast<const FieldSource*>(Column(col).AnySource());
  return source == nullptr ? std::nullopt : std::optional(source->Form());
}

std::size_t Grid::Memory() const {
  std::size_t bytes =
      (order_.capacity() + free_handles_.capacity()) * sizeof(std::uint32_t) + arena_->Used();
  for (const GridColumn& column : columns_) bytes += column.Memory();
  return bytes + order_.size() * FormatStore::kRowBytes;
}

}  // namespace vorek
