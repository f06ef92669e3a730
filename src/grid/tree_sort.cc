#include "grid/tree_sort.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::uint32_t kNone = UINT32_MAX;

bool IsPlainNumber(std::string_view text) {
  return text::PlainNumber(text::NumericPrefix(text)) == text;
}

// Ranks from 0 of keys, equal ones alike; turned round for a descending sort.
template <typename Key>
std::vector<std::uint32_t> RanksOf(const std::vector<Key>& keys, bool descending) {
  std::vector<std::uint32_t> order(keys.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(),
            [&](std::uint32_t a, std::uint32_t b) { return keys[a] < keys[b]; });
  std::vector<std::uint32_t> ranks(keys.size());
  std::uint32_t rank = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i > 0 && keys[order[i - 1]] < keys[order[i]]) ++rank;
    ranks[order[i]] = rank;
  }
  if (descending) {
    for (std::uint32_t& value : ranks) value = rank - value;
  }
  return ranks;
}

// Finds the first place from another on whose rank is below a bound. Places can be taken out.
class FirstBelow {
 public:
  explicit FirstBelow(const std::vector<std::uint32_t>& ranks)
      : leaves_(std::bit_ceil(std::max<std::size_t>(ranks.size(), 1))), least_(2 * leaves_, kNone) {
    std::copy(ranks.begin(), ranks.end(), least_.begin() + static_cast<std::ptrdiff_t>(leaves_));
    for (std::size_t node = leaves_ - 1; node > 0; --node) Join(node);
  }

  void TakeOut(std::size_t place) {
    std::size_t node = leaves_ + place;
    least_[node] = kNone;
    while ((node /= 2) > 0) Join(node);
  }

  // kNone if there is none.
  std::uint32_t Find(std::size_t from, std::uint32_t bound) const {
    if (from >= leaves_) return kNone;
    std::size_t node = leaves_ + from;
    // Up while nothing below serves, then down to the leftmost that does.
    while (least_[node] >= bound) {
      while (node % 2 == 1) node /= 2;
      if (node == 0) return kNone;
      ++node;
    }
    while (node < leaves_) node = 2 * node + (least_[2 * node] < bound ? 0 : 1);
    return static_cast<std::uint32_t>(node - leaves_);
  }

 private:
  void Join(std::size_t node) { least_[node] = std::min(least_[2 * node], least_[2 * node + 1]); }

  std::size_t leaves_;
  std::vector<std::uint32_t> least_;  // of each subtree; node 1 is the root
};

// The order that a selection sort finds: for each place the rest is gone through once, and whatever
// beats the best so far takes its place. Where numbers and texts mix, the comparison isn't an
// order, and what is found depends on the way.
class Selection {
 public:
  Selection(const std::vector<std::string>& texts, bool descending) {
    std::vector<double> numbers;
    std::vector<std::size_t> number_places;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      is_number_.push_back(IsPlainNumber(texts[i]));
      if (!is_number_[i]) continue;
      numbers.push_back(text::NumericPrefix(texts[i]));
      number_places.push_back(i);
    }
    text_ranks_ = RanksOf(texts, descending);
    number_ranks_.assign(texts.size(), kNone);
    const std::vector<std::uint32_t> ranks = RanksOf(numbers, descending);
    for (std::size_t i = 0; i < ranks.size(); ++i) number_ranks_[number_places[i]] = ranks[i];
  }

  std::vector<std::uint32_t> Order() const {
    const auto count =
        static_cast<std::size_t>(std::count(is_number_.begin(), is_number_.end(), true));
    if (count == 0) return Sorted(text_ranks_);
    if (count == is_number_.size()) return Sorted(number_ranks_);
    return Selected();
  }

 private:
  static std::vector<std::uint32_t> Sorted(const std::vector<std::uint32_t>& ranks) {
    std::vector<std::uint32_t> order(ranks.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return ranks[a] < ranks[b]; });
    return order;
  }

  std::vector<std::uint32_t> Selected() const {
    std::vector<std::uint32_t> texts_alone = text_ranks_;
    for (std::size_t i = 0; i < texts_alone.size(); ++i) {
      if (is_number_[i]) texts_alone[i] = kNone;
    }
    FirstBelow all(text_ranks_);
    FirstBelow texts(texts_alone);
    FirstBelow numbers(number_ranks_);
    std::vector<std::uint32_t> order;
    for (std::uint32_t first = all.Find(0, kNone); first != kNone; first = all.Find(first, kNone)) {
      std::uint32_t best = first;
      for (std::uint32_t next = best; next != kNone;) {
        best = next;
        const std::uint32_t text_bound = text_ranks_[best];
        next = is_number_[best] ? std::min(numbers.Find(best + 1, number_ranks_[best]),
                                           texts.Find(best + 1, text_bound))
                                : all.Find(best + 1, text_bound);
      }
      order.push_back(best);
      for (FirstBelow* tree : {&all, &texts, &numbers}) tree->TakeOut(best);
    }
    return order;
  }

  std::vector<bool> is_number_;
  std::vector<std::uint32_t> text_ranks_;
  std::vector<std::uint32_t> number_ranks_;  // kNone for texts
};

