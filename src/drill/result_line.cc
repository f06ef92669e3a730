#include "drill/result_line.h"

#include "grid/summary_label.h"
#include "text/cell_text.h"
#include "totals/group_reports.h"
#include "totals/group_totals.h"

namespace vorek {
namespace {

std::string RowsText(std::int32_t count) {
  std::string number = std::to_string(count);
  return FormatMoney(number) + " رديف";
}

std::string CountsText(std::int32_t shown, std::int32_t found) {
  if (shown == found) return RowsText(found);
  return RowsText(shown) + " از " + RowsText(found) + " يافت شده";
}

std::int32_t Subtotals(const ReportContext& report) {
  const Grid& grid = report.flxMain;
  std::int32_t count = 0;
  if (FindGroupReport(report.state.ReportID) == nullptr) return count;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) count += TellsSubtotal(grid, row) ? 1 : 0;
  return count;
}

// A result without rows leaves an empty one in the grid.
std::int32_t ShownRows(const ReportContext& report) {
  if (report.state.FilledRows == 0) return 0;
  const bool main = report.flxMain.Visible();
  return RowsOnShow(main ? report.flxMain : report.flxTranspose) - (main ? Subtotals(report) : 0);
}

}  // namespace

ResultLine TellResult(ReportContext& report) {
  ResultLine line;
  if (report.state.ReportID == -1) return line;
  line.filter = FilterInForce(report);
  if (report.state.FoundRows >= 0) {
    line.counts = CountsText(ShownRows(report), report.state.FoundRows);
  }
  return line;
}

std::string FilterInForce(ReportContext& report) {
  return report.state.MakeTree() ? "" : report.state.Filter;
}

std::int32_t RowsOnShow(const Grid& grid) {
  const bool heights = grid.RowHeightsDiffer();
  // A summary row isn't numbered.
  if (!heights && grid.IsSourced(0)) return grid.Rows() - grid.FixedRows();
  std::int32_t count = 0;
  for (std::int32_t row = grid.FixedRows(); row < grid.Rows(); ++row) {
    if (heights && grid.RowHeight(row) == 0) continue;
    if (!IsSummaryRow(grid, row)) ++count;
  }
  return count;
}

}  // namespace vorek
