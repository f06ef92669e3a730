#ifndef VOREK_ADAPTERS_SQLITE_MOMENT_H_
#define VOREK_ADAPTERS_SQLITE_MOMENT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Dates and times of the dialect, Gregorian, to the thousandth of a second.
namespace vorek::sqlite {

struct Moment {
  std::int64_t day = 0;          // from 1900-01-01
  std::int64_t millisecond = 0;  // of the day, 0 to 86399999
};

inline constexpr std::int64_t kDayMilliseconds = 86400000;

struct Calendar {
  int year = 1900;
  int month = 1;
  int day = 1;
};

inline constexpr std::int64_t kFirstDateTimeDay = -53690;  // 1753-01-01: datetime begins

Calendar CalendarOf(std::int64_t day);
std::int64_t DayOf(const Calendar& date);

// Styles of texts without one, where SET DATEFORMAT has set dmy (the second for the types that read
// a year in front as ISO does) or ymd.
inline constexpr int kDayFirst = -1;
inline constexpr int kDayFirstIsoYear = -2;
inline constexpr int kYearFirst = -3;

// A text as a person or a program may write a date or a time, read by a CONVERT style (0: month
// before day, unless the year stands first). Nothing for a text that is none; a day that doesn't
// exist included.
std::optional<Moment> ParseMoment(std::string_view text, int style);

// The text in which the database keeps a value of the kind ("date", "time", "datetime", ...),
// rounded as the kind does it: datetime to 0, 3 or 7 thousandths, smalldatetime to the minute.
std::string StoredMoment(Moment moment, std::string_view kind);
// The other way; nothing for a text that isn't one.
std::optional<Moment> ReadStored(std::string_view text);

// The style of a text for which none is told: that of the kind.
inline constexpr int kOwnStyle = -4;

// The text by a CONVERT style; nothing for a style that isn't known, or shows nothing of the kind.
std::optional<std::string> FormatMoment(const Moment& moment, int style, std::string_view kind);

// DATEPART, DATEDIFF and DATEADD by the part's full name ("day").
std::int64_t PartOf(const Moment& moment, std::string_view part);
std::int64_t Difference(const Moment& from, const Moment& to, std::string_view part);
// Nothing if the result lies outside of the years 1 to 9999.
std::optional<Moment> Added(const Moment& moment, std::int32_t count, std::string_view part);

std::string_view MonthName(int month);
std::string_view WeekdayName(std::int64_t day);

// The present moment in the user's time zone, or in UTC.
Moment Now(bool utc);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_MOMENT_H_
