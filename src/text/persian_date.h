#ifndef VOREK_TEXT_PERSIAN_DATE_H_
#define VOREK_TEXT_PERSIAN_DATE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The Persian (solar Hijri) calendar, computed for the years 1 to 3177.
//
// Leap years follow the break points that K. M. Borkowski, "The Persian calendar for 3000 years",
// Earth, Moon and Planets 74 (1996), 223-230, derived from the vernal equinox at Tehran.
namespace vorek::text {

struct CalendarDate {
  int year = 1;
  int month = 1;  // 1 to 12
  int day = 1;    // 1 to 31

  bool operator==(const CalendarDate&) const = default;
};

constexpr int kLastPersianYear = 3177;

bool IsPersianLeapYear(int year);
// 31, 30 or 29. REQUIRES: a year from 1 to kLastPersianYear, a month from 1 to 12.
int PersianMonthLength(int year, int month);
bool IsPersianDate(const CalendarDate& date);
bool IsGregorianDate(const CalendarDate& date);

// Throw Error(kInvalidCall) for a date that doesn't exist or lies outside the calendar's range.
CalendarDate ToPersian(const CalendarDate& gregorian);
CalendarDate ToGregorian(const CalendarDate& persian);

// 0 Saturday to 6 Friday, for a Gregorian date.
int PersianWeekday(const CalendarDate& gregorian);

// "1404/09/03": four, two and two digits.
std::string DateText(const CalendarDate& date);
// Reads year, month and day of one to four, one or two and one or two digits, Latin, Persian or
// Arabic, with "/" or "-" between. Nothing is said about the date's existence.
std::optional<CalendarDate> ParseDate(std::string_view text);

}  // namespace vorek::text

#endif  // VOREK_TEXT_PERSIAN_DATE_H_
