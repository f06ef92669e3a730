#ifndef VOREK_EVAL_PROGRAM_RUN_H_
#define VOREK_EVAL_PROGRAM_RUN_H_

#include <cstdint>
#include <span>

#include "eval/formula_program.h"

namespace vorek {

// Computes a program for the numbers of its places, without any text, as the rewriting of text
// would to the last bit. Returns false where it leaves that to the text: a number from 1E+15 on, a
// step that can't be computed, a division by zero inside a bracket, and signs that meet in an
// unusual way (2*-C5 for a negative C5).
//
// In the comments, a number's own sign is a "-" that its text begins with; it's the sign bit of the
// double, so that -0 stands for the text "-0". Each number is one that 15 digits hold (HoldDigits).
class ProgramRun {
 public:
  // values holds a number for each slot.
  ProgramRun(const FormulaProgram& program, std::span<const double> values)
      : program_(program), values_(values) {}

  // Sets value and code (0, or 8 for a division by zero).
  bool Run(double& value, std::int16_t& code);

 private:
  using Program = FormulaProgram;

  // A term as the text shows it between additions: the operator in front and the number.
  struct Summand {
    bool minus;
    // A sign that says nothing stands between the operator and the number. It's harmless as long
    // as the number has no own sign.
    bool empty_sign;
    double value;
  };

  bool Expression(std::uint32_t index, double& value);
  bool Sum(std::span<Summand> summands, double& value);
  bool Term(const Program::Term& term, bool first, Summand& summand);
  bool Multiply(const Program::Factor& factor, bool first, Summand& summand);
  bool Factor(const Program::Factor& factor, double& value);
  bool Raise(const Program::Factor& factor, Summand& summand);
  bool Primary(const Program::Primary& primary, double& value);
  bool Call(const Program::Primary& primary, double& value);

  static bool AddFirst(const Summand& first, Summand& second);
  static bool AddInside(Summand& left, const Summand& right);

  const FormulaProgram& program_;
  std::span<const double> values_;
  int depth_ = 0;
  bool divided_by_zero_ = false;
};

}  // namespace vorek

#endif  // VOREK_EVAL_PROGRAM_RUN_H_
