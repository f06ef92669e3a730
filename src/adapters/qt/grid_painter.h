#ifndef VOREK_ADAPTERS_QT_GRID_PAINTER_H_
#define VOREK_ADAPTERS_QT_GRID_PAINTER_H_

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPalette>
#include <QPolygonF>
#include <string>
#include <vector>

#include "adapters/qt/grid_geometry.h"
#include "grid/grid.h"
#include "grid/grid_finder.h"
#include "grid/outline_mark.h"

namespace vorek::qt {

constexpr int kCellMargin = 5;  // pixels between a cell's edge and its text

// Paints what of a grid is in view, straight from its texts and formats.
class GridPainter {
 public:
  GridPainter(const Grid& grid, const GridGeometry& geometry, QPainter& painter,
              const QPalette& palette, bool focused);

  void Paint(QRect area);
  // Cells that hold what is looked for are marked; null for none.
  void MarkFound(const GridFinder* finder) { finder_ = finder; }
  // Columns whose header gets the mark of a filter.
  void MarkFiltered(const std::vector<std::int32_t>& columns) { filtered_ = columns; }

 private:
  struct Look {
    QColor back;
    QColor text;
    std::int32_t alignment = 1;
    std::int8_t style = 0;
    bool bold = false;
  };
  void PaintCell(GridCell cell, QRect rect);
  void PaintText(const QString& text, QRect rect, const Look& look);
  void PaintOutlined(const OutlineMark& mark, QRect rect, const Look& look);
  void PaintHeaderMarks(std::int32_t col, QRect& inside);
  void PaintSortMark(QRect place);
  void PaintFilterMark(QRect place);
  void PaintSign(char sign, QRect place, const Look& look);
  void PaintShape(const QPolygonF& shape, const QColor& color);
  QRect TakeLeading(QRect& rect, int width) const;
  QRect TakeTrailing(QRect& rect, int width) const;
  int MarkPixels() const { return metrics_.height(); }
  void PaintCut(const Span& col, int bottom);
  void PaintPinnedEdge(const std::vector<Span>& columns);
  void PaintFocus();
  Look LookOf(GridCell cell) const;
  bool IsFixed(GridCell cell) const {
    return cell.row < grid_.FixedRows() || cell.col < grid_.FixedCols();
  }
  bool IsHeader(GridCell cell) const { return cell.row < grid_.FixedRows(); }
  bool IsSelected(GridCell cell) const;

  const Grid& grid_;
  const GridGeometry& geometry_;
  QPainter& painter_;
  const QPalette& palette_;
  bool focused_;
  const GridFinder* finder_ = nullptr;
  QFont plain_;
  QFont bold_;
  QFontMetrics metrics_;
  QFontMetrics bold_metrics_;
  QColor lines_;
  std::vector<std::int32_t> selected_columns_;
  std::vector<std::int32_t> filtered_;
  std::string scratch_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_GRID_PAINTER_H_
