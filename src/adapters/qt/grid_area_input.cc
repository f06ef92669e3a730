#include <QMouseEvent>
#include <algorithm>

#include "adapters/qt/column_fit.h"
#include "adapters/qt/control_view.h"
#include "adapters/qt/grid_area.h"
#include "adapters/qt/key_codes.h"
#include "adapters/qt/qt_clipboard.h"
#include "grid/outline_mark.h"

// Mouse and keys of the area. The grid's own handlers come first; what they leave undone, selecting
// and moving, follows.
namespace vorek::qt {
namespace {

constexpr int kLeastColumn = 8;  // pixels, so that a column can be found again

}  // namespace

// The whole cell of a mark takes the click.
bool OpensOrCloses(const Grid& grid, GridCell cell) {
  std::string scratch;
  return cell.row >= 0 &&
         MarkOf(grid, cell.row, cell.col, grid.CellView(cell.row, cell.col, scratch)).sign != '\0';
}

bool GridArea::viewportEvent(QEvent* event) {
  if (grid_ == nullptr && event->type() != QEvent::Paint) return false;
  if (event->type() == QEvent::ToolTip && TellCutCell(static_cast<QHelpEvent&>(*event)))
    return true;
  return QAbstractScrollArea::viewportEvent(event);
}

void GridArea::mousePressEvent(QMouseEvent* event) {
  double_clicked_ = false;
  const QPoint point = event->position().toPoint();
  drawn_col_ = event->button() == Qt::LeftButton ? geometry_->EdgeAt(point) : -1;
  if (drawn_col_ >= 0) return;
  const GridCell cell = geometry_->CellAt(point);
  if (!PressHeaderToDrag(cell, *event)) Press(cell, *event);
}

void GridArea::Press(GridCell cell, QMouseEvent& event) {
  const int button = ButtonNumber(event.button());
  pressed_ = event.button() == Qt::LeftButton ? cell : GridCell{};
  const QPointF at = event.position();
  const int shift = ShiftState(event.modifiers());
  feed_([&] {
    grid_->PointAt(cell.row, cell.col);
    grid_->MouseDown(button, shift, Twips(at.x()), Twips(at.y()));
  });
  if (grid_ == nullptr || event.button() != Qt::LeftButton) return;
  // The handler may have changed the grid.
  const bool inside = cell.row >= grid_->FixedRows() && cell.row < grid_->Rows() && cell.col >= 0 &&
                      cell.col < grid_->Cols();
  if (!inside || (shift & 2) != 0) return;
  dragging_ = true;
  feed_([&] { SelectAt(cell, (shift & 1) != 0); });
}

// A fixed column stands for its whole row.
void GridArea::SelectAt(GridCell cell, bool extend) {
  if (cell.col < grid_->FixedCols() && grid_->Cols() > grid_->FixedCols()) {
    const std::int32_t from = extend ? grid_->Row() : cell.row;
    grid_->SelectByUser(from, grid_->FixedCols(), cell.row, grid_->Cols() - 1);
  } else if (extend) {
    grid_->SelectByUser(grid_->Row(), grid_->Col(), cell.row, cell.col);
  } else {
    grid_->SelectByUser(cell.row, cell.col, cell.row, cell.col);
  }
}

void GridArea::mouseMoveEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  if (!event->buttons().testFlag(Qt::LeftButton)) dragging_ = false;
  if (drawn_col_ >= 0) {
    DragEdge(point.x());
    return;
  }
  if (DragHeader(point)) return;
  const bool on_edge = event->buttons() == Qt::NoButton && geometry_->EdgeAt(point) >= 0;
  const GridCell cell = geometry_->CellAt(point);
  viewport()->setCursor(on_edge                       ? Qt::SplitHCursor
                        : OpensOrCloses(*grid_, cell) ? Qt::PointingHandCursor
                                                      : Qt::ArrowCursor);
  const QPointF at = event->position();
  const int shift = ShiftState(event->modifiers());
  const int button = (event->buttons().testFlag(Qt::LeftButton) ? 1 : 0) |
                     (event->buttons().testFlag(Qt::RightButton) ? 2 : 0);
  feed_([&] {
    grid_->PointAt(cell.row, cell.col);
    grid_->MouseMove(button, shift, Twips(at.x()), Twips(at.y()));
  });
  if (dragging_ && grid_ != nullptr) DragTo(point);
}

