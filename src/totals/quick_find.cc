#include "totals/quick_find.h"

#include "grid/cell_search.h"

namespace vorek {
namespace {

constexpr std::int32_t kFrequency = 2000;  // hertz
constexpr std::int32_t kDuration = 100;    // milliseconds

void SelectRow(Grid& grid, std::int32_t row) {
  grid.SetRow(row);
  grid.SetCol(1);
  grid.SetColSel(grid.Cols() - 1);
}

}  // namespace

bool QuickFind(ReportContext& report, const std::string& text, std::int32_t column) {
  if (text.empty()) return false;
  ReportState& state = report.state;
  Grid& grid = report.ActiveGrid();
  if (column == -1) column = state.LastSearchColumn;
  if (text != state.LastSearchText) state.LastSearchColumn = -1;
  state.LastSearchText = text;
  if (column < 1 || column > grid.Cols() - 1) return false;
  const bool again = column == state.LastSearchColumn && grid.Row() != grid.Rows() - 1;
  state.LastSearchColumn = column;
  const std::int32_t found =
      CellSearch(text).FindRow(grid, column, again ? grid.Row() + 1 : 1, !state.isTransposedResult);
  SelectRow(grid, found > 0 ? found : grid.Rows() - 1);
  if (found > 0) {
    grid.SetTopRow(found);
  } else {
    report.process.windows().Beep(kFrequency, kDuration);
  }
  IgnoreErrors([&] { grid.SetFocus(); });
  return found > 0;
}

}  // namespace vorek
