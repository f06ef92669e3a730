#include "grid/column_layout_pass.h"

#include <algorithm>
#include <limits>

#include "catalog/report_row.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

std::int16_t ToInt16(std::int32_t value) {
  using Limits = std::numeric_limits<std::int16_t>;
  if (value < Limits::min() || value > Limits::max()) {
    throw Error(ErrorNumber::kOverflow, "Overflow: " + std::to_string(value));
  }
  return static_cast<std::int16_t>(value);
}

// The numeric prefix of a column's text; NULL gives 0.
std::int16_t PrefixOf(const Recordset& row, const char* column) {
  return ToInt16(text::ToInt32(text::NumericPrefix(TextOf(row, column))));
}

void ClearTransposeColumns(ReportState& state) {
  state.TransposeRowColumn = -1;
  state.TransposeColumns.clear();
}

void NoteTransposeType(ReportState& state, std::int32_t type, std::int32_t column) {
  if (type == 1) state.TransposeRowColumn = column;
  if (type == 2) state.TransposeColumns.push_back(column);
}

void ReadMainLayout(ReportContext& report, Recordset& slot) {
  ColumnLayoutTable& layouts = report.layouts();
  OpenSlot(slot, StoredLayoutQuery(report.state.ReportID));
  if (slot.RecordCount() == 0) layouts[1].header_text.clear();
  for (; !slot.AtEnd(); slot.MoveNext()) {
    const std::int32_t column = slot.Field("ColumnNumber").Number();
    const FieldValue type = slot.Field("TransposeType");
    ColumnLayout& layout = layouts[column];
    layout.transpose_type = type.IsNull() ? 0 : type.Number();
    NoteTransposeType(report.state, layout.transpose_type, column);
    layout.width = PrefixOf(slot, "Width");
    layout.alignment = PrefixOf(slot, "Alignment");
    layout.make_sum = FlagOf(slot, "MakeSum", false);
    layout.header_text = std::to_string(column);
    layouts[column + 1].header_text.clear();
  }
  slot.Close();
}

void ReadTransposeLayout(ReportContext& report, Recordset& slot) {
  ColumnLayoutTable& layouts = report.transpose_layouts();
  OpenSlot(slot, TransposeLayoutQuery(report.state.ReportID));
  if (slot.RecordCount() == 0) layouts[1].header_text.clear();
  for (; !slot.AtEnd(); slot.MoveNext()) {
    const std::int32_t column = slot.Field("ColumnNumber").Number();
    layouts[column].width = PrefixOf(slot, "Width");
    layouts[column].alignment = PrefixOf(slot, "Alignment");
    layouts[column].header_text = std::to_string(column);
    layouts[column + 1].header_text.clear();
  }
  slot.Close();
}

// One stored row of the layout; each statement that fails is passed over.
void ApplyLayoutRow(ReportContext& report, const Recordset& row) {
  std::int32_t column = 0;
  if (!IgnoreErrors([&] { column = row.Field("ColumnNumber").Number(); })) return;
  const auto number = [&](const char* name) { return row.Field(name).Number(); };
  const auto layout = [&]() -> ColumnLayout& { return report.layouts()[column]; };
  IgnoreErrors([&] { report.flxMain.SetColAlignment(column, number("Alignment")); });
  IgnoreErrors([&] { report.flxMain.SetColWidth(column, number("Width")); });
  IgnoreErrors([&] { layout().make_sum = row.Field("MakeSum").Flag(); });
  IgnoreErrors([&] { layout().alignment = ToInt16(number("Alignment")); });
  IgnoreErrors([&] { layout().width = ToInt16(number("Width")); });
  IgnoreErrors([&] { layout().merge_type = number("MergeType"); });
  IgnoreErrors([&] { NoteTransposeType(report.state, number("TransposeType"), column); });
  IgnoreErrors([&] { layout().transpose_type = number("TransposeType"); });
}