void GridArea::DragEdge(int x) {
  const std::vector<Span> columns = geometry_->Columns();
  const auto span = std::find_if(columns.begin(), columns.end(),
                                 [this](const Span& column) { return column.index == drawn_col_; });
  if (span == columns.end()) return;
  const int size = grid_->RightToLeft() ? span->start + span->size - x : x - span->start;
  const std::int32_t twips = Measure().Twips(std::max(size, kLeastColumn));
  feed_([&] { grid_->ResizeByUser(drawn_col_, twips); });
}

// As wide as its texts, but not wider than the view.
void GridArea::FitColumn(std::int32_t col) {
  const int most = viewport()->width() * 9 / 10 - geometry_->FixedPixels();
  const int pixels = std::min(FittingPixels(*grid_, col, font()), std::max(most, kLeastColumn));
  feed_([&] { grid_->ResizeByUser(col, Measure().Twips(pixels)); });
}

void GridArea::mouseReleaseEvent(QMouseEvent* event) {
  dragging_ = false;
  drag_timer_.stop();
  if (DropHeader(*event)) return;
  if (std::exchange(drawn_col_, -1) >= 0) return;
  if (std::exchange(double_clicked_, false) || event->button() != Qt::LeftButton) return;
  const GridCell cell = geometry_->CellAt(event->position().toPoint());
  const GridCell pressed = std::exchange(pressed_, GridCell{});
  if (cell.row < 0 || cell != pressed) return;
  feed_([&] {
    grid_->PointAt(cell.row, cell.col);
    grid_->Click();
  });
}

void GridArea::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const QPoint point = event->position().toPoint();
  if (const std::int32_t edge = geometry_->EdgeAt(point); edge >= 0) {
    FitColumn(edge);
    return;
  }
  double_clicked_ = true;
  const GridCell cell = geometry_->CellAt(point);
  feed_([&] {
    grid_->PointAt(cell.row, cell.col);
    grid_->DblClick();
  });
}

// The menu key opens what a right click on the header of the current column opens.
void GridArea::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard) PressHeader(2);
  event->accept();
}

void GridArea::PressHeader(int button) {
  const std::int32_t col = std::max(grid_->Col(), grid_->FixedCols());
  feed_([&] {
    grid_->PointAt(0, col);
    grid_->MouseDown(button, 0, 0, 0);
  });
}

void GridArea::keyPressEvent(QKeyEvent* event) {
  if (grid_ == nullptr) return;
  if (moving_ && event->key() == Qt::Key_Escape) {
    moved_ = {};
    moving_ = false;
    viewport()->update();
    return;
  }
  const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
  if (event->matches(QKeySequence::Copy)) {
    Copy(CopyForm::kShown);
  } else if (ctrl && event->key() == Qt::Key_C) {
    Copy(event->modifiers().testFlag(Qt::ShiftModifier) ? CopyForm::kWithHeaders
                                                        : CopyForm::kPlain);
  } else if (ZoomByKey(*event)) {
    return;
  } else if (event->key() == Qt::Key_Up && event->modifiers().testFlag(Qt::ControlModifier)) {
    PressHeader(1);
  } else if (!MoveByKey(*event)) {
    event->ignore();
  }
}

