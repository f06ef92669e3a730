#include "grid/column_view.h"

#include <algorithm>
#include <utility>

namespace vorek {

bool ColumnView::IsMeant(const NamedColumn& wish) const {
  return wish.col >= grid_.FixedCols() && wish.col < grid_.Cols() && grid_.Rows() > 0 &&
         grid_.TextMatrix(0, wish.col) == wish.header;
}

const std::vector<std::int32_t>& ColumnView::Shown() const {
  if (std::exchange(known_, true)) return shown_;
  shown_.clear();
  std::vector<bool> wished(static_cast<std::size_t>(grid_.Cols()));
  for (const NamedColumn& wish : wishes_.order) {
    if (!IsMeant(wish)) continue;
    wished[static_cast<std::size_t>(wish.col)] = true;
    if (!wish.hidden && grid_.ColWidth(wish.col) != 0) shown_.push_back(wish.col);
  }
  // Those that came since stand behind.
  for (std::int32_t col = grid_.FixedCols(); col < grid_.Cols(); ++col) {
    if (!wished[static_cast<std::size_t>(col)] && grid_.ColWidth(col) != 0) shown_.push_back(col);
  }
  return shown_;
}

std::int32_t ColumnView::Frozen() const {
  const auto count = static_cast<std::int32_t>(Shown().size());
  return std::clamp(wishes_.frozen, 0, std::max(count - 1, 0));
}

std::int32_t ColumnView::PlaceOf(std::int32_t col) const {
  const std::vector<std::int32_t>& shown = Shown();
  const auto place_of = [&](std::int32_t wanted) {
    return static_cast<std::int32_t>(std::find(shown.begin(), shown.end(), wanted) - shown.begin());
  };
  const auto none = static_cast<std::int32_t>(shown.size());
  std::int32_t place = place_of(col);
  while (place == none && ++col < grid_.Cols()) place = place_of(col);
  return place;
}

std::vector<std::int32_t> ColumnView::Between(std::int32_t from, std::int32_t to) const {
  const std::vector<std::int32_t>& shown = Shown();
  const bool both = std::count(shown.begin(), shown.end(), from) > 0 &&
                    std::count(shown.begin(), shown.end(), to) > 0;
  const auto [first, last] =
      both ? std::minmax({PlaceOf(from), PlaceOf(to)}) : std::minmax({from, to});
  std::vector<std::int32_t> columns;
  for (std::int32_t place = 0; place < static_cast<std::int32_t>(shown.size()); ++place) {
    const std::int32_t col = shown[static_cast<std::size_t>(place)];
    const std::int32_t at = both ? place : col;
    if (at >= first && at <= last) columns.push_back(col);
  }
  return columns;
}

bool ColumnView::IsHidden(std::int32_t col) const {
  return std::any_of(wishes_.order.begin(), wishes_.order.end(), [&](const NamedColumn& wish) {
    return wish.col == col && wish.hidden && IsMeant(wish);
  });
}

// Before a first wish all columns get their names in the order in which they are shown.
void ColumnView::Name() {
  std::vector<NamedColumn> order;
  for (const NamedColumn& wish : wishes_.order) {
    if (IsMeant(wish)) order.push_back(wish);
  }
  for (std::int32_t col = grid_.FixedCols(); col < grid_.Cols(); ++col) {
    const bool named = std::any_of(order.begin(), order.end(),
                                   [col](const NamedColumn& wish) { return wish.col == col; });
    if (!named) order.push_back({col, grid_.TextMatrix(0, col), false});
  }
  wishes_.order = std::move(order);
  Invalidate();
}

NamedColumn* ColumnView::Find(std::int32_t col) {
  const auto found = std::find_if(wishes_.order.begin(), wishes_.order.end(),
                                  [col](const NamedColumn& wish) { return wish.col == col; });
  return found == wishes_.order.end() ? nullptr : &*found;
}

void ColumnView::Hide(std::int32_t col) {
  if (Shown() == std::vector<std::int32_t>{col}) return;
  Name();
  if (NamedColumn* const wish = Find(col); wish != nullptr) wish->hidden = true;
}

void ColumnView::Show(std::int32_t col) {
  Name();
  if (NamedColumn* const wish = Find(col); wish != nullptr) wish->hidden = false;
}

// Past those that aren't shown.
void ColumnView::Move(std::int32_t col, std::int32_t by) {
  Name();
  const std::vector<std::int32_t> shown = Shown();
  const auto at = std::find(shown.begin(), shown.end(), col);
  if (at == shown.end()) return;
  const std::int64_t place = std::clamp<std::int64_t>(at - shown.begin() + std::int64_t{by}, 0,
                                                      static_cast<std::int64_t>(shown.size()) - 1);
  const std::int32_t goal = shown[static_cast<std::size_t>(place)];
  if (goal == col) return;
  const NamedColumn moved = *Find(col);
  std::erase(wishes_.order, moved);
  const auto behind = std::find_if(wishes_.order.begin(), wishes_.order.end(),
                                   [goal](const NamedColumn& wish) { return wish.col == goal; });
  wishes_.order.insert(by > 0 ? behind + 1 : behind, moved);
  Invalidate();
}

void ColumnView::FreezeTo(std::int32_t col) {
  Name();
  wishes_.frozen = col < 0 ? 0 : PlaceOf(col) + 1;
}

void ColumnView::SetWishes(ColumnWishes wishes) {
  wishes_ = std::move(wishes);
  Invalidate();
}

}  // namespace vorek
