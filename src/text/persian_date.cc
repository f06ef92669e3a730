#include "text/persian_date.h"

#include <algorithm>
#include <array>

#include "text/gregorian_date.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::text {
namespace {

// Years in which the 33-year rhythm of leap years breaks.
constexpr std::array<int, 20> kBreaks = {-61,  9,    38,   199,  426,  686,  756,
                                         818,  1111, 1181, 1210, 1635, 2060, 2097,
                                         2192, 2262, 2324, 2394, 2456, 3178};

struct YearFacts {
  int since_leap;      // years since the last leap year, 0 to 4
  int gregorian_year;  // in which the Persian year begins
  int march_day;       // the day of March of its first day
};

YearFacts Facts(int year) {
  int leap_count = -14;
  int begin = kBreaks[0];
  int jump = 0;
  for (std::size_t i = 1; i < kBreaks.size(); ++i) {
    jump = kBreaks[i] - begin;
    if (year < kBreaks[i]) break;
    leap_count += jump / 33 * 8 + jump % 33 / 4;
    begin = kBreaks[i];
  }
  int n = year - begin;
  leap_count += n / 33 * 8 + (n % 33 + 3) / 4;
  if (jump % 33 == 4 && jump - n == 4) ++leap_count;
  const int gregorian_year = year + 621;
  const int gregorian_leaps = gregorian_year / 4 - (gregorian_year / 100 + 1) * 3 / 4 - 150;
  if (jump - n < 6) n = n - jump + (jump + 4) / 33 * 33;
  int since = ((n + 1) % 33 - 1) % 4;
  if (since == -1) since = 4;
  return {since, gregorian_year, 20 + leap_count - gregorian_leaps};
}

std::int64_t DayNumber(const CalendarDate& date) {
  return GregorianDay(date.year, date.month, date.day);
}

CalendarDate FromDayNumber(std::int64_t day) {
  const std::chrono::year_month_day date = GregorianDateOf(day);
  return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day()))};
}

[[noreturn]] void NoSuchDate(const CalendarDate& date) {
  throw Error(ErrorNumber::kInvalidCall, "There is no date " + DateText(date));
}

// The digit's value, -1 for another character.
int DigitOf(char32_t c) {
  for (const char32_t zero : {U'0', U'\u06F0', U'\u0660'}) {
    if (c >= zero && c <= zero + 9) return static_cast<int>(c - zero);
  }
  return -1;
}

std::string Padded(int value, std::size_t digits) {
  std::string text = std::to_string(value);
  return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

}  // namespace

bool IsPersianLeapYear(int year) { return Facts(year).since_leap == 0; }

int PersianMonthLength(int year, int month) {
  if (month <= 6) return 31;
  return month < 12 || IsPersianLeapYear(year) ? 30 : 29;
}

bool IsPersianDate(const CalendarDate& date) {
  return date.year >= 1 && date.year <= kLastPersianYear && date.month >= 1 && date.month <= 12 &&
         date.day >= 1 && date.day <= PersianMonthLength(date.year, date.month);
}

bool IsGregorianDate(const CalendarDate& date) {
  if (date.year < 1 || date.year > 9999 || date.month < 1 || date.month > 12) return false;
  return date.day >= 1 && date.day <= GregorianMonthLength(date.year, date.month);
}

CalendarDate ToGregorian(const CalendarDate& persian) {
  if (!IsPersianDate(persian)) NoSuchDate(persian);
  const YearFacts facts = Facts(persian.year);
  const std::int64_t first = DayNumber({facts.gregorian_year, 3, facts.march_day});
  const std::int64_t month = persian.month - 1;
  return FromDayNumber(first + month * 30 + std::min<std::int64_t>(month, 6) + persian.day - 1);
}

CalendarDate ToPersian(const CalendarDate& gregorian) {
  if (!IsGregorianDate(gregorian)) NoSuchDate(gregorian);
  const std::int64_t day = DayNumber(gregorian);
  int year = gregorian.year - 621;
  YearFacts facts = Facts(year);
  if (day < DayNumber({facts.gregorian_year, 3, facts.march_day})) facts = Facts(--year);
  if (year < 1 || year > kLastPersianYear) NoSuchDate(gregorian);
  const auto of_year =
      static_cast<int>(day - DayNumber({facts.gregorian_year, 3, facts.march_day}));
  if (of_year < 186) return {year, of_year / 31 + 1, of_year % 31 + 1};
  return {year, (of_year - 186) / 30 + 7, (of_year - 186) % 30 + 1};
}

int PersianWeekday(const CalendarDate& gregorian) {
  const std::chrono::weekday day{std::chrono::sys_days(std::chrono::days(DayNumber(gregorian)))};
  return static_cast<int>((day.c_encoding() + 1) % 7);
}

std::string DateText(const CalendarDate& date) {
  return Padded(date.year, 4) + "/" + Padded(date.month, 2) + "/" + Padded(date.day, 2);
}

std::optional<CalendarDate> ParseDate(std::string_view text) {
  std::array<int, 3> parts{};
  std::array<int, 3> digits{};
  std::size_t part = 0;
  const std::string_view trimmed = TrimView(text);
  for (std::size_t at = 0; at < trimmed.size();) {
    const char32_t c = DecodeAt(trimmed, at);
    const int digit = DigitOf(c);
    if (digit >= 0) {
      parts[part] = parts[part] * 10 + digit;
      if (++digits[part] > (part == 0 ? 4 : 2)) return std::nullopt;
    } else if ((c != U'/' && c != U'-') || digits[part] == 0 || ++part > 2) {
      return std::nullopt;
    }
  }
  if (part != 2 || digits[2] == 0) return std::nullopt;
  return CalendarDate{parts[0], parts[1], parts[2]};
}

}  // namespace vorek::text
