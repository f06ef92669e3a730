#ifndef VOREK_EVAL_LIMITS_H_
#define VOREK_EVAL_LIMITS_H_

#include <cstddef>
#include <cstdint>

// What a calculation may take, so that each formula ends in a time that grows with its length.
namespace vorek {

// Characters of a working text, beyond which the code is kTooLong.
inline constexpr std::size_t kMostCharacters = 32767;
// No text of that many characters has more bytes.
inline constexpr std::size_t kMostBytes = 4 * kMostCharacters;

// Brackets, arguments and bodies of user functions inside each other; beyond, kTooDeep.
inline constexpr int kMostNested = 250;

// Characters gone through over all steps, with what a step costs besides; beyond, kTooDeep. The
// longest formula of operators needs half of it, so only user functions that call one another over
// and over come to it.
inline constexpr std::uint64_t kMostWork = std::uint64_t{1} << 30U;
inline constexpr std::uint64_t kStepWork = 1024;

}  // namespace vorek

#endif  // VOREK_EVAL_LIMITS_H_
