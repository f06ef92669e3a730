#ifndef VOREK_DRILL_RECORD_SELECTION_H_
#define VOREK_DRILL_RECORD_SELECTION_H_

#include "drill/drill_host.h"
#include "grid/report_context.h"

// Another row is selected: FormTypeID, FormID and UniqueWC are brought up to date, as far as the
// report's query and the metadata tell them, and ViewCelChange is raised. Where they don't, the
// three keep what the last row gave. Nothing is told to the user, and nothing thrown.
namespace vorek {

void SelectMainRecord(ReportContext& report, DrillHost& host);
void SelectTransposeRecord(ReportContext& report, DrillHost& host);

}  // namespace vorek

#endif  // VOREK_DRILL_RECORD_SELECTION_H_
