#ifndef VOREK_ENGINE_RUN_HANDOFFS_H_
#define VOREK_ENGINE_RUN_HANDOFFS_H_

#include <cstdint>
#include <string>

#include "grid/report_context.h"

// Steps of a run that have their place in it and do nothing yet.
namespace vorek {

// Prepares a hard-wired report. True if the report is done and its text isn't to be opened.
inline bool PrepareSpecialReport(ReportContext& /*report*/, std::string& /*query*/) {
  return false;
}
inline void MakeFlexMerged(ReportContext& /*report*/) {}
inline void MakeSumRow(ReportContext& /*report*/) {}  // of the column flxMain.Col
inline void MakeAvgRow(ReportContext& /*report*/) {}  // of the column flxMain.Col
inline void SortflxMain(ReportContext& /*report*/, std::int32_t /*column*/) {}
inline void SortTree(ReportContext& /*report*/, Grid& /*grid*/, std::int32_t /*column*/) {}
inline void ApplyTranspose(ReportContext& /*report*/) {}
inline void MakeGroupTotals(ReportContext& /*report*/) {}
inline void WidenSpecialReport(ReportContext& /*report*/) {}  // the widths of report 2844

}  // namespace vorek

#endif  // VOREK_ENGINE_RUN_HANDOFFS_H_
