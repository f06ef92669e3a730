#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <vector>

#include "grid/grid.h"
#include "text/collation.h"

// Sorting: the keys of the column are made once, then the rows are moved by handle.
namespace vorek {
namespace {

enum class KeyKind { kNumber, kTextNoCase, kText };

bool IsNumberText(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789./-+() ") == std::string_view::npos &&
         text.find_first_of("0123456789") != std::string_view::npos;
}

// A generic sort takes the column as numbers if all of its texts are numbers or empty.
bool AllNumbers(const Grid& grid, std::int32_t col) {
  std::string scratch;
  for (std::int32_t row = grid.FixedRows(); row < grid.Rows(); ++row) {
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

template <typename Key>
std::vector<std::int32_t> SortedRows(const Grid& grid, const std::vector<Key>& keys,
                                     bool descending) {
  const std::int32_t fixed = grid.FixedRows();
  std::vector<std::int32_t> rows(static_cast<std::size_t>(grid.Rows()));
  std::iota(rows.begin(), rows.end(), 0);
  const auto key = [&](std::int32_t row) -> const Key& {
    return keys[static_cast<std::size_t>(row - fixed)];
  };
  std::stable_sort(rows.begin() + fixed, rows.end(), [&](std::int32_t a, std::int32_t b) {
    return descending ? key(b) < key(a) : key(a) < key(b);
  });
  return rows;
}

std::vector<double> NumberKeys(const Grid& grid) {
  std::vector<double> keys;
  keys.reserve(static_cast<std::size_t>(grid.Rows()));
  for (std::int32_t row = grid.FixedRows(); row < grid.Rows(); ++row) {
    keys.push_back(grid.CellValue(row, grid.Col()));
  }
  return keys;
}

std::vector<std::string> TextKeys(const Grid& grid, bool ignore_case) {
  std::vector<std::string> keys;
  keys.reserve(static_cast<std::size_t>(grid.Rows()));
  std::string scratch;
  for (std::int32_t row = grid.FixedRows(); row < grid.Rows(); ++row) {
    keys.push_back(text::SortKey(grid.CellView(row, grid.Col(), scratch), ignore_case));
  }
  return keys;
}

}  // namespace

void Grid::Sort(std::int32_t order) {
  if (order < 1 || order > 8 || Rows() <= fixed_rows_) return;
  const bool descending = order % 2 == 0;
  const KeyKind kind = KindOf(*this, order);
  if (kind == KeyKind::kNumber) {
    Rearrange(SortedRows(*this, NumberKeys(*this), descending));
  } else {
    Rearrange(SortedRows(*this, TextKeys(*this, kind == KeyKind::kTextNoCase), descending));
  }
}

}  // namespace vorek
