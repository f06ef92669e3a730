#include "drill/record_condition.h"

#include <cmath>

#include "catalog/sql_names.h"
#include "drill/form_metadata_reader.h"
#include "drill/query_columns.h"
#include "text/key_list.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

// A date's column is stored beside its Persian text, which is what a report shows.
std::string ShownName(const std::string& name) {
  const bool date = text::EndsWithIgnoreCase(name, "date");
  return date && !text::StartsWithIgnoreCase(name, "farsi") ? name + "Farsi" : name;
}

std::int32_t FindKeyColumn(const std::string& query, const KeyField& field) {
  std::int32_t column = FieldColumn(query, field.table + "." + ShownName(field.name));
  if (field.name != "ID") return column;
  if (column == -1) column = FieldColumn(query, ".FormID");
  if (column == -1) column = FieldColumn(query, "'FormID'");
  return column;
}

// Columns hold for the text that ran.
std::int32_t KeyColumnOf(ReportState& state, const KeyField& field) {
  FormMetadata& forms = state.Forms;
  if (forms.columns_of != state.QuerySource) {
    forms.columns_of = state.QuerySource;
    forms.columns.clear();
  }
  const std::string key = field.table + "." + field.name;
  const auto known = forms.columns.find(key);
  if (known != forms.columns.end()) return known->second;
  return forms.columns[key] = FindKeyColumn(state.QuerySource, field);
}

// As TextToNumber reads it, for keys beyond 32 bits too.
std::int64_t WholeNumber(const std::string& text) {
  constexpr double kExact = 1e15;
  if (text::TrimView(text).empty()) return -1;
  const double value = text::RoundHalfEven(text::NumericPrefix(text));
  if (std::abs(value) >= kExact) {
    throw Error(ErrorNumber::kOverflow, "A key is no whole number of 15 digits: " + text);
  }
  return static_cast<std::int64_t>(value);
}

std::string Quoted(const std::string& text) { return "'" + text::Replace(text, "'", "''") + "'"; }

std::string NumberValue(const std::string& cell, const std::string& from_caller) {
  const bool given = WholeNumber(cell) != -1;
  // A Persian date goes in as a number: 1385/02/14 is 13850214.
  return std::to_string(WholeNumber(given ? text::Replace(cell, "/", "") : from_caller));
}

std::string TextValue(const std::string& cell, const std::string& from_caller) {
  const std::string text = text::Trim(cell);
  return Quoted(text.empty() ? from_caller : text);
}

}  // namespace

RecordCondition MakeRecordCondition(ReportContext& report, std::int32_t form_type,
                                    std::int32_t row) {
  RecordCondition condition;
  const Grid& grid = report.flxMain;
  const std::vector<KeyField>& fields = KeyFieldsOf(report, form_type);
  for (const KeyField& field : fields) {
    const std::int32_t column = KeyColumnOf(report.state, field);
    if (column < 0 || column >= grid.Cols() || row < 1 || row >= grid.Rows()) return condition;
    const std::string cell = grid.TextMatrix(row, column);
    const std::string name = ShownName(field.name);
    const std::string caller = getParameterValue(report.state.CallerStringValue, name);
    if (!condition.text.empty()) condition.text += " and ";
    condition.text += name + "=";
    condition.text +=
        IsNumericSqlType(field.type) ? NumberValue(cell, caller) : TextValue(cell, caller);
  }
  condition.complete = !fields.empty();
  return condition;
}

}  // namespace vorek
