#include "eval/name_scan.h"

#include <cstddef>

#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::size_t kFirstLooked = 127;

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

bool IsNameCharacter(char c) { return IsLetter(c) || IsDigit(c) || c == '_'; }

void ForEachVariableName(std::string_view formula,
                         const std::function<void(std::string_view name)>& found) {
  bool in_number = false;
  for (std::size_t at = 0; at < formula.size();) {
    const char c = formula[at];
    if (!IsLetter(c) || in_number) {
      in_number = IsDigit(c) || c == '.';
      ++at;
      continue;
    }
    const std::size_t begin = at;
    while (at < formula.size() && IsNameCharacter(formula[at])) ++at;
    const bool function = begin > 0 && formula[begin - 1] == '@';
    if (!function) found(formula.substr(begin, at - begin));
    in_number = false;
  }
}

bool ValidaCaracteres(std::string_view text) {
  if (text.size() < kFirstLooked) return true;
  for (std::size_t at = text::ByteOffset(text, kFirstLooked - 1); at < text.size();) {
    const char32_t c = text::DecodeAt(text, at);
    if (at < text.size() && c > 127) return false;
  }
  return true;
}

}  // namespace vorek
