#ifndef VOREK_TEXT_NUMBER_H_
#define VOREK_TEXT_NUMBER_H_

#include <cstdint>
#include <string>
#include <string_view>

// Between texts and numbers, the same in every locale.
namespace vorek::text {

// The number at the head of a text: blanks in front are skipped, then come an optional sign,
// digits, one ".", an optional exponent; blanks between them are passed over, reading stops at the
// first other character. A text without such a head is 0; one beyond a double's range is the
// largest double of its sign.
double NumericPrefix(std::string_view s);

// A number as plain text: at most 15 significant digits, "." as the decimal point, "-" in front of
// a negative one, no digit groups, no trailing zeros. From 1E+15 on in exponent form (1E+20), while
// the smallest number still has plain decimals (0.000015), so that a formula can go on with it.
// Not-a-number and infinity, which no rule makes, give "0".
std::string PlainNumber(double value);
void AppendPlainNumber(double value, std::string& out);

// The number at the head of a text as NumericPrefix reads it, as plain text digit for digit: no
// sign but "-", no zeros in front of the digits or behind the decimals. Only a head with an
// exponent goes over PlainNumber. A text without a head gives "0".
void AppendExactNumber(std::string_view s, std::string& out);
std::string ExactNumber(std::string_view s);

// The double that is written as a single is: 0.1, where the bare conversion gives 0.10000000149.
double DoubleOf(float value);

// Half goes to the even neighbour: 0.5 gives 0, 1.5 gives 2.
double RoundHalfEven(double value);

// RoundHalfEven held to the range of a 32-bit number. Throws Error(kOverflow) beyond it.
std::int32_t ToInt32(double value);

// Trimmed empty text gives -1, any other its numeric prefix as ToInt32 gives it.
std::int32_t TextToNumber(std::string_view s);

// A whole number of 10 to the power of -scale units as text: 12500 at scale 4 gives 1.25.
void AppendScaled(std::int64_t value, int scale, std::string& out);

}  // namespace vorek::text

#endif  // VOREK_TEXT_NUMBER_H_
