#ifndef VOREK_EVAL_FORMULA_ANALYSIS_H_
#define VOREK_EVAL_FORMULA_ANALYSIS_H_

#include <optional>

#include "eval/formula_program.h"
#include "eval/formula_template.h"

namespace vorek {

// Takes a template apart if it's well-formed: numbers, places, brackets and built-in functions with
// one operator between each two of them, a sign in front where a number may have one. None for
// everything else (text that stands together, exponents, variables, user functions, stray
// brackets) and for templates of unusual size, which only the rewriting of text computes.
std::optional<FormulaProgram> AnalyzeFormula(const FormulaTemplate& formula);

}  // namespace vorek

#endif  // VOREK_EVAL_FORMULA_ANALYSIS_H_
