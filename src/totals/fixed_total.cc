#include "totals/fixed_total.h"

#include <algorithm>
#include <array>

#include "text/number.h"

namespace vorek {
namespace {

constexpr std::size_t kPlaces = 4;

}  // namespace

void FixedTotal::Add(const FixedTotal& other) {
  const std::uint64_t before = low_;
  low_ += other.low_;
  high_ += other.high_ + (low_ < before ? 1 : 0);
}

FixedTotal FixedTotal::Negated() const {
  FixedTotal negated;
  negated.low_ = 0 - low_;
  negated.high_ =
      static_cast<std::int64_t>(~static_cast<std::uint64_t>(high_)) + (negated.low_ == 0 ? 1 : 0);
  return negated;
}

FixedTotal FixedTotal::AsShown() const {
  constexpr std::uint64_t kUnit = 10000;
  const bool sign_is_lost = high_ == -1 && low_ > 0 - kUnit;
  return sign_is_lost ? Negated() : *this;
}

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

std::string MoneyOfTotal(const std::string& plain) {
  const bool negative = plain.starts_with('-');
  const std::string digits = plain.substr(negative ? 1 : 0);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  std::string text = digits.substr(0, (point - 1) % 3 + 1);
  for (std::size_t at = text.size(); at < point; at += 3) text += "/" + digits.substr(at, 3);
  text += digits.substr(point);
  return negative && digits.front() != '0' ? "(" + text + ")" : text;
}

}  // namespace vorek
