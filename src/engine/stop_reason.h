#ifndef VOREK_ENGINE_STOP_REASON_H_
#define VOREK_ENGINE_STOP_REASON_H_

#include <string>

#include "state/report_state.h"

namespace vorek {

// Why the report that was called for last isn't on show, in Persian, where the control itself says
// nothing: no such report, no query, a marker that a parameter string leaves, an error that ends a
// run silently. "" for all else.
std::string StopReasonOf(const ReportState& state);

}  // namespace vorek

#endif  // VOREK_ENGINE_STOP_REASON_H_