bool GridArea::MoveByKey(const QKeyEvent& event) {
  const bool whole = event.modifiers().testFlag(Qt::ControlModifier);
  const bool extend = event.modifiers().testFlag(Qt::ShiftModifier);
  const std::int32_t page = geometry_->PageRows();
  const std::int32_t most = grid_->Rows();
  const int forward = grid_->RightToLeft() ? Qt::Key_Left : Qt::Key_Right;
  const int back = grid_->RightToLeft() ? Qt::Key_Right : Qt::Key_Left;
  const std::int32_t row = extend ? grid_->RowSel() : grid_->Row();
  const std::int32_t col = extend ? grid_->ColSel() : grid_->Col();
  const int key = event.key();
  if (whole && event.key() == Qt::Key_A) {
    feed_([&] {
      grid_->SelectByUser(grid_->Rows() - 1, grid_->FixedCols(), grid_->FixedRows(),
                          grid_->Cols() - 1);
    });
    return true;
  }
  std::int32_t to_row = row;
  std::int32_t to_col = col;
  if (key == Qt::Key_Up)
    to_row = StepRow(-1);
  else if (key == Qt::Key_Down)
    to_row = StepRow(1);
  else if (key == Qt::Key_PageUp)
    to_row = StepRow(-page);
  else if (key == Qt::Key_PageDown)
    to_row = StepRow(page);
  else if (key == forward)
    to_col = StepCol(col, 1);
  else if (key == back)
    to_col = StepCol(col, -1);
  else if (key == Qt::Key_Home && whole)
    to_row = StepRow(-most);
  else if (key == Qt::Key_End && whole)
    to_row = StepRow(most);
  else if (key == Qt::Key_Home)
    to_col = StepCol(col, -grid_->Cols());
  else if (key == Qt::Key_End)
    to_col = StepCol(col, grid_->Cols());
  else
    return false;
  feed_([&] { MoveTo(to_row, to_col, extend); });
  return true;
}

// The next row that shows, `by` places on, from the moving end of the selection.
std::int32_t GridArea::StepRow(std::int32_t by) const {
  const VisibleRows& rows = geometry_->Visible();
  if (rows.Count() == 0) return grid_->Row();
  const std::int64_t place = std::int64_t{rows.PlaceOf(grid_->RowSel())} + by;
  return rows.RowAt(
      static_cast<std::int32_t>(std::clamp<std::int64_t>(place, 0, rows.Count() - 1)));
}

std::int32_t GridArea::StepCol(std::int32_t from, std::int32_t by) const {
  const std::vector<std::int32_t>& columns = geometry_->Arrangement().Shown();
  if (columns.empty()) return from;
  const auto last = static_cast<std::int64_t>(columns.size()) - 1;
  const std::int64_t place = geometry_->Arrangement().PlaceOf(from);
  const std::int64_t to = std::clamp<std::int64_t>(place + by, 0, last);
  return columns[static_cast<std::size_t>(to)];
}

// A selection of a whole row stays one while it moves up and down. The view follows in the
// direction that was moved in alone.
void GridArea::MoveTo(std::int32_t row, std::int32_t col, bool extend) {
  if (row >= grid_->Rows() || col >= grid_->Cols()) return;
  const bool sideways = col != (extend ? grid_->ColSel() : grid_->Col());
  const bool spans = grid_->Col() != grid_->ColSel() && grid_->Row() == grid_->RowSel();
  if (extend) {
    grid_->SelectByUser(grid_->Row(), grid_->Col(), row, col);
  } else if (spans && col == grid_->Col()) {
    grid_->SelectByUser(row, grid_->Col(), row, grid_->ColSel());
  } else {
    grid_->SelectByUser(row, col, row, col);
  }
  ScrollToRow(row);
  if (sideways) ScrollToCol(col);
  LayoutChanged();
}

std::vector<std::int32_t> GridArea::SelectedColumns() const {
  return geometry_->Arrangement().Between(grid_->Col(), grid_->ColSel());
}

void GridArea::Copy(CopyForm form) {
  if (grid_ == nullptr) return;
  const CopiedCells copied = CopySelection(*grid_, SelectedColumns(), form);
  QtClipboard().Put(copied.text, copied.html);
}

}  // namespace vorek::qt
