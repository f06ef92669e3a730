#include "author/report_definition.h"

#include <algorithm>

#include "catalog/report_row.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::string_view kCall = "EXEC ";

// The values of columns that may be missing.
std::string TextIfThere(const Recordset& row, const char* column) {
  return row.HasField(column) ? TextOf(row, column) : "";
}
std::optional<std::int32_t> NumberIfThere(const Recordset& row, const char* column) {
  std::optional<std::int32_t> number;
  IgnoreErrors([&] {
    const FieldValue value = row.Field(column);
    if (!value.IsNull()) number = value.Number();
  });
  return number;
}
bool FlagIfThere(const Recordset& row, const char* column) {
  bool flag = false;
  IgnoreErrors([&] { flag = FlagOf(row, column, false); });
  return flag;
}

std::string Where(std::int32_t id) { return " Where ReportID=" + std::to_string(id); }

void ReadReport(Recordset& slot, ReportDefinition& report) {
  OpenSlot(slot, ReportRowQuery(report.id));
  report.found = !slot.AtEnd();
  if (report.found) {
    report.title = TextIfThere(slot, "Title");
    report.sql_query = TextIfThere(slot, "SQLQuery");
    report.reserved = TextIfThere(slot, "Reserved");
    report.sql_sp = TextIfThere(slot, "SQLSP");
    report.procedure = FlagIfThere(slot, "IsStoredProcedure");
    report.tree = NumberIfThere(slot, "MakeTree").value_or(0);
    report.cross = FlagIfThere(slot, "MakeTranspose");
    report.fold = FlagIfThere(slot, "MakeMerge");
    report.secure = FlagIfThere(slot, "MakeSecure");
    report.popup = FlagIfThere(slot, "ShowPopupTree");
    report.form_type = NumberIfThere(slot, "FormTypeID").value_or(-1);
  }
  slot.Close();
}

ParameterRow ReadParameterRow(const Recordset& slot) {
  ParameterRow row;
  row.parameter_id = slot.Field("ParameterID").Number();
  row.name = TextIfThere(slot, "Name");
  row.control_type = NumberIfThere(slot, "ControlTypeID").value_or(-1);
  row.type = text::ToLower(TextIfThere(slot, "Type"));
  row.has_spans = NumberIfThere(slot, "ColSpan") && NumberIfThere(slot, "RowSpan");
  row.major_view = TextIfThere(slot, "MajorView");
  row.minor_view = TextIfThere(slot, "MinorView");
  row.where_clause = TextIfThere(slot, "WhereClause");
  row.order_clause = TextIfThere(slot, "OrderByClause");
  return row;
}

void ReadParameters(Recordset& slot, ReportDefinition& report) {
  OpenSlot(slot,
           "Select * from tblVorekReportParameter" + Where(report.id) + " Order by ParameterID");
  for (; !slot.AtEnd(); slot.MoveNext()) {
    report.parameters.push_back({ReadParameterRow(slot),
                                 NumberIfThere(slot, "DepOnParameterIDForm").value_or(-1),
                                 NumberIfThere(slot, "DepOnParameterIDObject").value_or(-1)});
  }
  slot.Close();
}

void ReadLayout(Recordset& slot, ReportDefinition& report) {
  OpenSlot(slot, StoredLayoutQuery(report.id));
  for (; !slot.AtEnd(); slot.MoveNext()) {
    const std::optional<std::int32_t> column = NumberIfThere(slot, "ColumnNumber");
    if (!column) continue;
    report.layout.push_back({*column, NumberIfThere(slot, "Alignment"),
                             NumberIfThere(slot, "Width"),
                             NumberIfThere(slot, "MergeType").value_or(-1),
                             NumberIfThere(slot, "TransposeType").value_or(-1)});
  }
  slot.Close();
}

void ReadExpressions(Recordset& slot, ReportDefinition& report) {
  OpenSlot(slot, ExpressionQuery(report.id));
  for (; !slot.AtEnd(); slot.MoveNext()) {
    ExpressionRow row;
    row.number = NumberIfThere(slot, "ColumnNumber").value_or(0);
    row.name = TextIfThere(slot, "Name");
    row.general = TextIfThere(slot, "GeneralExpression");
    const bool own = !slot.Field("FirstRowExpression").IsNull();
    if (own) row.first_row = TextIfThere(slot, "FirstRowExpression");
    report.expressions.push_back(std::move(row));
  }
  slot.Close();
}

void ReadLinks(Recordset& slot, ReportDefinition& report) {
  OpenSlot(slot, "Select * from tblVorekRelatedReports Where CallerReportID=" +
                     std::to_string(report.id));
  for (; !slot.AtEnd(); slot.MoveNext()) {
    report.links.push_back({TextIfThere(slot, "CalledReportID"),
                            text::Trim(TextIfThere(slot, "CallerReportColumn")),
                            TextIfThere(slot, "CalledParameterID")});
  }
  slot.Close();
}

}  // namespace

std::string ReportDefinition::Query() const {
  return procedure ? std::string(kCall) + sql_sp : sql_query + reserved;
}

Place ReportDefinition::WholeQuery() const { return {.field = procedure ? "SQLSP" : "SQLQuery"}; }

Place ReportDefinition::PlaceInQuery(std::size_t offset) const {
  Place place = WholeQuery();
  if (procedure) {
    SetPlace(place, sql_sp, offset - std::min(offset, kCall.size()));
  } else if (offset >= sql_query.size() && !reserved.empty()) {
    place.field = "Reserved";
    SetPlace(place, reserved, offset - sql_query.size());
  } else {
    SetPlace(place, sql_query, offset);
  }
  return place;
}

ReportDefinition ReadDefinition(Process& process, std::int32_t report_id) {
  ReportDefinition report;
  report.id = report_id;
  Recordset& slot = process.dten().rssqlGeneral1;
  ReadReport(slot, report);
  if (!report.found) return report;
  ReadParameters(slot, report);
  ReadLayout(slot, report);
  ReadExpressions(slot, report);
  ReadLinks(slot, report);
  return report;
}

void SetPlace(Place& place, const std::string& text, std::size_t offset) {
  const std::string_view head = std::string_view(text).substr(0, std::min(offset, text.size()));
  const std::size_t begin = head.rfind('\n') + 1;  // npos + 1 is 0
  place.line = static_cast<int>(std::count(head.begin(), head.end(), '\n')) + 1;
  place.column = static_cast<int>(text::Length(head.substr(begin))) + 1;
}

}  // namespace vorek
