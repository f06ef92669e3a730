#ifndef VOREK_ENGINE_GROUP_MODES_H_
#define VOREK_ENGINE_GROUP_MODES_H_

#include "engine/report_control.h"

// The shapes of a ledger report (totals/group_totals.h), as the submenu of the header offers them.
// One that is in force already isn't made again; on other reports they change nothing that shows.
namespace vorek {

void mnuGroupByNothing_Click(ReportControl& control);  // the report runs again
void mnuGroupBy_Click(ReportControl& control);         // the subtotals alone
void mnuHybrid_Click(ReportControl& control);          // the rows with their subtotals

}  // namespace vorek

#endif  // VOREK_ENGINE_GROUP_MODES_H_
