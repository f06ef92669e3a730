#ifndef VOREK_TESTS_SUPPORT_STEPS_COLUMN_TYPES_H_
#define VOREK_TESTS_SUPPORT_STEPS_COLUMN_TYPES_H_

#include "grid/report_context.h"
#include "text/cell_text.h"

// What a report knows of a column's type. A plain reading of the rules, cell text by cell text:
// slow, and used by nothing but tests, which hold the real pass against it.
namespace vorek::steps {

inline bool IsTime(const ReportState& state, std::int32_t column) {
  const auto field = static_cast<std::size_t>(column) - 1;
  return field < state.QueryFields.size() &&
         IsTimeColumn(state.QueryFields[field].type, state.QueryFields[field].name);
}

inline int TypeOf(const ReportState& state, std::int32_t column) {
  const auto field = static_cast<std::size_t>(column) - 1;
  return field < state.QueryFields.size() ? state.QueryFields[field].type : -1;
}

}  // namespace vorek::steps

#endif  // VOREK_TESTS_SUPPORT_STEPS_COLUMN_TYPES_H_
