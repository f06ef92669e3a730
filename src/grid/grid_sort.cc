#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "grid/grid.h"
#include "grid/row_ranks.h"

// Sorting: the keys of the column are made once, then the rows are moved by handle.
namespace vorek {
namespace {

enum class KeyKind { kNumber, kTextNoCase, kText };

bool IsNumberText(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789./-+() E") == std::string_view::npos &&
         text.find_first_of("0123456789") != std::string_view::npos;
}

// A generic sort takes the column as numbers if all of its texts are numbers or empty.
bool AllNumbers(const Grid& grid, std::int32_t col) {
  const TextSource* const source = grid.ColumnSource(col);
  const bool typed = source != nullptr && source->GivesNumbers();
  if (typed && grid.IsSourced(col)) return true;
  std::string scratch;
  for (std::int32_t row = grid.FixedRows(); row < grid.Rows(); ++row) {
    grid.AskAt(row);
    if (typed && grid.IsSourced(row, col)) continue;
    const std::string_view text = grid.CellView(row, col, scratch);
    if (!text.empty() && !IsNumberText(text)) return false;
  }
  return true;
}

KeyKind KindOf(const Grid& grid, std::int32_t order) {
  switch (order) {
    case 3:
    case 4:
      return KeyKind::kNumber;
    case 5:
    case 6:
      return KeyKind::kTextNoCase;
    case 7:
    case 8:
      return KeyKind::kText;
    default:
      return AllNumbers(grid, grid.Col()) ? KeyKind::kNumber : KeyKind::kTextNoCase;
  }
}

std::vector<std::uint32_t> SortedByNumber(const Grid& grid, bool descending) {
  std::vector<double> numbers;
  numbers.reserve(static_cast<std::size_t>(grid.Rows()));
  for (std::int32_t row = grid.FixedRows(); row < grid.Rows(); ++row) {
    grid.AskAt(row);
    numbers.push_back(grid.CellValue(row, grid.Col()));
  }
  return SortedNumbers(numbers, descending);
}

std::vector<std::uint32_t> SortedByText(const Grid& grid, bool ignore_case, bool descending) {
  const std::int32_t col = grid.Col();
  RowRanks ranks(static_cast<std::size_t>(grid.Rows()));
  std::string scratch;
  for (std::int32_t row = grid.FixedRows(); row < grid.Rows(); ++row) {
    grid.AskAt(row);
    const std::string_view text = grid.CellView(row, col, scratch);
    ranks.Add(text, text.data() != scratch.data());
  }
  return ranks.Sorted(ignore_case, descending, [&grid] { grid.Ask(); });
}

}  // namespace

void Grid::Sort(std::int32_t order) {
  if (order < 1 || order > 8 || Rows() <= fixed_rows_) return;
  const bool descending = order % 2 == 0;
  const KeyKind kind = KindOf(*this, order);
  const bool by_number = kind == KeyKind::kNumber;
  Rearrange(BehindFixedRows(
      fixed_rows_, by_number ? SortedByNumber(*this, descending)
                             : SortedByText(*this, kind == KeyKind::kTextNoCase, descending)));
}

}  // namespace vorek
