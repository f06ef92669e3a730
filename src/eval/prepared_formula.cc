#include "eval/prepared_formula.h"

#include <algorithm>
#include <utility>

#include "eval/evaluation_state.h"
#include "eval/formula_analysis.h"
#include "eval/program_run.h"

namespace vorek {

PreparedFormula::PreparedFormula(EvaluationClass& evaluation, FormulaTemplate formula)
    : evaluation_(evaluation), formula_(std::move(formula)), program_(AnalyzeFormula(formula_)) {}

WorkingValue PreparedFormula::Evaluate(std::span<const double> values) {
  double value = 0;
  if (to_pass_ > 0) {
    --to_pass_;
  } else if (EvaluateWithoutText(values, value)) {
    passed_last_ = 0;
    return value;
  } else {
    to_pass_ = passed_last_ = std::min(2 * passed_last_ + 1, kMostPassed);
  }
  evaluation_.Expresion(formula_.Fill(values));
  const DynamicValue result = evaluation_.AnalizaExpr();
  return result.IsNumber() ? WorkingValue(result.Number()) : std::nullopt;
}

// A variable without a value refuses each formula, and a variable may have any name, a number's
// too.
bool PreparedFormula::EvaluateWithoutText(std::span<const double> values, double& value) {
  EvaluationClass::State& state = *evaluation_.state_;
  if (!program_ || state.variables.Size() > 0) return false;
  return ProgramRun(*program_, values).Run(value, state.code);
}

}  // namespace vorek
