#include "engine/query_text.h"

#include <utility>
#include <vector>

#include "catalog/report_row.h"
#include "text/key_list.h"
#include "text/persian_date.h"
#include "text/utf8.h"

namespace vorek {
namespace {

using text::ReplaceIgnoreCase;

std::string PutValue(std::string query, const std::string& marker, const std::string& value) {
  query = ReplaceIgnoreCase(query, "(" + marker + ")", value);
  query = ReplaceIgnoreCase(query, marker + ",", value + ",");
  query = ReplaceIgnoreCase(query, ", " + marker + ")", ", " + value + ")");
  query = ReplaceIgnoreCase(query, marker + " * ", value + " * ");
  query = ReplaceIgnoreCase(query, "@" + marker, value);
  return ReplaceIgnoreCase(query, marker, value);
}

// Without a value the condition becomes one that is always true.
std::string PutNothing(std::string query, const std::string& marker) {
  query = ReplaceIgnoreCase(query, "(" + marker + ")=1", "1=1");
  query = ReplaceIgnoreCase(query, "(" + marker + ")= 1", "1= 1");
  query = ReplaceIgnoreCase(query, marker + "=", "1=");
  query = ReplaceIgnoreCase(query, marker, "1 or ''=''");
  return ReplaceIgnoreCase(query, "@" + marker, "1 or ''=''");
}

// The markers of a report's parameters, a longer number before its prefix: 12 before 1.
std::vector<std::string> MarkersOf(Process& process, std::int32_t report_id) {
  std::vector<std::string> markers;
  Recordset& slot = process.dten().rssqlGeneral1;
  OpenSlot(slot, "Select * from tblVorekReportParameter Where ReportID =" +
                     std::to_string(report_id) + "  ORDER BY ParameterID desc");
  for (; !slot.AtEnd(); slot.MoveNext()) markers.push_back("@" + TextOf(slot, "ParameterID"));
  slot.Close();
  return markers;
}

}  // namespace

bool SubstituteParameters(Process& process, std::int32_t report_id, std::string& roughSQL,
                          const std::string& parameter_string) {
  for (const std::string& marker : MarkersOf(process, report_id)) {
    if (!text::ContainsIgnoreCase(roughSQL, marker + ")")) continue;
    const std::string value = getParameterValue(parameter_string, marker);
    roughSQL = text::TrimView(value).empty() ? PutNothing(std::move(roughSQL), marker)
                                             : PutValue(std::move(roughSQL), marker, value);
  }
  return !text::Contains(roughSQL, "@");
}

void FillMarkers(Process& process, std::int32_t report_id, std::string& query,
                 const std::string& parameter_string) {
  for (const std::string& marker : MarkersOf(process, report_id)) {
    const std::string value = getParameterValue(parameter_string, marker);
    if (!text::ContainsIgnoreCase(query, marker + ")") || text::TrimView(value).empty()) continue;
    query = ReplaceIgnoreCase(query, "@" + marker, value);
    query = ReplaceIgnoreCase(query, marker, value);
  }
}

TokenValues TokenValuesOf(const DateTime& now, const ReportState& state, std::int32_t user_id) {
  const auto two = [](int value) { return (value < 10 ? "0" : "") + std::to_string(value); };
  const std::string day = text::DateText(text::ToPersian({now.year, now.month, now.day}));
  return {"'" + day + "'", std::to_string(state.EmployeeID), std::to_string(state.PositionID),
          "'" + two(now.hour) + ":" + two(now.minute) + "'", std::to_string(user_id)};
}

std::vector<text::Replacement> TokenReplacements(const TokenValues& values) {
  return {{"تاريخ اجراي گزارش", values.report_date},
          {"<FarsiReportDate>", values.report_date},
          {"مشخصه كارمند", values.employee_id},
          {"<EmployeeID>", values.employee_id},
          {"مشخصه موقعيت كاربر", values.position_id},
          {"<PositionID>", values.position_id},
          {"مشخصه زبان", "5"},
          {"<LanguageID>", "5"},
          {"زمان اجراي گزارش", values.report_time},
          {"<ReportTime>", values.report_time},
          {"مشخصه كاربر", values.user_id},
          {"<UserID>", values.user_id}};
}

std::string ReplaceTokens(const std::string& query, const TokenValues& values) {
  return text::ReplaceAll(query, TokenReplacements(values));
}

std::string DropEmptyAliases(const std::string& query) {
  return ReplaceIgnoreCase(query, " as ''", "");
}

}  // namespace vorek
