#include "engine/group_modes.h"

#include "engine/pass_bar.h"
#include "totals/group_reports.h"
#include "totals/group_totals.h"

namespace vorek {
namespace {

constexpr std::uint8_t kPlain = 0;
constexpr std::uint8_t kSubtotals = 1;
constexpr std::uint8_t kHybrid = 3;

// The rows without subtotals, from which either shape is made: a report that shows the subtotals
// alone runs again. False if that run fails.
bool ShowPlainRows(ReportControl& control) {
  Grid& grid = control.flxMain;
  const GroupReport* const shape = FindGroupReport(control.state.ReportID);
  const bool grouped = shape != nullptr && grid.Col() >= 1 && grid.Col() < shape->limit;
  if (!grouped) return true;
  if (DropGroupTotals(grid)) return true;
  const std::int32_t column = grid.Col();
  if (!control.Refresh(false, "", "")) return false;
  DropGroupTotals(grid);
  if (column < grid.Cols()) grid.SetCol(column);
  return true;
}

void ShowGroups(ReportControl& control, std::uint8_t mode) {
  if (control.state.GroupMode == mode || !ShowPlainRows(control)) return;
  ReportContext report = control.Context();
  RunPass(control, [&] {
    MakeGroupTotals(report, mode == kHybrid, true);
    control.state.GroupMode = mode;
  });
}

}  // namespace

void mnuGroupByNothing_Click(ReportControl& control) {
  if (control.state.GroupMode == kPlain) return;
  control.state.GroupMode = kPlain;
  control.Refresh(false, "", "");
}

void mnuGroupBy_Click(ReportControl& control) { ShowGroups(control, kSubtotals); }
void mnuHybrid_Click(ReportControl& control) { ShowGroups(control, kHybrid); }

}  // namespace vorek
