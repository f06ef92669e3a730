#include "grid/scaled_sort.h"

#include <string>
#include <unordered_map>

#include "grid/row_ranks.h"
#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr double kScale = 1000000;
constexpr std::size_t kLongText = 7;  // characters

bool IsLong(const Grid& grid, std::int32_t row, std::int32_t column) {
  std::string scratch;
  return text::Length(grid.CellView(row, column, scratch)) >= kLongText;
}

}  // namespace

bool NeedsScaling(const Grid& grid, std::int32_t column, int field_type) {
  if (grid.Rows() < 3 || !IsNumericFieldType(field_type)) return false;
  return IsLong(grid, grid.Rows() - 1, column) || IsLong(grid, 1, column);
}

void SortSmallTexts(Grid& grid, std::int32_t column) {
  RowRanks ranks(static_cast<std::size_t>(grid.Rows()));
  std::unordered_map<double, std::uint32_t> known;
  const TextSource* const source = grid.ColumnSource(column);
  const bool typed = source != nullptr && source->GivesNumbers();
  std::string scratch;
  std::string small;
  for (std::int32_t row = grid.FixedRows(); row < grid.Rows(); ++row) {
    grid.AskAt(row);
    double number = typed && grid.IsSourced(row, column) ? grid.CellValue(row, column) : 0;
    if (number == 0) {
      const std::string_view text = grid.CellView(row, column, scratch);
      if (text.empty()) {
        ranks.Add({}, true);
        continue;
      }
      number = text::NumericPrefix(text);
    }
    // A text is made once a distinct number.
    const auto found = known.find(number);
    if (found != known.end()) {
      ranks.Repeat(found->second);
      continue;
    }
    small.clear();
    text::AppendPlainNumber(number / kScale, small);
    known.emplace(number, ranks.Add(small, false));
  }
  grid.Rearrange(
      BehindFixedRows(grid.FixedRows(), ranks.Sorted(true, false, [&grid] { grid.Ask(); })));
}

}  // namespace vorek
