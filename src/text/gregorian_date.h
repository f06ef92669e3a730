#ifndef VOREK_TEXT_GREGORIAN_DATE_H_
#define VOREK_TEXT_GREGORIAN_DATE_H_

#include <chrono>
#include <cstdint>

// Days of the proleptic Gregorian calendar, counted by <chrono>.
namespace vorek::text {

// Of the year `year` from -32767 to 32767 and the month 1 to 12, from 1970-01-01 on; day may lie
// beyond the month's end.
inline std::int64_t GregorianDay(int year, int month, int day) {
  namespace chrono = std::chrono;
  const chrono::year_month_day first{chrono::year(year),
                                     chrono::month(static_cast<unsigned>(month)), chrono::day(1)};
  return chrono::sys_days(first).time_since_epoch().count() + day - 1;
}

// The date of a day that was so counted, for years of that range.
inline std::chrono::year_month_day GregorianDateOf(std::int64_t day) {
  return std::chrono::sys_days(std::chrono::days(day));
}

inline int GregorianMonthLength(int year, int month) {
  namespace chrono = std::chrono;
  const chrono::year_month_day_last last{
      chrono::year(year), chrono::month_day_last(chrono::month(static_cast<unsigned>(month)))};
  return static_cast<int>(static_cast<unsigned>(last.day()));
}

}  // namespace vorek::text

#endif  // VOREK_TEXT_GREGORIAN_DATE_H_
