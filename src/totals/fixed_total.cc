#include "totals/fixed_total.h"

#include <array>

#include "text/number.h"

namespace vorek {
namespace {

constexpr std::size_t kPlaces = 4;

}  // namespace

std::string FixedTotal::Text() const {
  const bool negative = high_ < 0;
  auto high = static_cast<std::uint64_t>(high_);
  std::uint64_t low = low_;
  if (negative) {
    low = 0 - low;
    high = ~high + (low == 0 ? 1 : 0);
  }
  // Long division by ten, in limbs of 32 bits from the highest.
  std::array<std::uint64_t, 4> limbs = {high >> 32U, high & 0xFFFFFFFFU, low >> 32U,
                                        low & 0xFFFFFFFFU};
  std::string digits;
  while (limbs[0] != 0 || limbs[1] != 0 || limbs[2] != 0 || limbs[3] != 0 ||
         digits.size() <= kPlaces) {
    std::uint64_t rest = 0;
    for (std::uint64_t& limb : limbs) {
      const std::uint64_t value = (rest << 32U) | limb;
      limb = value / 10;
      rest = value % 10;
    }
    digits.insert(digits.begin(), static_cast<char>('0' + rest));
  }
  digits.insert(digits.end() - kPlaces, '.');
  return text::ExactNumber((negative ? "-" : "") + digits);
}

double FixedTotal::Value() const { return text::NumericPrefix(Text()); }

}  // namespace vorek
