#ifndef VOREK_ENGINE_RIGHTS_H_
#define VOREK_ENGINE_RIGHTS_H_

#include <cstdint>
#include <string>

#include "state/process.h"
#include "state/report_state.h"

namespace vorek {

// Whether the user's roles permit the report. A database without the table of permissions, and a
// report that no role is named for, are open to all.
bool HasReportRight(Process& process, std::int32_t report_id, std::int32_t user_id);

// Restricts a query to the records that the user's position may see, by a condition in front of its
// "Order By". A text on which this can't work runs unrestricted and takes MakeSecure away.
void ApplySecurityClause(Process& process, ReportState& state, std::string& query);

}  // namespace vorek

#endif  // VOREK_ENGINE_RIGHTS_H_
