#ifndef VOREK_EVAL_SIGNS_H_
#define VOREK_EVAL_SIGNS_H_

#include <string>
#include <string_view>

namespace vorek {

// Blanks, tabs and ends of lines: they say nothing in a formula.
inline bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// A formula as the calculation begins with it: without blanks, and with pairs of signs folded. The
// pairs "++", "+-", "-+" and "--" are folded in this order, each until none is left and none of
// them twice, so that "---" becomes "+-".
std::string FoldSigns(std::string_view formula);

}  // namespace vorek

#endif  // VOREK_EVAL_SIGNS_H_
