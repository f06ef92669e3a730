#ifndef VOREK_EVAL_EVALUATION_CODE_H_
#define VOREK_EVAL_EVALUATION_CODE_H_

#include <cstdint>
#include <string_view>

// The numbers of CErr.
namespace vorek::evaluation_code {

inline constexpr std::int16_t kNone = 0;
inline constexpr std::int16_t kCharacters = 1;
inline constexpr std::int16_t kNoVariable = 2;
inline constexpr std::int16_t kNotNumeric = 3;
inline constexpr std::int16_t kNoValue = 4;
inline constexpr std::int16_t kNoFormula = 5;
inline constexpr std::int16_t kBrackets = 6;
inline constexpr std::int16_t kVariableExists = 7;
inline constexpr std::int16_t kDivisionByZero = 8;
inline constexpr std::int16_t kFunctionName = 9;
inline constexpr std::int16_t kDefinition = 10;
inline constexpr std::int16_t kNoFunction = 11;
inline constexpr std::int16_t kFunctionExists = 12;
inline constexpr std::int16_t kTooDeep = 13;
inline constexpr std::int16_t kTooLong = 14;

// The text of a number; empty from kTooDeep on and for numbers that aren't here.
std::string_view Description(std::int16_t code);

}  // namespace vorek::evaluation_code

#endif  // VOREK_EVAL_EVALUATION_CODE_H_
