#include "grid/grid.h"
#include "widgets/property.h"

// The properties of a grid as a script reaches them.
namespace vorek {
namespace {

using Arguments = std::vector<std::string>;
using property::Argument;
using property::FromText;
using property::ReadOnly;
using property::ReadWrite;
using property::ToText;

// A property with a column, or a row, as its argument.
PropertyEntry Indexed(std::string_view name, std::int32_t (Grid::*get)(std::int32_t) const,
                      void (Grid::*set)(std::int32_t, std::int32_t)) {
  return {name,
          [get](Control& c, const Arguments& a) {
            return ToText((static_cast<Grid&>(c).*get)(Argument(a, 0)));
          },
          [set](Control& c, const Arguments& a, const std::string& value) {
            (static_cast<Grid&>(c).*set)(Argument(a, 0), FromText<std::int32_t>(value));
          }};
}

// A format of the current cell, assigned to the whole selection.
template <typename Field, typename Value>
PropertyEntry Format(std::string_view name, Field CellFormat::*field, void (Grid::*set)(Value)) {
  return {name,
          [field](Control& c, const Arguments&) {
            const CellFormat format = static_cast<Grid&>(c).CurrentFormat();
            return ToText(static_cast<Value>(format.*field));
          },
          [set](Control& c, const Arguments&, const std::string& value) {
            (static_cast<Grid&>(c).*set)(FromText<Value>(value));
          }};
}

PropertyEntry TextMatrixEntry() {
  return {"TextMatrix",
          [](Control& c, const Arguments& a) {
            return static_cast<Grid&>(c).TextMatrix(Argument(a, 0), Argument(a, 1));
          },
          [](Control& c, const Arguments& a, const std::string& value) {
            static_cast<Grid&>(c).SetTextMatrix(Argument(a, 0), Argument(a, 1), value);
          }};
}

// "2 descending"; "0" while the rows are in no order that a column gave them.
PropertyEntry SortedByEntry() {
  return {"SortedBy",
          [](Control& c, const Arguments&) {
            const SortMark mark = static_cast<Grid&>(c).SortedBy();
            const std::string column = std::to_string(mark.column);
            return mark.column == 0 ? column
                                    : column + (mark.descending ? " descending" : " ascending");
          },
          nullptr};
}

}  // namespace

const PropertyTable& Grid::OwnProperties() const {
  static const PropertyTable table = {
      ReadWrite("Rows", &Grid::Rows, &Grid::SetRows),
      ReadWrite("Cols", &Grid::Cols, &Grid::SetCols),
      ReadWrite("FixedRows", &Grid::FixedRows, &Grid::SetFixedRows),
      ReadWrite("FixedCols", &Grid::FixedCols, &Grid::SetFixedCols),
      ReadWrite("Row", &Grid::Row, &Grid::SetRow),
      ReadWrite("Col", &Grid::Col, &Grid::SetCol),
      ReadWrite("RowSel", &Grid::RowSel, &Grid::SetRowSel),
      ReadWrite("ColSel", &Grid::ColSel, &Grid::SetColSel),
      ReadWrite("TopRow", &Grid::TopRow, &Grid::SetTopRow),
      ReadWrite("LeftCol", &Grid::LeftCol, &Grid::SetLeftCol),
      ReadOnly("MouseRow", &Grid::MouseRow),
      ReadOnly("MouseCol", &Grid::MouseCol),
      ReadOnly("CellLeft", &Grid::CellLeft),
      ReadWrite("Text", &Grid::Text, &Grid::SetText),
      ReadOnly("Clip", &Grid::Clip),
      ReadWrite("RowHeightMin", &Grid::RowHeightMin, &Grid::SetRowHeightMin),
      ReadWrite("Redraw", &Grid::Redraw, &Grid::SetRedraw),
      ReadWrite("FocusRect", &Grid::FocusRect, &Grid::SetFocusRect),
      ReadWrite("HighLight", &Grid::HighLight, &Grid::SetHighLight),
      ReadWrite("MousePointer", &Grid::MousePointer, &Grid::SetMousePointer),
      ReadWrite("FontSize", &Grid::FontSize, &Grid::SetFontSize),
      Indexed("ColWidth", &Grid::ColWidth, &Grid::SetColWidth),
      Indexed("RowHeight", &Grid::RowHeight, &Grid::SetRowHeight),
      Indexed("ColAlignment", &Grid::ColAlignment, &Grid::SetColAlignment),
      Indexed("FixedAlignment", &Grid::FixedAlignment, &Grid::SetFixedAlignment),
      Format("CellBackColor", &CellFormat::back_color, &Grid::SetCellBackColor),
      Format("CellForeColor", &CellFormat::fore_color, &Grid::SetCellForeColor),
      Format("CellAlignment", &CellFormat::alignment, &Grid::SetCellAlignment),
      Format("CellTextStyle", &CellFormat::text_style, &Grid::SetCellTextStyle),
      Format("CellFontBold", &CellFormat::bold, &Grid::SetCellFontBold),
      SortedByEntry(),
      TextMatrixEntry()};
  return table;
}

}  // namespace vorek
