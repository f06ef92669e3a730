#include "grid/grid_finder.h"

#include <algorithm>
#include <string>

#include "text/utf8.h"

namespace vorek {
namespace {

std::string WithoutGroups(std::string_view text) {
  std::string wanted = text::Trim(std::string(text));
  std::erase_if(wanted, [](char c) { return c == '/' || c == '(' || c == ')'; });
  return wanted;
}

}  // namespace

bool GridFinder::CanFind(std::string_view text) { return !WithoutGroups(text).empty(); }

GridFinder::GridFinder(const Grid& grid, std::string_view text)
    : grid_(grid), search_(WithoutGroups(text)), next_(grid.FixedRows()) {
  for (std::int32_t col = grid.FixedCols(); col < grid.Cols(); ++col) {
    if (grid.ColWidth(col) != 0) columns_.push_back(col);
  }
}

bool GridFinder::Step(std::int32_t rows) {
  std::erase_if(columns_, [this](std::int32_t col) { return col >= grid_.Cols(); });
  const std::int64_t end = std::min<std::int64_t>(std::int64_t{next_} + rows, grid_.Rows());
  const bool heights = grid_.RowHeightsDiffer();
  std::string scratch;
  for (; next_ < end && hits_.size() < kMostHits; ++next_) {
    if (heights && grid_.RowHeight(next_) == 0) continue;
    for (const std::int32_t col : columns_) {
      if (search_.FoundIn(grid_.CellView(next_, col, scratch))) hits_.push_back({next_, col});
    }
  }
  return next_ >= grid_.Rows() || hits_.size() >= kMostHits;
}

std::optional<std::size_t> GridFinder::NextFrom(Hit cell, bool forward) const {
  if (hits_.empty()) return std::nullopt;
  if (forward) {
    const auto hit = std::upper_bound(hits_.begin(), hits_.end(), cell);
    return hit == hits_.end() ? 0 : static_cast<std::size_t>(hit - hits_.begin());
  }
  const auto hit = std::lower_bound(hits_.begin(), hits_.end(), cell);
  return static_cast<std::size_t>(
             hit - hits_.begin() +
             (hit == hits_.begin() ? static_cast<std::ptrdiff_t>(hits_.size()) : 0)) -
         1;
}

}  // namespace vorek
