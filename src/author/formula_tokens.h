#ifndef VOREK_AUTHOR_FORMULA_TOKENS_H_
#define VOREK_AUTHOR_FORMULA_TOKENS_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorek {

// A piece of the formula of a calculated column.
struct FormulaToken {
  enum class Kind {
    kNumber,
    kExponent,   // 1E3: digits with an E
    kReference,  // C or P with digits
    kFunction,   // "@" with a name
    kName,       // any other word
    kOperator,
    kOpen,
    kClose,
    kComma,
    kOther,  // one character that a formula doesn't know
  } kind;
  std::string text;
  std::size_t begin;  // bytes
};
// All but blanks, tabs and line breaks.
std::vector<FormulaToken> ScanFormula(std::string_view formula);

}  // namespace vorek

#endif  // VOREK_AUTHOR_FORMULA_TOKENS_H_
