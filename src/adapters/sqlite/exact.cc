#include "adapters/sqlite/exact.h"

#include <algorithm>
#include <array>
#include <limits>

namespace vorek::sqlite {
namespace {

constexpr int kBytes = 16;
constexpr Unsigned kSign = Unsigned{1} << 127U;

Unsigned Magnitude(Wide value) {
  return value < 0 ? Unsigned{0} - static_cast<Unsigned>(value) : static_cast<Unsigned>(value);
}

// A number of 256 bits, the lowest limb first.
class Product {
 public:
  explicit Product(Unsigned value)
      : limbs_{static_cast<std::uint64_t>(value), static_cast<std::uint64_t>(value >> 64U), 0, 0} {}

  // False if the product doesn't fit.
  bool Multiply(Unsigned factor) {
    const std::array<std::uint64_t, 4> value = limbs_;
    const auto low = static_cast<std::uint64_t>(factor);
    const auto high = static_cast<std::uint64_t>(factor >> 64U);
    limbs_ = {};
    return Add(value, low, 0) && Add(value, high, 1);
  }

  // Leaves the remainder in `remainder`; none if the quotient doesn't go into 127 bits.
  std::optional<Unsigned> Divide(Unsigned divisor, Unsigned& remainder) const {
    Unsigned quotient = 0;
    remainder = 0;
    for (int bit = 255; bit >= 0; --bit) {
      const auto at = static_cast<unsigned>(bit);
      if (quotient >= kSign >> 1U) return std::nullopt;
      remainder = (remainder << 1U) | ((limbs_[at / 64] >> (at % 64)) & 1U);
      quotient <<= 1U;
      if (remainder >= divisor) {
        remainder -= divisor;
        quotient |= 1U;
      }
    }
    return quotient;
  }

 private:
  // Adds value * factor * 2^(64 shift).
  bool Add(const std::array<std::uint64_t, 4>& value, std::uint64_t factor, std::size_t shift) {
    Unsigned carry = 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
      const Unsigned piece = Unsigned{value[i]} * factor + carry;
      if (i + shift >= limbs_.size()) {
        if (piece != 0) return false;
        continue;
      }
      const Unsigned sum = Unsigned{limbs_[i + shift]} + static_cast<std::uint64_t>(piece);
      limbs_[i + shift] = static_cast<std::uint64_t>(sum);
      carry = (piece >> 64U) + (sum >> 64U);
    }
    return carry == 0;
  }

  std::array<std::uint64_t, 4> limbs_;
};

std::optional<Unsigned> ScaleMagnitude(Unsigned value, Unsigned factor, int step, Unsigned divisor,
                                       bool rounds) {
  Product product(value);
  if (!product.Multiply(factor)) return std::nullopt;
  for (int rest = step; rest > 0; rest -= kMostDigits) {
    const int digits = std::min(rest, kMostDigits);
    if (!product.Multiply(static_cast<Unsigned>(WidePower(digits)))) return std::nullopt;
  }
  Unsigned remainder = 0;
  std::optional<Unsigned> quotient = product.Divide(divisor, remainder);
  if (quotient && rounds && remainder >= divisor - remainder) ++*quotient;
  for (int rest = -step; quotient && rest > 0; rest -= kMostDigits) {
    *quotient /= static_cast<Unsigned>(WidePower(std::min(rest, kMostDigits)));
  }
  return quotient;
}

}  // namespace

Wide WidePower(int exponent) {
  Wide value = 1;
  for (int i = 0; i < exponent; ++i) value *= 10;
  return value;
}

bool HasDigits(Wide value, int digits) {
  const Wide power = WidePower(std::min(digits, kMostDigits));
  return value < power && value > -power;
}

std::optional<Wide> Scale(Wide value, Wide factor, int step, Wide divisor, bool rounds) {
  Wide product = 0;
  const bool small = step >= 0 && step <= 18 && !__builtin_mul_overflow(value, factor, &product) &&
                     !__builtin_mul_overflow(product, WidePower(step), &product);
  if (small) {
    Wide quotient = product / divisor;
    const Unsigned rest = Magnitude(product % divisor);
    if (rounds && rest >= Magnitude(divisor) - rest) {
      quotient += (product < 0) == (divisor < 0) ? 1 : -1;
    }
    if (!HasDigits(quotient, kMostDigits)) return std::nullopt;
    return quotient;
  }
  const std::optional<Unsigned> magnitude =
      ScaleMagnitude(Magnitude(value), Magnitude(factor), step, Magnitude(divisor), rounds);
  if (!magnitude || *magnitude >= kSign) return std::nullopt;
  const auto result = static_cast<Wide>(*magnitude);
  if (!HasDigits(result, kMostDigits)) return std::nullopt;
  const bool negative = ((value < 0) != (factor < 0)) != (divisor < 0);
  return negative ? -result : result;
}

