#ifndef VOREK_DRILL_FORM_LAUNCH_H_
#define VOREK_DRILL_FORM_LAUNCH_H_

#include <cstdint>

#include "drill/drill_host.h"
#include "grid/report_context.h"

namespace vorek {

// Opens the form behind a row of flxMain: a form that the host shows by an event, where system
// parameter 123 is set, any other one by making its component. A row outside of the grid opens an
// empty form. What can't be found opens nothing; only a component that isn't there is told.
void LaunchForm(ReportContext& report, DrillHost& host, std::int32_t row);

}  // namespace vorek

#endif  // VOREK_DRILL_FORM_LAUNCH_H_
