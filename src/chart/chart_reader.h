#ifndef VOREK_CHART_CHART_READER_H_
#define VOREK_CHART_CHART_READER_H_

#include <cstdint>

#include "chart/chart_model.h"
#include "grid/column_view.h"
#include "grid/report_context.h"

// The chart of a report, from the grid on view as it is shown; docs/desktop.md tells the rules.
namespace vorek {

constexpr std::size_t kMostChartSeries = 16;
constexpr std::size_t kMostChartCategories = 250'000;

// view: the columns as they are shown. A selection of several cells limits it (chart_area.h).
// turned: the categories and series of a cross table change places; of two lengths the longer one
// makes the categories otherwise. What can't be shown is told by the chart's refusal and note, in
// the user's language. The grid stays as it is.
ChartModel ReadChart(const ReportContext& report, const ColumnView& view, bool turned = false);

}  // namespace vorek

#endif  // VOREK_CHART_CHART_READER_H_
