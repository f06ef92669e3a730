#include "text/number.h"

#include <gtest/gtest.h>

#include "vorek/error.h"

namespace vorek::text {
namespace {

TEST(NumberText, ReadsTheNumberAtTheHead) {
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"", 0},
      {"abc", 0},
      {"12abc", 12},
      {"  -12.50", -12.5},
      {"1 234 5", 12345},
      {"3.5.2", 3.5},
      {"1E3x", 1000},
      {"1e", 1},
      {".5", 0.5},
      {"-", 0},
      {"+7", 7},
      {"--7", 0},
      {"1E-400", 0},
      {"13850214", 13850214},
      {"12345678901234567890", 12345678901234567890.0},
  };
  for (const auto& c : cases) EXPECT_EQ(NumericPrefix(c.text), c.value) << c.text;
}

TEST(NumberText, WritesFifteenDigits) {
  const struct {
    double value;
    const char* text;
  } cases[] = {
      {0, "0"},
      {-0.0, "0"},
      {12.5, "12.5"},
      {1e14, "100000000000000"},
      {1e15, "1E+15"},
      {1.5e16, "1.5E+16"},
      {1e-7, "0.0000001"},
      {-1.5e-5, "-0.000015"},
      {1.0 / 30000, "0.0000333333333333333"},
      {1.0 / 3, "0.333333333333333"},
      {0.1 + 0.2, "0.3"},
      {-1234567.25, "-1234567.25"},
      {999999999999999.9, "1E+15"},
  };
  for (const auto& c : cases) EXPECT_EQ(PlainNumber(c.value), c.text);
}

TEST(NumberText, RoundsHalfToEvenAndHoldsTheRange) {
  EXPECT_EQ(RoundHalfEven(0.5), 0);
  EXPECT_EQ(RoundHalfEven(1.5), 2);
  EXPECT_EQ(RoundHalfEven(-0.5), 0);
  EXPECT_EQ(RoundHalfEven(-2.5), -2);
  EXPECT_EQ(TextToNumber("   "), -1);
  EXPECT_EQ(TextToNumber("abc"), 0);
  EXPECT_EQ(TextToNumber("2.5x"), 2);
  EXPECT_THROW(TextToNumber("3000000000"), Error);
}

TEST(NumberText, WritesScaledWholeNumbers) {
  const struct {
    std::int64_t value;
    int scale;
    const char* text;
  } cases[] = {{12500, 4, "1.25"}, {-5, 4, "-0.0005"},
               {70000, 4, "7"},    {0, 4, "0"},
               {-12, 0, "-12"},    {INT64_MIN, 4, "-922337203685477.5808"},
               {10, 4, "0.001"},   {100000, 4, "10"},
               {100, 2, "1"},      {1000000, 18, "0.000000000001"},
               {123, 3, "0.123"},  {-90, 1, "-9"},
               {1010, 4, "0.101"}};
  for (const auto& c : cases) {
    std::string out;
    AppendScaled(c.value, c.scale, out);
    EXPECT_EQ(out, c.text);
  }
}

TEST(Number, KeepsEveryDigitOfAnExactText) {
  const struct {
    const char* text;
    const char* exact;
  } cases[] = {{"6037991234567890", "6037991234567890"},
               {"0012.500", "12.5"},
               {" -12345678901234567890.10 rials", "-12345678901234567890.1"},
               {"+5", "5"},
               {"-0.00", "0"},
               {"-.5", "-0.5"},
               {"7.", "7"},
               {"1 000", "1000"},
               {"1E3", "1000"},
               {"1e-2x", "0.01"},
               {"", "0"},
               {"abc", "0"}};
  for (const auto& c : cases) EXPECT_EQ(ExactNumber(c.text), c.exact) << c.text;
}

}  // namespace
}  // namespace vorek::text
