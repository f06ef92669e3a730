#include "engine/quick_search.h"

#include <algorithm>

#include "engine/pass_bar.h"
#include "text/number.h"
#include "totals/quick_find.h"

namespace vorek {
namespace {

constexpr std::int32_t kLastColumn = -1;

FormQuickSearch& Box(ReportControl& control) {
  if (control.frmQuickSearch == nullptr) {
    control.frmQuickSearch = std::make_unique<FormQuickSearch>(control.world.process);
  }
  return *control.frmQuickSearch;
}

std::int32_t SearchedColumn(const Grid& grid) {
  const std::int32_t pointed = grid.MouseCol();
  if (pointed >= 0 && pointed < grid.Cols()) return pointed;
  return std::clamp(grid.Col(), grid.FixedCols(), grid.Cols() - 1);
}

}  // namespace

void mnuQuickSearch_Click(ReportControl& control) {
  ReportContext report = control.Context();
  Grid& grid = report.ActiveGrid();
  const std::int32_t column = SearchedColumn(grid);
  grid.SetCol(column);
  const Windows& windows = control.world.process.windows();
  const ScreenPoint corner = windows.ClientToScreen(control);
  const std::int32_t left = text::ToInt32(corner.x * windows.TwipsPerPixel()) + grid.Left() +
                            control.frameMain.Left() + grid.CellLeft();
  const std::int32_t top =
      text::ToInt32(corner.y * windows.TwipsPerPixel()) + grid.Top() + control.frameMain.Top();
  FormQuickSearch& box = Box(control);
  if (!box.Ask(left, top)) return;
  RunPass(control, [&] { QuickFind(report, box.txtDesc.Text(), column); });
}

void RepeatQuickSearch(ReportControl& control) {
  if (control.frmQuickSearch == nullptr) return;
  ReportContext report = control.Context();
  const std::string text = control.frmQuickSearch->txtDesc.Text();
  RunPass(control, [&] { QuickFind(report, text, kLastColumn); });
}

}  // namespace vorek
