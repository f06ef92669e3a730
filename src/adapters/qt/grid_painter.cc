#include "adapters/qt/grid_painter.h"

#include <QStyle>
#include <QStyleOption>
#include <algorithm>

#include "adapters/qt/colors.h"
#include "adapters/qt/control_view.h"
#include "adapters/qt/shortened.h"
#include "adapters/qt/theme.h"
#include "grid/summary_label.h"

namespace vorek::qt {
namespace {

constexpr int kShade = 10;  // pixels at an edge of the view that cuts a column
constexpr std::int8_t kFlat = 0;
constexpr std::int8_t kRaised = 1;
constexpr std::int32_t kLeftCentre = 1;
constexpr std::int32_t kRightCentre = 7;

QFont Bold(QFont font) {
  font.setBold(true);
  return font;
}

// 1 left, 4 centre, 7 right; the numbers beside each of them are its top and its bottom.
Qt::Alignment Horizontal(std::int32_t alignment) {
  if (alignment >= 6 && alignment <= 8) return Qt::AlignRight | Qt::AlignAbsolute;
  if (alignment >= 3 && alignment <= 5) return Qt::AlignHCenter;
  return Qt::AlignLeft | Qt::AlignAbsolute;
}

// A text runs from the right as soon as it holds a letter that does, so that a name with a number
// before it stays in order, and a negative number keeps its sign on its left.
bool RunsFromRight(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar character) {
    const QChar::Direction direction = character.direction();
    return direction == QChar::DirR || direction == QChar::DirAL;
  });
}

// Where a text of that width stands in its cell.
QRect PlaceOf(int width, QRect cell, Qt::Alignment alignment) {
  QRect place(cell.left(), cell.top(), width, cell.height());
  if (alignment.testFlag(Qt::AlignRight)) place.moveRight(cell.right());
  if (alignment.testFlag(Qt::AlignHCenter)) place.moveLeft(cell.center().x() - width / 2);
  return place;
}

// Cuts a strip off the right or the left of the rectangle.
QRect Take(QRect& rect, int width, bool from_right) {
  width = std::min(width, rect.width());
  QRect strip = rect;
  if (from_right) {
    strip.setLeft(rect.right() - width + 1);
    rect.setRight(rect.right() - width);
  } else {
    strip.setRight(rect.left() + width - 1);
    rect.setLeft(rect.left() + width);
  }
  return strip;
}

}  // namespace

GridPainter::GridPainter(const Grid& grid, const GridGeometry& geometry, QPainter& painter,
                         const QPalette& palette, bool focused)
    : grid_(grid),
      geometry_(geometry),
      painter_(painter),
      palette_(palette),
      focused_(focused),
      plain_(painter.font()),
      bold_(Bold(painter.font())),
      metrics_(plain_),
      bold_metrics_(bold_),
      lines_(Mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.25)) {
  selected_columns_ = geometry.Arrangement().Between(grid.Col(), grid.ColSel());
}

void GridPainter::Paint(QRect area) {
  painter_.fillRect(area, palette_.color(QPalette::Base));
  const std::vector<Span> columns = geometry_.Columns();
  const std::vector<Span> rows = geometry_.Rows();
  for (const Span& row : rows) {
    if (row.start > area.bottom() || row.start + row.size <= area.top()) continue;
    for (const Span& col : columns) {
      const QRect rect(col.start, row.start, col.size, row.size);
      if (rect.intersects(area)) PaintCell({row.index, col.index}, rect);
    }
  }
  if (geometry_.Pinned() > 0) PaintPinnedEdge(columns);
  const int bottom = rows.empty() ? 0 : rows.back().start + rows.back().size;
  for (const Span& col : columns) PaintCut(col, bottom);
  PaintFocus();
}

// The pinned rows are another part of the grid than the rows above them.
void GridPainter::PaintPinnedEdge(const std::vector<Span>& columns) {
  const QColor color = ThemeOf(palette_).sum_line;
  for (const Span& col : columns) {
    painter_.fillRect(QRect(col.start, geometry_.ScrollBottom() - 2, col.size, 2), color);
  }
}

// A shade over the edge of the view behind which a column goes on.
void GridPainter::PaintCut(const Span& col, int bottom) {
  const QRect view = geometry_.View();
  const bool left = col.start < view.left();
  const bool right = col.start + col.size > view.right() + 1;
  if (!left && !right) return;
  const int from = left ? view.left() : view.right();
  const int to = left ? from + kShade : from - kShade;
  QLinearGradient shade(from, 0, to, 0);
  QColor color = palette_.color(QPalette::Text);
  color.setAlpha(130);
  shade.setColorAt(0, color);
  color.setAlpha(0);
  shade.setColorAt(1, color);
  painter_.fillRect(QRect(std::min(from, to), 0, kShade + 1, bottom), shade);
}

