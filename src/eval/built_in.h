#ifndef VOREK_EVAL_BUILT_IN_H_
#define VOREK_EVAL_BUILT_IN_H_

#include <optional>
#include <string_view>

namespace vorek {

enum class BuiltIn { kAbs, kAtn, kCos, kExp, kLog, kSgn, kSin, kSqr, kTan, kPi };

// By the name in upper case with its "@".
std::optional<BuiltIn> FindBuiltIn(std::string_view name);

// Both set result and return true, or leave it as it was and return false where there is no value:
// @LOG(0), @SQR(-4), 0 or a negative number to a power that it hasn't, a division by zero, an
// overflow.
bool ApplyBuiltIn(BuiltIn function, double argument, double& result);
// sign is "^", "*", "/", "+" or "-"; a quotient is rounded to six places.
bool ApplyOperator(char sign, double left, double right, double& result);

}  // namespace vorek

#endif  // VOREK_EVAL_BUILT_IN_H_
