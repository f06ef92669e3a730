#ifndef VOREK_ENGINE_GRID_HEADING_H_
#define VOREK_ENGINE_GRID_HEADING_H_

#include "grid/report_context.h"
#include "print/grid_print.h"

namespace vorek {

// What a print of the grid on view tells of the report: its title, the values that its parameters
// were given in a form, the filter in force, and the day and time.
print::GridHeading HeadingOf(ReportContext& report);

}  // namespace vorek

#endif  // VOREK_ENGINE_GRID_HEADING_H_
