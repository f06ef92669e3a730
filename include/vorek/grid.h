#ifndef VOREK_GRID_H_
#define VOREK_GRID_H_

#include <cstdint>
#include <string>

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
// the grid throws Error(kSubscript).
class FlexGrid {
 public:
  virtual std::int32_t Rows() const = 0;
  virtual std::int32_t Cols() const = 0;
  virtual void SetRows(std::int32_t rows) = 0;
  virtual void SetCols(std::int32_t cols) = 0;

  // The text of any cell; no change of the selection.
  virtual std::string TextMatrix(std::int32_t row, std::int32_t col) const = 0;
  virtual void SetTextMatrix(std::int32_t row, std::int32_t col, const std::string& text) = 0;

  // The selection runs from Row, Col to RowSel, ColSel.
  virtual std::int32_t Row() const = 0;
  virtual std::int32_t Col() const = 0;
  virtual std::int32_t RowSel() const = 0;
  virtual std::int32_t ColSel() const = 0;
  // Collapses the selection to the cell.
  virtual void SetRow(std::int32_t row) = 0;
  virtual void SetCol(std::int32_t col) = 0;

  // 0 hides a column or a row.
  virtual std::int32_t ColWidth(std::int32_t col) const = 0;
  virtual std::int32_t RowHeight(std::int32_t row) const = 0;
  virtual std::int32_t ColAlignment(std::int32_t col) const = 0;

  virtual CellFormat FormatAt(std::int32_t row, std::int32_t col) const = 0;

 protected:
  ~FlexGrid() = default;
};

}  // namespace vorek

#endif  // VOREK_GRID_H_
