#ifndef VOREK_TESTS_SUPPORT_STEPS_SORT_H_
#define VOREK_TESTS_SUPPORT_STEPS_SORT_H_

#include <string>
#include <vector>

#include "grid/column_layout_pass.h"
#include "grid/expression_columns.h"
#include "grid/report_context.h"
#include "support/steps/column_types.h"
#include "support/steps/merge_rows.h"
#include "text/cell_text.h"
#include "text/utf8.h"

// Sorting. A plain reading of the rules, cell text by cell text: slow, and used by nothing but
// tests, which hold the real pass against it.
namespace vorek::steps {

inline bool IsDates(const Grid& grid, std::int32_t column) {
  const auto looks = [&](std::int32_t row) {
    const std::string text = text::Trim(grid.TextMatrix(row, column));
    int strokes = 0;
    for (const char c : text) strokes += c == '/' || c == '\\' ? 1 : 0;
    return text::Length(text) == 10 && strokes == 2;
  };
  return looks(1) || looks(grid.Rows() - 1);
}

inline void Colour(Grid& grid, std::int32_t column) {
  if (grid.Rows() > 1 && !grid.TextMatrix(grid.Rows() - 1, 0).empty()) {
    bool flag = true;
    std::string previous;
    for (std::int32_t row = 1; row < grid.Rows(); ++row) {
      grid.SetRow(row);
      grid.SetCol(1);
      grid.SetColSel(grid.Cols() - 1);
      if (grid.TextMatrix(row, column) != previous) flag = !flag;
      grid.SetCellBackColor(flag ? 16777215 : 16243138);
      previous = grid.TextMatrix(row, column);
    }
  }
  grid.SetRow(grid.Rows() > 1 ? 1 : 0);
}

inline void SortMain(ReportContext& report, std::int32_t column) {
  Grid& grid = report.flxMain;
  ReportState& state = report.state;
  const bool same = column == state.SortColumn;
  if (column == 0) column = state.SortColumn;
  if (column < 1 || column > grid.Cols() - 1) return;
  state.SortColumn = column;
  const int type = TypeOf(state, column);
  const bool money = type == 5 || type == 6;
  const auto each = [&](auto change) {
    for (std::int32_t row = 1; row < grid.Rows(); ++row) {
      grid.SetTextMatrix(row, column, change(grid.TextMatrix(row, column)));
    }
  };
  if (money) each([](const std::string& text) { return UnformatNumber(text); });
  grid.SetCol(column);
  const bool scaled = IsLongNumber(state, grid, column);
  if (scaled) Scale(grid, column, 1e-6);
  if (same) state.SortCode = state.SortCode == 1 ? 2 : 1;
  grid.Sort(state.SortCode + (IsDates(grid, column) ? 6 : 0));
  if (scaled) Scale(grid, column, 1e6);
  grid.SetCols(report.process.main.ReportCache.front().field_count + 1);
  MakeExpressionColumns(report);
  Colour(grid, column);
  if (money) {
    each([](std::string text) { return FormatMoney(text); });
  }
}

inline void HeaderClick(ReportContext& report, std::int32_t column) {
  Grid& grid = report.flxMain;
  if (grid.Rows() < 3) return;
  SortMain(report, column);
  std::vector<std::string> saved;
  for (std::int32_t row = 1; row < grid.Rows();) {
    if (grid.TextMatrix(row, 0) == "مجموع") {
      saved.clear();
      for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        saved.push_back(grid.TextMatrix(row, col));
      }
      if (grid.Rows() == 2) {
        grid.SetRows(1);
      } else {
        grid.RemoveItem(row);
      }
      continue;
    }
    if (grid.TextMatrix(row, 0) != "ميانگين") grid.SetTextMatrix(row, 0, std::to_string(row));
    ++row;
  }
  if (saved.empty()) return;
  grid.AddItem(std::to_string(grid.Rows()));
  const std::int32_t last = grid.Rows() - 1;
  for (std::int32_t col = 0; col < grid.Cols(); ++col) {
    grid.SetTextMatrix(last, col, saved[static_cast<std::size_t>(col)]);
  }
  grid.SetRow(last);
  grid.SetCol(0);
  grid.SetColSel(grid.Cols() - 1);
  grid.SetCellFontBold(true);
  grid.SetCellTextStyle(1);
}

}  // namespace vorek::steps

#endif  // VOREK_TESTS_SUPPORT_STEPS_SORT_H_
