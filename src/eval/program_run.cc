#include "eval/program_run.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "eval/evaluation_code.h"
#include "eval/held_number.h"
#include "eval/number_text.h"

namespace vorek {
namespace {

constexpr std::size_t kMostTerms = 64;

// Holds a result to its 15 digits; false if it would be in exponent form, or isn't a number.
bool Hold(double computed, double& value) {
  if (!(std::fabs(computed) < 1e15)) return false;
  value = HoldDigits(computed);
  return std::fabs(value) < 1e15;
}

}  // namespace

bool ProgramRun::Run(double& value, std::int16_t& code) {
  if (!Expression(program_.root, value)) return false;
  value += 0.0;
  code = divided_by_zero_ ? evaluation_code::kDivisionByZero : evaluation_code::kNone;
  return true;
}

bool ProgramRun::Expression(std::uint32_t index, double& value) {
  const Program::Expression& expression = program_.expressions[index];
  std::array<Summand, kMostTerms> summands;
  ++depth_;
  for (std::uint32_t i = 0; i < expression.terms; ++i) {
    const Program::Term& term = program_.terms[expression.first_term + i];
    if (!Term(term, i == 0, summands[i])) return false;
  }
  --depth_;
  return Sum({summands.data(), expression.terms}, value);
}

// From left to right; but behind a number with an own sign the additions come first, and each takes
// the "-" in front of its left number as that number's sign.
bool ProgramRun::Sum(std::span<Summand> summands, double& value) {
  std::size_t first = 0;
  while (first + 1 < summands.size()) {
    std::size_t right = first + 1;
    if (std::signbit(summands[first].value)) {
      while (right < summands.size() && summands[right].minus) ++right;
      if (right == summands.size()) right = first + 1;
    }
    if (right == first + 1) {
      if (!AddFirst(summands[first], summands[right])) return false;
      ++first;
      continue;
    }
    if (!AddInside(summands[right - 1], summands[right])) return false;
    std::move(summands.begin() + static_cast<std::ptrdiff_t>(right) + 1, summands.end(),
              summands.begin() + static_cast<std::ptrdiff_t>(right));
    summands = summands.first(summands.size() - 1);
  }
  value = summands[first].value;
  return true;
}

bool ProgramRun::AddFirst(const Summand& first, Summand& second) {
  const double sum = second.minus ? first.value - second.value : first.value + second.value;
  return Hold(sum, second.value);
}

// left has a "-" in front, right a "+". A result that isn't negative gets a "+" in front.
bool ProgramRun::AddInside(Summand& left, const Summand& right) {
  const bool took_minus = !std::signbit(left.value);
  double sum = 0;
  if (!Hold((took_minus ? -left.value : left.value) + right.value, sum)) return false;
  left.minus = std::signbit(sum);
  left.value = took_minus ? std::fabs(sum) : sum;
  return true;
}

bool ProgramRun::Term(const Program::Term& term, bool first, Summand& summand) {
  const Program::Factor& base = program_.factors[term.first_factor];
  summand.minus = term.minus;
  summand.empty_sign = false;
  if (!Primary(base.base, summand.value)) return false;
  // The sign of a place's number is folded with the operator in front of it.
  const bool place = base.base.kind == Program::Kind::kPlace && !base.base.negated;
  if (place && !first && std::signbit(summand.value)) {
    summand.minus = !summand.minus;
    summand.value = -summand.value;
  }
  if (base.powers > 0 && !Raise(base, summand)) return false;
  for (std::uint32_t i = 1; i < term.factors; ++i) {
    if (!Multiply(program_.factors[term.first_factor + i], first, summand)) return false;
  }
  return true;
}

// A "-" in front of the first number of a product is taken for its sign, and gives way to a "+" if
// the product isn't negative.
bool ProgramRun::Multiply(const Program::Factor& factor, bool first, Summand& summand) {
  double right = 0;
  if (!Factor(factor, right)) return false;
  const bool took_minus = summand.minus && !std::signbit(summand.value);
  const bool inner_sign = !first && std::signbit(summand.value);
  const double left = took_minus ? -summand.value : summand.value;
  double product = 0;
  if (factor.sign == '*') {
    if (!Hold(left * right, product)) return false;
  } else if (right != 0) {
    if (!Hold(RoundToSix(left / right), product)) return false;
  } else {
    if (depth_ > 1) return false;
    divided_by_zero_ = true;
  }
  const bool negative = std::signbit(product);
  if (took_minus) {
    summand.minus = negative;
    product = std::fabs(product);
  } else if (inner_sign && !negative) {
    summand.minus = false;
    summand.empty_sign = true;
  } else if (negative && summand.empty_sign) {
    return false;
  }
  summand.value = product;
  return true;
}

bool ProgramRun::Factor(const Program::Factor& factor, double& value) {
  Summand summand{};
  if (!Primary(factor.base, summand.value)) return false;
  if (factor.powers > 0 && !Raise(factor, summand)) return false;
  value = summand.value;
  return true;
}

// A "-" in front of the base is taken for its sign, and stands there again afterwards.
bool ProgramRun::Raise(const Program::Factor& factor, Summand& summand) {
  for (std::uint32_t i = 0; i < factor.powers; ++i) {
    double power = 0;
    if (!Primary(program_.powers[factor.first_power + i], power)) return false;
    const bool took_minus = summand.minus && !std::signbit(summand.value);
    double result = 0;
    if (!ApplyOperator('^', took_minus ? -summand.value : summand.value, power, result) ||
        !Hold(result, summand.value)) {
      return false;
    }
    if (took_minus) summand.value = std::fabs(summand.value);
  }
  return true;
}

bool ProgramRun::Primary(const Program::Primary& primary, double& value) {
  switch (primary.kind) {
    case Program::Kind::kLiteral:
      value = primary.literal;
      break;
    case Program::Kind::kPlace:
      if (!Hold(values_[primary.index], value)) return false;
      break;
    case Program::Kind::kGroup:
      if (!Expression(primary.index, value)) return false;
      value += 0.0;
      break;
    case Program::Kind::kCall:
      if (!Call(primary, value)) return false;
      break;
  }
  const bool negative = std::signbit(value);
  if (negative && primary.never_negative) return false;
  if (!primary.negated) return true;
  // Two signs in front fold into a plus, which says nothing at the front of an expression.
  if (negative && !primary.opens) return false;
  value = -value;
  return true;
}

bool ProgramRun::Call(const Program::Primary& primary, double& value) {
  double argument = 0;
  if (primary.index != Program::kNoArgument && !Expression(primary.index, argument)) return false;
  double result = argument;
  ApplyBuiltIn(primary.function, argument, result);
  return Hold(result, value);
}

}  // namespace vorek
