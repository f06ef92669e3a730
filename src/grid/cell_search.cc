#include "grid/cell_search.h"

#include <algorithm>

#include "text/cell_text.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::string_view kDropped = "()/";
constexpr std::u32string_view kOfNumbers = U"0123456789.-+e";
// The commonest first.
constexpr std::u32string_view kCommon = U" 01ایرنمدهتو23456789بسلaeinorts";

std::size_t Byte(char c) { return static_cast<unsigned char>(c); }

bool IsDropped(char c) { return kDropped.find(c) != std::string_view::npos; }

// Back to the byte with which the character at `at` begins.
std::size_t Begin(std::string_view text, std::size_t at) {
  while (at > 0 && (Byte(text[at]) & 0xC0U) == 0x80U) --at;
  return at;
}

std::size_t Rarity(char32_t letter) { return std::min(kCommon.find(letter), kCommon.size()); }

}  // namespace

CellSearch::CellSearch(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    possible_ = possible_ && !IsDropped(text[at]);
    letters_ += text::FoldLetter(text::DecodeAt(text, at));
  }
  for (std::size_t i = 1; i < letters_.size(); ++i) {
    if (Rarity(letters_[i]) > Rarity(letters_[anchor_])) anchor_ = i;
  }
  fits_numbers_ = letters_.find_first_not_of(kOfNumbers) == std::u32string::npos;
  // Of the letters beyond none folds to another one.
  constexpr char32_t kFolding = 0x2000;
  for (char32_t letter = 0; letter < kFolding; ++letter) NoteSpelling(letter);
  NoteSpelling(letters_[anchor_]);
  stops_[Byte('(')] = true;
}

void CellSearch::NoteSpelling(char32_t letter) {
  if (text::FoldLetter(letter) != letters_[anchor_]) return;
  std::string spelling;
  text::AppendUtf8(spelling, letter);
  stops_[Byte(spelling.back())] = true;
}

bool CellSearch::FoundIn(std::string_view cell) const {
  if (!possible_) return false;
  const std::string_view text = text::TrimView(cell);
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!stops_[Byte(text[at])]) continue;
    // With a bracket in it the text may be a negative number.
    if (text[at] == '(') return Holds(UnformatNumber(text));
    if (StandsAround(text, at) && text.find('(', at) == std::string_view::npos) {
      return true;
    }
  }
  return false;
}

bool CellSearch::Holds(std::string_view plain) const {
  for (std::size_t at = 0; at < plain.size(); ++at) {
    if (stops_[Byte(plain[at])] && StandsAround(plain, at)) return true;
  }
  return false;
}

bool CellSearch::StandsAround(std::string_view text, std::size_t anchor) const {
  std::size_t at = Begin(text, anchor);
  for (std::size_t before = anchor_; before > 0; --before) {
    do {
      if (at == 0) return false;
      at = Begin(text, at - 1);
    } while (IsDropped(text[at]));
  }
  for (const char32_t letter : letters_) {
    while (at < text.size() && IsDropped(text[at])) ++at;
    if (at == text.size() || text::FoldLetter(text::DecodeAt(text, at)) != letter) return false;
  }
  return true;
}

std::int32_t CellSearch::FindRow(const Grid& grid, std::int32_t column, std::int32_t from,
                                 bool hidden_rows) const {
  const bool heights = !hidden_rows && grid.RowHeightsDiffer();
  std::string scratch;
  for (std::int32_t row = from; row < grid.Rows(); ++row) {
    grid.AskAt(row);
    if (heights && grid.RowHeight(row) == 0) continue;
    if (!fits_numbers_ && grid.IsNumber(row, column)) continue;
    if (FoundIn(grid.CellPlain(row, column, scratch))) return row;
  }
  return -1;
}

}  // namespace vorek
