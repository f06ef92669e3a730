#ifndef VOREK_ENGINE_SPECIAL_REPORTS_H_
#define VOREK_ENGINE_SPECIAL_REPORTS_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "grid/report_context.h"

// A few reports of the suite that no metadata describes: procedures whose arguments are left in
// tables of the database first, told by their names in the query, and a ledger whose widths depend
// on the report that calls it.
namespace vorek {

// What takes the place of a query: statements in their order, of which the last one that isn't
// empty gives the rows.
struct SpecialQuery {
  std::vector<std::string> statements;
};

// The view of a class of accounts (ViewMajor of tblAccountClass), "" for a class without a row. The
// class comes as plain number text.
using ViewOfClass = std::function<std::string(const std::string& class_id)>;

// The statements of a special report. False for any other query. Throws Error(kInvalidCall) for a
// call that hasn't the arguments it needs.
bool RewriteSpecialQuery(const std::string& query, const ViewOfClass& view_of_class,
                         SpecialQuery& special);

// The same with the views of the database's classes; nothing for any other query.
std::optional<SpecialQuery> SpecialQueryOf(Process& process, const std::string& query);

// Runs a special report on rssqlQuery, in one transaction where the database knows them: another
// user's run then waits instead of writing over the tables. False, and nothing done, for any other
// query. Throws what the database throws.
bool PrepareSpecialReport(ReportContext& report, const std::string& query);

// Gives the columns of report 2844 the widths that suit its caller (CallerID).
void WidenSpecialReport(ReportContext& report);

}  // namespace vorek

#endif  // VOREK_ENGINE_SPECIAL_REPORTS_H_
