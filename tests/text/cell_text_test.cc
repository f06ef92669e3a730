#include "text/cell_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "text/number.h"
#include "vorek/error.h"

namespace vorek {
namespace {

TEST(CellText, ReadsNumbersOffCells) {
  const struct {
    const char* text;
    double value;
  } cases[] = {{"(1/234.50)", -1234.5},
               {"", 0},
               {"abc", 0},
               {"12abc", 12},
               {"1385/02/14", 13850214},
               {"(12abc)", 12},
               {" 1/234/567 ", 1234567},
               {"-5", -5},
               {"()", 0},
               {"(-5)", 5},
               {"(1E5)", -100000},
               {"(1.5e-2)", -0.015},
               {"(1E5x)", 100000},
               {"(2E)", 2}};
  for (const auto& c : cases) EXPECT_EQ(CellNumber(c.text), c.value) << c.text;
  EXPECT_EQ(UnformatNumber("(1/234.50)"), "-1234.5");
  EXPECT_EQ(UnformatNumber("(abc)"), "abc");
}

TEST(CellText, CountsCellsInTenThousandths) {
  const struct {
    const char* text;
    FixedPoint value;
  } cases[] = {{"", 0},
               {"(1/234.5)", -12345000},
               {"1385/02/14", 138502140000},
               {"0.00005", 0},
               {"0.00015", 2},
               {"-0.00015", -2},
               {"0.000050001", 1},
               {"12abc", 120000},
               {"1E5", 1000000000},
               {"(-5)", 50000},
               {"900719925474.0993", 9007199254740993},
               {"922337203685477.5807", INT64_MAX},
               {"-922337203685477.5808", INT64_MIN},
               {"922337203685477.58074", INT64_MAX}};
  for (const auto& c : cases) EXPECT_EQ(CellFixedPoint(c.text), c.value) << c.text;
  for (const char* beyond :
       {"922337203685477.5808", "-922337203685477.5809", "922337203685477.58075", "1E20"}) {
    EXPECT_THROW(CellFixedPoint(beyond), Error) << beyond;
  }
}

TEST(CellText, GroupsDigits) {
  const struct {
    FixedPoint value;
    const char* text;
  } cases[] = {{123, "123"},          {1234, "1/234"},        {12345, "12/345"},
               {123456, "123/456"},   {1234567, "1/234/567"}, {-1234, "-1/234"},
               {-123456, "-123/456"}, {-12, "-12"},           {0, "0"},
               {-123, "-123"}};
  for (const auto& c : cases) EXPECT_EQ(GroupDigits(c.value * 10000), c.text);
}

TEST(CellText, FormatsMoney) {
  const struct {
    std::string text;
    const char* shown;
  } cases[] = {{"", ""},
               {"  ", ""},
               {"txtMoney", ""},
               {"1234567", "1/234/567"},
               {"-1234567.5", "(1/234/567.5)"},
               {"-0.5", "0.5"},
               {".25", "0.25"},
               {"1/234/5", "12/345"},
               {"007", "7"},
               {"abc", "0"},
               {"12.3.4", "12.3.4"},
               {"(5)", "0"},
               {"922337203685477", "922/337/203/685/477"},
               {"-999999999999999.9", ""}};
  for (auto c : cases) {
    if (c.text == "-999999999999999.9") {
      EXPECT_THROW(FormatMoney(c.text), Error);
      continue;
    }
    EXPECT_EQ(FormatMoney(c.text), c.shown);
    EXPECT_EQ(c.text, c.shown);
  }
}

// Every scale, with numbers of all lengths, at the ends of their ranges, whole and not.
TEST(CellText, MakesMoneyOfScaledNumbersAsOfTheirTexts) {
  std::mt19937_64 random(1);
  std::vector<std::int64_t> values = {0,
                                      1,
                                      -1,
                                      -9999,
                                      10000,
                                      -10000,
                                      99999999999999,
                                      100000000000000,
                                      999999999999999999,
                                      1000000000000000000,
                                      INT64_MAX,
                                      INT64_MIN};
  for (int i = 0; i < 20000; ++i) {
    const auto number = static_cast<std::int64_t>(random()) >> (i % 64);
    values.push_back(number);
    values.push_back(number / 10000 * 10000);
  }
  for (const std::int64_t value : values) {
    for (const int scale : {0, 1, 2, 4, 18}) {
      std::string plain;
      text::AppendScaled(value, scale, plain);
      std::string at_once = "x";
      std::string by_text = "x";
      try {
        AppendMoney(plain, by_text);
      } catch (const Error&) {
        EXPECT_THROW(AppendScaledMoney(value, scale, at_once), Error) << plain;
        continue;
      }
      AppendScaledMoney(value, scale, at_once);
      ASSERT_EQ(at_once, by_text) << plain;
    }
  }
}

TEST(CellText, TellsAndShowsTimes) {
  const struct {
    int type;
    const char* name;
    bool time;
  } cases[] = {{3, "زمان", true},       {3, " زمان ", true},      {3, "زمان ورود", true},
               {3, "کل زمان", true},    {3, "کل زمان کار", true}, {3, "زمانبندی", false},
               {3, "EntryCTIME", true}, {3, "CTimes", false},     {20, "زمان", false}};
  for (const auto& c : cases) EXPECT_EQ(IsTimeColumn(c.type, c.name), c.time) << c.name;
  EXPECT_EQ(MinutesToTime(125), "02:05");
  EXPECT_EQ(MinutesToTime(6000), "100:00");
  EXPECT_EQ(TimeToMinutes("02:05"), 125);
  EXPECT_EQ(TimeToMinutes("90.5"), 90);
}

}  // namespace
}  // namespace vorek
