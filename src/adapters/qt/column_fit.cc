#include "adapters/qt/column_fit.h"

#include <QFontMetrics>
#include <algorithm>
#include <string>

#include "adapters/qt/control_view.h"
#include "adapters/qt/grid_painter.h"
#include "text/utf8.h"

namespace vorek::qt {
namespace {

constexpr int kMostMeasured = 20000;  // texts: some tenths of a second

std::size_t LongestText(const Grid& grid, std::int32_t col) {
  std::size_t longest = 0;
  std::string scratch;
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    longest = std::max(longest, text::Length(grid.CellView(row, col, scratch)));
  }
  return longest;
}

}  // namespace

int FittingPixels(const Grid& grid, std::int32_t col, const QFont& font) {
  QFont bold = font;
  bold.setBold(true);
  const QFontMetrics metrics(font);
  const QFontMetrics bold_metrics(bold);
  const std::size_t longest = LongestText(grid, col);
  int width = 0;
  int measured = 0;
  std::string scratch;
  for (std::int32_t row = 0; row < grid.Rows() && measured < kMostMeasured; ++row) {
    const std::string_view text = grid.CellView(row, col, scratch);
    // Letters differ in width, but not so much that a text of half the length is the widest.
    if (2 * text::Length(text) < longest || grid.RowHeight(row) == 0) continue;
    const bool is_bold = grid.FormatAt(row, col).bold;
    width = std::max(width, (is_bold ? bold_metrics : metrics).horizontalAdvance(ToQt(text)));
    ++measured;
  }
  return width + 2 * kCellMargin + 2;
}

}  // namespace vorek::qt
