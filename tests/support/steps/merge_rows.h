#ifndef VOREK_TESTS_SUPPORT_STEPS_MERGE_ROWS_H_
#define VOREK_TESTS_SUPPORT_STEPS_MERGE_ROWS_H_

#include <cmath>
#include <string>

#include "grid/column_layout_pass.h"
#include "grid/report_context.h"
#include "support/steps/column_types.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"

// Folded rows. A plain reading of the rules, cell text by cell text: slow, and used by nothing but
// tests, which hold the real pass against it.
namespace vorek::steps {

// Numbers of a column, by a factor, written back as plain texts.
inline void Scale(Grid& grid, std::int32_t column, double factor) {
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    const std::string text = grid.TextMatrix(row, column);
    if (text.empty()) continue;
    const double number = text::NumericPrefix(text);
    grid.SetTextMatrix(row, column,
                       text::PlainNumber(factor < 1 ? number / 1000000 : number * factor));
  }
}

inline bool IsLongNumber(const ReportState& state, const Grid& grid, std::int32_t column) {
  const int type = TypeOf(state, column);
  const bool numeric = type == 20 || type == 6 || type == 5 || type == 3 || type == 2;
  return grid.Rows() >= 3 && numeric &&
         (text::Length(grid.TextMatrix(grid.Rows() - 1, column)) >= 7 ||
          text::Length(grid.TextMatrix(1, column)) >= 7);
}

inline void MergeRows(ReportContext& report) {
  Grid& grid = report.flxMain;
  std::int32_t key = 1;
  while (key < grid.Cols() && report.layouts()[key].merge_type != 1) ++key;
  if (!report.state.MakeMergeFlag || key == grid.Cols()) return;
  grid.SetCol(key);
  const bool scaled = IsLongNumber(report.state, grid, key);
  if (scaled) Scale(grid, key, 1e-6);
  grid.Sort(5);
  if (scaled) Scale(grid, key, 1e6);
  for (std::int32_t i = 1; i < grid.Rows(); ++i) {
    while (i + 1 < grid.Rows() && grid.TextMatrix(i, key) == grid.TextMatrix(i + 1, key)) {
      for (std::int32_t j = 1; j < grid.Cols(); ++j) {
        const std::int32_t type = report.layouts()[j].merge_type;
        const std::string a = grid.TextMatrix(i, j);
        const std::string b = grid.TextMatrix(i + 1, j);
        if (type == 2) {
          // Money in its units: a double would lose the last ones where big amounts cancel.
          const double units = TypeOf(report.state, j) == kCurrency ? 10000 : 1;
          const auto number = [units](const std::string& text) {
            const double value = text::NumericPrefix(UnformatNumber(text)) * units;
            return units == 1 ? value : std::round(value);
          };
          grid.SetTextMatrix(i, j, text::PlainNumber((number(a) + number(b)) / units));
        } else if (type == 3) {
          grid.SetTextMatrix(i, j, a + "," + b);
        }
      }
      grid.RemoveItem(i + 1);
    }
  }
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    grid.SetTextMatrix(row, 0, std::to_string(row));
  }
}

}  // namespace vorek::steps

#endif  // VOREK_TESTS_SUPPORT_STEPS_MERGE_ROWS_H_
