#ifndef VOREK_EVAL_PREPARED_FORMULA_H_
#define VOREK_EVAL_PREPARED_FORMULA_H_

#include <optional>
#include <span>

#include "eval/formula_program.h"
#include "eval/formula_template.h"
#include "eval/number_text.h"
#include "vorek/evaluation.h"

namespace vorek {

// A formula that is computed for many rows of numbers. Analysed once, it's computed without making
// text; where that can't be proved equal, its text goes through the evaluator.
class PreparedFormula {
 public:
  // evaluation has to outlive it.
  PreparedFormula(EvaluationClass& evaluation, FormulaTemplate formula);

  // What the evaluator's AnalizaExpr gives for the filled template, to the last bit; the evaluator
  // has its code afterwards. values holds a number for each slot.
  WorkingValue Evaluate(std::span<const double> values);

  // Computes without text. False, and nothing changed, if it has to go through the text.
  bool EvaluateWithoutText(std::span<const double> values, double& value);

  const FormulaTemplate& Template() const { return formula_; }
  // True if there are numbers for which no text is needed.
  bool IsPrepared() const { return program_.has_value(); }

 private:
  EvaluationClass& evaluation_;
  FormulaTemplate formula_;
  std::optional<FormulaProgram> program_;
  // Rows like those that needed their text will need it as well: after each such row so many of the
  // next ones go to the text at once, at most kMostPassed.
  int to_pass_ = 0;
  int passed_last_ = 0;
  static constexpr int kMostPassed = 63;
};

}  // namespace vorek

#endif  // VOREK_EVAL_PREPARED_FORMULA_H_
