#ifndef VOREK_EVAL_NAME_SCAN_H_
#define VOREK_EVAL_NAME_SCAN_H_

#include <functional>
#include <string_view>

namespace vorek {

// Calls `found` with each variable name of a formula, as written and from left to right. A name is
// a letter A to Z that isn't directly behind a digit or ".", with the letters, digits and "_"
// behind it; the name of a function ("@" in front) is no variable.
void ForEachVariableName(std::string_view formula,
                         const std::function<void(std::string_view name)>& found);

// False if a character from the 127th up to, but not including, the last one is beyond ASCII.
// Shorter texts always pass.
bool ValidaCaracteres(std::string_view text);

// A letter A to Z in any case, a digit or "_".
bool IsNameCharacter(char c);

}  // namespace vorek

#endif  // VOREK_EVAL_NAME_SCAN_H_
