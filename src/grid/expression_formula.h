#ifndef VOREK_GRID_EXPRESSION_FORMULA_H_
#define VOREK_GRID_EXPRESSION_FORMULA_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "eval/formula_template.h"

// The formula of a calculated column, in which C and a grid column's number stand for the number in
// that column of the same row, P and a number for that in the row above.
namespace vorek {

struct ColumnReference {
  std::int32_t column;
  bool above;

  bool operator==(const ColumnReference&) const = default;
};

// The formula for one row: for each column from the highest down, C and P references give way to
// the plain text of the number that `read` gives. In the first row there is no row above, and a P
// reference vanishes with the operator or bracket at its side.
using ReferenceReader = std::function<double(ColumnReference)>;
std::string ReplaceReferences(std::string formula, std::int32_t columns, bool first_row,
                              const ReferenceReader& read);

// The formula for the first row with its C references left in place.
std::string FirstRowText(std::string formula, std::int32_t columns);

// A formula for rows below the first with its references as places: slot n is references[n].
struct ReferenceTemplate {
  FormulaTemplate formula;
  std::vector<ColumnReference> references;
};

// None for a formula in which a number that is put in could make a new reference with the text in
// front of it (CC1, C1C20): only ReplaceReferences does it right.
std::optional<ReferenceTemplate> FindReferences(std::string_view formula, std::int32_t columns);

// The grid column that a text begins with, of those below `columns`, as far as its digits go; the
// count of these digits is the result, 0 for none.
std::size_t ColumnDigits(std::string_view text, std::int32_t columns, std::int32_t& column);

}  // namespace vorek

#endif  // VOREK_GRID_EXPRESSION_FORMULA_H_
