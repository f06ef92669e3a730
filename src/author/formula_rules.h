#ifndef VOREK_AUTHOR_FORMULA_RULES_H_
#define VOREK_AUTHOR_FORMULA_RULES_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "author/finding.h"

namespace vorek {

// What is wrong with a formula of a calculated column.
struct FormulaFault {
  Rule rule;
  std::size_t at = 0;  // a byte of the formula
  std::vector<std::string> values = {};
};

// What a formula may name.
struct FormulaScope {
  std::optional<std::int32_t> last_column;  // of the grid; nothing if that isn't known
  std::int32_t own_column = 0;              // of the formula; 0 if that isn't known
  // True for a user function, by its name in upper case with its "@".
  std::function<bool(const std::string&)> is_user_function = nullptr;
};

std::vector<FormulaFault> FindFormulaFaults(const std::string& formula, const FormulaScope& scope);

}  // namespace vorek

#endif  // VOREK_AUTHOR_FORMULA_RULES_H_
