#ifndef VOREK_TESTS_SUPPORT_STEPS_H_
#define VOREK_TESTS_SUPPORT_STEPS_H_

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "grid/column_layout_pass.h"
#include "grid/expression_columns.h"
#include "grid/report_context.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"

// The passes over a grid as plain readings of their rules, cell text by cell text: slow, and used
// by nothing but tests, which hold the real ones against them.
namespace vorek::steps {

inline bool IsTime(const ReportState& state, std::int32_t column) {
  const auto field = static_cast<std::size_t>(column) - 1;
  return field < state.QueryFields.size() &&
         IsTimeColumn(state.QueryFields[field].type, state.QueryFields[field].name);
}

inline int TypeOf(const ReportState& state, std::int32_t column) {
  const auto field = static_cast<std::size_t>(column) - 1;
  return field < state.QueryFields.size() ? state.QueryFields[field].type : -1;
}

// --- Sums and averages ---------------------------------------------------------------------------

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

// --- Folded rows
// -----------------------------------------------------------------------------------

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

// --- Sorting
// ---------------------------------------------------------------------------------------

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

// --- Trees
// -----------------------------------------------------------------------------------------

inline std::int32_t WholeOf(const Grid& grid, std::int32_t row, std::int32_t column) {
  return text::ToInt32(text::NumericPrefix(grid.TextMatrix(row, column)));
}

inline void Expand(ReportContext& report, std::int32_t row) {
  Grid& grid = report.flxMain;
  const ReportState& state = report.state;
  std::string mark = grid.TextMatrix(row, 0);
  if (text::Length(mark) <= 1) {
    mark = "-";
  } else if (!text::Contains(mark, "-")) {
    mark = mark.substr(0, mark.find('+')) + "-";
  } else {
    mark = text::Replace(mark, "+", "") + "-";
  }
  grid.SetTextMatrix(row, 0, mark);
  const std::string parent = std::to_string(WholeOf(grid, row, state.IDColumn + 1));
  Recordset& query = report.process.dten().rssqlQuery;
  query.Close();
  query.SetFilter("");
  query.Open("rows");
  query.SetFilter("ParentID=" + parent);
  for (std::int32_t at = query.RecordCount(); at >= 1; --at) {
    query.SetAbsolutePosition(at);
    const std::string key = std::to_string(text::ToInt32(
        text::NumericPrefix(query.Field(static_cast<std::size_t>(state.IDColumn)).Text())));
    query.SetFilter(" ParentID = " + key);
    const std::string child_mark = query.RecordCount() > 0 ? "+" : "  ";
    query.SetFilter(" ParentID = " + parent);
    query.SetAbsolutePosition(at);
    const std::string above = grid.TextMatrix(row, 0);
    grid.AddItem(std::to_string(at) + "-" + above.substr(0, above.size() - 1) + child_mark,
                 row + 1);
    for (std::size_t field = 0; field < query.FieldCount(); ++field) {
      std::string text = query.Field(field).Text();
      if (query.FieldType(field) == 6) FormatMoney(text);
      grid.SetTextMatrix(row + 1, static_cast<std::int32_t>(field) + 1, text);
    }
    const std::int32_t color = grid.FormatAt(row, 1).back_color;
    std::int32_t paler = 0;
    for (const int shift : {16, 8, 0}) {
      paler |= std::min(((color >> shift) & 0xFF) + 20, 255) << shift;
    }
    grid.SetRow(row + 1);
    grid.SetCol(1);
    grid.SetColSel(grid.Cols() - 1);
    grid.SetCellBackColor(paler);
  }
  query.SetFilter("");
  query.Close();
}

inline std::int32_t FindRow(const ReportContext& report, std::int32_t id, std::int32_t hint) {
  const Grid& grid = report.flxMain;
  const std::int32_t column = report.state.IDColumn + 1;
  if (hint < grid.Rows() && WholeOf(grid, hint, column) == id) return hint;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    if (WholeOf(grid, row, column) == id) return row;
  }
  return -1;
}

inline bool Collapse(ReportContext& report, std::int32_t& row) {
  Grid& grid = report.flxMain;
  const std::int32_t id_column = report.state.IDColumn + 1;
  const std::int32_t parent_column = report.state.ParentIDColumn + 1;
  const std::int32_t id = WholeOf(grid, row, id_column);
  if (grid.TextMatrix(row, 0).back() == '+') return false;
  for (std::int32_t i = 1; i < grid.Rows();) {
    row = FindRow(report, id, row);
    if (!grid.TextMatrix(i, parent_column).empty() &&
        WholeOf(grid, i, parent_column) == WholeOf(grid, row, id_column)) {
      std::int32_t child = i;
      Collapse(report, child);
      grid.RemoveItem(i);
      if (i < row) --row;
    } else {
      ++i;
    }
  }
  row = FindRow(report, id, row);
  grid.SetRow(row);
  grid.SetColSel(grid.Cols() - 1);
  const std::string text = grid.TextMatrix(row, 0);
  if (text.back() == '-') {
    const std::string trimmed = text::Trim(text);
    grid.SetTextMatrix(row, 0,
                       trimmed.substr(0, trimmed.size() - 1) + "+" +
                           std::string(text.size() - trimmed.size(), ' '));
  }
  return true;
}

