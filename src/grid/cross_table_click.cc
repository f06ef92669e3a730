#include "grid/cross_table_click.h"

#include <string>
#include <string_view>

#include "grid/column_sort.h"
#include "grid/outline_mark.h"
#include "grid/tree_rows.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::int32_t kSubRowHeight = 310;  // twips
constexpr std::int32_t kAscending = 1;
constexpr std::int32_t kDescending = 2;
constexpr std::int32_t kTextAscending = 7;
constexpr std::int32_t kTextDescending = 8;

void SortByColumn(ReportContext& report, std::int32_t col) {
  Grid& table = report.flxTranspose;
  std::int32_t& code = report.state.TransposeSortCode;
  if (IsDateColumn(table, col)) {
    code = code == kTextAscending ? kTextDescending : kTextAscending;
  } else {
    code = code == kAscending ? kDescending : kAscending;
  }
  table.SetCol(col);
  table.Sort(code);
  table.SetSortedBy({col, code == kDescending || code == kTextDescending});
}

void ShowSubRows(Grid& table, std::int32_t row) {
  table.WriteCell(row, 0, "-");
  for (++row; row < table.Rows() && table.RowHeight(row) == 0; ++row) {
    table.SetRowHeight(row, kSubRowHeight);
  }
}

void HideSubRows(Grid& table, std::int32_t row) {
  table.WriteCell(row, 0, "+");
  for (++row; row < table.Rows(); ++row) {
    const char mark = TreeMark(table, row);
    if (mark == '+' || mark == '-') return;
    table.SetRowHeight(row, 0);
  }
}

void SetSign(Grid& table, std::int32_t col, char sign) {
  table.WriteCell(0, col, sign + text::Mid(table.TextMatrix(0, col), 2));
}

void OpenColumns(Grid& table, std::int32_t col) {
  const std::int32_t level = TreeLevel(table.TextMatrix(0, col));
  for (std::int32_t next = col + 1; next < table.Cols(); ++next) {
    if (TreeLevel(table.TextMatrix(0, next)) != level + 1) break;
    table.SetColWidth(next, table.ColWidth(0));
  }
  SetSign(table, col, '-');
}

void CloseColumns(Grid& table, std::int32_t col) {
  const std::int32_t level = TreeLevel(table.TextMatrix(0, col));
  for (std::int32_t next = col + 1; next < table.Cols(); ++next) {
    const std::string header = table.TextMatrix(0, next);
    if (TreeLevel(header) <= level) break;
    table.SetColWidth(next, 0);
    if (header.starts_with('-')) SetSign(table, next, '+');
  }
  SetSign(table, col, '+');
}

void ClickHeader(ReportContext& report, std::int32_t col) {
  Grid& table = report.flxTranspose;
  const std::string header = table.TextMatrix(0, col);
  const char mark = HeaderSign(table, col, header);
  if (mark == '\0') {
    SortByColumn(report, col);
  } else if (mark == '+') {
    OpenColumns(table, col);
  } else {
    CloseColumns(table, col);
  }
}

bool IsClosed(const Grid& table, std::int32_t row) { return table.TextMatrix(row, 0) == "+"; }

}  // namespace

void OpenCrossTable(Grid& table) {
  for (std::int32_t row = 1; row < table.Rows(); ++row) {
    if (IsClosed(table, row)) ShowSubRows(table, row);
  }
}

void ClickCrossTable(ReportContext& report, std::int32_t row, std::int32_t col) {
  Grid& table = report.flxTranspose;
  if (row < 0 || col < 0 || row >= table.Rows() || col >= table.Cols()) return;
  if (row == 0) {
    ClickHeader(report, col);
  } else if (col == 0 && IsClosed(table, row)) {
    ShowSubRows(table, row);
  } else if (col == 0 && table.TextMatrix(row, 0) == "-") {
    HideSubRows(table, row);
  }
}

}  // namespace vorek
