#include "print/grid_measures.h"

#include <algorithm>
#include <cmath>

#include "text/utf8.h"

namespace vorek::print {
namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72;
constexpr double kTwipsPerMillimetre = 1440 / 25.4;
constexpr double kBold = 1.15;  // bold letters in the width of others
constexpr double kLine = 1.6;   // of a Persian font, in its size

// Headers that have no room on one line get two.
bool HeadersNeedTwoLines(const Grid& grid, const GridSheets& sheets, double points) {
  for (const Sheet& sheet : sheets.sheets) {
    for (const SheetColumn& at : sheet) {
      for (std::int32_t row = 0; row < grid.FixedRows(); ++row) {
        const std::size_t letters = text::Length(grid.TextMatrix(row, at.column));
        if (AboutWidth(letters, points) * kBold > at.width - 1.4) return true;
      }
    }
  }
  return false;
}

double HeightOfConditions(const std::string& conditions, double room_across) {
  constexpr double kMostLines = 12;
  constexpr double kGap = 2;
  if (conditions.empty()) return 0;
  const double wide = AboutWidth(text::Length(conditions), GridMeasures::kHeadingPoints);
  const double lines = std::min(std::ceil(wide / room_across), kMostLines);
  return lines * GridMeasures::kHeadingPoints * kMillimetresPerPoint * kLine + kGap;
}

}  // namespace

double AboutWidth(std::size_t letters, double points) {
  constexpr double kLetter = 0.55;  // of the size
  return static_cast<double>(letters) * points * kMillimetresPerPoint * kLetter;
}

GridMeasures Measure(const Grid& grid, const GridSheets& sheets, const std::string& conditions,
                     double room_across) {
  GridMeasures measures;
  measures.points = grid.FontSize() * sheets.scale;
  const double line = measures.points * kMillimetresPerPoint * kLine;
  const std::int32_t twips = std::max(grid.RowHeightMin(), Grid::kDefaultRowHeight);
  measures.row = std::max(twips / kTwipsPerMillimetre * sheets.scale, line);
  measures.header_row =
      std::max(measures.row, HeadersNeedTwoLines(grid, sheets, measures.points) ? 2 * line : 0);
  measures.header = measures.header_row * std::max(grid.FixedRows(), 1);
  measures.conditions = HeightOfConditions(conditions, room_across);
  measures.padding = 0.7 * std::max(sheets.scale, 0.6);
  return measures;
}

}  // namespace vorek::print
