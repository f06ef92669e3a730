#include "print/grid_sheets.h"

#include <algorithm>

namespace vorek::print {
namespace {

constexpr double kTwipsPerMillimetre = 1440 / 25.4;
constexpr double kLeastPoints = 5;  // smaller letters can't be read on paper
constexpr double kHair = 1e-6;

double Millimetres(const Grid& grid, std::int32_t col, double scale) {
  return grid.ColWidth(col) / kTwipsPerMillimetre * scale;
}

double WidthOfAll(const Grid& grid, const std::vector<std::int32_t>& columns) {
  double width = 0;
  for (const std::int32_t col : columns) width += Millimetres(grid, col, 1);
  return width;
}

double ScaleFor(const Grid& grid, double wanted, const PageSetup& setup) {
  if (!setup.fit_width || wanted <= setup.RoomAcross()) return 1;
  const double least = std::min(kLeastPoints / grid.FontSize(), 1.0);
  return std::max(setup.RoomAcross() / wanted, least);
}

// Columns with room to spare are made wider, so that longer texts fit; not the fixed ones.
double StretchFor(double wanted, double fixed, const PageSetup& setup) {
  constexpr double kMost = 1.6;
  if (!setup.fit_width || wanted <= fixed) return 1;
  return std::clamp((setup.RoomAcross() - fixed) / (wanted - fixed), 1.0, kMost);
}

void Put(Sheet& sheet, std::int32_t column, double width) {
  sheet.push_back({column, WidthOf(sheet), width});
}

// What stands on each sheet: the first column in any case.
Sheet Repeated(const Grid& grid, const PrintedColumns& columns, double scale, double most) {
  Sheet head;
  for (std::size_t i = 0; i < columns.still; ++i) {
    const double width = Millimetres(grid, columns.shown[i], scale);
    if (!head.empty() && WidthOf(head) + width > most) break;
    Put(head, columns.shown[i], std::min(width, most));
  }
  return head;
}

}  // namespace

PrintedColumns::PrintedColumns(const ColumnView& view, const Grid& grid) {
  for (std::int32_t col = 0; col < grid.FixedCols(); ++col) {
    if (grid.ColWidth(col) != 0) shown.push_back(col);
  }
  fixed = shown.size();
  still = fixed + static_cast<std::size_t>(view.Frozen());
  shown.insert(shown.end(), view.Shown().begin(), view.Shown().end());
}

double WidthOf(const Sheet& sheet) {
  return sheet.empty() ? 0 : sheet.back().before + sheet.back().width;
}

PageSetup PaperFor(const Grid& grid, const PrintedColumns& columns) {
  PageSetup setup;
  setup.landscape = WidthOfAll(grid, columns.shown) > setup.RoomAcross();
  return setup;
}

GridSheets SpreadColumns(const Grid& grid, const PrintedColumns& columns, const PageSetup& setup) {
  const double room = setup.RoomAcross();
  const auto fixed_end = columns.shown.begin() + static_cast<std::ptrdiff_t>(columns.fixed);
  const double wanted = WidthOfAll(grid, columns.shown);
  const double fixed = WidthOfAll(grid, {columns.shown.begin(), fixed_end});
  GridSheets spread;
  spread.scale = ScaleFor(grid, wanted, setup);
  const double wider = spread.scale * StretchFor(wanted, fixed, setup);
  const Sheet head = Repeated(grid, columns, spread.scale, room / 2);
  spread.sheets.push_back(head);
  for (std::size_t i = head.size(); i < columns.shown.size(); ++i) {
    const std::int32_t col = columns.shown[i];
    const double width = std::min(Millimetres(grid, col, wider), room - WidthOf(head));
    const bool begun = spread.sheets.back().size() > head.size();
    if (begun && WidthOf(spread.sheets.back()) + width > room + kHair) {
      spread.sheets.push_back(head);
    }
    Put(spread.sheets.back(), col, width);
  }
  return spread;
}

}  // namespace vorek::print
