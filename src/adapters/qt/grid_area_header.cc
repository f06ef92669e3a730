#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "adapters/qt/grid_area.h"
#include "adapters/qt/theme.h"

// Headers that are dragged to another place. What a press on one does is done when the button comes
// up where it went down.
namespace vorek::qt {

bool GridArea::PressHeaderToDrag(GridCell cell, const QMouseEvent& event) {
  const bool header = cell.row >= 0 && cell.row < grid_->FixedRows() &&
                      cell.col >= grid_->FixedCols() && !OpensOrCloses(*grid_, cell);
  if (!header || event.button() != Qt::LeftButton) return false;
  moved_ = cell;
  moved_from_ = event.position().toPoint();
  return true;
}

bool GridArea::DragHeader(QPoint point) {
  if (moved_.row < 0) return false;
  const int away = (point - moved_from_).manhattanLength();
  if (!moving_ && away < QApplication::startDragDistance()) return true;
  moving_ = true;
  move_x_ = point.x();
  viewport()->setCursor(Qt::ClosedHandCursor);
  viewport()->update();
  return true;
}

// True if the release has ended a move.
bool GridArea::DropHeader(QMouseEvent& event) {
  const GridCell cell = std::exchange(moved_, GridCell{});
  if (cell.row < 0) return false;
  if (!std::exchange(moving_, false)) {
    Press(cell, event);
    return grid_ == nullptr;
  }
  ColumnView& view = geometry_->Arrangement();
  const std::int32_t from = view.PlaceOf(cell.col);
  const std::int32_t to = DropPlace(event.position().toPoint().x());
  if (to != from && to != from + 1) view.Move(cell.col, to > from ? to - 1 - from : to - from);
  viewport()->setCursor(Qt::ArrowCursor);
  LayoutChanged();
  return true;
}

// Before which of the columns that show a header would stand that is let go there.
std::int32_t GridArea::DropPlace(int x) const {
  const ColumnView& view = geometry_->Arrangement();
  std::int32_t place = -1;
  for (const Span& span : geometry_->Columns()) {
    if (span.index < grid_->FixedCols()) continue;
    const int middle = span.start + span.size / 2;
    const bool passed = grid_->RightToLeft() ? x < middle : x > middle;
    const std::int32_t own = view.PlaceOf(span.index);
    if (passed) place = std::max(place, own + 1);
    if (place < 0) place = own;
  }
  return std::max(place, 0);
}

// A line where the header would come to stand.
void GridArea::PaintDrop(QPainter& painter) const {
  constexpr int kLine = 3;  // pixels
  const ColumnView& view = geometry_->Arrangement();
  const std::int32_t place = DropPlace(move_x_);
  for (const Span& span : geometry_->Columns()) {
    if (span.index < grid_->FixedCols()) continue;
    const std::int32_t own = view.PlaceOf(span.index);
    if (own != place && own + 1 != place) continue;
    const bool at_right = (own == place) == grid_->RightToLeft();
    const int x = at_right ? span.start + span.size : span.start;
    painter.fillRect(QRect(x - kLine / 2, 0, kLine, viewport()->height()),
                     ThemeOf(palette()).accent);
    return;
  }
}

}  // namespace vorek::qt
