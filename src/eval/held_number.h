#ifndef VOREK_EVAL_HELD_NUMBER_H_
#define VOREK_EVAL_HELD_NUMBER_H_

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

namespace vorek {

// The nearest whole number, a tie to the even one. Relies on the processor's default rounding.
inline double NearestWhole(double x) {
  constexpr double kNoFraction = 4503599627370496.0;  // 2^52: a double has no fraction from here on
  const double magnitude = std::fabs(x);
  if (!(magnitude < kNoFraction)) return x;
  return std::copysign((magnitude + kNoFraction) - kNoFraction, x);
}

// Below 1E+15, a number whose text of 15 digits has to be made and read.
double HoldDigitsByText(double x);

// What is left of a number once it was a text of 15 significant digits: TextNumber(NumberText(x))
// to the last bit, with 0 for -0. REQUIRES: x is finite.
//
// A whole number below 1E+15 is its own text. Any other number is scaled to 15 digits before the
// point, rounded and scaled back: the digits and the power of ten are exact as doubles, so that the
// one division rounds as reading the text does. The product is off by less than half a unit of its
// last place, and its fraction is a multiple of that unit: only a fraction of exactly one half can
// stand on either side of the tie, and the product's error tells which.
inline double HoldDigits(double x) {
  constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  const double magnitude = std::fabs(x);
  if (!(magnitude < 1e15)) return HoldDigitsByText(x);
  if (NearestWhole(magnitude) == magnitude) return x + 0.0;
  if (magnitude < 1e-6) return HoldDigitsByText(x);
  const int exponent = static_cast<int>(std::bit_cast<std::uint64_t>(magnitude) >> 52U) - 1023;
  // 15 places less the digits in front of the point; 1233 / 4096 is the logarithm of 2.
  auto places = static_cast<std::size_t>(14 - ((exponent * 1233) >> 12));
  if (magnitude * kPowers[places] >= 1e15) --places;
  const double product = magnitude * kPowers[places];
  double digits = NearestWhole(product);
  const double fraction = product - digits;
  if (std::fabs(fraction) == 0.5) {
    const double error = std::fma(magnitude, kPowers[places], -product);
    if (fraction > 0 && error > 0) digits += 1;
    if (fraction < 0 && error < 0) digits -= 1;
  }
  return std::copysign(digits / kPowers[places], x);
}

}  // namespace vorek

#endif  // VOREK_EVAL_HELD_NUMBER_H_
