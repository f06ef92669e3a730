#include "engine/flx_main_events.h"

#include "drill/record_selection.h"
#include "drill/related_reports.h"
#include "engine/drill_events.h"
#include "engine/pass_bar.h"
#include "engine/quick_search.h"
#include "grid/column_sort.h"
#include "grid/marked_rows.h"
#include "grid/tree_rows.h"
#include "grid/tree_sort.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr int kEnter = 13;
constexpr int kEscape = 27;
constexpr int kLeft = 37;
constexpr int kRight = 39;
constexpr int kN = 78;
constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kCtrl = 2;

// The host may change both.
void RaiseKeyDown(ReportControl& control, int& key_code, int& shift) {
  auto code = static_cast<std::int16_t>(key_code);
  auto keys = static_cast<std::int16_t>(shift);
  if (control.events.KeyDown) control.events.KeyDown(code, keys);
  key_code = code;
  shift = keys;
}

bool IsArrow(int key_code) { return key_code == kLeft || key_code == kRight; }

void TurnTreeRow(ReportControl& control, int key_code) {
  Grid& grid = control.flxMain;
  const std::int32_t row = grid.Row();
  if (row < 1 || row >= grid.Rows()) return;
  const bool opens = (key_code == kLeft) == grid.RightToLeft();
  if (TreeMark(grid, row) != (opens ? '+' : '-')) return;
  grid.TakeKey();
  const std::int32_t column = grid.Col();
  const std::int32_t last = grid.ColSel();
  ReportContext report = control.Context();
  RunPass(control, [&] { ClickTreeMark(report, row); });
  // The next key is meant for the same cell.
  grid.SetRow(row);
  grid.SetCol(column);
  grid.SetColSel(last);
  flxMain_SelChange(control);
}

void ClickHeader(ReportControl& control, std::int32_t column) {
  ReportContext report = control.Context();
  RunPass(control, [&] {
    if (control.state.MakeTree()) {
      SortTree(report, control.flxMain, column);
    } else {
      SortByHeader(report, column);
    }
  });
}

}  // namespace

bool IsOnLastSummary(const Grid& grid) {
  const std::int32_t row = grid.MouseRow();
  return grid.Rows() >= 2 && row == grid.Rows() - 1 &&
         text::NumericPrefix(grid.TextMatrix(row, 0)) == 0;
}

void flxMain_Click(ReportControl& control) {
  Grid& grid = control.flxMain;
  const std::int32_t row = grid.MouseRow();
  const std::int32_t column = grid.MouseCol();
  if (row == 1 && grid.Rows() == 2) flxMain_SelChange(control);
  control.general.MouseDown(grid);
  if (row < 0 || row >= grid.Rows() || column < 0 || column >= grid.Cols()) return;
  if (control.state.MakeTree() && column == 0 && row >= 1) {
    ReportContext report = control.Context();
    RunPass(control, [&] { ClickTreeMark(report, row); });
  }
  flxMain_SelChange(control);
}

void flxMain_SelChange(ReportControl& control) {
  ReportContext report = control.Context();
  DrillEvents events(control);
  SelectMainRecord(report, events);
}

void flxMain_DblClick(ReportControl& control) {
  ReportContext report = control.Context();
  DrillEvents events(control);
  DrillFromMain(report, events);
}

void flxMain_KeyDown(ReportControl& control, int key_code, int shift) {
  RaiseKeyDown(control, key_code, shift);
  if (key_code == kEnter) {
    control.flxMain.TakeKey();
    if ((shift & kCtrl) != 0) control.state.SecondaryWanted = true;
    flxMain_DblClick(control);
  }
  if (key_code == kEscape) IgnoreErrors([&] { control.CloseParent(); });
  if (key_code == kN && shift != 0) RepeatQuickSearch(control);
  if (control.state.MakeTree() && IsArrow(key_code) && shift == 0) TurnTreeRow(control, key_code);
}

void flxMain_MouseDown(ReportControl& control, int button, int shift) {
  Grid& grid = control.flxMain;
  const std::int32_t row = grid.MouseRow();
  const std::int32_t column = grid.MouseCol();
  Windows& windows = control.world.process.windows();
  control.FlexPopupMenu.OfferShapes(control.state.ReportID);
  control.general.MouseDown(grid);
  if (row == 0 && column >= 0) grid.SetCol(column);
  const bool on_column = column >= 1 && column < grid.Cols();
  if (on_column && row >= 1 && shift == kCtrl && button == kLeftButton) ToggleMark(grid, row);
  const bool on_header = row == 0 && on_column;
  if (on_header && button == kRightButton) windows.PopupMenu(control.FlexPopupMenu);
  if (button == kRightButton && IsOnLastSummary(grid)) windows.PopupMenu(control.FlexPopupMenu2);
  if (on_header && button == kLeftButton && grid.Rows() >= 3) ClickHeader(control, column);
}

// A header with brackets or underscores is told without them too.
void flxMain_MouseMove(ReportControl& control) {
  Grid& grid = control.flxMain;
  const std::int32_t row = grid.MouseRow();
  const std::int32_t column = grid.MouseCol();
  if (grid.Rows() == 1) return;
  std::string tip;
  if (row >= 0 && row < grid.Rows() && column >= 0 && column < grid.Cols()) {
    tip = text::Trim(grid.TextMatrix(0, column));
    std::string clean = tip;
    std::erase_if(clean, [](char c) { return c == '(' || c == ')' || c == '_'; });
    if (clean != tip) tip += "(" + clean + ")";
  }
  grid.SetToolTipText(tip);
}

void flxMain_Scroll(ReportControl& control) { control.general.Scroll(control.flxMain); }

}  // namespace vorek
