#ifndef VOREK_GRID_H_
#define VOREK_GRID_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace vorek {

// How a cell looks. Colours count blue, green, red from the high byte down; -1 is the grid's own.
struct CellFormat {
  std::int32_t back_color = -1;
  std::int32_t fore_color = -1;
  std::int16_t alignment = -1;  // 1 left, 4 centre, 7 right; -1 as the column has it
  std::int8_t text_style = 0;   // 0 flat, 1 raised, 2 inset
  bool bold = false;

  bool operator==(const CellFormat&) const = default;
};

// A grid of a control as a host reads and changes it. Rows and columns count from 0; row 0 is the
// header row, column 0 the fixed column of row numbers. Measures are twips. A row or column outside
// the grid throws Error(kSubscript), a count that can't be Error(kInvalidCall).
class FlexGrid {
 public:
  // --- Size ------------------------------------------------------------------------------------

  virtual std::int32_t Rows() const = 0;
  virtual std::int32_t Cols() const = 0;
  // Raising adds empty rows and columns, lowering drops the last ones with all that they hold;
  // fixed ones become fewer if need be.
  virtual void SetRows(std::int32_t rows) = 0;
  virtual void SetCols(std::int32_t cols) = 0;
  // Below Rows and Cols: fixed rows and columns don't scroll, and aren't sorted.
  virtual std::int32_t FixedRows() const = 0;
  virtual std::int32_t FixedCols() const = 0;
  virtual void SetFixedRows(std::int32_t rows) = 0;
  virtual void SetFixedCols(std::int32_t cols) = 0;

  // A new row with the text in column 0, at the index or at the end (-1).
  virtual void AddItem(std::string_view text, std::int32_t index = -1) = 0;
  virtual void RemoveItem(std::int32_t index) = 0;
  // Empties all texts and formats; rows, columns and their measures stay.
  virtual void Clear() = 0;

  // --- Texts -----------------------------------------------------------------------------------

  // The text of any cell; no change of the selection.
  virtual std::string TextMatrix(std::int32_t row, std::int32_t col) const = 0;
  virtual void SetTextMatrix(std::int32_t row, std::int32_t col, const std::string& text) = 0;
  // The text of the current cell, Row and Col.
  virtual std::string Text() const = 0;
  virtual void SetText(const std::string& text) = 0;
  // The selection as text: tabs between cells, a carriage return between rows.
  virtual std::string Clip() const = 0;

  // Sorts the rows below the fixed ones by column Col, moving whole rows and changing no text: 1
  // generic ascending, 2 generic descending, 3 numeric ascending, 4 numeric descending, 5 and 6
  // texts without regard to case, 7 and 8 texts exactly. Rows that are equal keep their order.
  // Other numbers have no effect.
  virtual void Sort(std::int32_t order) = 0;

  // --- Selection and view ----------------------------------------------------------------------

  // The selection runs from Row, Col to RowSel, ColSel.
  virtual std::int32_t Row() const = 0;
  virtual std::int32_t Col() const = 0;
  virtual std::int32_t RowSel() const = 0;
  virtual std::int32_t ColSel() const = 0;
  // Collapses the selection to the cell; the other end is set afterwards.
  virtual void SetRow(std::int32_t row) = 0;
  virtual void SetCol(std::int32_t col) = 0;
  virtual void SetRowSel(std::int32_t row) = 0;
  virtual void SetColSel(std::int32_t col) = 0;
  // The first row and the first scrollable column in view.
  virtual std::int32_t TopRow() const = 0;
  virtual std::int32_t LeftCol() const = 0;
  virtual void SetTopRow(std::int32_t row) = 0;
  virtual void SetLeftCol(std::int32_t col) = 0;
  // The cell under the pointer; -1, -1 outside.
  virtual std::int32_t MouseRow() const = 0;
  virtual std::int32_t MouseCol() const = 0;
  // While false nothing is drawn and no change of the selection told.
  virtual bool Redraw() const = 0;
  virtual void SetRedraw(bool on) = 0;

  // --- Measures and looks ------------------------------------------------------------------------

  // 0 hides a column or a row. No row that shows is lower than RowHeightMin.
  virtual std::int32_t ColWidth(std::int32_t col) const = 0;
  virtual void SetColWidth(std::int32_t col, std::int32_t twips) = 0;
  virtual std::int32_t RowHeight(std::int32_t row) const = 0;
  virtual void SetRowHeight(std::int32_t row, std::int32_t twips) = 0;
  virtual std::int32_t RowHeightMin() const = 0;
  virtual void SetRowHeightMin(std::int32_t twips) = 0;
  virtual double FontSize() const = 0;  // points
  virtual void SetFontSize(double points) = 0;
  // 1 left, 4 centre, 7 right; FixedAlignment is that of the cells in fixed rows.
  virtual std::int32_t ColAlignment(std::int32_t col) const = 0;
  virtual void SetColAlignment(std::int32_t col, std::int32_t alignment) = 0;
  virtual std::int32_t FixedAlignment(std::int32_t col) const = 0;
  virtual void SetFixedAlignment(std::int32_t col, std::int32_t alignment) = 0;

  virtual CellFormat FormatAt(std::int32_t row, std::int32_t col) const = 0;
  // Formats of every cell of the selection; see CellFormat for the values.
  virtual void SetCellBackColor(std::int32_t color) = 0;
  virtual void SetCellForeColor(std::int32_t color) = 0;
  virtual void SetCellAlignment(std::int32_t alignment) = 0;
  virtual void SetCellTextStyle(std::int32_t style) = 0;
  virtual void SetCellFontBold(bool bold) = 0;

 protected:
  ~FlexGrid() = default;
};

}  // namespace vorek

#endif  // VOREK_GRID_H_
