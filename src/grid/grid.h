#ifndef VOREK_GRID_GRID_H_
#define VOREK_GRID_GRID_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "grid/format_store.h"
#include "grid/grid_column.h"
#include "vorek/grid.h"
#include "vorek/pass_watch.h"
#include "widgets/control.h"

namespace vorek {

class Recordset;

// By which column the rows are sorted, so that its header can tell; column 0 for none.
struct SortMark {
  std::int32_t column = 0;
  bool descending = false;
  bool operator==(const SortMark&) const = default;
};

// What the "+" and "-" in a grid's texts open and close (see grid/outline_mark.h).
enum class Outline {
  kNone,
  kTree,        // rows, by the end of the text in column 0
  kCrossTable,  // sub-rows by column 0, columns by the beginning of their headers
};

// A grid without a screen: the data store of a report. Every pass reads and writes cell texts.
//
// Rows and columns count from 0; row 0 is the fixed header row, column 0 the fixed column of row
// numbers. Measures are twips. A row or column outside the grid throws Error(kSubscript).
//
// Rows are moved by handle: a row's texts, formats and height belong to its handle, and sorting,
// inserting and removing only move handles. Bound rows have the handles from 1 on in the order of
// the records, the header row has handle 0.
class Grid final : public Control, public FlexGrid {
 public:
  Grid(Control* parent, std::string name);

  // The grid isn't drawn anew while it lives, whatever Redraw says: for a run of many passes.
  class Hold {
   public:
    explicit Hold(Grid& grid) : grid_(grid) { ++grid_.holds_; }
    ~Hold();
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    Grid& grid_;
  };

  // --- Events from the presenter -------------------------------------------------------------

  // The cell under the pointer, told before Click, DblClick, MouseDown and MouseMove; -1, -1
  // outside.
  void PointAt(std::int32_t row, std::int32_t col);
  // The user selected from the first cell to the second, or scrolled.
  void SelectByUser(std::int32_t row, std::int32_t col, std::int32_t row_sel, std::int32_t col_sel);
  void ScrollByUser(std::int32_t top_row, std::int32_t left_col);
  // The user drew a column's edge.
  void ResizeByUser(std::int32_t col, std::int32_t twips);

  // --- State for the presenter and the passes ------------------------------------------------

  std::string_view Kind() const override { return "Grid"; }
  std::int32_t Rows() const override { return static_cast<std::int32_t>(order_.size()); }
  std::int32_t Cols() const override { return static_cast<std::int32_t>(columns_.size()); }
  std::int32_t FixedRows() const override { return fixed_rows_; }
  std::int32_t FixedCols() const override { return fixed_cols_; }
  std::string TextMatrix(std::int32_t row, std::int32_t col) const override;
  // TextMatrix without a copy: lives until the next write or the next call with the same scratch.
  std::string_view CellView(std::int32_t row, std::int32_t col, std::string& scratch) const;
  // A text that UnformatNumber reads as it reads the cell's, made without digit groups.
  std::string_view CellPlain(std::int32_t row, std::int32_t col, std::string& scratch) const;
  // True if the cell shows a number, or nothing, that its field gives.
  bool IsNumber(std::int32_t row, std::int32_t col) const;
  // The number that a cell's text stands for (see CellNumber).
  double CellValue(std::int32_t row, std::int32_t col) const;
  // What the cell counts in a total, in ten-thousandths (see CellFixedPoint).
  std::int64_t CellFixed(std::int32_t row, std::int32_t col) const;
  // True if the texts of two rows' cells are equal.
  bool SameText(std::int32_t row, std::int32_t other, std::int32_t col) const;
  // For each row from 0 whether its cell's text is another one than that of the row above; true for
  // the first row below the fixed ones.
  std::vector<bool> Changes(std::int32_t col) const;
  // True if the cell shows what ColumnSource gives.
  bool IsSourced(std::int32_t row, std::int32_t col) const;
  // True if all of the column's data cells do.
  bool IsSourced(std::int32_t col) const;
  // True if column 0 of the row holds the number that NumberRows gave it.
  bool IsNumbered(std::int32_t row) const;
  std::int32_t Row() const override { return row_; }
  std::int32_t Col() const override { return col_; }
  std::int32_t RowSel() const override { return row_sel_; }
  std::int32_t ColSel() const override { return col_sel_; }
  std::string Text() const override { return TextMatrix(row_, col_); }
  std::string Clip()
      const override;  // the selection: tabs between cells, a carriage return between rows
  std::int32_t TopRow() const override { return top_row_; }
  std::int32_t LeftCol() const override { return left_col_; }
  std::int32_t MouseRow() const override { return mouse_row_; }
  std::int32_t MouseCol() const override { return mouse_col_; }
  std::int32_t CellLeft() const;  // of the current cell, from the grid's own left edge
  std::int32_t ColWidth(std::int32_t col) const override { return Column(col).width; }
  std::int32_t RowHeight(std::int32_t row) const override;
  // False while every row has the same height, so that none needs to be asked for its own.
  bool RowHeightsDiffer() const { return !row_heights_.empty(); }
  std::int32_t RowHeightMin() const override { return row_height_min_; }
  std::int32_t ColAlignment(std::int32_t col) const override { return Column(col).alignment; }
  std::int32_t FixedAlignment(std::int32_t col) const override {
    return Column(col).fixed_alignment;
  }
  CellFormat FormatAt(std::int32_t row, std::int32_t col) const override;
  CellFormat CurrentFormat() const { return FormatAt(row_, col_); }
  bool Redraw() const override { return redraw_; }
  // False while Redraw is off or a Hold lives: a screen goes on showing what it showed.
  bool Drawn() const { return redraw_ && holds_ == 0; }
  std::int32_t FocusRect() const { return focus_rect_; }
  std::int32_t HighLight() const { return high_light_; }
  const SortMark& SortedBy() const { return sort_mark_; }
  Outline OutlineKind() const { return outline_; }
  std::int32_t MousePointer() const { return mouse_pointer_; }
  double FontSize() const override { return font_size_; }  // points
  static constexpr std::int32_t kDefaultRowHeight = 240;
  static constexpr double kDefaultFontSize = 8.25;

