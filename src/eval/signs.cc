#include "eval/signs.h"

#include <array>
#include <cstddef>

namespace vorek {
namespace {

struct Pair {
  char first;
  char second;
  char folded;
};

constexpr std::array kPairs = {Pair{'+', '+', '+'}, Pair{'+', '-', '-'}, Pair{'-', '+', '-'},
                               Pair{'-', '-', '+'}};

// Folds the leftmost pair again and again. The folded sign can make a pair with its right
// neighbour, and never one with its left neighbour that wasn't there before.
void Fold(std::string& text, const Pair& pair) {
  std::size_t length = 0;
  for (const char c : text) {
    if (length > 0 && text[length - 1] == pair.first && c == pair.second) {
      text[length - 1] = pair.folded;
    } else {
      text[length++] = c;
    }
  }
  text.resize(length);
}

}  // namespace

std::string FoldSigns(std::string_view formula) {
  std::string text;
  text.reserve(formula.size());
  for (const char c : formula) {
    if (!IsBlank(c)) text += c;
  }
  for (const Pair& pair : kPairs) Fold(text, pair);
  return text;
}

}  // namespace vorek
