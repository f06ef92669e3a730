#ifndef VOREK_GRID_GRID_FINDER_H_
#define VOREK_GRID_GRID_FINDER_H_

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "grid/cell_search.h"

namespace vorek {

// Looks for a text in all columns of a grid, piece by piece, row after row. Digit groups and
// brackets don't count in the text, as they don't in the cells (see CellSearch). Hidden rows and
// columns of no width are passed over. The hits of a
// grid that has changed meanwhile are stale: the caller begins anew.
class GridFinder {
 public:
  struct Hit {
    std::int32_t row = 0;
    std::int32_t col = 0;
    auto operator<=>(const Hit&) const = default;
  };
  // More hits than anybody steps through are counted no further.
  static constexpr std::size_t kMostHits = 100'000;

  // REQUIRES: CanFind(text).
  GridFinder(const Grid& grid, std::string_view text);
  // False for a text that holds nothing to look for.
  static bool CanFind(std::string_view text);

  // Looks through some rows more; true when all are.
  bool Step(std::int32_t rows);
  // The first row that hasn't been looked through.
  std::int32_t NextRow() const { return next_; }
  const std::vector<Hit>& Hits() const { return hits_; }
  bool Marks(std::string_view cell) const { return search_.FoundIn(cell); }

  // The first hit behind a cell or, backwards, the last before it; from the other end if there is
  // none. Empty without hits.
  std::optional<std::size_t> NextFrom(Hit cell, bool forward) const;

 private:
  const Grid& grid_;
  CellSearch search_;
  std::vector<std::int32_t> columns_;
  std::vector<Hit> hits_;
  std::int32_t next_;
};

}  // namespace vorek

#endif  // VOREK_GRID_GRID_FINDER_H_
