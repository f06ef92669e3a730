#include <algorithm>
#include <iterator>

#include "author/check_context.h"
#include "author/query_lookup.h"
#include "author/query_tokens.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::int32_t kPanel = 9;
constexpr std::int32_t kEntity = 13;
constexpr std::int32_t kCombo = 1003;
constexpr std::int32_t kSeveral = 1007;

bool HasList(std::int32_t control_type) {
  constexpr std::int32_t kWithList[] = {2, 4, kPanel, kEntity, kCombo, kSeveral};
  return std::find(std::begin(kWithList), std::end(kWithList), control_type) != std::end(kWithList);
}

// A clause without the word that it may begin with.
std::string Clause(const std::string& text, std::string_view word) {
  const std::string trimmed = text::Trim(text);
  const bool headed = text::StartsWithIgnoreCase(trimmed, std::string(word) + " ");
  return headed ? trimmed.substr(word.size()) : trimmed;
}

// What the field reads, with a clause only where it takes one.
std::string ListQuery(const ParameterRow& row) {
  if (row.control_type == kCombo) return "Select ID, Name from " + row.major_view;
  const std::string minor = text::Trim(row.minor_view);
  const std::string shown = minor.empty() ? "Name" : minor;
  const std::string keys = row.control_type == kEntity ? "FormID, FormTypeID" : "ID";
  std::string query = "Select Top 1 " + shown + ", " + keys + " from " + row.major_view;
  const std::string where = Clause(row.where_clause, "where");
  if (row.control_type == kPanel && !where.empty()) {
    query += " Where (" + text::Replace(where, "#", "1") + ")";
  }
  const std::string order = Clause(row.order_clause, "order by");
  const bool ordered = row.control_type == kSeveral && !order.empty();
  return query + " Order by " + (ordered ? order : shown);
}

// A view that a class of accounts gives isn't the row's own.
bool TakesViewOfClass(const DefinedParameter& parameter) {
  return parameter.follows_object != -1 && text::TrimView(parameter.row.major_view).empty();
}

void TellOfList(CheckContext& check, const ParameterRow& row, const QueryFault& fault) {
  Place place{.table = CatalogueTable::kParameter, .row = row.Id(), .field = "MajorView"};
  const std::string& named = fault.values.front();
  if (fault.rule == Rule::kMissingObject) {
    check.Tell(Rule::kMissingList, place, {named});
  } else if (fault.rule == Rule::kMissingColumn || fault.rule == Rule::kAmbiguousColumn) {
    const bool shown = text::EqualsIgnoreCase(named, text::Trim(row.minor_view));
    if (shown) place.field = "MinorView";
    check.Tell(Rule::kListColumn, place, {named, text::Trim(row.major_view)});
  } else if (fault.rule != Rule::kNotLookedUp) {
    check.Tell(Rule::kListRefused, place, {named});
  }
}

}  // namespace

void CheckLists(CheckContext& check) {
  const std::string query = check.report.Query();
  for (const DefinedParameter& parameter : check.report.parameters) {
    const ParameterRow& row = parameter.row;
    if (!HasList(row.control_type) || !HasMarker(query, row.parameter_id)) continue;
    if (!text::TrimView(row.major_view).empty()) {
      const QueryLookup found = LookUp(check.process, ListQuery(row));
      if (found.fault) TellOfList(check, row, *found.fault);
    } else if (row.control_type != kEntity && !TakesViewOfClass(parameter)) {
      check.Tell(Rule::kNoList,
                 {.table = CatalogueTable::kParameter, .row = row.Id(), .field = "MajorView"});
    }
  }
}

}  // namespace vorek
