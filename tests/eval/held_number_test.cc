#include "eval/held_number.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include "eval/number_text.h"
#include "text/number.h"

namespace vorek {
namespace {

std::uint64_t Bits(double x) { return std::bit_cast<std::uint64_t>(x); }

void Check(double x) {
  for (const double value : {x, -x}) {
    const double expected = TextNumber(NumberText(value)) + 0.0;
    ASSERT_EQ(Bits(HoldDigits(value)), Bits(expected))
        << text::PlainNumber(value) << std::hexfloat << " " << value;
  }
}

TEST(HeldNumber, IsWhatItsTextReads) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> unit(0, 1);
  for (int i = 0; i < 40000; ++i) {
    const double magnitude = std::pow(10, std::floor(unit(random) * 40) - 15);
    Check(unit(random) * magnitude);
    Check(std::floor(unit(random) * 1e6) / 1e4 * std::floor(unit(random) * 1e5) / 1e2);
    Check(std::bit_cast<double>(random() & 0x7FDFFFFFFFFFFFFFU));
  }
}

TEST(HeldNumber, AtTheEdges) {
  for (int power = -320; power <= 300; ++power) {
    const double ten = std::pow(10, power);
    for (const double x : {ten, std::nextafter(ten, 0), std::nextafter(ten, 1e308), ten * 0.5,
                           ten * 9.999999999999995, ten * 9.99999999999999, ten * 1.5}) {
      Check(x);
    }
  }
  // Ties at the sixteenth digit: halves of a unit are exact while the number is large.
  for (int i = 0; i < 20000; ++i) {
    Check(100000000000000.0 + i + 0.5);
    Check(10000000000000.0 + i / 10.0 + 0.0625);
    Check(2000000000000.125 + i / 8.0);
    Check(200000000000.0625 + i / 16.0);
  }
  for (const double x : {0.0, 999999999999999.4, 999999999999999.5, 999999999999999.6, 5e-324}) {
    Check(x);
  }
}

TEST(HeldNumber, RoundsToSixPlacesTiesToEven) {
  const struct {
    double value;
    double rounded;
  } cases[] = {{0.0078125, 0.007812},
               {0.0234375, 0.023438},
               {-0.0078125, -0.007812},
               {1e300, 1e300},
               {9007199254.7409915, 9007199254.740992},
               {0.0000004, 0},
               {1.0 / 3, 0.333333}};
  for (const auto& c : cases) EXPECT_EQ(RoundToSix(c.value), c.rounded);
}

TEST(HeldNumber, NearestWholeIsHalfEven) {
  for (const double x : {0.5, 1.5, 2.5, -0.5, -3.5, 0.49999999999999994, 4503599627370495.5,
                         4503599627370497.0, 1e300}) {
    EXPECT_EQ(NearestWhole(x), text::RoundHalfEven(x)) << x;
  }
}

}  // namespace
}  // namespace vorek
