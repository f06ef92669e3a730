#ifndef VOREK_CHART_CHART_AREA_H_
#define VOREK_CHART_CHART_AREA_H_

#include <cstdint>
#include <string>
#include <vector>

#include "chart/chart_model.h"
#include "grid/column_view.h"
#include "grid/report_context.h"
#include "totals/selection_figures.h"

namespace vorek {

// The cells of a grid that a chart is made of: what is selected, or everything. Several columns
// limit the columns, unless they are all, and several rows limit the rows; one cell limits nothing,
// nor does one row up to its last column, as a run selects it.
struct ChartArea {
  std::int32_t first_row = 0;
  std::int32_t last_row = 0;
  std::vector<std::int32_t> columns;  // as they are shown
  bool columns_chosen = false;
};
ChartArea AreaOf(const Grid& grid, const ColumnView& view);

// The rows of flxMain in the area that show and count: no sums and averages, no subtotals beside
// the rows that they sum, no open row of a tree, for which its sub-rows stand.
std::vector<std::int32_t> ChartRows(const ReportContext& report, const ChartArea& area);

// What a cell gives a chart.
struct ChartCell {
  ChartValue value;
  bool rounded = false;  // to four decimals
  bool beyond = false;   // a figure that no chart can show: too large, or a time below zero
  bool other = false;    // a text that is no figure
};
ChartCell ReadChartCell(const Grid& grid, std::int32_t row, std::int32_t col, FigureKind kind);

}  // namespace vorek

#endif  // VOREK_CHART_CHART_AREA_H_