bool GridPainter::IsSelected(GridCell cell) const {
  constexpr std::int32_t kWithFocus = 2;
  if (grid_.HighLight() == 0 || (grid_.HighLight() == kWithFocus && !focused_)) return false;
  const auto [top, bottom] = std::minmax({grid_.Row(), grid_.RowSel()});
  return cell.row >= top && cell.row <= bottom &&
         std::find(selected_columns_.begin(), selected_columns_.end(), cell.col) !=
             selected_columns_.end();
}

GridPainter::Look GridPainter::LookOf(GridCell cell) const {
  const CellFormat format = grid_.FormatAt(cell.row, cell.col);
  Look look;
  const bool fixed = IsFixed(cell);
  look.alignment = format.alignment >= 0 ? format.alignment
                   : fixed               ? grid_.FixedAlignment(cell.col)
                                         : grid_.ColAlignment(cell.col);
  look.style = format.text_style;
  look.bold = format.bold;
  const CellColors colors = ColorsOf(format.back_color, format.fore_color, palette_);
  look.back = colors.back;
  look.text = colors.text;
  if (fixed && format.back_color < 0) {
    look.back = palette_.color(QPalette::Button);
    if (format.fore_color < 0) look.text = palette_.color(QPalette::ButtonText);
  }
  if (format.back_color < 0 && !IsHeader(cell) && IsSummaryRow(grid_, cell.row)) {
    look.back = ThemeOf(palette_).sum;
    look.text = palette_.color(QPalette::Text);
  }
  if (!fixed && IsSelected(cell)) {
    look.back = ThemeOf(palette_).picked;
    look.text = palette_.color(QPalette::Text);
  }
  return look;
}

void GridPainter::PaintCell(GridCell cell, QRect rect) {
  Look look = LookOf(cell);
  const std::string_view text = grid_.CellView(cell.row, cell.col, scratch_);
  if (finder_ != nullptr && !IsFixed(cell) && !IsSelected(cell) && finder_->Marks(text)) {
    look.back = ThemeOf(palette_).hit;
    look.text = palette_.color(QPalette::Text);
  }
  painter_.fillRect(rect, look.back);
  painter_.setPen(lines_);
  painter_.drawLine(rect.bottomLeft(), rect.bottomRight());
  if (grid_.RightToLeft()) {
    painter_.drawLine(rect.topLeft(), rect.bottomLeft());
  } else {
    painter_.drawLine(rect.topRight(), rect.bottomRight());
  }
  QRect inside = rect.adjusted(kCellMargin, 0, -kCellMargin, -1);
  if (cell.row == 0 && cell.col > 0) PaintHeaderMarks(cell.col, inside);
  const OutlineMark mark = MarkOf(grid_, cell.row, cell.col, text);
  if (mark.in_outline) {
    PaintOutlined(mark, inside, look);
  } else if (!text.empty()) {
    PaintText(ToQt(text), inside, look);
  }
}

// Cuts a strip off the edge where the grid's columns begin, or off the other one.
QRect GridPainter::TakeLeading(QRect& rect, int width) const {
  return Take(rect, width, grid_.RightToLeft());
}

QRect GridPainter::TakeTrailing(QRect& rect, int width) const {
  return Take(rect, width, !grid_.RightToLeft());
}

void GridPainter::PaintHeaderMarks(std::int32_t col, QRect& inside) {
  if (col == grid_.SortedBy().column) PaintSortMark(TakeTrailing(inside, MarkPixels()));
  const bool filtered = std::find(filtered_.begin(), filtered_.end(), col) != filtered_.end();
  if (filtered) PaintFilterMark(TakeTrailing(inside, MarkPixels()));
}

// A funnel.
void GridPainter::PaintFilterMark(QRect place) {
  const double reach = MarkPixels() * 0.3;
  const QPointF middle = QRectF(place).center();
  const std::pair<double, double> corners[] = {{-1.1, -0.9}, {1.1, -0.9},  {0.25, 0.1},
                                               {0.25, 1},    {-0.25, 0.7}, {-0.25, 0.1}};
  QPolygonF funnel;
  for (const auto& [x, y] : corners) funnel << middle + QPointF(x * reach, y * reach);
  PaintShape(funnel, ThemeOf(palette_).accent);
}

