#ifndef VOREK_EVAL_OPERANDS_H_
#define VOREK_EVAL_OPERANDS_H_

#include <cstddef>
#include <string_view>

// What an operator of the working text takes as its operands. Positions are bytes from 0: operators
// and numbers are ASCII, and a byte of any other character belongs to no operand.
namespace vorek {

struct Operand {
  double value = 0;
  std::size_t begin = 0;
  std::size_t end = 0;  // one behind the last character
};

// Leftwards from the operator at `at`: digits, "." and blanks, up to and with the first "-". Empty
// (begin == end == at) if the character in front of the operator is none of these.
// REQUIRES: 0 < at < text.size().
Operand OperandoIzquierdo(std::string_view text, std::size_t at);

// Rightwards from the operator at `at`: digits, "." and blanks, with a "-" in front of the first
// digit or "."; a further "-" ends it, save one at the very end of the text, which it takes along.
// REQUIRES: at < text.size().
Operand OperandoDerecho(std::string_view text, std::size_t at);

// True if a digit or "." is the last character before `at` that isn't a blank: a "-" at that place
// subtracts, otherwise it's a sign.
bool NumberEndsBefore(std::string_view text, std::size_t at);

}  // namespace vorek

#endif  // VOREK_EVAL_OPERANDS_H_
