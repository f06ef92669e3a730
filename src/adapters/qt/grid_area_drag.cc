#include <QScrollBar>
#include <algorithm>

#include "adapters/qt/grid_area.h"

// Selecting by a pressed mouse: while it is beyond the rows and columns in view, they scroll.
namespace vorek::qt {

void GridArea::DragTo(QPoint point) {
  constexpr int kScrollEvery = 40;  // milliseconds
  drag_point_ = point;
  SelectTo(point);
  if (Beyond(point).isNull()) {
    drag_timer_.stop();
  } else if (!drag_timer_.isActive()) {
    drag_timer_.start(kScrollEvery);
  }
}

// How many rows and columns to go on, the farther the faster; nothing within the data.
QPoint GridArea::Beyond(QPoint point) const {
  constexpr int kFaster = 20;  // pixels for another row
  const int top = geometry_->HeaderPixels();
  const int bottom = DragBottom() - 1;
  QPoint step;
  if (point.y() < top) step.setY(-1 - (top - point.y()) / kFaster);
  if (point.y() > bottom) step.setY(1 + (point.y() - bottom) / kFaster);
  if (pressed_.col < grid_->FixedCols()) return step;  // whole rows
  const int fixed = geometry_->FixedPixels();
  const int last = viewport()->width() - 1;
  // The distance from the edge where the columns begin.
  const int along = grid_->RightToLeft() ? last - point.x() : point.x();
  if (along < fixed) step.setX(-1);
  if (along > last) step.setX(1);
  return step;
}

// Pinned rows come last: until the others have been scrolled through they are beyond the data for
// a drag that began above them.
int GridArea::DragBottom() const {
  const bool above = verticalScrollBar()->value() < verticalScrollBar()->maximum();
  return above && !geometry_->IsPinned(pressed_.row) ? geometry_->ScrollBottom()
                                                     : viewport()->height();
}

void GridArea::ScrollByDrag() {
  if (!dragging_ || grid_ == nullptr) {
    drag_timer_.stop();
    return;
  }
  const QPoint step = Beyond(drag_point_);
  verticalScrollBar()->setValue(verticalScrollBar()->value() + step.y());
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() + step.x());
  if (grid_ != nullptr) SelectTo(drag_point_);
}

// Extends the selection to the cell at the point, or to the one in view that is nearest to it.
void GridArea::SelectTo(QPoint point) {
  const int fixed = pressed_.col < grid_->FixedCols() ? 0 : geometry_->FixedPixels();
  const int last = viewport()->width() - 1;
  const bool rtl = grid_->RightToLeft();
  const std::vector<Span> rows = geometry_->Rows();
  const std::vector<Span> columns = geometry_->Columns();
  if (rows.empty() || columns.empty()) return;
  // Behind the last row or column there may be room.
  const Span& end = columns.back();
  const int low = rtl ? std::max(end.start, 0) : fixed;
  const int high = rtl ? last - fixed : std::min(end.start + end.size - 1, last);
  const int bottom = std::min(rows.back().start + rows.back().size, DragBottom()) - 1;
  const int top = std::min(geometry_->HeaderPixels(), bottom);
  const GridCell cell = geometry_->CellAt(
      {std::clamp(point.x(), std::min(low, high), high), std::clamp(point.y(), top, bottom)});
  if (cell.row < grid_->FixedRows()) return;
  const bool by_rows = pressed_.col < grid_->FixedCols();
  if (!by_rows && cell.col < grid_->FixedCols()) return;
  if (cell == pressed_ && grid_->RowSel() == cell.row && grid_->ColSel() == cell.col) return;
  feed_([&] { SelectAt(cell, true); });
}

}  // namespace vorek::qt
