#ifndef VOREK_EVAL_FORMULA_PROGRAM_H_
#define VOREK_EVAL_FORMULA_PROGRAM_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "eval/built_in.h"

namespace vorek {

// A well-formed formula as its parts, in flat tables that refer to one another by index.
struct FormulaProgram {
  enum class Kind : std::uint8_t { kLiteral, kPlace, kGroup, kCall };

  // A number: a literal, a place, a bracket or a call of a built-in function.
  struct Primary {
    Kind kind = Kind::kLiteral;
    bool negated = false;         // a "-" that is its sign stands in front
    bool never_negative = false;  // a place whose value's sign would meet more than one sign
    bool opens = false;           // a negated place at the front of an expression: --5 is 5
    BuiltIn function = BuiltIn::kAbs;
    double literal = 0;
    std::uint32_t index = 0;  // the slot, or the expression inside; kNoArgument for a call without
  };

  // A number with the powers behind it: base ^ power ^ power.
  struct Factor {
    char sign = '*';  // "*" or "/"; without meaning for the first factor of a term
    Primary base;
    std::uint32_t first_power = 0;  // in powers
    std::uint32_t powers = 0;
  };

  struct Term {
    bool minus = false;  // the operator in front is "-"; false for the first term
    std::uint32_t first_factor = 0;
    std::uint32_t factors = 0;
  };

  struct Expression {
    std::uint32_t first_term = 0;
    std::uint32_t terms = 0;
  };

  static constexpr std::uint32_t kNoArgument = UINT32_MAX;

  std::vector<Primary> powers;
  std::vector<Factor> factors;
  std::vector<Term> terms;
  std::vector<Expression> expressions;
  std::uint32_t root = 0;  // in expressions
};

}  // namespace vorek

#endif  // VOREK_EVAL_FORMULA_PROGRAM_H_