void ApplyPlainLayout(Grid& grid) {
  for (std::int32_t column = 0; column < grid.Cols(); ++column) {
    grid.SetColAlignment(column, 4);
    grid.SetColWidth(column, 1200);
  }
}

void ApplyLayoutRows(ReportContext& report, Recordset& slot) {
  Grid& grid = report.flxMain;
  if (grid.Cols() < slot.RecordCount() + 1) grid.SetCols(slot.RecordCount() + 1);
  if (slot.RecordCount() == 0) {
    ApplyPlainLayout(grid);
    return;
  }
  for (; !slot.AtEnd(); slot.MoveNext()) ApplyLayoutRow(report, slot);
  IgnoreErrors([&] { report.layouts()[grid.Cols()].header_text.clear(); });
}

CellForm FormOf(const FieldInfo& field) {
  switch (field.type) {
    case kBigInt:
    case kDecimal:
    case kDouble:
    case kVarNumeric:
    case kNumeric:
      return CellForm::kNumber;
    case kCurrency:
      return CellForm::kMoney;
    default:
      return IsTimeColumn(field.type, field.name) ? CellForm::kTime : CellForm::kPlain;
  }
}

// Numbers and dates stand in the middle of their column.
bool IsCentred(int type) {
  return (type >= 2 && type <= 7) || type == 14 || (type >= 16 && type <= 21) || type == 131 ||
         (type >= 133 && type <= 135) || type == 139;
}

void SetDefaults(ReportContext& report, const std::vector<FieldInfo>& fields, std::int32_t column) {
  ColumnLayout& layout = report.layouts()[column];
  // As wide as the layout can say: a column may be drawn wider.
  layout.width = static_cast<std::int16_t>(std::min(report.flxMain.ColWidth(column), 32767));
  // Below the field count, not equal: the last field's column keeps its alignment, as a calculated
  // column does.
  if (column < static_cast<std::int32_t>(fields.size())) {
    layout.alignment = IsCentred(fields[static_cast<std::size_t>(column - 1)].type) ? 4 : 7;
  }
  if (text::Contains(report.flxMain.TextMatrix(0, column), "تاريخ")) layout.alignment = 4;
  report.layouts()[column + 1].header_text.clear();
}

void RetrieveLayout(ReportContext& report) {
  const bool transposed = report.state.isTransposedResult;
  ColumnLayoutTable& layouts = transposed ? report.transpose_layouts() : report.layouts();
  Recordset& slot = report.process.dten().rssqlGeneral1;
  OpenSlot(slot, WholeLayoutQuery(report.state.ReportID, transposed));
  std::int32_t column = 1;
  for (; !slot.AtEnd(); slot.MoveNext(), ++column) {
    layouts[column].header_text = "NOT_EMPTY";
    layouts[column].alignment = ToInt16(NumberOf(slot, "Alignment"));
    layouts[column].width = ToInt16(NumberOf(slot, "Width"));
  }
  layouts[column].header_text.clear();
  slot.Close();
}

// The width of column 0: of its longest text, the header or the last row's number.
std::int32_t NumberColumnWidth(ReportContext& report, const Grid& grid, bool tree) {
  const auto width = [&](const std::string& text) {
    return report.process.windows().TextWidth(text, 0);
  };
  std::int32_t widest = std::max(width(std::to_string(report.flxMain.Rows() - 1)), width("رديف"));
  if (&grid != &report.flxMain) {
    widest = std::max(width(std::to_string(grid.Rows() - 1)), width("رديف"));
  }
  if (tree) widest = std::max(widest, width("سطح"));
  return widest + 150;
}

void AlignMain(ReportContext& report) {
  Grid& grid = report.flxMain;
  grid.SetRow(0);
  for (std::int32_t column = 1; !report.layouts()[column].header_text.empty(); ++column) {
    const ColumnLayout& layout = report.layouts()[column];
    if (grid.Cols() <= column) grid.SetCols(column + 1);
    grid.SetCol(column);
    grid.SetCellAlignment(4);
    grid.SetColAlignment(column, layout.alignment);
    grid.SetColWidth(column, layout.width);
  }
  grid.SetColWidth(0, NumberColumnWidth(report, grid, false));
}

