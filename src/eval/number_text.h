#ifndef VOREK_EVAL_NUMBER_TEXT_H_
#define VOREK_EVAL_NUMBER_TEXT_H_

#include <optional>
#include <string>
#include <string_view>

// The numbers of a formula. Between two steps each of them is a text of at most 15 significant
// digits, so that NumberText and TextNumber are part of the arithmetic.
namespace vorek {

// The last thing that was computed; none at first.
using WorkingValue = std::optional<double>;

// The empty text for no value. Plain decimals below 1E+15, exponent form from there on.
std::string NumberText(const WorkingValue& value);

// The number at the front of a text, 0 without one.
double TextNumber(std::string_view text);

// True if NumberText of the value is in exponent form, so that it holds "E+".
bool HasExponentForm(double value);

// To six decimal places, a tie to the even digit.
double RoundToSix(double value);

}  // namespace vorek

#endif  // VOREK_EVAL_NUMBER_TEXT_H_
