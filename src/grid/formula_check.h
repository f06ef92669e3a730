#ifndef VOREK_GRID_FORMULA_CHECK_H_
#define VOREK_GRID_FORMULA_CHECK_H_

#include <string_view>

namespace vorek {

// True if a formula raises something behind a minus to a power that has a fraction, as in
// 100-16^0.5: the minus is taken for the sign of what is raised, a negative number has no such
// power, and both vanish from the formula, which is then 100.
bool RaisesNegativeToFraction(std::string_view formula);

}  // namespace vorek

#endif  // VOREK_GRID_FORMULA_CHECK_H_
