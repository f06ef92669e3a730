#include "adapters/qt/grid_area.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "adapters/qt/grid_painter.h"

// What the area shows; grid_area_input.cc holds what the user does in it.
namespace vorek::qt {
namespace {

// What a grid is before its report has run: two rows and columns without a text.
bool IsBlank(const Grid& grid) {
  if (grid.Rows() > 2 || grid.Cols() > 2) return false;
  std::string scratch;
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      if (!grid.CellView(row, col, scratch).empty()) return false;
    }
  }
  return true;
}

}  // namespace

GridArea::GridArea(Grid& grid, QWidget* parent,
                   std::function<void(const std::function<void()>&)> feed)
    : QAbstractScrollArea(parent),
      grid_(&grid),
      geometry_(std::make_unique<GridGeometry>(grid)),
      feed_(std::move(feed)) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  for (QScrollBar* bar : {verticalScrollBar(), horizontalScrollBar()}) {
    connect(bar, &QScrollBar::valueChanged, this, [this] { BarMoved(); });
  }
  connect(&drag_timer_, &QTimer::timeout, this, [this] { ScrollByDrag(); });
  Restyle();
}

QRect GridArea::CellRect(std::int32_t row, std::int32_t col) const {
  return grid_ == nullptr ? QRect() : geometry_->CellRect({row, col});
}

void GridArea::RowsChanged() {
  geometry_->Invalidate();
  LayoutChanged();
}

void GridArea::LayoutChanged() {
  geometry_->InvalidateColumns();
  viewport()->update();
  if (std::exchange(bars_pending_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { SyncBars(); }, Qt::QueuedConnection);
}

void GridArea::MarkFound(const GridFinder* finder) {
  finder_ = finder;
  viewport()->update();
}

void GridArea::MarkFiltered(std::vector<std::int32_t> columns) {
  if (filtered_ == columns) return;
  filtered_ = std::move(columns);
  viewport()->update();
}

void GridArea::GoTo(std::int32_t row, std::int32_t col) {
  if (grid_ == nullptr || row >= grid_->Rows() || col >= grid_->Cols()) return;
  feed_([&] {
    grid_->SelectByUser(row, col, row, col);
    ScrollToRow(row);
    ScrollToCol(col);
  });
  LayoutChanged();
}

void GridArea::SelectionChanged() { viewport()->update(); }

void GridArea::Restyle() {
  if (grid_ == nullptr) return;
  QFont font = Scale::Font(grid_->FontSize());
  font.setPointSizeF(QFontInfo(font).pointSizeF() * zoom_);
  setFont(font);
  geometry_->SetFont(font, Measure(), qRound(padding_ * zoom_));
  LayoutChanged();
}

void GridArea::SyncBars() {
  bars_pending_ = false;
  if (grid_ == nullptr) return;
  syncing_ = true;
  geometry_->SetViewport(viewport()->size());
  verticalScrollBar()->setRange(0, geometry_->LastTopPlace());
  verticalScrollBar()->setPageStep(geometry_->PageRows());
  verticalScrollBar()->setSingleStep(1);
  verticalScrollBar()->setValue(geometry_->Visible().PlaceOf(grid_->TopRow()));
  const std::vector<std::int32_t> columns = geometry_->ScrollColumns();
  horizontalScrollBar()->setRange(0, geometry_->LastLeftPlace(columns));
  horizontalScrollBar()->setPageStep(1);
  horizontalScrollBar()->setValue(geometry_->FirstColumnPlace());
  syncing_ = false;
}

void GridArea::BarMoved() {
  if (syncing_ || grid_ == nullptr) return;
  const std::vector<std::int32_t> columns = geometry_->ScrollColumns();
  const VisibleRows& rows = geometry_->Visible();
  const auto place = static_cast<std::size_t>(horizontalScrollBar()->value());
  const std::int32_t left = place < columns.size() ? columns[place] : grid_->LeftCol();
  const std::int32_t top = verticalScrollBar()->value() < rows.Count()
                               ? rows.RowAt(verticalScrollBar()->value())
                               : grid_->TopRow();
  feed_([&] { grid_->ScrollByUser(top, left); });
  viewport()->update();
}

void GridArea::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  if (grid_ == nullptr) {
    painter.fillRect(event->rect(), palette().base());
    return;
  }
  if (grid_->Drawn()) {
    Draw(event->rect());
  } else {
    // The view may be larger by now than what it last showed.
    painter.fillRect(event->rect(), viewport()->palette().brush(viewport()->backgroundRole()));
  }
  painter.drawPixmap(0, 0, picture_);
  if (moving_) PaintDrop(painter);
}

// Paints into the picture of the grid, which stays on the screen while a pass changes the grid.
void GridArea::Draw(const QRect& part) {
  const QSizeF size = QSizeF(viewport()->size()) * devicePixelRatio();
  QRect stale = part;
  if (picture_.size() != size.toSize()) {
    picture_ = QPixmap(size.toSize());
    picture_.setDevicePixelRatio(devicePixelRatio());
    stale = viewport()->rect();
  }
  QPainter painter(&picture_);
  painter.setClipRect(stale);
  painter.setLayoutDirection(layoutDirection());
  painter.fillRect(stale, viewport()->palette().brush(viewport()->backgroundRole()));
  if (IsBlank(*grid_)) return;
  painter.setFont(font());
  GridPainter pass(*grid_, *geometry_, painter, palette(), hasFocus());
  pass.MarkFound(finder_);
  pass.MarkFiltered(filtered_);
  pass.Paint(stale);
}

void GridArea::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  geometry_->SetViewport(viewport()->size());
  LayoutChanged();
}

void GridArea::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void GridArea::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

void GridArea::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::PaletteChange) {
    LayoutChanged();
  }
}

// Shows the row, if it isn't in view already. A pinned one always is: those before it come.
void GridArea::ScrollToRow(std::int32_t row) {
  const VisibleRows& rows = geometry_->Visible();
  if (row < grid_->FixedRows() || rows.Count() == 0) return;
  const std::int32_t place = std::min(rows.PlaceOf(row), geometry_->ScrollEnd() - 1);
  const std::int32_t first = geometry_->FirstPlace();
  const std::int32_t page = geometry_->PageRows();
  if (place < first) grid_->ScrollByUser(rows.RowAt(place), grid_->LeftCol());
  if (place >= first + page) {
    grid_->ScrollByUser(rows.RowAt(std::max(place - page + 1, 0)), grid_->LeftCol());
  }
}

// Shows the column whole, or as much of it as there is room for.
void GridArea::ScrollToCol(std::int32_t col) {
  const std::vector<std::int32_t> columns = geometry_->ScrollColumns();
  const auto found = std::find(columns.begin(), columns.end(), col);
  if (found == columns.end()) return;
  const auto goal = static_cast<std::size_t>(found - columns.begin());
  auto place = std::min(static_cast<std::size_t>(geometry_->FirstColumnPlace()), goal);
  const auto whole = [&] {
    for (const Span& span : geometry_->Columns()) {
      if (span.index == col) {
        return span.start >= 0 && span.start + span.size <= viewport()->width();
      }
    }
    return false;
  };
  grid_->ScrollByUser(grid_->TopRow(), columns[place]);
  while (place < goal && !whole()) grid_->ScrollByUser(grid_->TopRow(), columns[++place]);
}

}  // namespace vorek::qt
