#include "export/selection_copy.h"

#include <algorithm>

#include "export/markup.h"
#include "totals/fixed_total.h"
#include "totals/selection_figures.h"

namespace vorek {
namespace {

// A text that its field holds stays as it is, also where it reads like an amount.
std::string PlainText(const Grid& grid, std::int32_t row, std::int32_t col) {
  std::string scratch;
  if (grid.IsNumber(row, col)) return std::string(grid.CellPlain(row, col, scratch));
  std::string text = grid.TextMatrix(row, col);
  FixedPoint value = 0;
  if (grid.IsSourced(row, col) || !ReadFigure(text, value)) return text;
  FixedTotal total;
  total.Add(value);
  return total.Text();
}

class Copying {
 public:
  Copying(const Grid& grid, CopyForm form) : grid_(grid), form_(form) {
    out_.html = "<table dir=\"rtl\">";
  }

  void AddRow(std::int32_t row, const std::vector<std::int32_t>& columns) {
    if (!out_.text.empty()) out_.text += '\n';
    out_.html += "<tr>";
    bool first = true;
    for (const std::int32_t col : columns) {
      if (grid_.ColWidth(col) == 0) continue;
      if (!first) out_.text += '\t';
      first = false;
      AddCell(TextOf(row, col));
    }
    out_.html += "</tr>";
  }

  CopiedCells Take() {
    out_.html += "</table>";
    return std::move(out_);
  }

 private:
  std::string TextOf(std::int32_t row, std::int32_t col) const {
    const bool data = row >= grid_.FixedRows();
    return form_ == CopyForm::kPlain && data ? PlainText(grid_, row, col)
                                             : grid_.TextMatrix(row, col);
  }

  void AddCell(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    out_.text += text;
    out_.html += "<td>" + HtmlText(text) + "</td>";
  }

  const Grid& grid_;
  CopyForm form_;
  CopiedCells out_;
};

}  // namespace

CopiedCells CopySelection(const Grid& grid, const std::vector<std::int32_t>& columns,
                          CopyForm form) {
  Copying copying(grid, form);
  if (form == CopyForm::kWithHeaders) copying.AddRow(0, columns);
  const auto [first, last] = std::minmax({grid.Row(), grid.RowSel()});
  for (std::int32_t row = std::max(first, 0); row <= std::min(last, grid.Rows() - 1); ++row) {
    if (grid.RowHeight(row) != 0) copying.AddRow(row, columns);
  }
  return copying.Take();
}

}  // namespace vorek
