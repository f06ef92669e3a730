#ifndef VOREK_ADAPTERS_QT_CHART_PAINTER_H_
#define VOREK_ADAPTERS_QT_CHART_PAINTER_H_

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPen>
#include <QRectF>
#include <vector>

#include "adapters/qt/theme.h"
#include "chart/chart_axis.h"
#include "chart/chart_model.h"
#include "chart/chart_shares.h"

namespace vorek::qt {

// The colours of series: eight that stand out from the panel by at least 3 to 1 and from one
// another; the series behind them take the same again, hatched or dashed.
const std::vector<QColor>& SeriesColors(const Theme& theme);

// How a chart is to be drawn.
struct ChartLook {
  ChartKind kind = ChartKind::kBars;
  std::size_t shared = 0;   // the series of a share chart
  std::vector<bool> shown;  // a series each; the parts of a share chart
  const Theme* theme = nullptr;
  QFont font;
};

// Draws a chart, right to left: categories run from the right, the axis of the values stands at the
// right. It measures in the units of the font, so that a picture may have any size.
class ChartPainter {
 public:
  // The chart must outlive it, and have no refusal for the look's kind.
  ChartPainter(const ChartModel& chart, ChartLook look);

  void Paint(QPainter& painter, const QRectF& area);

  // Of the last painting: the place in the legend at a point, -1 for none, and what stands there
  // in words, "" for nothing.
  int LegendAt(const QPointF& point) const;
  QString TextAt(const QPointF& point) const;
  std::size_t LegendSize() const { return static_cast<std::size_t>(Names().size()); }

 private:
  QStringList Names() const;
  QBrush Fill(std::size_t index) const;
  QPen Line(std::size_t index) const;
  double Unit() const;  // the height of a text
  QRectF PaintTitle(QPainter& painter, QRectF area) const;
  QRectF PaintLegend(QPainter& painter, QRectF area);
  QRectF PaintValues(QPainter& painter, QRectF area);
  QRectF PaintCategories(QPainter& painter, QRectF area) const;
  void PaintBars(QPainter& painter) const;
  void PaintHeaps(QPainter& painter) const;
  void PaintLines(QPainter& painter) const;
  void PaintLine(QPainter& painter, std::size_t series) const;
  void PaintPiece(QPainter& painter, std::size_t series, const QPolygonF& piece, bool dots) const;
  void PaintShares(QPainter& painter, const QRectF& area);
  void PaintZero(QPainter& painter) const;
  double X(std::size_t category) const;
  double Y(FixedPoint value) const;
  double Width() const;  // of a category
  std::size_t MostPoints() const;
  QString ShareText(const QPointF& point) const;

  const ChartModel& chart_;
  ChartLook look_;
  std::vector<ChartShare> shares_;
  ChartAxis axis_;
  QRectF plot_;
  std::vector<QRectF> legend_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_CHART_PAINTER_H_
