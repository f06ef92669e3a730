#ifndef VOREK_GRID_CELL_SEARCH_H_
#define VOREK_GRID_CELL_SEARCH_H_

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "grid/grid.h"

namespace vorek {

// A text that is looked for in cells. A cell is read as UnformatNumber reads it, without brackets
// and digit groups; what a reader takes for the same letter or digit is the same (FoldLetter).
class CellSearch {
 public:
  // REQUIRES: the text isn't empty.
  explicit CellSearch(std::string_view text);

  bool FoundIn(std::string_view cell) const;
  // False if no number can hold the text.
  bool FitsNumbers() const { return fits_numbers_; }

  // The first row from `from` on whose cell in the column holds the text, -1 if none does.
  std::int32_t FindRow(const Grid& grid, std::int32_t column, std::int32_t from,
                       bool hidden_rows) const;

 private:
  void NoteSpelling(char32_t letter);
  bool Holds(std::string_view plain) const;
  // The letter that ends at this byte is the anchor of the whole text.
  bool StandsAround(std::string_view text, std::size_t at) const;

  std::u32string letters_;  // folded
  std::size_t anchor_ = 0;  // the letter that cells are looked through for: a rare one
  bool possible_ = true;    // no cell holds a bracket or a stroke
  bool fits_numbers_ = false;
  // By byte: the last byte of a spelling of the anchor, or an opening bracket.
  std::array<bool, 256> stops_{};
};

}  // namespace vorek

#endif  // VOREK_GRID_CELL_SEARCH_H_
