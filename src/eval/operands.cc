#include "eval/operands.h"

#include "eval/number_text.h"
#include "eval/signs.h"

namespace vorek {
namespace {

bool IsDigitOrPoint(char c) { return (c >= '0' && c <= '9') || c == '.'; }
bool IsNumberCharacter(char c) { return IsDigitOrPoint(c) || c == '-' || IsBlank(c); }

Operand Between(std::string_view text, std::size_t begin, std::size_t end) {
  return {TextNumber(text.substr(begin, end - begin)), begin, end};
}

}  // namespace

Operand OperandoIzquierdo(std::string_view text, std::size_t at) {
  std::size_t begin = at;
  while (begin > 0 && IsNumberCharacter(text[begin - 1])) {
    --begin;
    if (text[begin] == '-') break;
  }
  return Between(text, begin, at);
}

Operand OperandoDerecho(std::string_view text, std::size_t at) {
  std::size_t end = at + 1;
  bool seen = false;
  for (; end < text.size() && IsNumberCharacter(text[end]); ++end) {
    const char c = text[end];
    const bool last = end + 1 == text.size();
    if (c == '-' && seen && !last) break;
    if (!IsBlank(c)) seen = true;
  }
  return Between(text, at + 1, end);
}

bool NumberEndsBefore(std::string_view text, std::size_t at) {
  while (at > 0 && IsBlank(text[at - 1])) --at;
  return at > 0 && IsDigitOrPoint(text[at - 1]);
}

}  // namespace vorek
