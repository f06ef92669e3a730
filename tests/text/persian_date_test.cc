#include "text/persian_date.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "vorek/error.h"

namespace vorek::text {
namespace {

TEST(PersianDate, BeginsEachYearWhereAnotherImplementationDoes) {
  std::ifstream table("tests/text/nowruz.txt");
  std::string line;
  int years = 0;
  while (std::getline(table, line)) {
    if (line.starts_with("#")) continue;
    int year = 0;
    std::string day;
    std::istringstream(line) >> year >> day;
    EXPECT_EQ(DateText(ToGregorian({year, 1, 1})), day) << year;
    ++years;
  }
  EXPECT_EQ(years, 457);
}

TEST(PersianDate, ConvertsEveryDayBothWays) {
  CalendarDate gregorian = ToGregorian({1, 1, 1});
  EXPECT_EQ(DateText(gregorian), "0622/03/22");
  int weekday = PersianWeekday(gregorian);
  for (int year = 1; year <= 3001; ++year) {
    for (int month = 1; month <= 12; ++month) {
      for (int day = 1; day <= PersianMonthLength(year, month); ++day) {
        const CalendarDate persian{year, month, day};
        ASSERT_EQ(ToGregorian(persian), gregorian) << DateText(persian);
        ASSERT_EQ(ToPersian(gregorian), persian) << DateText(persian);
        ASSERT_EQ(PersianWeekday(gregorian), weekday);
        weekday = (weekday + 1) % 7;
        if (!IsGregorianDate({gregorian.year, gregorian.month, ++gregorian.day})) {
          gregorian.day = 1;
          gregorian.month = gregorian.month % 12 + 1;
          if (gregorian.month == 1) ++gregorian.year;
        }
      }
    }
  }
}

TEST(PersianDate, KnowsTheLeapYearsAsPublished) {
  for (const int year : {1375, 1379, 1383, 1387, 1391, 1395, 1399, 1403, 1408, 1412}) {
    EXPECT_TRUE(IsPersianLeapYear(year)) << year;
    EXPECT_FALSE(IsPersianLeapYear(year + 1)) << year;
  }
  EXPECT_EQ(PersianWeekday({2026, 11, 24}), 3);  // a Tuesday
}

TEST(PersianDate, RejectsDatesThatDontExist) {
  for (const CalendarDate& date :
       {CalendarDate{1404, 12, 30}, CalendarDate{1404, 7, 31}, CalendarDate{1404, 13, 1},
        CalendarDate{0, 1, 1}, CalendarDate{3178, 1, 1}, CalendarDate{1404, 1, 0}}) {
    EXPECT_FALSE(IsPersianDate(date));
    EXPECT_THROW(ToGregorian(date), Error) << DateText(date);
  }
  EXPECT_THROW(ToPersian({2025, 2, 29}), Error);
  EXPECT_THROW(ToPersian({600, 1, 1}), Error);
  EXPECT_THROW(ToPersian({622, 3, 21}), Error);
}

TEST(PersianDate, ReadsDatesInThreeScripts) {
  const struct {
    const char* text;
    const char* date;  // null: no date
  } cases[] = {{"1404/9/3", "1404/09/03"}, {" ۱۴۰۴/۰۹/۰۳ ", "1404/09/03"},
               {"١٤٠٤-٩-٣", "1404/09/03"}, {"1404/9", nullptr},
               {"1404/9/3/1", nullptr},    {"14040/9/3", nullptr},
               {"1404/9/3x", nullptr},     {"", nullptr},
               {"/9/3", nullptr},          {"1404/123/1", nullptr}};
  for (const auto& c : cases) {
    const auto date = ParseDate(c.text);
    ASSERT_EQ(date.has_value(), c.date != nullptr) << c.text;
    if (date) {
      EXPECT_EQ(DateText(*date), c.date);
    }
  }
}

}  // namespace
}  // namespace vorek::text
