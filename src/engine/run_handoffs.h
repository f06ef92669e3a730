#ifndef VOREK_ENGINE_RUN_HANDOFFS_H_
#define VOREK_ENGINE_RUN_HANDOFFS_H_

#include <cstdint>
#include <string>

#include "grid/report_context.h"

// What a run and the control call by name and what does nothing yet.
namespace vorek {

// --- Steps of a run --------------------------------------------------------------------------

// Prepares a hard-wired report. True if the report is done and its text isn't to be opened.
inline bool PrepareSpecialReport(ReportContext& /*report*/, std::string& /*query*/) {
  return false;
}
inline void WidenSpecialReport(ReportContext& /*report*/) {}  // the widths of report 2844

// --- Commands of the control -----------------------------------------------------------------

inline void ExportExcel(ReportContext& /*report*/, std::int32_t /*report_id*/) {}

}  // namespace vorek

#endif  // VOREK_ENGINE_RUN_HANDOFFS_H_