  // --- Changes by the program ------------------------------------------------------------------

  // Lowering drops the last rows or columns; fixed ones become fewer if need be.
  void SetRows(std::int32_t rows) override;
  void SetCols(std::int32_t cols) override;
  void SetFixedRows(std::int32_t rows) override;
  void SetFixedCols(std::int32_t cols) override;
  void SetTextMatrix(std::int32_t row, std::int32_t col, const std::string& text) override {
    WriteCell(row, col, text);
  }
  void WriteCell(std::int32_t row, std::int32_t col, std::string_view text);
  void SetRow(std::int32_t row) override;
  void SetCol(std::int32_t col) override;
  void SetRowSel(std::int32_t row) override;
  void SetColSel(std::int32_t col) override;
  void SetText(const std::string& text) override { WriteCell(row_, col_, text); }
  void SetTopRow(std::int32_t row) override;
  void SetLeftCol(std::int32_t col) override;
  void SetColWidth(std::int32_t col, std::int32_t twips) override;
  void SetRowHeight(std::int32_t row, std::int32_t twips) override;
  void SetRowHeightMin(std::int32_t twips) override;
  void SetColAlignment(std::int32_t col, std::int32_t alignment) override;
  void SetFixedAlignment(std::int32_t col, std::int32_t alignment) override;
  void SetRedraw(bool on) override;
  void SetFocusRect(std::int32_t value) { Assign(focus_rect_, value, "FocusRect"); }
  void SetHighLight(std::int32_t value) { Assign(high_light_, value, "HighLight"); }
  // Holds until the rows come into another order.
  void SetSortedBy(SortMark mark) { Assign(sort_mark_, mark, "SortedBy"); }
  void SetOutlineKind(Outline kind) { Assign(outline_, kind, "OutlineKind"); }
  void SetMousePointer(std::int32_t value) { Assign(mouse_pointer_, value, "MousePointer"); }
  void SetFontSize(double points) override { Assign(font_size_, points, "FontSize"); }

  // Formats of every cell from Row, Col to RowSel, ColSel.
  void SetCellBackColor(std::int32_t color) override;
  void SetCellForeColor(std::int32_t color) override;
  void SetCellAlignment(std::int32_t alignment) override;
  void SetCellTextStyle(std::int32_t style) override;
  void SetCellFontBold(bool bold) override;
  // The same as a selection of columns 1 to Cols - 1 of a row with SetCellBackColor, without it.
  void SetRowBackColor(std::int32_t row, std::int32_t color);

  // A new row with the text in column 0, at the index or at the end (-1).
  void AddItem(std::string_view text, std::int32_t index = -1) override;
  void RemoveItem(std::int32_t index) override;
  // Empties all texts, formats and marks; rows, columns and their measures stay.
  void Clear() override;

  // Sees the passes over the rows; null for none.
  void SetWatch(PassWatch* watch) { watch_ = watch; }
  // A pass comes to the row. Throws Error(kCancelled) if the user cancelled it.
  void AskAt(std::int32_t row) const {
    if (watch_ != nullptr) watch_->At(row, Rows());
  }
  // The same for a work that has no rows to count.
  void Ask() const {
    if (watch_ != nullptr) watch_->At(0);
  }

  // Sorts the rows below the fixed ones by column Col: 1 generic ascending, 2 generic descending,
  // 3 numeric ascending, 4 numeric descending, 5 and 6 texts without regard to case, 7 and 8 texts
  // exactly. Stable. Other numbers have no effect.
  void Sort(std::int32_t order) override;

