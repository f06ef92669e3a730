#ifndef VOREK_AUTHOR_CHECK_CONTEXT_H_
#define VOREK_AUTHOR_CHECK_CONTEXT_H_

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "author/finding.h"
#include "author/report_definition.h"
#include "state/process.h"

namespace vorek {

// A column of the result, as it is known before a run.
struct ResultField {
  std::string name;
  int type = 0;  // one of FieldType; 0 where it isn't known
};

// What the rules of one report work on.
struct CheckContext {
  Process& process;
  const ReportDefinition& report;
  std::vector<Finding>& findings;
  std::optional<std::vector<ResultField>> fields;  // of the query; nothing if they can't be told

  void Tell(Rule rule, Place place, std::vector<std::string> values = {}) {
    findings.push_back({rule, report.id, std::move(place), std::move(values)});
  }
  // The query's columns and the calculated ones behind them; nothing if that can't be told.
  std::optional<std::int32_t> LastColumn() const {
    if (!fields) return std::nullopt;
    return static_cast<std::int32_t>(fields->size() + report.expressions.size());
  }
};

// The rules by their subject, each in the file of its name, in the order in which they are looked
// at: a fault of a parameter explains one of the query, which finds the columns for the others.
void CheckParameters(CheckContext& check);
void CheckLists(CheckContext& check);
void CheckQuery(CheckContext& check);
void CheckLayout(CheckContext& check);
void CheckFormulas(CheckContext& check);
void CheckSecurity(CheckContext& check);
void CheckLinks(CheckContext& check);

}  // namespace vorek

#endif  // VOREK_AUTHOR_CHECK_CONTEXT_H_
