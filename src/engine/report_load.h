#ifndef VOREK_ENGINE_REPORT_LOAD_H_
#define VOREK_ENGINE_REPORT_LOAD_H_

#include <cstdint>

#include "engine/report_control.h"

namespace vorek {

// Turns the row of the report into the control's report state, offers the parameter panel and reads
// the column layout. A report that isn't there leaves a query with an empty result. Throws Error
// for a required column that is missing or a value that can't be read.
void LoadReportDefinition(ReportControl& control, std::int32_t report_id);

}  // namespace vorek

#endif  // VOREK_ENGINE_REPORT_LOAD_H_
