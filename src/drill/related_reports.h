#ifndef VOREK_DRILL_RELATED_REPORTS_H_
#define VOREK_DRILL_RELATED_REPORTS_H_

#include "drill/drill_host.h"
#include "grid/report_context.h"

// From a row to the report that is linked to it, by rows of tblVorekRelatedReports.
namespace vorek {

// A double click on flxMain: opens the linked report with values of the current row, the secondary
// one if SecondaryWanted is set; the children of a closed tree row, where the report shows them in
// a window; without a link the row's form. Nothing on a sum row and on a result without rows.
// Throws what the database throws.
void DrillFromMain(ReportContext& report, DrillHost& host);

// The same on flxTranspose, which has its own columns in the table, opens the report itself with
// the values passed, and no form.
void DrillFromTranspose(ReportContext& report, DrillHost& host);

}  // namespace vorek

#endif  // VOREK_DRILL_RELATED_REPORTS_H_
