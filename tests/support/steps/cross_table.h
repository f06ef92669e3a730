#ifndef VOREK_TESTS_SUPPORT_STEPS_CROSS_TABLE_H_
#define VOREK_TESTS_SUPPORT_STEPS_CROSS_TABLE_H_

#include <algorithm>
#include <string>
#include <vector>

#include "grid/report_context.h"

// Cross tables. A plain reading of the rules, cell text by cell text: slow, and used by nothing but
// tests, which hold the real pass against it.
namespace vorek::steps {

inline void FillTranspose(ReportContext& report) {
  Grid& main = report.flxMain;
  Grid& table = report.flxTranspose;
  const ReportState& state = report.state;
  const std::vector<std::int32_t>& base = state.TransposeColumns;
  const auto is_value = [&](std::int32_t column) {
    return column != state.TransposeRowColumn &&
           std::find(base.begin(), base.end(), column) == base.end();
  };
  // The key column.
  main.SetCols(main.Cols() + 1);
  const std::int32_t key = main.Cols() - 1;
  for (std::int32_t row = 1; row < main.Rows(); ++row) {
    for (const std::int32_t column : base) {
      main.SetTextMatrix(row, key, main.TextMatrix(row, key) + main.TextMatrix(row, column));
    }
  }
  // The values.
  main.SetCol(state.TransposeRowColumn);
  main.Sort(7);
  std::vector<std::string> values;
  std::string last = "!@#$%^&*";
  for (std::int32_t row = 1; row < main.Rows(); ++row) {
    const std::string text = main.TextMatrix(row, state.TransposeRowColumn);
    if (text != last) values.push_back(text);
    last = text;
  }
  // The table.
  table.SetRows(2);
  table.SetFixedRows(1);
  table.SetRows(1);
  table.SetCols(static_cast<std::int32_t>(values.size() + base.size()) + 1);
  table.SetTextMatrix(0, 0, "رديف");
  for (std::size_t i = 0; i < base.size(); ++i) {
    table.SetTextMatrix(0, static_cast<std::int32_t>(i) + 1, main.TextMatrix(0, base[i]));
  }
  for (std::size_t j = 0; j < values.size(); ++j) {
    table.SetTextMatrix(0, static_cast<std::int32_t>(base.size() + j) + 1, values[j]);
  }
  main.SetCol(key);
  main.Sort(5);
  last = "!@#$%^&*";
  std::int32_t first_sub_row = 0;
  std::int32_t last_sub_row = 0;
  for (std::int32_t row = 1; row < main.Rows(); ++row) {
    if (main.TextMatrix(row, key) != last) {
      table.AddItem(std::to_string(table.Rows()));
      for (std::size_t i = 0; i < base.size(); ++i) {
        table.SetTextMatrix(table.Rows() - 1, static_cast<std::int32_t>(i) + 1,
                            main.TextMatrix(row, base[i]));
      }
      last = main.TextMatrix(row, key);
      first_sub_row = table.Rows();
      if (main.Cols() - 2 - static_cast<std::int32_t>(base.size()) - 1 >= 2) {
        for (std::int32_t c = 1; c <= main.Cols() - 2; ++c) {
          if (!is_value(c)) continue;
          table.AddItem("");
          const std::int32_t sub_row = table.Rows() - 1;
          table.SetTextMatrix(sub_row, 1, main.TextMatrix(0, c));
          table.SetRowHeight(sub_row, 0);
          table.SetRow(sub_row);
          table.SetCol(1);
          table.SetColSel(table.Cols() - 1);
          table.SetCellBackColor(16243138);
          if (table.TextMatrix(first_sub_row - 1, 0) != "+") {
            table.SetTextMatrix(first_sub_row - 1, 0, "+");
            table.SetTextMatrix(0, 0, "");
          }
        }
      }
      last_sub_row = table.Rows() - 1;
    }
    std::int32_t t = 1;
    while (t < table.Cols() &&
           table.TextMatrix(0, t) != main.TextMatrix(row, state.TransposeRowColumn)) {
      ++t;
    }
    if (t == table.Cols()) continue;
    for (std::int32_t c = 1; c <= main.Cols() - 2; ++c) {
      if (!is_value(c)) continue;
      std::int32_t to = table.Rows() - 1;
      if (last_sub_row >= first_sub_row) {
        to = first_sub_row;
        while (to <= last_sub_row && table.TextMatrix(to, 1) != main.TextMatrix(0, c)) ++to;
        if (to > last_sub_row) continue;
      }
      table.SetTextMatrix(to, t, main.TextMatrix(row, c));
    }
  }
  main.SetCols(main.Cols() - 1);
  if (table.Rows() == 1) {
    table.Clear();
    table.SetRows(2);
    table.SetCols(2);
  }
  table.SetFixedRows(1);
}

}  // namespace vorek::steps

#endif  // VOREK_TESTS_SUPPORT_STEPS_CROSS_TABLE_H_
