#include "adapters/qt/chart_painter.h"

#include <QFontMetricsF>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <utility>

#include "adapters/qt/control_view.h"
#include "chart/chart_thinning.h"

namespace vorek::qt {
namespace {

constexpr int kAtRight = Qt::AlignRight | Qt::AlignVCenter | Qt::AlignAbsolute;
constexpr double kFullCircle = 360;

// A text of either direction, cut where it has no room.
void PaintText(QPainter& painter, const QRectF& area, const QString& text, int alignment) {
  painter.setLayoutDirection(Qt::RightToLeft);
  const QFontMetricsF metrics(painter.font());
  painter.drawText(area, alignment | Qt::TextSingleLine,
                   metrics.elidedText(text, Qt::ElideRight, area.width()));
}

void PaintNumber(QPainter& painter, const QRectF& area, const QString& text) {
  painter.setLayoutDirection(Qt::LeftToRight);
  painter.drawText(area, kAtRight, text);
}

// Where the ring of a share chart stands.
QRectF RingIn(const QRectF& area) {
  const double side = std::min(area.width(), area.height());
  return {area.center().x() - side / 2, area.center().y() - side / 2, side, side};
}

}  // namespace

const std::vector<QColor>& SeriesColors(const Theme& theme) {
  static const std::vector<QColor> light = {0x1F6FEB, 0xC26A00, 0x1A7F37, 0x8250DF,
                                            0xB42318, 0x0E7C86, 0xC0368A, 0x6B5D00};
  static const std::vector<QColor> dark = {0x5B9CFF, 0xF0922E, 0x3FB950, 0xB990FF,
                                           0xFF6B6B, 0x2FC1CF, 0xF778BA, 0xD4B106};
  return &theme == &DarkTheme() ? dark : light;
}

ChartPainter::ChartPainter(const ChartModel& chart, ChartLook look)
    : chart_(chart), look_(std::move(look)) {
  if (look_.kind == ChartKind::kShares) shares_ = SharesOf(chart, look_.shared, kMostShares);
  look_.shown.resize(LegendSize(), true);
}

double ChartPainter::Unit() const { return QFontMetricsF(look_.font).height(); }

QStringList ChartPainter::Names() const {
  QStringList names;
  for (const ChartShare& share : shares_) {
    names << ToQt(share.name) + "  \u2066" + ToQt(PercentText(share.part)) + "\u2069";
  }
  if (look_.kind == ChartKind::kShares) return names;
  for (const ChartSeries& series : chart_.series) names << ToQt(series.name);
  return names;
}

QBrush ChartPainter::Fill(std::size_t index) const {
  const std::vector<QColor>& colors = SeriesColors(*look_.theme);
  const bool again = index >= colors.size();
  return QBrush(colors[index % colors.size()], again ? Qt::Dense3Pattern : Qt::SolidPattern);
}

QPen ChartPainter::Line(std::size_t index) const {
  const std::vector<QColor>& colors = SeriesColors(*look_.theme);
  const bool again = index >= colors.size();
  return QPen(colors[index % colors.size()], Unit() / 9, again ? Qt::DashLine : Qt::SolidLine,
              Qt::FlatCap, Qt::BevelJoin);
}

// --- The frame -----------------------------------------------------------------------------------

void ChartPainter::Paint(QPainter& painter, const QRectF& area) {
  painter.fillRect(area, look_.theme->panel);
  painter.setFont(look_.font);
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF rest = area.adjusted(Unit(), Unit() / 2, -Unit(), -Unit() / 2);
  rest = PaintLegend(painter, PaintTitle(painter, rest));
  if (look_.kind == ChartKind::kShares) return PaintShares(painter, rest);
  rest = PaintCategories(painter, PaintValues(painter, rest));
  painter.save();
  painter.setClipRect(plot_.adjusted(-2, -2, 2, 2));
  // Where points lie closer than pixels, smooth edges cost more than all the rest.
  painter.setRenderHint(QPainter::Antialiasing, chart_.categories.size() <= MostPoints());
  if (look_.kind == ChartKind::kBars) PaintBars(painter);
  if (look_.kind == ChartKind::kStackedBars) PaintHeaps(painter);
  if (look_.kind == ChartKind::kLines) PaintLines(painter);
  painter.restore();
  PaintZero(painter);
}

// The title, what the values are, and at the foot what isn't shown.
QRectF ChartPainter::PaintTitle(QPainter& painter, QRectF area) const {
  QFont bold = look_.font;
  bold.setBold(true);
  bold.setPointSizeF(look_.font.pointSizeF() * 1.25);
  painter.setFont(bold);
  painter.setPen(look_.theme->text);
  const double height = QFontMetricsF(bold).height() * 1.3;
  PaintText(painter, {area.left(), area.top(), area.width(), height}, ToQt(chart_.title), kAtRight);
  area.setTop(area.top() + height);
  painter.setFont(look_.font);
  painter.setPen(look_.theme->muted);
  const bool shares = look_.kind == ChartKind::kShares;
  const QString what = ToQt(shares ? chart_.series[look_.shared].name : chart_.value_title);
  if (!what.isEmpty()) {
    PaintText(painter, {area.left(), area.top(), area.width(), Unit()}, what, kAtRight);
    area.setTop(area.top() + Unit() * 1.2);
  }
  if (!chart_.note.empty()) {
    PaintText(painter, {area.left(), area.bottom() - Unit(), area.width(), Unit()},
              ToQt(chart_.note), kAtRight);
    area.setBottom(area.bottom() - Unit() * 1.3);
  }
  return area;
}

// From the right, in as many lines as it takes; a hidden entry is hollow and muted.
QRectF ChartPainter::PaintLegend(QPainter& painter, QRectF area) {
  legend_.clear();
  const QFontMetricsF metrics(look_.font);
  const double mark = Unit() * 0.6;
  double right = area.right();
  double top = area.top();
  const QStringList names = Names();
  for (qsizetype i = 0; i < names.size(); ++i) {
    const double text = std::min(metrics.horizontalAdvance(names[i]) + 4, area.width() / 2);
    const double width = mark * 1.6 + text;
    if (right - width < area.left() && right < area.right()) {
      right = area.right();
      top += Unit() * 1.4;
    }
    const auto index = static_cast<std::size_t>(i);
    const QRectF box(right - mark, top + (Unit() - mark) / 2, mark, mark);
    painter.setPen(QPen(Line(index).color(), 1.5));
    painter.setBrush(look_.shown[index] ? Fill(index) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(box, mark / 5, mark / 5);
    painter.setPen(look_.shown[index] ? look_.theme->text : look_.theme->muted);
    PaintText(painter, {right - width, top, text, Unit()}, names[i], kAtRight);
    legend_.emplace_back(right - width, top, width, Unit());
    right -= width + Unit();
  }
  area.setTop(top + (names.isEmpty() ? 0 : Unit() * 1.6));
  return area;
}

// The marks of the axis at the right, with a line through the plot for each.
QRectF ChartPainter::PaintValues(QPainter& painter, QRectF area) {
  const QFontMetricsF metrics(look_.font);
  const double foot = Unit() * 2.8;
  const int most = std::clamp(static_cast<int>((area.height() - foot) / (Unit() * 2)), 3, 11);
  axis_ = AxisOf(chart_, look_.kind, look_.shown, most);
  double width = 0;
  for (const FixedPoint tick : axis_.ticks) {
    width = std::max(width, metrics.horizontalAdvance(ToQt(chart_.Text(tick))));
  }
  plot_ = area.adjusted(0, Unit() / 2, -width - Unit() / 2, -foot);
  for (const FixedPoint tick : axis_.ticks) {
    const double y = Y(tick);
    painter.setPen(QPen(look_.theme->line, 1));
    painter.drawLine(QPointF(plot_.left(), y), QPointF(plot_.right(), y));
    painter.setPen(look_.theme->muted);
    PaintNumber(painter, {plot_.right(), y - Unit() / 2, area.right() - plot_.right(), Unit()},
                ToQt(chart_.Text(tick)));
  }
  return area;
}

// Every so many of them, so that each has room.
QRectF ChartPainter::PaintCategories(QPainter& painter, QRectF area) const {
  const std::size_t count = chart_.categories.size();
  const QFontMetricsF metrics(look_.font);
  double widest = Unit() * 2;
  const std::size_t looked_at = std::min<std::size_t>(count, 200);
  for (std::size_t at = 0; at < looked_at; ++at) {
    widest = std::max(widest, metrics.horizontalAdvance(ToQt(chart_.categories[at])));
  }
  const double room = std::min(widest, Unit() * 8) + Unit() / 2;
  const auto every = static_cast<std::size_t>(std::max(std::ceil(room / Width()), 1.0));
  const double own = std::max(room, Width()) - Unit() / 4;
  painter.setPen(look_.theme->muted);
  for (std::size_t at = 0; at < count; at += every) {
    const QRectF place(X(at) - own / 2, plot_.bottom() + Unit() * 0.3, own, Unit());
    if (place.left() < area.left() - own / 2) continue;
    PaintText(painter, place, ToQt(chart_.categories[at]), Qt::AlignCenter);
  }
  painter.setPen(look_.theme->text);
  PaintText(painter, {plot_.left(), plot_.bottom() + Unit() * 1.6, plot_.width(), Unit()},
            ToQt(chart_.category_title), Qt::AlignCenter);
  return area;
}

void ChartPainter::PaintZero(QPainter& painter) const {
  const FixedPoint zero = std::clamp<FixedPoint>(0, axis_.low, axis_.high);
  painter.setPen(QPen(look_.theme->muted, 1));
  painter.drawLine(QPointF(plot_.left(), Y(zero)), QPointF(plot_.right(), Y(zero)));
}

double ChartPainter::Width() const {
  return plot_.width() / static_cast<double>(std::max<std::size_t>(chart_.categories.size(), 1));
}

double ChartPainter::X(std::size_t category) const {
  return plot_.right() - (static_cast<double>(category) + 0.5) * Width();
}

double ChartPainter::Y(FixedPoint value) const {
  return plot_.bottom() - axis_.Part(value) * plot_.height();
}

std::size_t ChartPainter::MostPoints() const {
  return static_cast<std::size_t>(std::max(plot_.width(), 2.0)) * 2;
}

// --- The values ----------------------------------------------------------------------------------

// The bars of a category stand side by side, the first series at the right.
void ChartPainter::PaintBars(QPainter& painter) const {
  const auto bars = static_cast<double>(std::count(look_.shown.begin(), look_.shown.end(), true));
  const double width = Width() * 0.8 / std::max(bars, 1.0);
  double place = 0;
  painter.setPen(Qt::NoPen);
  for (std::size_t series = 0; series < chart_.series.size(); ++series) {
    if (!look_.shown[series]) continue;
    painter.setBrush(Fill(series));
    const std::vector<ChartValue>& values = chart_.series[series].values;
    for (const std::uint32_t at : Thinned(values, values, MostPoints())) {
      if (!values[at]) continue;
      const double right = X(at) + Width() * 0.4 - place * width;
      const double y = Y(*values[at]);
      painter.drawRect(QRectF(right - std::max(width, 1.0), std::min(y, Y(0)),
                              std::max(width - (width > 8 ? 1 : 0), 1.0), std::abs(Y(0) - y)));
    }
    place += 1;
  }
}

// Values above zero and those below it are heaped up apart.
void ChartPainter::PaintHeaps(QPainter& painter) const {
  const double width = std::max(std::min(Width() * 0.7, Unit() * 5), 1.0);
  const ChartHeaps heaps = HeapsOf(chart_, look_.shown);
  painter.setPen(Qt::NoPen);
  for (const std::uint32_t at : Thinned(heaps.low, heaps.high, MostPoints())) {
    FixedPoint low = 0;
    FixedPoint high = 0;
    for (std::size_t series = 0; series < chart_.series.size(); ++series) {
      const FixedPoint value = chart_.series[series].values[at].value_or(0);
      if (!look_.shown[series] || value == 0) continue;
      FixedPoint& heap = value < 0 ? low : high;
      const double from = Y(heap);
      heap += value;
      painter.setBrush(Fill(series));
      painter.drawRect(
          QRectF(X(at) - width / 2, std::min(from, Y(heap)), width, std::abs(from - Y(heap))));
    }
  }
}

void ChartPainter::PaintLines(QPainter& painter) const {
  for (std::size_t series = 0; series < chart_.series.size(); ++series) {
    if (look_.shown[series]) PaintLine(painter, series);
  }
}

// A piece of many points is drawn line by line: the painter takes seconds for the outline of a wide
// line that crosses itself so often.
void ChartPainter::PaintPiece(QPainter& painter, std::size_t series, const QPolygonF& piece,
                              bool dots) const {
  constexpr qsizetype kMany = 200;
  const double radius = Unit() / 6;
  painter.setPen(Line(series));
  painter.setBrush(Qt::NoBrush);
  if (piece.size() <= kMany) {
    painter.drawPolyline(piece);
  } else {
    painter.setPen(QPen(Line(series).color(), 1));
    for (qsizetype i = 1; i < piece.size(); ++i) painter.drawLine(piece[i - 1], piece[i]);
  }
  painter.setBrush(Line(series).color());
  painter.setPen(Qt::NoPen);
  for (const QPointF& point : piece) {
    if (dots || piece.size() == 1) painter.drawEllipse(point, radius, radius);
  }
}

// A gap breaks it; points that are few enough have a dot, and one that stands alone always has.
void ChartPainter::PaintLine(QPainter& painter, std::size_t series) const {
  constexpr std::size_t kDots = 60;
  const std::vector<ChartValue>& values = chart_.series[series].values;
  const bool dots = values.size() <= kDots;
  QPolygonF piece;
  for (const std::uint32_t at : Thinned(values, values, MostPoints())) {
    if (values[at]) {
      piece << QPointF(X(at), Y(*values[at]));
    } else {
      PaintPiece(painter, series, std::exchange(piece, {}), dots);
    }
  }
  PaintPiece(painter, series, piece, dots);
}

// A ring from the top, clockwise; a hidden part keeps its place, empty.
void ChartPainter::PaintShares(QPainter& painter, const QRectF& area) {
  plot_ = RingIn(area.adjusted(Unit(), Unit(), -Unit(), -Unit()));
  double from = 90;
  painter.setPen(QPen(look_.theme->panel, 2));
  for (std::size_t i = 0; i < shares_.size(); ++i) {
    const double span = shares_[i].part * kFullCircle;
    painter.setBrush(look_.shown[i] ? Fill(i) : QBrush(look_.theme->head));
    painter.drawPie(plot_, static_cast<int>(std::lround(from * 16)),
                    -static_cast<int>(std::lround(span * 16)));
    from -= span;
  }
  const double hole = plot_.width() * 0.28;
  painter.setBrush(look_.theme->panel);
  painter.drawEllipse(plot_.center(), hole, hole);
  FixedTotal whole;
  for (const ChartShare& share : shares_) whole.Add(share.total);
  painter.setPen(look_.theme->text);
  painter.setLayoutDirection(Qt::LeftToRight);
  painter.drawText(plot_, Qt::AlignCenter, ToQt(chart_.Text(whole)));
}

// --- What stands at a point ----------------------------------------------------------------------

int ChartPainter::LegendAt(const QPointF& point) const {
  const auto found = std::find_if(legend_.begin(), legend_.end(),
                                  [&](const QRectF& entry) { return entry.contains(point); });
  return found == legend_.end() ? -1 : static_cast<int>(found - legend_.begin());
}

QString ChartPainter::ShareText(const QPointF& point) const {
  const QPointF from = point - plot_.center();
  const double radius = std::hypot(from.x(), from.y());
  if (radius > plot_.width() / 2 || radius < plot_.width() * 0.28) return {};
  constexpr double kPi = 3.14159265358979323846;
  double turned = std::fmod(std::atan2(from.x(), -from.y()) / (2 * kPi) + 1, 1);
  for (const ChartShare& share : shares_) {
    turned -= share.part;
    if (turned > 0) continue;
    return ToQt(share.name) + "\n\u200E" + ToQt(chart_.Text(share.total)) + "  \u200E" +
           ToQt(PercentText(share.part));
  }
  return {};
}

// The category at a point, with the values of all series on show.
QString ChartPainter::TextAt(const QPointF& point) const {
  if (look_.kind == ChartKind::kShares) return ShareText(point);
  if (!plot_.contains(point) || chart_.categories.empty()) return {};
  const auto at = std::min(static_cast<std::size_t>((plot_.right() - point.x()) / Width()),
                           chart_.categories.size() - 1);
  QString text = ToQt(chart_.categories[at]);
  for (std::size_t i = 0; i < chart_.series.size(); ++i) {
    const ChartValue value = chart_.series[i].values[at];
    if (look_.shown[i] && value) {
      text += "\n" + ToQt(chart_.series[i].name) + ": \u200E" + ToQt(chart_.Text(*value));
    }
  }
  return text;
}

}  // namespace vorek::qt
