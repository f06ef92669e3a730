#include "parameters/parameter_row.h"

#include "catalog/report_row.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

// A span that is NULL matters only if the query uses the row.
void ReadSpans(const Recordset& slot, ParameterRow& row) {
  row.has_spans = !slot.Field("ColSpan").IsNull() && !slot.Field("RowSpan").IsNull();
  if (!row.has_spans) return;
  row.col_span = slot.Field("ColSpan").Number();
  row.row_span = slot.Field("RowSpan").Number();
}

ParameterRow ReadRow(const Recordset& slot) {
  ParameterRow row;
  row.parameter_id = slot.Field("ParameterID").Number();
  row.name = TextOf(slot, "Name");
  row.description = TextOf(slot, "Description");
  row.control_type = NumberOf(slot, "ControlTypeID");
  if (slot.HasField("Type")) row.type = text::ToLower(TextOf(slot, "Type"));
  ReadSpans(slot, row);
  row.visible = FlagOf(slot, "Visible", true);
  row.major_view = TextOf(slot, "MajorView");
  row.minor_view = TextOf(slot, "MinorView");
  row.where_clause = TextOf(slot, "WhereClause");
  row.order_clause = TextOf(slot, "OrderByClause");
  return row;
}

std::vector<ParameterRow> ReadRows(Recordset& slot, const std::string& query) {
  std::vector<ParameterRow> rows;
  OpenSlot(slot, query);
  for (; !slot.AtEnd(); slot.MoveNext()) rows.push_back(ReadRow(slot));
  slot.Close();
  return rows;
}

}  // namespace

std::vector<ParameterRow> ReadFormRows(Recordset& slot, std::int32_t report_id) {
  return ReadRows(slot, "Select * from tblVorekReportParameter Where ReportID =" +
                            std::to_string(report_id) + "  ORDER BY Sequence, ParameterID");
}

std::vector<ParameterRow> ReadConditionRows(Recordset& slot, std::int32_t report_id) {
  return ReadRows(slot, "Select * from tblVorekReportParameter Where ReportID = " +
                            std::to_string(report_id) + " Order by ParameterID Desc");
}

std::int32_t ReadColumnCount(Recordset& slot, std::int32_t report_id) {
  OpenSlot(slot, "Select * from tblVorekReport Where ID =" + std::to_string(report_id));
  std::int32_t columns = 1;
  if (!slot.AtEnd()) columns = text::ToInt32(text::NumericPrefix(TextOf(slot, "Cols")));
  slot.Close();
  return columns;
}

std::int32_t ReadLabelWidth(Recordset& slot, std::int32_t report_id, const Windows& windows,
                            std::int32_t column_width) {
  OpenSlot(slot, "Select Name, Description from tblVorekReportParameter Where ReportID =" +
                     std::to_string(report_id));
  if (slot.AtEnd()) {
    slot.Close();
    return text::ToInt32(column_width * 0.3);
  }
  const auto measured = [&] { return windows.TextWidth(TextOf(slot, "Name"), 0); };
  std::int32_t width = measured() + 50;
  for (slot.MoveNext(); !slot.AtEnd(); slot.MoveNext()) {
    const double wanted = measured() * 1.05 + 50;
    if (wanted > width) width = text::ToInt32(wanted);
  }
  slot.Close();
  return width;
}

}  // namespace vorek