std::optional<Wide> WideOf(sqlite3_value* value) {
  const int type = sqlite3_value_type(value);
  if (type == SQLITE_INTEGER) return Wide{sqlite3_value_int64(value)};
  if (type != SQLITE_BLOB) return std::nullopt;
  const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
  return WideOfBytes({bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))});
}

std::string OrderedBytes(Wide value) {
  const Unsigned biased = static_cast<Unsigned>(value) ^ kSign;
  std::string bytes(kBytes, '\0');
  for (unsigned i = 0; i < kBytes; ++i) {
    bytes[i] = static_cast<char>(static_cast<unsigned char>(biased >> (8 * (kBytes - 1 - i))));
  }
  return bytes;
}

std::optional<Wide> WideOfBytes(std::string_view bytes) {
  if (bytes.size() != kBytes) return std::nullopt;
  Unsigned biased = 0;
  for (const char c : bytes) biased = (biased << 8U) | static_cast<unsigned char>(c);
  return static_cast<Wide>(biased ^ kSign);
}

void ResultWide(sqlite3_context* context, Wide value) {
  using Limits = std::numeric_limits<std::int64_t>;
  if (value >= Limits::min() && value <= Limits::max()) {
    return sqlite3_result_int64(context, static_cast<std::int64_t>(value));
  }
  const std::string bytes = OrderedBytes(value);
  sqlite3_result_blob(context, bytes.data(), kBytes, SQLITE_TRANSIENT);
}

std::string WideSql(Wide value) {
  using Limits = std::numeric_limits<std::int64_t>;
  if (value >= Limits::min() && value <= Limits::max()) return WideText(value, 0);
  std::string sql = "x'";
  for (const char c : OrderedBytes(value)) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    sql += kDigits[static_cast<unsigned char>(c) >> 4U];
    sql += kDigits[static_cast<unsigned char>(c) & 15U];
  }
  return sql + "'";
}

std::string WideText(Wide value, int scale) {
  std::string digits;
  for (Unsigned rest = Magnitude(value); rest != 0; rest /= 10) {
    digits += static_cast<char>('0' + static_cast<int>(rest % 10));
  }
  const auto places = static_cast<std::size_t>(scale);
  if (digits.size() <= places) digits.append(places + 1 - digits.size(), '0');
  std::reverse(digits.begin(), digits.end());
  if (places > 0) digits.insert(digits.size() - places, ".");
  return value < 0 ? "-" + digits : digits;
}

DecimalText ReadDecimal(std::string_view s, int scale) {
  DecimalText result;
  const bool negative = !s.empty() && s.front() == '-';
  if (!s.empty() && (s.front() == '-' || s.front() == '+')) s.remove_prefix(1);
  result.fits = true;
  int places = -1;  // read behind the point, -1 in front of it
  bool any = false;
  bool round_up = false;
  const auto push = [&](int digit) {
    result.fits = result.fits && HasDigits(result.units, kMostDigits - 1);
    if (result.fits) result.units = result.units * 10 + digit;
  };
  for (const char c : s) {
    if (c == '.' && places < 0) {
      places = 0;
      continue;
    }
    if (c < '0' || c > '9') return result;
    any = true;
    if (places >= 0 && places == scale) {
      round_up = c >= '5';
      ++places;
    } else if (places < scale) {
      push(c - '0');
      if (places >= 0) ++places;
    }
  }
  if (!any) return result;
  result.well_formed = true;
  for (int place = std::max(places, 0); place < scale; ++place) push(0);
  if (round_up) ++result.units;
  result.fits = result.fits && HasDigits(result.units, kMostDigits);
  if (negative) result.units = -result.units;
  return result;
}

}  // namespace vorek::sqlite
