#ifndef VOREK_EXPORT_CHART_SHEET_H_
#define VOREK_EXPORT_CHART_SHEET_H_

#include <vector>

#include "chart/chart_model.h"
#include "vorek/sheet_chart.h"

namespace vorek {

// The chart of a report for a workbook, on a sheet "نمودار": the numbers that it shows, exact, and
// times as parts of a day. shown: whether each series shows, or each part of shares of the series
// `shared`; those behind its end do. Throws Error(kInvalidCall), in the user's language, for what
// the chart refuses and for a number of more than 15 digits, which a workbook would change.
SheetChart SheetChartOf(const ChartModel& chart, ChartKind kind,
                        const std::vector<bool>& shown = {}, std::size_t shared = 0);

}  // namespace vorek

#endif  // VOREK_EXPORT_CHART_SHEET_H_
