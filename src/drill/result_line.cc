#include "drill/result_line.h"

#include "catalog/filter.h"
#include "grid/summary_label.h"
#include "text/cell_text.h"
#include "text/utf8.h"
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

bool CanBeRead(const std::string& filter, const ResultSet& result) {
  try {
    const RecordFilter read(filter, result);
    return true;
  } catch (const Error&) {
    return false;
  }
}

// Those without which the filter can't be read.
std::vector<std::int32_t> FilteredColumns(const std::string& filter,
                                          const std::vector<FieldInfo>& fields) {
  std::vector<std::int32_t> columns;
  if (text::TrimView(filter).empty()) return columns;
  for (std::size_t left_out = 0; left_out < fields.size(); ++left_out) {
    ResultSet others;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const FieldInfo& field = fields[i];
      if (i != left_out)
        others.columns.emplace_back(field.name, field.type, field.storage, field.scale);
    }
    if (!CanBeRead(filter, others)) columns.push_back(static_cast<std::int32_t>(left_out) + 1);
  }
  return columns;
}

}  // namespace

ResultLine TellResult(ReportContext& report) {
  ResultLine line;
  if (report.state.ReportID == -1) return line;
  line.filter = FilterInForce(report);
  line.filtered = FilteredColumns(line.filter, report.state.QueryFields);
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
