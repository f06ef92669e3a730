#include "text/persian_date.h"

#include <array>

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

// Days of the proleptic Gregorian calendar, day 0 being 1 March of the year 0 (H. Hinnant,
// "chrono-Compatible Low-Level Date Algorithms").
std::int64_t DayNumber(const CalendarDate& date) {
  const std::int64_t year = date.month <= 2 ? date.year - 1 : date.year;
  const std::int64_t month = date.month > 2 ? date.month - 3 : date.month + 9;
  return year * 365 + year / 4 - year / 100 + year / 400 + (153 * month + 2) / 5 + date.day - 1;
}

CalendarDate FromDayNumber(std::int64_t days) {
  const std::int64_t era = days / 146097;
  const std::int64_t of_era = days % 146097;
  const std::int64_t year = (of_era - of_era / 1460 + of_era / 36524 - of_era / 146096) / 365;
  const std::int64_t of_year = of_era - (365 * year + year / 4 - year / 100);
  const std::int64_t month = (5 * of_year + 2) / 153;
  const std::int64_t day = of_year - (153 * month + 2) / 5 + 1;
  const std::int64_t civil_month = month < 10 ? month + 3 : month - 9;
  return {static_cast<int>(year + era * 400 + (civil_month <= 2 ? 1 : 0)),
          static_cast<int>(civil_month), static_cast<int>(day)};
}

bool IsGregorianLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

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
  constexpr std::array<int, 12> kLengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (date.year < 1 || date.year > 9999 || date.month < 1 || date.month > 12) return false;
  const bool long_february = date.month == 2 && IsGregorianLeapYear(date.year);
  const int length = kLengths[static_cast<std::size_t>(date.month - 1)] + (long_february ? 1 : 0);
  return date.day >= 1 && date.day <= length;
}

CalendarDate ToGregorian(const CalendarDate& persian) {
  if (!IsPersianDate(persian)) NoSuchDate(persian);
  const YearFacts facts = Facts(persian.year);
  const std::int64_t first = DayNumber({facts.gregorian_year, 3, facts.march_day});
  const int month = persian.month - 1;
  return FromDayNumber(first + month * 30 + (month < 6 ? month : 6) + persian.day - 1);
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
  // Day 0, 1 March of the year 0, was a Wednesday.
  return static_cast<int>((DayNumber(gregorian) + 4) % 7);
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
