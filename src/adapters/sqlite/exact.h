#ifndef VOREK_ADAPTERS_SQLITE_EXACT_H_
#define VOREK_ADAPTERS_SQLITE_EXACT_H_

#include <sqlite3.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Exact numbers of up to 38 digits, counted in units of their last decimal place. In SQLite such a
// number is an integer as long as it goes into 63 bits, so that two equal ones are equal there, and
// 16 bytes beyond that, whose order among themselves is that of the numbers.
namespace vorek::sqlite {

// A GCC and Clang type; nothing else here is wider than 64 bits.
__extension__ typedef __int128 Wide;
__extension__ typedef unsigned __int128 Unsigned;

inline constexpr int kMostDigits = 38;

// 10^exponent. REQUIRES: 0 <= exponent <= 38.
Wide WidePower(int exponent);
// True for up to so many digits.
bool HasDigits(Wide value, int digits);

// value * factor * 10^step / divisor, rounded half away from zero or cut off; none if the result
// has more than 38 digits. REQUIRES: divisor != 0, |step| <= 100; a negative step doesn't round.
std::optional<Wide> Scale(Wide value, Wide factor, int step, Wide divisor, bool rounds);

// None for a value that isn't an exact number: one that has left 63 bits where none may.
std::optional<Wide> WideOf(sqlite3_value* value);
// The bytes that every exact number can be ordered by, and that big ones are kept as.
std::string OrderedBytes(Wide value);
// The same of bytes that were read; none unless there are 16.
std::optional<Wide> WideOfBytes(std::string_view bytes);
void ResultWide(sqlite3_context* context, Wide value);
// The number as SQLite's SQL writes it.
std::string WideSql(Wide value);

// "-12.50": all places of the scale.
std::string WideText(Wide value, int scale);

// A decimal's text: sign, digits, perhaps a point and digits; those behind the scale round the last
// unit.
struct DecimalText {
  bool well_formed = false;
  bool fits = false;  // into 38 digits
  Wide units = 0;
};
DecimalText ReadDecimal(std::string_view s, int scale);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_EXACT_H_
