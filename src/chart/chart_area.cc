#include "chart/chart_area.h"

#include <algorithm>
#include <utility>

#include "grid/outline_mark.h"
#include "grid/summary_label.h"
#include "totals/group_reports.h"
#include "totals/group_totals.h"
#include "vorek/error.h"

namespace vorek {
namespace {

bool IsOpen(const Grid& grid, std::int32_t row) {
  if (grid.OutlineKind() != Outline::kTree) return false;
  return MarkOf(grid, row, 0, grid.TextMatrix(row, 0)).sign == '-';
}

// Hours and minutes as MinutesToTime writes them.
ChartCell ReadTime(const std::string& text, bool number) {
  std::int32_t minutes = 0;
  const bool read = IgnoreErrors([&] { minutes = TimeToMinutes(text); });
  if (!read || MinutesToTime(minutes) != text) {
    return {.value = {}, .beyond = number, .other = !number};
  }
  return {.value = std::int64_t{minutes} * 10000};
}

}  // namespace

ChartArea AreaOf(const Grid& grid, const ColumnView& view) {
  ChartArea area{grid.FixedRows(), grid.Rows() - 1, view.Shown(), false};
  const auto [first, last] = std::minmax({grid.Row(), grid.RowSel()});
  const bool several_rows = first != last;
  if (several_rows) {
    area.first_row = std::max(area.first_row, first);
    area.last_row = std::min(area.last_row, last);
  }
  std::vector<std::int32_t> selected = view.Between(grid.Col(), grid.ColSel());
  const bool one_row = !several_rows && (selected.size() < 2 || grid.ColSel() == grid.Cols() - 1);
  area.columns_chosen = !one_row && !selected.empty() && selected.size() < area.columns.size();
  if (area.columns_chosen) area.columns = std::move(selected);
  return area;
}

std::vector<std::int32_t> ChartRows(const ReportContext& report, const ChartArea& area) {
  const Grid& grid = report.flxMain;
  const bool grouped = FindGroupReport(report.state.ReportID) != nullptr && grid.Cols() > 1;
  std::vector<std::int32_t> rows;
  std::vector<std::int32_t> subtotals;
  for (std::int32_t row = area.first_row; row <= area.last_row; ++row) {
    if (grid.RowHeightsDiffer() && grid.RowHeight(row) == 0) continue;
    if (!grid.IsNumbered(row) && IsSummaryRow(grid, row)) continue;
    if (IsOpen(grid, row)) continue;
    (grouped && TellsSubtotal(grid, row) ? subtotals : rows).push_back(row);
  }
  return rows.empty() ? subtotals : rows;
}

ChartCell ReadChartCell(const Grid& grid, std::int32_t row, std::int32_t col, FigureKind kind) {
  std::string scratch;
  const std::string_view shown = grid.CellView(row, col, scratch);
  if (shown.empty()) return {};
  const bool number = grid.IsNumber(row, col);
  if (kind == FigureKind::kTime) return ReadTime(std::string(shown), number);
  const std::string_view text = number ? grid.CellPlain(row, col, scratch) : shown;
  FixedPoint value = 0;
  if (ReadFigure(text, value)) return {.value = value};
  if (!number) return {.value = {}, .other = true};
  if (!IgnoreErrors([&] { value = grid.CellFixed(row, col); })) {
    return {.value = {}, .beyond = true};
  }
  return {.value = value, .rounded = true};
}

}  // namespace vorek
