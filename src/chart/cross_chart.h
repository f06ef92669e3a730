#ifndef VOREK_CHART_CROSS_CHART_H_
#define VOREK_CHART_CROSS_CHART_H_

#include <cstddef>
#include <string>

#include "chart/chart_model.h"
#include "grid/column_view.h"
#include "grid/report_context.h"

namespace vorek {

// Reads the chart of the cross table on view; see ReadChart.
void ReadCrossChart(const ReportContext& report, const ColumnView& view, bool turned,
                    ChartModel& chart);

// The refusal of a chart that would be too long.
std::string TooManyCategories(std::size_t count);

}  // namespace vorek

#endif  // VOREK_CHART_CROSS_CHART_H_
