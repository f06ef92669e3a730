#include "adapters/sqlite/moment.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>

#include "text/gregorian_date.h"

namespace vorek::sqlite {
namespace {

constexpr std::int64_t kDay1900 = -25567;    // 1900-01-01 as <chrono> counts
constexpr std::int64_t kFirstDay = -693595;  // 0001-01-01
constexpr std::int64_t kLastDay = 2958463;   // 9999-12-31

constexpr std::array<std::string_view, 12> kMonths = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays = {
    "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};

std::int64_t FloorDiv(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

std::int64_t Months(const Moment& moment) {
  const Calendar date = CalendarOf(moment.day);
  return date.year * 12LL + date.month - 1;
}

// Monday is 0; 1900-01-01 was one.
std::int64_t Weekday(std::int64_t day) { return ((day % 7) + 7) % 7; }

std::int64_t IsoWeek(std::int64_t day) {
  const std::int64_t thursday = day - Weekday(day) + 3;
  const Calendar date = CalendarOf(thursday);
  return (thursday - DayOf({date.year, 1, 1})) / 7 + 1;
}

// Milliseconds of the parts that are multiples of one another; 0 for the others.
std::int64_t Unit(std::string_view part) {
  if (part == "week") return 7 * kDayMilliseconds;
  if (part == "day" || part == "dayofyear" || part == "weekday") return kDayMilliseconds;
  if (part == "hour") return 3600000;
  if (part == "minute") return 60000;
  if (part == "second") return 1000;
  if (part == "millisecond") return 1;
  return 0;
}

}  // namespace

Calendar CalendarOf(std::int64_t day) {
  const std::chrono::year_month_day date = text::GregorianDateOf(day + kDay1900);
  return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day()))};
}

std::int64_t DayOf(const Calendar& date) {
  return text::GregorianDay(date.year, date.month, date.day) - kDay1900;
}

std::int64_t PartOf(const Moment& moment, std::string_view part) {
  const Calendar date = CalendarOf(moment.day);
  if (part == "year") return date.year;
  if (part == "quarter") return (date.month + 2) / 3;
  if (part == "month") return date.month;
  if (part == "day") return date.day;
  const std::int64_t new_year = DayOf({date.year, 1, 1});
  if (part == "dayofyear") return moment.day - new_year + 1;
  // Weeks begin on Sunday, which is day 1.
  if (part == "weekday") return (Weekday(moment.day) + 1) % 7 + 1;
  if (part == "week") return (moment.day - new_year + (Weekday(new_year) + 1) % 7) / 7 + 1;
  if (part == "iso_week") return IsoWeek(moment.day);
  if (part == "hour") return moment.millisecond / 3600000;
  if (part == "minute") return moment.millisecond / 60000 % 60;
  if (part == "second") return moment.millisecond / 1000 % 60;
  return moment.millisecond % 1000;
}

std::int64_t Difference(const Moment& from, const Moment& to, std::string_view part) {
  // Counts the boundaries that are crossed, not the time that passes.
  if (part == "year") return Months(to) / 12 - Months(from) / 12;
  if (part == "quarter") return Months(to) / 3 - Months(from) / 3;
  if (part == "month") return Months(to) - Months(from);
  if (part == "week") return FloorDiv(to.day + 1, 7) - FloorDiv(from.day + 1, 7);
  const std::int64_t unit = std::max<std::int64_t>(Unit(part), 1);
  const auto count = [unit](const Moment& moment) {
    return unit >= kDayMilliseconds
               ? moment.day
               : moment.day * (kDayMilliseconds / unit) + moment.millisecond / unit;
  };
  return count(to) - count(from);
}

std::optional<Moment> Added(const Moment& moment, std::int32_t count, std::string_view part) {
  Moment result = moment;
  const std::int64_t unit = Unit(part);
  if (unit == 0) {
    const std::int64_t step = part == "year" ? 12 : part == "quarter" ? 3 : 1;
    const std::int64_t months = Months(moment) + std::int64_t{count} * step;
    if (months < 12 || months >= 120000) return std::nullopt;
    Calendar date = CalendarOf(moment.day);
    date.year = static_cast<int>(months / 12);
    date.month = static_cast<int>(months % 12) + 1;
    date.day = std::min(date.day, text::GregorianMonthLength(date.year, date.month));
    result.day = DayOf(date);
    return result;
  }
  const std::int64_t total = moment.millisecond + std::int64_t{count} * unit;
  result.day = moment.day + FloorDiv(total, kDayMilliseconds);
  result.millisecond = total - FloorDiv(total, kDayMilliseconds) * kDayMilliseconds;
  if (result.day < kFirstDay || result.day > kLastDay) return std::nullopt;
  return result;
}

std::string_view MonthName(int month) { return kMonths[static_cast<std::size_t>(month - 1)]; }
std::string_view WeekdayName(std::int64_t day) {
  return kWeekdays[static_cast<std::size_t>(Weekday(day))];
}

Moment Now(bool utc) {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  const auto whole = std::chrono::system_clock::from_time_t(seconds);
  const std::int64_t fraction =
      std::chrono::duration_cast<std::chrono::milliseconds>(now - whole).count();
  std::tm local{};
  if (utc) {
    gmtime_r(&seconds, &local);
  } else {
    localtime_r(&seconds, &local);
  }
  return {DayOf({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday}),
          ((local.tm_hour * 60LL + local.tm_min) * 60 + std::min(local.tm_sec, 59)) * 1000 +
              std::clamp<std::int64_t>(fraction, 0, 999)};
}

}  // namespace vorek::sqlite
