#include "engine/grid_events.h"

#include "engine/drill_events.h"
#include "engine/export_events.h"
#include "engine/flx_main_events.h"
#include "engine/flx_transpose_events.h"
#include "engine/group_modes.h"
#include "engine/pass_bar.h"
#include "engine/quick_search.h"
#include "engine/report_filter.h"
#include "totals/summary_rows.h"

namespace vorek {
namespace {

// A double click there is two of the header's own: no row is meant.
bool IsOnHeader(const Grid& grid) { return grid.MouseRow() == 0; }

// An entry that works on the report as it is shown.
void LeadTo(Menu& entry, ReportControl& control, void (*work)(ReportContext&)) {
  entry.on_click = [&control, work] {
    ReportContext report = control.Context();
    RunPass(control, [&] { work(report); });
  };
}

void ConnectMenus(ReportControl& control) {
  HeaderMenu& menu = control.FlexPopupMenu;
  menu.mnuQuickSearch.on_click = [&control] { mnuQuickSearch_Click(control); };
  menu.mnuShowAskForm.on_click = [&control] { control.mnuShowAskForm_Click(); };
  menu.mnuFilter.on_click = [&control] { mnuFilter_Click(control); };
  menu.mnuGroupByNothing.on_click = [&control] { mnuGroupByNothing_Click(control); };
  menu.mnuGroupBy.on_click = [&control] { mnuGroupBy_Click(control); };
  menu.mnuHybrid.on_click = [&control] { mnuHybrid_Click(control); };
  menu.mnuSendToTextFile.on_click = [&control] { mnuSendToTextFile_Click(control); };
  menu.mnuSendToOfficeExcel.on_click = [&control] { mnuSendToOfficeExcel_Click(control); };
  menu.mnuSendToOfficeExcellFast.on_click = [&control] {
    mnuSendToOfficeExcellFast_Click(control);
  };
  menu.mnuSendToAccess.on_click = [&control] { mnuSendToAccess_Click(control); };
  LeadTo(menu.mnuSum, control, mnuSum_Click);
  LeadTo(menu.mnuavg, control, mnuAvg_Click);
  LeadTo(control.FlexPopupMenu2.mnuDelete, control, mnuDelete_Click);
}

}  // namespace

void ConnectGridEvents(ReportControl& control) {
  Grid& main = control.flxMain;
  main.on_click = [&control] { flxMain_Click(control); };
  main.on_key_down = [&control](int key, int shift) { flxMain_KeyDown(control, key, shift); };
  main.on_mouse_down = [&control](int button, int shift, double, double) {
    flxMain_MouseDown(control, button, shift);
  };
  main.on_mouse_move = [&control](int, int, double, double) { flxMain_MouseMove(control); };
  main.on_dblclick = [&control] {
    if (IsOnHeader(control.flxMain)) {
      DrillEvents(control).RaiseDblClick();
    } else {
      flxMain_DblClick(control);
    }
  };
  main.on_sel_change = [&control] { flxMain_SelChange(control); };
  main.on_scroll = [&control] { flxMain_Scroll(control); };

  Grid& transpose = control.flxTranspose;
  transpose.on_click = [&control] { flxTranspose_Click(control); };
  transpose.on_key_down = main.on_key_down;
  transpose.on_mouse_down = [&control](int button, int shift, double, double) {
    flxTranspose_MouseDown(control, button, shift);
  };
  transpose.on_dblclick = [&control] {
    if (!IsOnHeader(control.flxTranspose)) flxTranspose_DblClick(control);
  };
  transpose.on_sel_change = [&control] { flxTranspose_SelChange(control); };
  transpose.on_scroll = [&control] { flxTranspose_Scroll(control); };
  ConnectMenus(control);
}

}  // namespace vorek
