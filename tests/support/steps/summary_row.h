#ifndef VOREK_TESTS_SUPPORT_STEPS_SUMMARY_ROW_H_
#define VOREK_TESTS_SUPPORT_STEPS_SUMMARY_ROW_H_

#include <string>

#include "grid/column_layout_pass.h"
#include "grid/report_context.h"
#include "support/steps/column_types.h"
#include "text/cell_text.h"
#include "text/number.h"

// Sums and averages. A plain reading of the rules, cell text by cell text: slow, and used by
// nothing but tests, which hold the real pass against it.
namespace vorek::steps {

inline std::string PlainFixed(std::int64_t value) {
  std::string text;
  text::AppendScaled(value, 4, text);
  return text;
}

inline void GiveResultText(ReportContext& report, Grid& grid, std::int32_t row,
                           std::int32_t column) {
  const int type = TypeOf(report.state, column);
  std::string text = grid.TextMatrix(row, column);
  if (type == -1 || type == 5 || type == 6) {
    FormatMoney(text);
  } else if (IsTime(report.state, column)) {
    text = MinutesToTime(text::ToInt32(text::NumericPrefix(text)));
  }
  grid.SetTextMatrix(row, column, text);
}

inline void SummaryRow(ReportContext& report, bool average) {
  const bool transposed = report.state.isTransposedResult;
  Grid& grid = report.ActiveGrid();
  const std::string label = average ? "ميانگين" : "مجموع";
  const std::int32_t column = grid.Col();
  std::int64_t total = 0;
  bool has_sum = false;
  bool has_average = false;
  std::int32_t old_row = -1;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    const std::string mark = grid.TextMatrix(row, 0);
    const std::string cell = grid.TextMatrix(row, column);
    if (mark == label) old_row = row;
    if (mark == "مجموع") {
      has_sum = true;
    } else if (mark == "ميانگين") {
      has_average = true;
    } else if (!transposed || grid.RowHeight(row) != 0) {
      total += IsTime(report.state, column) ? std::int64_t{TimeToMinutes(cell)} * 10000
                                            : ToFixedPoint(UnformatNumber(cell));
    }
  }
  if (transposed && old_row > 0) {
    grid.RemoveItem(old_row);
    (average ? has_average : has_sum) = false;
  }
  std::string plain = PlainFixed(total);
  if (average) {
    const int rows = grid.Rows() - 1 - (has_sum ? 1 : 0) - (has_average ? 1 : 0);
    const double value = rows <= 0 ? 0 : static_cast<double>(total) / 10000 / rows;
    plain = PlainFixed(
        static_cast<std::int64_t>(text::RoundHalfEven(text::RoundHalfEven(value * 10000) / 10000)) *
        10000);
  }
  if (average ? has_average : has_sum) {
    for (std::int32_t row = 1; row < grid.Rows(); ++row) {
      if (grid.TextMatrix(row, 0) != label) continue;
      grid.SetTextMatrix(row, column, plain);
      GiveResultText(report, grid, row, column);
    }
  } else {
    grid.AddItem(std::to_string(grid.Rows() - 1));
    const std::int32_t row = grid.Rows() - 1;
    grid.SetTextMatrix(row, column, plain);
    grid.SetTextMatrix(row, 0, label);
    if (!average && !transposed) {
      grid.SetRow(row);
      grid.SetCol(0);
      grid.SetColSel(grid.Cols() - 1);
      grid.SetCellFontBold(true);
      grid.SetCellTextStyle(1);
    }
    GiveResultText(report, grid, row, column);
  }
  ColumnLayout& layout = (transposed ? report.transpose_layouts() : report.layouts())[column];
  (average ? layout.make_average : layout.make_sum) = true;
}

}  // namespace vorek::steps

#endif  // VOREK_TESTS_SUPPORT_STEPS_SUMMARY_ROW_H_
