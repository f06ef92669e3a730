#include "engine/flx_transpose_events.h"

#include "drill/record_selection.h"
#include "drill/related_reports.h"
#include "engine/drill_events.h"
#include "engine/flx_main_events.h"
#include "engine/pass_bar.h"
#include "grid/cross_table_click.h"
#include "grid/tree_sort.h"

namespace vorek {
namespace {

constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;

}  // namespace

void flxTranspose_Click(ReportControl& control) {
  ReportContext report = control.Context();
  RunPass(control, [&] {
    ClickCrossTable(report, control.flxTranspose.MouseRow(), control.flxTranspose.MouseCol());
  });
}

void flxTranspose_SelChange(ReportControl& control) {
  ReportContext report = control.Context();
  DrillEvents events(control);
  SelectTransposeRecord(report, events);
}

void flxTranspose_DblClick(ReportControl& control) {
  ReportContext report = control.Context();
  DrillEvents events(control);
  DrillFromTranspose(report, events);
}

void flxTranspose_MouseDown(ReportControl& control, int button, int /*shift*/) {
  Grid& grid = control.flxTranspose;
  const std::int32_t row = grid.MouseRow();
  const std::int32_t column = grid.MouseCol();
  Windows& windows = control.world.process.windows();
  control.FlexPopupMenu.OfferShapes(control.state.ReportID);
  control.general.MouseDown(grid);
  const bool on_header = row == 0 && column >= 1 && column < grid.Cols();
  if (on_header && button == kLeftButton && grid.Rows() >= 3 &&
      control.state.isTransposeFlexTree()) {
    ReportContext report = control.Context();
    RunPass(control, [&] { SortTree(report, grid, column); });
  }
  if (button != kRightButton) return;
  if (on_header) windows.PopupMenu(control.FlexPopupMenu);
  if (IsOnLastSummary(grid)) windows.PopupMenu(control.FlexPopupMenu2);
}

void flxTranspose_Scroll(ReportControl& control) { control.general.Scroll(control.flxTranspose); }

}  // namespace vorek
