#ifndef VOREK_GRID_ROW_RANKS_H_
#define VOREK_GRID_ROW_RANKS_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "grid/cell.h"

namespace vorek {

// Sorts rows by their texts, of which many may be equal: a sort key (text/collation.h) is made once
// a distinct text, and rows are moved by its rank.
class RowRanks {
 public:
  // keeps_equal: equal texts get one number, however many distinct ones there are.
  explicit RowRanks(std::size_t rows, bool keeps_equal = false);

  // The text of the next row. It's copied unless it stays, that is, lives as long as this does.
  // Gives the text's number, which equal texts share where they are kept so.
  std::uint32_t Add(std::string_view text, bool stays);

  // The next row has the text of that number again.
  void Repeat(std::uint32_t id) { ids_.push_back(id); }

  // The rows from 0 in their order; those with equal keys stay as they came. `ask` is called now
  // and then; it throws to stop the work. No text may be added afterwards.
  using Ask = std::function<void()>;
  std::vector<std::uint32_t> Sorted(bool ignore_case, bool descending, const Ask& ask);

 private:
  std::size_t SlotOf(std::string_view text, std::size_t hash) const;
  void Grow();
  void Remember(std::size_t slot);
  std::vector<std::uint32_t> Ranks(bool ignore_case, bool descending, const Ask& ask);

  std::vector<std::uint32_t> ids_;       // of each row's text
  std::vector<std::string_view> texts_;  // by id
  std::vector<std::uint32_t> slots_;     // an open hash table of ids plus 1, at most half full
  TextArena copies_;
  bool keeps_equal_;
  bool looks_up_ = true;
};

// The places of the numbers from 0 in ascending order, of equal ones as they came. REQUIRES: no
// not-a-number.
std::vector<std::uint32_t> SortedNumbers(const std::vector<double>& numbers, bool descending);

// The rows of a grid in their new order, for Grid::Rearrange: the fixed ones, then those below them
// as they were sorted.
std::vector<std::int32_t> BehindFixedRows(std::int32_t fixed,
                                          const std::vector<std::uint32_t>& sorted);

}  // namespace vorek

#endif  // VOREK_GRID_ROW_RANKS_H_