void AlignTransposed(ReportContext& report) {
  Grid& grid = report.flxTranspose;
  if (grid.Rows() > 1 && grid.Cols() > 1) grid.SetFixedCols(1);
  for (std::int32_t column = 1; column < grid.Cols(); ++column) {
    const ColumnLayout& layout = report.transpose_layouts()[column];
    grid.SetCol(column);
    grid.SetCellAlignment(7);
    grid.SetColAlignment(column, layout.alignment);
    grid.SetColWidth(column, layout.width);
  }
  grid.SetColWidth(0, NumberColumnWidth(report, grid, true));
}

}  // namespace

std::vector<FieldInfo> FieldsOf(const Recordset& recordset) {
  std::vector<FieldInfo> fields;
  if (recordset.FieldCount() == 0) return fields;
  for (const ResultColumn& column : recordset.SharedResult()->columns) {
    fields.push_back({column.Name(), column.AdoType(), column.Kind(), column.Scale()});
  }
  return fields;
}

void ReadColumnLayout(ReportContext& report) {
  ClearTransposeColumns(report.state);
  Recordset& slot = report.process.dten().rssqlGeneral1;
  ReadMainLayout(report, slot);
  report.flxTranspose.SetCols(1);
  ReadTransposeLayout(report, slot);
}

void ApplyStoredLayout(ReportContext& report, bool ignore_errors) {
  ClearTransposeColumns(report.state);
  Recordset& slot = report.process.dten().rssqlGeneral1;
  const auto read = [&] {
    OpenSlot(slot, RunLayoutQuery(report.state.ReportID));
    ApplyLayoutRows(report, slot);
  };
  if (ignore_errors) {
    IgnoreErrors(read);
  } else {
    read();
  }
  slot.Close();
  const ReportState& state = report.state;
  if (state.ReportRowHeight > 0 && state.ReportRowHeight != Grid::kDefaultRowHeight) {
    report.flxMain.SetRowHeightMin(state.ReportRowHeight);
  }
  if (state.ReportFontSize > 0) report.flxMain.SetFontSize(state.ReportFontSize);
}

void FormCells(ReportContext& report, const std::vector<FieldInfo>& fields) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto column = static_cast<std::int32_t>(i) + 1;
    const CellForm form = FormOf(fields[i]);
    if (column >= report.flxMain.Cols() || form == CellForm::kPlain) continue;
    report.flxMain.ReformColumn(column, form);
  }
}

void CompleteLayouts(ReportContext& report, const std::vector<FieldInfo>& fields) {
  for (std::int32_t column = 1; column < report.flxMain.Cols(); ++column) {
    ColumnLayout& layout = report.layouts()[column];
    if (layout.header_text.empty()) SetDefaults(report, fields, column);
    layout.header_text = report.flxMain.TextMatrix(0, column);
  }
  report.layouts()[report.flxMain.Cols()].header_text.clear();
}

void AlignFlexes(ReportContext& report, bool retrive_from_db) {
  if (retrive_from_db) RetrieveLayout(report);
  AlignMain(report);
  AlignTransposed(report);
}

void DropMissingTransposeColumns(ReportContext& report) {
  const std::int32_t cols = report.flxMain.Cols();
  ReportState& state = report.state;
  if (state.TransposeRowColumn >= cols) state.TransposeRowColumn = -1;
  std::erase_if(state.TransposeColumns, [cols](std::int32_t column) { return column >= cols; });
}

void ColorRows(ReportContext& report) {
  const bool tree = report.state.MakeTree();
  for (std::int32_t row = 1; row < report.flxMain.Rows(); ++row) {
    report.flxMain.AskAt(row);
    report.flxMain.SetRowBackColor(row, tree || row % 2 == 0 ? kLightBlue : kWhite);
  }
}

}  // namespace vorek
