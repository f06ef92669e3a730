#ifndef VOREK_TESTS_SUPPORT_STEPS_TREE_H_
#define VOREK_TESTS_SUPPORT_STEPS_TREE_H_

#include <algorithm>
#include <string>
#include <vector>

#include "grid/column_layout_pass.h"
#include "grid/report_context.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"

// Trees. A plain reading of the rules, cell text by cell text: slow, and used by nothing but tests,
// which hold the real pass against it.
namespace vorek::steps {

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

}  // namespace vorek::steps

#endif  // VOREK_TESTS_SUPPORT_STEPS_TREE_H_
