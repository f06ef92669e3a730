#ifndef VOREK_ADAPTERS_QT_GRID_GEOMETRY_H_
#define VOREK_ADAPTERS_QT_GRID_GEOMETRY_H_

#include <QFont>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <cstdint>
#include <vector>

#include "adapters/qt/scale.h"
#include "adapters/qt/visible_rows.h"
#include "grid/column_view.h"
#include "grid/grid.h"

namespace vorek::qt {

// A row or column in view, in pixels; start is the left or top edge.
struct Span {
  std::int32_t index = 0;
  int start = 0;
  int size = 0;
};

struct GridCell {
  std::int32_t row = -1;
  std::int32_t col = -1;
  bool operator==(const GridCell&) const = default;
};

// Where the cells of a grid stand in a viewport: fixed rows and columns first, then those from
// TopRow and LeftCol on; columns run from the right in a right-to-left grid. The summary rows at
// the grid's end are pinned: while the rows above them don't all fit, they stand at the bottom and
// the others scroll above them.
class GridGeometry {
 public:
  explicit GridGeometry(const Grid& grid) : grid_(grid), rows_(grid), view_(grid) {}

  // After a change of the grid's rows or of the grid's font.
  void Invalidate() { rows_.Invalidate(); }
  // After a change of its columns, widths or headers.
  void InvalidateColumns() { view_.Invalidate(); }
  // The order of the columns, those that are hidden, and those that stand still.
  ColumnView& Arrangement() { return view_; }
  const ColumnView& Arrangement() const { return view_; }
  // padding: pixels above and below the texts of a row together.
  void SetFont(const QFont& font, const Scale& scale, int padding);
  void SetViewport(QSize size) { viewport_ = size; }
  QRect View() const { return {QPoint(0, 0), viewport_}; }

  std::vector<Span> Columns() const;
  // From the top; pinned ones last, over what they cover of the row before them.
  std::vector<Span> Rows() const;
  int ColumnPixels(std::int32_t col) const { return scale_.Pixels(grid_.ColWidth(col)); }
  // Never less than a line of the font needs, unless it is hidden.
  int RowPixels(std::int32_t row) const;

  // -1 outside.
  GridCell CellAt(QPoint point) const;
  // Empty for a cell that isn't in view.
  QRect CellRect(GridCell cell) const;
  // The column whose trailing edge lies under a point of the header, -1 for none.
  std::int32_t EdgeAt(QPoint point) const;

  const VisibleRows& Visible() const { return rows_; }
  // How many rows at the end are pinned now; 0 while all rows fit.
  std::int32_t Pinned() const;
  bool IsPinned(std::int32_t row) const { return row >= grid_.Rows() - Pinned(); }
  // Where the rows that scroll end.
  int ScrollBottom() const;
  // The place of the first row in view below the fixed ones, and that behind the last that scrolls.
  std::int32_t FirstPlace() const;
  std::int32_t ScrollEnd() const { return rows_.Count() - Pinned(); }

  // How many rows fit whole from the top row on; at least 1.
  std::int32_t PageRows() const;
  // The place of the last row that may stand on top.
  std::int32_t LastTopPlace() const;
  // The scrollable columns that are shown, in their order, and the last of them that may stand
  // first.
  std::vector<std::int32_t> ScrollColumns() const;
  std::int32_t LastLeftPlace(const std::vector<std::int32_t>& columns) const;

  // The place among the scrollable columns of the first one in view.
  std::int32_t FirstColumnPlace() const;

  // What the columns that stand still and the fixed rows take.
  int FixedPixels() const;
  int HeaderPixels() const;

 private:
  int PinnedPixels(std::int32_t count) const;
  bool AllFit() const;
  void AddPinned(std::vector<Span>& spans) const;

  const Grid& grid_;
  VisibleRows rows_;
  ColumnView view_;
  Scale scale_ = Scale::OfApplication();
  int line_pixels_ = 16;
  QSize viewport_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_GRID_GEOMETRY_H_
