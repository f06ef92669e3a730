#include "adapters/qt/grid_geometry.h"

#include <QFontMetrics>
#include <algorithm>

#include "grid/summary_label.h"

namespace vorek::qt {
namespace {

constexpr int kEdgeReach = 4;  // pixels to both sides of a column's edge

}  // namespace

void GridGeometry::SetFont(const QFont& font, const Scale& scale, int padding) {
  scale_ = scale;
  line_pixels_ = QFontMetrics(font).height() + padding;
}

int GridGeometry::RowPixels(std::int32_t row) const {
  const std::int32_t twips = grid_.RowHeight(row);
  return twips == 0 ? 0 : std::max(scale_.Pixels(twips), line_pixels_);
}

std::vector<Span> GridGeometry::Columns() const {
  std::vector<Span> spans;
  int leading = 0;
  const auto add = [&](std::int32_t col) {
    const int size = ColumnPixels(col);
    if (size == 0) return;
    const int start = grid_.RightToLeft() ? viewport_.width() - leading - size : leading;
    spans.push_back({col, start, size});
    leading += size;
  };
  const std::int32_t fixed = std::min(grid_.FixedCols(), grid_.Cols());
  for (std::int32_t col = 0; col < fixed; ++col) add(col);
  const std::vector<std::int32_t>& shown = view_.Shown();
  const auto still = static_cast<std::size_t>(view_.Frozen());
  for (std::size_t place = 0; place < still; ++place) add(shown[place]);
  for (std::size_t place = still + static_cast<std::size_t>(FirstColumnPlace());
       place < shown.size() && leading < viewport_.width(); ++place) {
    add(shown[place]);
  }
  return spans;
}

std::vector<Span> GridGeometry::Rows() const {
  std::vector<Span> spans;
  int top = 0;
  const auto add = [&](std::int32_t row) {
    const int size = RowPixels(row);
    if (size > 0) spans.push_back({row, top, size});
    top += size;
  };
  for (std::int32_t row = 0; row < std::min(grid_.FixedRows(), grid_.Rows()); ++row) add(row);
  const std::int32_t end = ScrollEnd();
  const int bottom = ScrollBottom();
  for (std::int32_t place = FirstPlace(); place < end && top < bottom; ++place) {
    add(rows_.RowAt(place));
  }
  AddPinned(spans);
  return spans;
}

std::int32_t GridGeometry::FirstPlace() const {
  const std::int32_t place = rows_.PlaceOf(grid_.TopRow());
  return place < ScrollEnd() ? place : LastTopPlace();
}

void GridGeometry::AddPinned(std::vector<Span>& spans) const {
  int top = ScrollBottom();
  for (std::int32_t row = grid_.Rows() - Pinned(); row < grid_.Rows(); ++row) {
    spans.push_back({row, top, RowPixels(row)});
    top += spans.back().size;
  }
}

int GridGeometry::PinnedPixels(std::int32_t count) const {
  int pixels = 0;
  for (std::int32_t row = grid_.Rows() - count; row < grid_.Rows(); ++row) pixels += RowPixels(row);
  return pixels;
}

bool GridGeometry::AllFit() const {
  int room = viewport_.height() - HeaderPixels();
  for (std::int32_t place = rows_.Count(); place > 0 && room >= 0; --place) {
    room -= RowPixels(rows_.RowAt(place - 1));
  }
  return room >= 0;
}

// Not where they would leave too little for the rows that they sum up, and not when one of them is
// hidden.
std::int32_t GridGeometry::Pinned() const {
  const std::int32_t count = TrailingSummaryRows(grid_);
  if (count == 0 || AllFit()) return 0;
  for (std::int32_t row = grid_.Rows() - count; row < grid_.Rows(); ++row) {
    if (RowPixels(row) == 0) return 0;
  }
  return 2 * PinnedPixels(count) <= viewport_.height() - HeaderPixels() ? count : 0;
}

int GridGeometry::ScrollBottom() const { return viewport_.height() - PinnedPixels(Pinned()); }

GridCell GridGeometry::CellAt(QPoint point) const {
  const auto find = [](const std::vector<Span>& spans, int position) {
    const auto found = std::find_if(spans.rbegin(), spans.rend(), [&](const Span& span) {
      return position >= span.start && position < span.start + span.size;
    });
    return found == spans.rend() ? -1 : found->index;
  };
  const GridCell cell{find(Rows(), point.y()), find(Columns(), point.x())};
  return cell.row < 0 || cell.col < 0 ? GridCell{} : cell;
}

QRect GridGeometry::CellRect(GridCell cell) const {
  const auto find = [](const std::vector<Span>& spans, std::int32_t index) {
    const auto found = std::find_if(spans.begin(), spans.end(),
                                    [&](const Span& span) { return span.index == index; });
    return found == spans.end() ? Span{} : *found;
  };
  const Span row = find(Rows(), cell.row);
  const Span col = find(Columns(), cell.col);
  return row.size == 0 || col.size == 0 ? QRect() : QRect(col.start, row.start, col.size, row.size);
}

std::int32_t GridGeometry::EdgeAt(QPoint point) const {
  if (point.y() < 0 || point.y() >= HeaderPixels()) return -1;
  std::int32_t edge = -1;
  for (const Span& span : Columns()) {
    const int trailing = grid_.RightToLeft() ? span.start : span.start + span.size;
    if (std::abs(point.x() - trailing) <= kEdgeReach) edge = span.index;
  }
  return edge;
}

int GridGeometry::HeaderPixels() const {
  int pixels = 0;
  for (std::int32_t row = 0; row < std::min(grid_.FixedRows(), grid_.Rows()); ++row) {
    pixels += RowPixels(row);
  }
  return pixels;
}

int GridGeometry::FixedPixels() const {
  int pixels = 0;
  for (std::int32_t col = 0; col < std::min(grid_.FixedCols(), grid_.Cols()); ++col) {
    pixels += ColumnPixels(col);
  }
  for (std::int32_t place = 0; place < view_.Frozen(); ++place) {
    pixels += ColumnPixels(view_.Shown()[static_cast<std::size_t>(place)]);
  }
  return pixels;
}

std::int32_t GridGeometry::FirstColumnPlace() const {
  return std::max(view_.PlaceOf(grid_.LeftCol()) - view_.Frozen(), 0);
}

std::int32_t GridGeometry::PageRows() const {
  std::int32_t whole = 0;
  const int bottom = ScrollBottom();
  for (const Span& span : Rows()) {
    if (span.index >= grid_.FixedRows() && span.start + span.size <= bottom) ++whole;
  }
  return std::max(whole, 1);
}

std::int32_t GridGeometry::LastTopPlace() const {
  const std::int32_t end = ScrollEnd();
  std::int32_t place = end;
  int room = ScrollBottom() - HeaderPixels();
  while (place > 0) {
    room -= RowPixels(rows_.RowAt(place - 1));
    if (room < 0) break;
    --place;
  }
  return std::clamp(place, 0, std::max(end - 1, 0));
}

std::vector<std::int32_t> GridGeometry::ScrollColumns() const {
  const std::vector<std::int32_t>& shown = view_.Shown();
  return {shown.begin() + view_.Frozen(), shown.end()};
}

std::int32_t GridGeometry::LastLeftPlace(const std::vector<std::int32_t>& columns) const {
  auto place = static_cast<std::int32_t>(columns.size());
  int room = viewport_.width() - FixedPixels();
  while (place > 0) {
    room -= ColumnPixels(columns[static_cast<std::size_t>(place) - 1]);
    if (room < 0) break;
    --place;
  }
  return std::clamp(place, 0, std::max(static_cast<std::int32_t>(columns.size()) - 1, 0));
}

}  // namespace vorek::qt
