#ifndef VOREK_ENGINE_RUN_HANDOFFS_H_
#define VOREK_ENGINE_RUN_HANDOFFS_H_

#include <cstdint>
#include <string>

#include "grid/report_context.h"

// What a run and the control call by name and what does nothing yet.
namespace vorek {

// --- Commands of the control -----------------------------------------------------------------

inline void ExportExcel(ReportContext& /*report*/, std::int32_t /*report_id*/) {}

}  // namespace vorek

#endif  // VOREK_ENGINE_RUN_HANDOFFS_H_
