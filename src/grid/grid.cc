#include "grid/grid.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "catalog/recordset.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr std::int32_t kMostRows = 0x7FFFFFF0;

}  // namespace

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

void Grid::Touch(std::string_view property) {
  if (Drawn()) {
    Changed(property);
  } else {
    dirty_ = true;
  }
}

// --- Events from the presenter ---------------------------------------------------------------

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

void Grid::ResizeByUser(std::int32_t col, std::int32_t twips) {
  SetColWidth(col, twips);
  if (on_user_resize) on_user_resize(col);
}

// --- State -------------------------------------------------------------------------------------

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

// --- Size --------------------------------------------------------------------------------------

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

// --- Texts -------------------------------------------------------------------------------------

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

// --- Selection ---------------------------------------------------------------------------------

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

// --- Measures and formats ------------------------------------------------------------------------

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

// --- Whole columns -------------------------------------------------------------------------------

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

std::size_t Grid::Memory() const {
  std::size_t bytes =
      (order_.capacity() + free_handles_.capacity()) * sizeof(std::uint32_t) + arena_->Used();
  for (const GridColumn& column : columns_) bytes += column.Memory();
  return bytes + order_.size() * FormatStore::kRowBytes;
}

}  // namespace vorek