inline bool TreeLess(const std::string& a, const std::string& b) {
  const auto plain = [](const std::string& text) {
    return text::PlainNumber(text::NumericPrefix(text)) == text;
  };
  if (plain(a) && plain(b)) return text::NumericPrefix(a) < text::NumericPrefix(b);
  return a < b;
}

inline void SortTops(ReportContext& report, std::int32_t column) {
  Grid& grid = report.flxMain;
  ReportState& state = report.state;
  if (column >= grid.Cols()) return;
  const bool same = column == state.TreeSortColumn;
  if (column == 0) column = state.TreeSortColumn;
  if (column < 1 || column > grid.Cols() - 1) return;
  state.TreeSortColumn = column;
  state.TreeSortDescending = same ? !state.TreeSortDescending : true;
  const auto is_top = [&](std::int32_t row) {
    return grid.TextMatrix(row, state.ParentIDColumn + 1).empty();
  };
  const auto block_end = [&](std::int32_t row) {
    std::int32_t end = row + 1;
    while (end < grid.Rows() && !is_top(end)) ++end;
    return end;
  };
  for (std::int32_t i = 1; i < grid.Rows(); ++i) {
    if (!is_top(i)) continue;
    std::string best = grid.TextMatrix(i, column);
    std::int32_t noted = -1;
    for (std::int32_t j = i + 1; j < grid.Rows(); ++j) {
      if (!is_top(j)) continue;
      const std::string v = grid.TextMatrix(j, column);
      if (state.TreeSortDescending ? v != best && !TreeLess(v, best) : TreeLess(v, best)) {
        best = v;
        noted = j;
      }
    }
    if (noted < 0) continue;
    const std::int32_t end = block_end(noted);
    for (std::int32_t first = noted, target = i; first < end; ++first, ++target) {
      std::vector<std::string> texts;
      for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        texts.push_back(grid.TextMatrix(first, col));
      }
      const CellFormat format = grid.FormatAt(first, 1);
      grid.RemoveItem(first);
      grid.AddItem(texts[0], target);
      for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        grid.SetTextMatrix(target, col, texts[static_cast<std::size_t>(col)]);
      }
      grid.SetRowBackColor(target, format.back_color);
    }
  }
  grid.SetRow(grid.Rows() >= 2 ? 1 : 0);
}

// --- Cross tables
// ----------------------------------------------------------------------------------

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

// --- Quick search --------------------------------------------------------------------------------

// What a person takes for the same as one text.
inline std::string Alike(std::string text) {
  const char* const kPairs[][2] = {{"ي", "ی"}, {"ك", "ک"}};
  for (const auto& pair : kPairs) text = text::Replace(text, pair[0], pair[1]);
  const std::string digits[] = {"٠١٢٣٤٥٦٧٨٩", "۰۱۲۳۴۵۶۷۸۹"};
  for (const std::string& script : digits) {
    for (std::size_t i = 1; i <= 10; ++i) {
      text = text::Replace(text, text::Mid(script, i, 1), std::to_string(i - 1));
    }
  }
  return text::ToLower(text);
}

inline bool QuickFind(ReportContext& report, const std::string& text, std::int32_t column) {
  ReportState& state = report.state;
  Grid& grid = report.flxMain;
  if (text.empty()) return false;
  if (column == -1) column = state.LastSearchColumn;
  std::int32_t start = 1;
  if (text != state.LastSearchText) state.LastSearchColumn = -1;
  state.LastSearchText = text;
  if (column < 1 || column > grid.Cols() - 1) return false;
  if (column != state.LastSearchColumn) {
    state.LastSearchColumn = column;
  } else {
    start = grid.Row() == grid.Rows() - 1 ? 1 : grid.Row() + 1;
  }
  for (std::int32_t i = start; i <= grid.Rows() - 1; ++i) {
    const std::string cell = UnformatNumber(grid.TextMatrix(i, column));
    if (!text::Contains(Alike(cell), Alike(text))) continue;
    grid.SetRow(i);
    grid.SetCol(1);
    grid.SetColSel(grid.Cols() - 1);
    grid.SetTopRow(i);
    return true;
  }
  grid.SetRow(grid.Rows() - 1);
  grid.SetCol(1);
  grid.SetColSel(grid.Cols() - 1);
  report.process.windows().Beep(2000, 100);
  return false;
}

// --- Subtotals of the ledger reports -------------------------------------------------------------

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

#endif  // VOREK_TESTS_SUPPORT_STEPS_H_