  // Loads the open recordset: row 0 gets the field names, field n stands in column n + 1, record m
  // in row m; column 0 is empty. The grid shares the records and doesn't copy them.
  void Bind(const Recordset& recordset);

  // --- Whole columns, for passes ---------------------------------------------------------------

  // A column by the handles of its rows, for passes that read all of its cells: until the next
  // change of the grid.
  const GridColumn& ColumnCells(std::int32_t col) const { return Column(col); }
  // Gives every data cell of the column another form; the same as FormText on each text.
  void ReformColumn(std::int32_t col, CellForm form);
  // The same for the rows alone whose cells show what the column's field gives, as its form is
  // another one.
  void ReformSource(std::int32_t col, CellForm form);
  // The form that the column's field is shown in; none for a column without a field.
  std::optional<CellForm> SourceForm(std::int32_t col) const;
  // Numbers the data rows from 1 in column 0.
  void NumberRows();
  // So many empty rows at the index, or so many rows from it taken away.
  void InsertRows(std::int32_t index, std::int32_t count);
  void RemoveRows(std::int32_t index, std::int32_t count);
  // Keeps these rows, in this order, and drops the others. REQUIRES: no row twice.
  void KeepRows(const std::vector<std::int32_t>& rows);
  // The data source of a column while all of its cells are as it gives them, else null; record n
  // of it stands in the row of handle n + 1.
  const TextSource* ColumnSource(std::int32_t col) const { return Column(col).Source(); }
  std::uint32_t RowHandle(std::int32_t row) const { return order_[CheckRow(row)]; }
  // Rearranges the rows: row i becomes what row order[i] was. REQUIRES: a permutation of all rows.
  void Rearrange(const std::vector<std::int32_t>& order);

  // Bytes that the grid holds by itself, without the result that it shares.
  std::size_t Memory() const;

  // --- Callbacks to the owner ------------------------------------------------------------------

  // The selection is another one, by the user or by the program while Redraw is on.
  std::function<void()> on_sel_change;
  std::function<void()> on_scroll;
  std::function<void(std::int32_t col)> on_user_resize;

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::size_t CheckRow(std::int32_t row) const;
  std::size_t CheckCol(std::int32_t col) const;
  const GridColumn& Column(std::int32_t col) const { return columns_[CheckCol(col)]; }
  GridColumn& Column(std::int32_t col) { return columns_[CheckCol(col)]; }
  std::uint32_t NewHandle();
  void DropHandle(std::uint32_t handle);
  void ForgetDroppedRows();
  void StartHandlesAt(std::uint32_t next);
  void KeepSelectionInside();
  void MoveView(std::int32_t top_row, std::int32_t left_col);
  void Select(std::int32_t row, std::int32_t col, std::int32_t row_sel, std::int32_t col_sel);
  void Touch(std::string_view property);
  void DrawAgain();
  void CompactArena();
  bool RowsAreInOrder() const;
  std::shared_ptr<const TextSource> NumbersOfBoundRows() const;
  template <typename Change>
  void ChangeSelection(const Change& change);

  std::vector<GridColumn> columns_;
  std::vector<std::uint32_t> order_;  // the handle of each row
  std::vector<std::uint32_t> free_handles_;
  std::uint32_t next_handle_ = 0;
  std::uint32_t bound_rows_ = 0;  // handles 1 to this belong to the records of the last Bind
  std::unique_ptr<TextArena> arena_;
  std::size_t compact_at_ = std::size_t{1} << 24U;  // arena bytes at which waste is looked for
  FormatStore formats_;
  std::unordered_map<std::uint32_t, std::int32_t> row_heights_;  // by handle, where set
  std::int32_t row_height_min_ = 0;
  std::int32_t fixed_rows_ = 1;
  std::int32_t fixed_cols_ = 1;
  std::int32_t row_ = 1;
  std::int32_t col_ = 1;
  std::int32_t row_sel_ = 1;
  std::int32_t col_sel_ = 1;
  std::int32_t top_row_ = 1;
  std::int32_t left_col_ = 1;
  std::int32_t mouse_row_ = -1;
  std::int32_t mouse_col_ = -1;
  std::int32_t focus_rect_ = 1;
  std::int32_t high_light_ = 1;
  std::int32_t mouse_pointer_ = 0;
  SortMark sort_mark_;
  Outline outline_ = Outline::kNone;
  double font_size_ = kDefaultFontSize;
  bool redraw_ = true;
  int holds_ = 0;
  bool dirty_ = false;  // changed while nothing was drawn
  PassWatch* watch_ = nullptr;
};

}  // namespace vorek

#endif  // VOREK_GRID_GRID_H_
