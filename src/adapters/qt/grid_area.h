#ifndef VOREK_ADAPTERS_QT_GRID_AREA_H_
#define VOREK_ADAPTERS_QT_GRID_AREA_H_

#include <QAbstractScrollArea>
#include <QHelpEvent>
#include <QPixmap>
#include <QTimer>
#include <functional>
#include <memory>

#include "adapters/qt/grid_geometry.h"
#include "export/selection_copy.h"
#include "grid/grid.h"
#include "grid/grid_finder.h"

namespace vorek::qt {

// A window onto a headless grid: paints from it, scrolls by whole rows and columns, and tells the
// grid what mouse and keys do. It keeps no cell.
class GridArea : public QAbstractScrollArea {
 public:
  // feed runs what the user does. The grid may go before the area does, after Forget.
  GridArea(Grid& grid, QWidget* parent, std::function<void(const std::function<void()>&)> feed);

  void Forget() { grid_ = nullptr; }
  Grid* Shown() const { return grid_; }
  GridGeometry& Geometry() { return *geometry_; }
  // For tests and accessibility: where a cell stands in the viewport, empty if out of view.
  QRect CellRect(std::int32_t row, std::int32_t col) const;

  // The grid has changed: scroll bars follow when the event loop is back, the picture too.
  void RowsChanged();
  void LayoutChanged();
  void SelectionChanged();
  void Restyle();
  // How large the grid is drawn, 1 for as large as other controls, and the pixels that rows leave
  // above and below their texts together. Its neighbours take the same zoom.
  double Zoom() const { return zoom_; }
  void SetZoom(double zoom);
  void SetPadding(int pixels);
  static constexpr int kPadding = 6;
  // The columns of the selection as it is seen.
  std::vector<std::int32_t> SelectedColumns() const;
  // Puts the selection on the clipboard.
  void Copy(CopyForm form);
  // Brings the scroll bars up to date now.
  void SyncBars();
  // Marks the cells in view that hold what is looked for, until told null; it must live as long.
  void MarkFound(const GridFinder* finder);
  // Marks the headers of columns that a filter asks for.
  void MarkFiltered(std::vector<std::int32_t> columns);
  // Selects the cell and brings it into view, as a key that moves there does.
  void GoTo(std::int32_t row, std::int32_t col);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Draw(const QRect& part);
  bool PressHeaderToDrag(GridCell cell, const QMouseEvent& event);
  bool DragHeader(QPoint point);
  bool DropHeader(QMouseEvent& event);
  std::int32_t DropPlace(int x) const;
  void PaintDrop(QPainter& painter) const;
  void Press(GridCell cell, QMouseEvent& event);
  void SelectAt(GridCell cell, bool extend);
  void DragTo(QPoint point);
  void SelectTo(QPoint point);
  void ScrollByDrag();
  QPoint Beyond(QPoint point) const;
  int DragBottom() const;
  void BarMoved();
  void DragEdge(int x);
  void FitColumn(std::int32_t col);
  bool MoveByKey(const QKeyEvent& event);
  void MoveTo(std::int32_t row, std::int32_t col, bool extend);
  std::int32_t StepRow(std::int32_t by) const;
  std::int32_t StepCol(std::int32_t from, std::int32_t by) const;
  void ScrollToRow(std::int32_t row);
  void ScrollToCol(std::int32_t col);
  void PressHeader(int button);
  bool ZoomByKey(const QKeyEvent& event);
  void ZoomTogether(double zoom);
  bool TellCutCell(const QHelpEvent& event);
  Scale Measure() const { return Scale::OfApplication().Zoomed(zoom_); }
  double Twips(double pixels) const { return Measure().Twips(pixels); }

  Grid* grid_;
  const GridFinder* finder_ = nullptr;
  std::unique_ptr<GridGeometry> geometry_;
  QPixmap picture_;  // what is on the screen
  std::function<void(const std::function<void()>&)> feed_;
  double zoom_ = 1;
  int padding_ = kPadding;
  bool bars_pending_ = false;
  bool syncing_ = false;
  GridCell pressed_;             // of the left button, until it is up
  bool dragging_ = false;        // the left button is down in the data
  QPoint drag_point_;            // where the pointer is meanwhile
  QTimer drag_timer_;            // scrolls while it is beyond the data
  bool double_clicked_ = false;  // the next release ends a double click
  std::int32_t drawn_col_ = -1;  // the column whose edge is being drawn
  GridCell moved_;               // the header that is pressed
  QPoint moved_from_;
  bool moving_ = false;  // it has been moved since
  int move_x_ = 0;       // to where
  std::vector<std::int32_t> filtered_;
};

// The cell has a mark that opens or closes what is below it.
bool OpensOrCloses(const Grid& grid, GridCell cell);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_GRID_AREA_H_
