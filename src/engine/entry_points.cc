#include "engine/entry_points.h"

#include <algorithm>

#include "engine/shared_helpers.h"
#include "text/number.h"

namespace vorek {
namespace {

// One empty row; the others go with the result behind them.
void EmptyRows(Grid& grid) {
  const std::int32_t row = std::min(grid.Row(), 1);
  grid.SetRows(1);
  grid.SetRows(2);
  grid.SetRow(row);
}

void DropMarks(ReportControl& control, Recordset& children) {
  Grid& grid = control.flxMain;
  std::string scratch;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    const double id = text::NumericPrefix(grid.CellView(row, control.state.IDColumn + 1, scratch));
    children.SetFilter("ParentID = " + text::PlainNumber(id));
    if (children.RecordCount() > 0) continue;
    std::string mark = grid.TextMatrix(row, 0);
    if (!mark.ends_with('+')) continue;
    mark.pop_back();
    grid.WriteCell(row, 0, mark);
  }
}

}  // namespace

void ClearReport(ReportControl& control) {
  control.state.ClearedRow = control.Context().ActiveGrid().Row();
  control.state.ReportID = -1;
  EmptyRows(control.flxMain);
  EmptyRows(control.flxTranspose);
}

bool SetNull(ReportControl& control) {
  // A form over an empty query has no members.
  std::string no_query;
  IgnoreErrors([&] { control.VorekParameters1.View(-1, no_query, control.Width()); });
  control.state.FoundRows = -1;
  IgnoreErrors([&] { ResetGrid(control.flxMain); });
  IgnoreErrors([&] { ResetGrid(control.flxTranspose); });
  UncacheReport(control.world.process.main, control.state.ReportID);
  return false;
}

bool DropUnusedRows(ReportControl& control) {
  if (!control.state.MakeTree()) return false;
  Recordset& slot = control.world.process.dten().rssqlGeneral1;
  const std::vector<CachedReport>& cache = control.world.process.main.ReportCache;
  const auto found = std::find_if(cache.begin(), cache.end(), [&](const CachedReport& report) {
    return report.report_id == control.state.ReportID;
  });
  IgnoreErrors([&] {
    slot.Close();
    if (found != cache.end()) slot.SetSource(found->source);
    slot.SetFilter("");
    slot.Open();
    DropMarks(control, slot);
  });
  IgnoreErrors([&] { slot.SetFilter(""); });
  slot.Close();
  return false;
}

}  // namespace vorek