void GridPainter::PaintSortMark(QRect place) {
  const bool down = grid_.SortedBy().descending;
  const double reach = MarkPixels() * 0.24;
  const double tip = down ? reach : -reach;
  const QPointF middle = QRectF(place).center();
  PaintShape({middle + QPointF(-reach * 1.3, -tip * 0.7), middle + QPointF(reach * 1.3, -tip * 0.7),
              middle + QPointF(0, tip * 0.9)},
             ThemeOf(palette_).accent);
}

// A triangle: it points to where the rows or columns go on while they are closed, down on what is
// open.
void GridPainter::PaintSign(char sign, QRect place, const Look& look) {
  const double reach = MarkPixels() * 0.27;
  const QPointF middle = QRectF(place).center();
  const double side = grid_.RightToLeft() ? -reach : reach;
  if (sign == '+') {
    PaintShape({middle + QPointF(-side * 0.6, -reach * 1.2), middle + QPointF(side, 0),
                middle + QPointF(-side * 0.6, reach * 1.2)},
               look.text);
  } else {
    PaintShape({middle + QPointF(-reach * 1.2, -reach * 0.6), middle + QPointF(0, reach),
                middle + QPointF(reach * 1.2, -reach * 0.6)},
               look.text);
  }
}

void GridPainter::PaintShape(const QPolygonF& shape, const QColor& color) {
  painter_.save();
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(color);
  painter_.drawPolygon(shape);
  painter_.restore();
}

// The mark, then the text that stands beside it; a lower level is set in as far as there is room.
// A mark without a text stands in the middle.
void GridPainter::PaintOutlined(const OutlineMark& mark, QRect rect, const Look& look) {
  if (mark.text.empty()) {
    PaintSign(mark.sign, rect, look);
    return;
  }
  const QString text = ToQt(mark.text);
  const QFontMetrics& metrics = look.bold ? bold_metrics_ : metrics_;
  const int room = rect.width() - MarkPixels() - metrics.horizontalAdvance(text) - 2;
  TakeLeading(rect, std::clamp(room, 0, mark.depth * MarkPixels() * 3 / 4));
  const QRect place = TakeLeading(rect, MarkPixels());
  if (mark.sign != '\0') PaintSign(mark.sign, place, look);
  Look beside = look;
  beside.alignment = grid_.RightToLeft() ? kRightCentre : kLeftCentre;
  PaintText(metrics.elidedText(text, Qt::ElideRight, rect.width()), rect, beside);
}

void GridPainter::PaintText(const QString& text, QRect rect, const Look& look) {
  const QFontMetrics& metrics = look.bold ? bold_metrics_ : metrics_;
  painter_.setFont(look.bold ? bold_ : plain_);
  painter_.setLayoutDirection(RunsFromRight(text) ? Qt::RightToLeft : Qt::LeftToRight);
  const Qt::Alignment alignment = Horizontal(look.alignment);
  const int flags = static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine;
  const int width = metrics.horizontalAdvance(text);
  const QRect view = geometry_.View().adjusted(kCellMargin, 0, -kCellMargin, 0);
  const QRect place = PlaceOf(width, rect, alignment);
  // A cell that the edge of the view cuts has its text in the part that is seen.
  if (place.left() < view.left() || place.right() > view.right()) {
    rect = QRect(QPoint(std::max(rect.left(), view.left()), rect.top()),
                 QPoint(std::min(rect.right(), view.right()), rect.bottom()));
  }
  const QString shown =
      width <= rect.width() ? text : Shortened(text, QFontMetricsF(metrics), rect.width());
  // A relief of light on a dark ground would only blur the letters.
  if (look.style != kFlat && !IsDark(palette_)) {
    const int step = look.style == kRaised ? -1 : 1;
    painter_.setPen(Mixed(look.back, Qt::white, 0.8));
    painter_.drawText(rect.translated(step, step), flags, shown);
  }
  painter_.setPen(look.text);
  painter_.drawText(rect, flags, shown);
}

void GridPainter::PaintFocus() {
  if (!focused_ || grid_.FocusRect() == 0) return;
  QRect rect = geometry_.CellRect({grid_.Row(), grid_.Col()});
  if (!geometry_.IsPinned(grid_.Row()))
    rect.setBottom(std::min(rect.bottom(), geometry_.ScrollBottom()));
  if (rect.isEmpty()) return;
  painter_.setPen(QPen(ThemeOf(palette_).accent, 2));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawRect(rect.adjusted(1, 1, -1, -2));
}

}  // namespace vorek::qt
