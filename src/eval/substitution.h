#ifndef VOREK_EVAL_SUBSTITUTION_H_
#define VOREK_EVAL_SUBSTITUTION_H_

#include <string>
#include <string_view>

#include "eval/keyed_list.h"
#include "vorek/evaluation.h"

namespace vorek {

// The formula in upper case with the values of the variables in it, as plain texts and without
// brackets; each variable has one. A name counts where no letter, digit or "_" adjoins it. A text
// that grows far beyond what a calculation takes is left unfinished.
std::string SustituyeVar(std::string_view formula, const KeyedList<VariableClass>& variables);

}  // namespace vorek

#endif  // VOREK_EVAL_SUBSTITUTION_H_
