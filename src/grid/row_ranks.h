#ifndef VOREK_GRID_ROW_RANKS_H_
#define VOREK_GRID_ROW_RANKS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "grid/cell.h"

namespace vorek {

// Sorts rows by their texts, of which many may be equal: a sort key (text/collation.h) is made once
// a distinct text, and rows are moved by its rank.
class RowRanks {
 public:
  explicit RowRanks(std::size_t rows);

  // The text of the next row. It's copied unless it stays, that is, lives as long as this does.
  // Gives a number that equal texts share.
  std::uint32_t Add(std::string_view text, bool stays);

  // The rows from 0 in their order; those with equal keys stay as they came.
  std::vector<std::uint32_t> Sorted(bool ignore_case, bool descending) const;

 private:
  std::size_t SlotOf(std::string_view text, std::size_t hash) const;
  void Grow();
  std::vector<std::uint32_t> Ranks(bool ignore_case, bool descending) const;

  std::vector<std::uint32_t> ids_;       // of each row's text
  std::vector<std::string_view> texts_;  // by id
  std::vector<std::uint32_t> slots_;     // an open hash table of ids plus 1, at most half full
  TextArena copies_;
};

// The rows of a grid in their new order, for Grid::Rearrange: the fixed ones, then those below them
// as they were sorted.
std::vector<std::int32_t> BehindFixedRows(std::int32_t fixed,
                                          const std::vector<std::uint32_t>& sorted);

}  // namespace vorek

#endif  // VOREK_GRID_ROW_RANKS_H_
