#include "grid/outline_mark.h"

#include <algorithm>

#include "text/utf8.h"

namespace vorek {
namespace {

bool IsSign(char c) { return c == '+' || c == '-'; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// "2-3+": the second child of row 3, closed. A label of a summary row is none.
OutlineMark TreeMarkOf(std::string_view text) {
  OutlineMark mark{.in_outline = true, .text = text::TrimView(text)};
  if (mark.text.empty() || !IsDigit(mark.text.front())) return {.text = text};
  if (IsSign(text.back())) {
    mark.sign = text.back();
    mark.text.remove_suffix(1);
  }
  mark.depth = static_cast<std::int32_t>(std::count(mark.text.begin(), mark.text.end(), '-'));
  return mark;
}

OutlineMark CrossTableMarkOf(const Grid& grid, std::int32_t row, std::int32_t col,
                             std::string_view text) {
  if (row == 0) {
    const char sign = HeaderSign(grid, col, text);
    if (sign == '\0') return {.text = text};
    return {.in_outline = true, .sign = sign, .text = text.substr(1)};
  }
  const bool marked = col == 0 && text.size() == 1 && IsSign(text.front());
  if (!marked) return {.text = text};
  return {.in_outline = true, .sign = text.front(), .text = {}};
}

}  // namespace

OutlineMark MarkOf(const Grid& grid, std::int32_t row, std::int32_t col, std::string_view text) {
  switch (grid.OutlineKind()) {
    case Outline::kTree:
      return col == 0 && row >= grid.FixedRows() ? TreeMarkOf(text) : OutlineMark{.text = text};
    case Outline::kCrossTable:
      return CrossTableMarkOf(grid, row, col, text);
    case Outline::kNone:
      break;
  }
  return {.text = text};
}

char HeaderSign(const Grid& grid, std::int32_t col, std::string_view header) {
  const bool may_stand = col >= 1 && col <= grid.Cols() - 2;
  if (!may_stand || header.empty() || !IsSign(header.front())) return '\0';
  return text::Contains(header.substr(1), "-") ? header.front() : '\0';
}

}  // namespace vorek