// The top rows of the grid, each with its block, in another order.
class BlockSort {
 public:
  BlockSort(const Grid& grid, std::int32_t parent_column) : grid_(grid) {
    std::string scratch;
    for (std::int32_t row = 1; row < grid.Rows(); ++row) {
      grid.AskAt(row);
      if (grid.CellView(row, parent_column, scratch).empty()) tops_.push_back(row);
    }
  }

  // Of all rows, for Grid::Rearrange; empty without a top row.
  std::vector<std::int32_t> Order(std::int32_t column, bool descending) const {
    if (tops_.empty()) return {};
    std::vector<std::string> texts;
    for (const std::int32_t row : tops_) {
      grid_.AskAt(static_cast<std::int32_t>(texts.size()));
      texts.push_back(grid_.TextMatrix(row, column));
    }
    std::vector<std::int32_t> rows(static_cast<std::size_t>(tops_.front()));
    std::iota(rows.begin(), rows.end(), 0);
    for (const std::uint32_t block : Selection(texts, descending).Order()) {
      const std::int32_t end = block + 1 < tops_.size() ? tops_[block + 1] : grid_.Rows();
      for (std::int32_t row = tops_[block]; row < end; ++row) rows.push_back(row);
    }
    return rows;
  }

 private:
  const Grid& grid_;
  std::vector<std::int32_t> tops_;
};

// The column of a header in upper case, -1 without one; the last of several.
std::int32_t HeaderColumn(const Grid& grid, std::string_view name) {
  std::int32_t found = -1;
  for (std::int32_t column = 0; column < grid.Cols(); ++column) {
    if (text::ToUpper(grid.TextMatrix(0, column)) == name) found = column;
  }
  return found;
}

void SortBlocks(ReportContext& report, Grid& grid, std::int32_t column, bool descending) {
  const std::vector<std::int32_t> order =
      BlockSort(grid, report.state.ParentIDColumn + 1).Order(column, descending);
  grid.SetRedraw(false);
  if (!order.empty()) grid.Rearrange(order);
  grid.SetSortedBy({column, descending});
  grid.SetRow(grid.Rows() >= 2 ? 1 : 0);
  report.process.windows().SetMousePointer(0);
  grid.SetRedraw(true);
}

}  // namespace

bool TreeCompareLess(std::string_view a, std::string_view b) {
  if (IsPlainNumber(a) && IsPlainNumber(b)) return text::NumericPrefix(a) < text::NumericPrefix(b);
  return a < b;
}

bool TreeCompareGreater(std::string_view a, std::string_view b) {
  return a != b && !TreeCompareLess(a, b);
}

void SortTree(ReportContext& report, Grid& grid, std::int32_t column) {
  ReportState& state = report.state;
  if (column >= grid.Cols()) return;
  const bool same = column == state.TreeSortColumn;
  if (column == 0) column = state.TreeSortColumn;
  if (column < 1 || column > grid.Cols() - 1) return;
  const bool descending = same ? !state.TreeSortDescending : true;
  const std::int32_t id = HeaderColumn(grid, "ID");
  const std::int32_t parent = HeaderColumn(grid, "PARENTID");
  if (id > 0) state.IDColumn = id - 1;
  if (parent >= 1) {
    state.ParentIDColumn = parent - 1;
    SortBlocks(report, grid, column, descending);
  }
  // A sort that was cancelled isn't the last one.
  state.TreeSortColumn = column;
  state.TreeSortDescending = descending;
}

}  // namespace vorek
