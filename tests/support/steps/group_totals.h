#ifndef VOREK_TESTS_SUPPORT_STEPS_GROUP_TOTALS_H_
#define VOREK_TESTS_SUPPORT_STEPS_GROUP_TOTALS_H_

#include <string>
#include <vector>

#include "grid/column_layout_pass.h"
#include "grid/expression_columns.h"
#include "grid/report_context.h"
#include "support/steps/column_types.h"
#include "support/steps/merge_rows.h"
#include "support/steps/summary_row.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"

// Subtotals of the ledger reports. A plain reading of the rules, cell text by cell text: slow, and
// used by nothing but tests, which hold the real pass against it.
namespace vorek::steps {

// What the rules know of a report: amounts are the first pair and its balances.
struct GroupShape {
  std::int32_t limit;
  std::int32_t to_title;
  std::int32_t sort_column;  // 0 for the group's own
  std::vector<std::int32_t> amounts;
  std::vector<std::int32_t> more;
  std::vector<std::int32_t> companions;
};

inline std::string Money(const std::string& text) {
  std::string money = text;
  FormatMoney(money);
  return money;
}

inline void GroupTotals(ReportContext& report, const GroupShape& shape, bool keep_detail,
                        bool prepare) {
  Grid& grid = report.flxMain;
  const std::int32_t g = grid.Col();
  if (grid.Cols() < 3 || g >= shape.limit || grid.Rows() == 1 || grid.TextMatrix(1, 1).empty()) {
    return;
  }
  std::vector<std::string> sum;
  if (prepare) {
    for (std::int32_t row = 1; row < grid.Rows();) {
      if (grid.TextMatrix(row, 0) != "مجموع") {
        ++row;
        continue;
      }
      sum.clear();
      for (std::int32_t col = 0; col < grid.Cols(); ++col) sum.push_back(grid.TextMatrix(row, col));
      if (grid.Rows() == 2) {
        grid.SetRows(1);
      } else {
        grid.RemoveItem(row);
      }
    }
    grid.SetCol(shape.sort_column > 0 ? shape.sort_column : g);
    const std::int32_t column = grid.Col();
    const int type = TypeOf(report.state, column);
    const bool number = type == 2 || type == 3 || type == 5 || type == 6 || type == 20;
    const bool scaled = grid.Rows() >= 3 && number &&
                        (text::Length(grid.TextMatrix(grid.Rows() - 1, column)) >= 7 ||
                         text::Length(grid.TextMatrix(1, column)) >= 7);
    if (scaled) Scale(grid, column, 0.000001);
    grid.Sort(1);
    if (scaled) Scale(grid, column, 1000000);
  }
  grid.SetCols(static_cast<std::int32_t>(report.state.QueryFields.size()) + 1);
  MakeExpressionColumns(report);
  std::vector<std::int32_t> added = {shape.amounts[0], shape.amounts[1]};
  added.insert(added.end(), shape.more.begin(), shape.more.end());
  std::vector<std::int64_t> sums;
  std::string key;
  std::vector<std::string> kept;
  const auto load = [&](std::int32_t row) {
    sums.clear();
    for (const std::int32_t column : added) {
      sums.push_back(ToFixedPoint(UnformatNumber(grid.TextMatrix(row, column))));
    }
    key = grid.TextMatrix(row, g);
    kept.clear();
    for (const std::int32_t column : shape.companions) kept.push_back(grid.TextMatrix(row, column));
  };
  const auto write = [&](std::int32_t row) {
    grid.SetTextMatrix(row, g + shape.to_title, "سر جمع " + grid.TextMatrix(0, g) + ": " + key);
    if (shape.to_title > 0) grid.SetTextMatrix(row, g, key);
    for (std::size_t i = 0; i < kept.size(); ++i) {
      grid.SetTextMatrix(row, shape.companions[i], kept[i]);
    }
    for (std::size_t i = 0; i < 2; ++i) {
      grid.SetTextMatrix(row, added[i], Money(PlainFixed(sums[i])));
    }
    const double a = text::NumericPrefix(UnformatNumber(grid.TextMatrix(row, added[0])));
    const double b = text::NumericPrefix(UnformatNumber(grid.TextMatrix(row, added[1])));
    const std::string size = Money(text::PlainNumber(a - b > 0 ? a - b : b - a));
    grid.SetTextMatrix(row, shape.amounts[2], a - b > 0 ? size : "0");
    grid.SetTextMatrix(row, shape.amounts[3], a - b > 0 ? "0" : size);
    for (std::size_t i = 2; i < added.size(); ++i) {
      grid.SetTextMatrix(row, added[i], Money(PlainFixed(sums[i])));
    }
    grid.SetRow(row);
    grid.SetCol(0);
    grid.SetColSel(grid.Cols() - 1);
    grid.SetCellFontBold(true);
    grid.SetCellTextStyle(1);
  };
  load(1);
  for (std::int32_t i = 2; i < grid.Rows();) {
    if (grid.TextMatrix(i, g) == key) {
      for (std::size_t k = 0; k < added.size(); ++k) {
        sums[k] += ToFixedPoint(UnformatNumber(grid.TextMatrix(i, added[k])));
      }
      ++i;
    } else {
      grid.AddItem("", i);
      write(i);
      load(i + 1);
      i += 2;
    }
  }
  grid.AddItem("");
  write(grid.Rows() - 1);
  for (std::int32_t row = 1; !keep_detail && row < grid.Rows();) {
    if (grid.TextMatrix(row, 0).empty()) {
      ++row;
    } else {
      grid.RemoveItem(row);
    }
  }
  if (sum.empty()) return;
  grid.AddItem(std::to_string(grid.Rows() - 1));
  const std::int32_t row = grid.Rows() - 1;
  for (std::size_t col = 0; col < sum.size(); ++col) {
    grid.SetTextMatrix(row, static_cast<std::int32_t>(col), sum[col]);
  }
  grid.SetRow(row);
  grid.SetCol(0);
  grid.SetColSel(grid.Cols() - 1);
  grid.SetCellFontBold(true);
  grid.SetCellTextStyle(1);
}

}  // namespace vorek::steps

#endif  // VOREK_TESTS_SUPPORT_STEPS_GROUP_TOTALS_H_
