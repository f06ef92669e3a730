#include <QFontMetrics>
#include <QKeyEvent>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

#include "adapters/qt/control_view.h"
#include "adapters/qt/grid_area.h"
#include "adapters/qt/grid_painter.h"

// How large the area draws its grid, and what it tells of cells that have no room.
namespace vorek::qt {
namespace {

constexpr double kLeast = 0.5;
constexpr double kMost = 3;
constexpr double kStep = 1.1;

}  // namespace

void GridArea::SetZoom(double zoom) {
  zoom = std::clamp(zoom, kLeast, kMost);
  if (zoom == zoom_) return;
  zoom_ = zoom;
  Restyle();
}

void GridArea::SetPadding(int pixels) {
  if (pixels == padding_) return;
  padding_ = pixels;
  Restyle();
}

// The two grids of a report stand in one frame.
void GridArea::ZoomTogether(double zoom) {
  for (QObject* const neighbour : parentWidget()->children()) {
    if (auto* const area = dynamic_cast<GridArea*>(neighbour)) area->SetZoom(zoom);
  }
}

void GridArea::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) {
    QAbstractScrollArea::wheelEvent(event);
    return;
  }
  const int turn = event->angleDelta().y();
  if (turn != 0) ZoomTogether(turn > 0 ? zoom_ * kStep : zoom_ / kStep);
  event->accept();
}

bool GridArea::ZoomByKey(const QKeyEvent& event) {
  if (!event.modifiers().testFlag(Qt::ControlModifier)) return false;
  switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      ZoomTogether(zoom_ * kStep);
      return true;
    case Qt::Key_Minus:
      ZoomTogether(zoom_ / kStep);
      return true;
    case Qt::Key_0:
      ZoomTogether(1);
      return true;
    default:
      return false;
  }
}

// The whole text of a cell that shows a part of it, or "#" for a figure.
bool GridArea::TellCutCell(const QHelpEvent& event) {
  const GridCell cell = geometry_->CellAt(event.pos());
  if (cell.row < grid_->FixedRows() || cell.col < grid_->FixedCols()) return false;
  const QString text = ToQt(grid_->TextMatrix(cell.row, cell.col));
  QFont drawn = font();
  drawn.setBold(grid_->FormatAt(cell.row, cell.col).bold);
  const QRect seen = geometry_->CellRect(cell).intersected(viewport()->rect());
  if (QFontMetrics(drawn).horizontalAdvance(text) <= seen.width() - 2 * kCellMargin) return false;
  QToolTip::showText(event.globalPos(), text.toHtmlEscaped(), viewport());
  return true;
}

}  // namespace vorek::qt
