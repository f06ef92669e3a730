#include "grid/formula_check.h"

#include <cstddef>
#include <string>

namespace vorek {
namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

std::string WithoutBlanks(std::string_view formula) {
  std::string text;
  for (const char c : formula) {
    if (c != ' ' && c != '\t' && c != '\r' && c != '\n') text += c;
  }
  return text;
}

bool IsOperandCharacter(char c) {
  return (c >= '0' && c <= '9') || c == '.' || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
         c == '_' || c == '@';
}

// Where the operand that ends in front of `end` begins, brackets and a function's name included.
std::size_t OperandBegin(std::string_view text, std::size_t end) {
  std::size_t begin = end;
  int depth = 0;
  while (begin > 0) {
    const char c = text[begin - 1];
    if (c == ')') {
      ++depth;
    } else if (c == '(') {
      if (--depth < 0) return begin;
    } else if (depth == 0 && !IsOperandCharacter(c)) {
      return begin;
    }
    --begin;
  }
  return begin;
}

// The operand behind a "^": a number, or all of a bracket.
std::string_view Power(std::string_view text, std::size_t begin) {
  std::size_t end = begin;
  int depth = 0;
  for (; end < text.size(); ++end) {
    if (text[end] == '(') ++depth;
    if (text[end] == ')' && --depth < 0) break;
    if (depth == 0 && text[end] != ')' && !IsOperandCharacter(text[end])) break;
  }
  return text.substr(begin, end - begin);
}

bool HasFraction(std::string_view power) {
  const std::size_t point = power.find('.');
  const bool decimals = point != kNowhere && power.find_first_of("123456789", point) != kNowhere;
  return decimals || power.find('/') != kNowhere;
}

}  // namespace

bool RaisesNegativeToFraction(std::string_view formula) {
  const std::string text = WithoutBlanks(formula);
  for (std::size_t at = text.find('^'); at != kNowhere; at = text.find('^', at + 1)) {
    const std::size_t begin = OperandBegin(text, at);
    const bool behind_minus = begin > 0 && text[begin - 1] == '-';
    if (behind_minus && HasFraction(Power(text, at + 1))) return true;
  }
  return false;
}

}  // namespace vorek
