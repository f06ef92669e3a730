#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>

#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/moment.h"
#include "text/gregorian_date.h"

namespace vorek::sqlite {
namespace {

constexpr char kBadDate[] =
    "Conversion failed when converting date and/or time from character string.";

std::optional<Moment> MomentOf(sqlite3_context* context, sqlite3_value* value) {
  std::optional<Moment> moment = ReadStored(TextOf(value));
  if (!moment) Fail(context, kBadDate);
  return moment;
}

// The moment as a value of the kind, or the error if the kind doesn't reach so far.
void ResultMoment(sqlite3_context* context, const Moment& moment, std::string_view kind,
                  const std::string& from) {
  constexpr std::int64_t kLastSmallDay = 65535;  // 2079-06-06
  const bool small = kind == "smalldatetime";
  const bool fits = small ? moment.day >= 0 && moment.day <= kLastSmallDay
                          : kind != "datetime" || moment.day >= kFirstDateTimeDay;
  if (!fits) {
    return Fail(context, "The conversion of a " + from + " data type to a " + std::string(kind) +
                             " data type resulted in an out-of-range value.");
  }
  ResultText(context, StoredMoment(moment, kind));
}

// vk_date(text, kind, style)
void TextToDate(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view kind = TextOf(values[1]);
  const std::optional<Moment> moment = ParseMoment(TextOf(values[0]), sqlite3_value_int(values[2]));
  if (!moment) return Fail(context, kBadDate);
  ResultMoment(context, *moment, kind, "varchar");
}

// vk_date_kind(stored, kind)
void DateKind(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Moment> moment = MomentOf(context, values[0]);
  if (moment) ResultMoment(context, *moment, TextOf(values[1]), "datetime2");
}

// vk_date_text(stored, style, kind)
void DateToText(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Moment> moment = MomentOf(context, values[0]);
  if (!moment) return;
  const int style = sqlite3_value_int(values[1]);
  const std::optional<std::string> text = FormatMoment(*moment, style, TextOf(values[2]));
  if (!text) return Fail(context, std::to_string(style) + " is not a valid style number.");
  ResultText(context, *text);
}

// vk_days(stored): days from 1900-01-01 with their fraction.
void Days(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Moment> moment = MomentOf(context, values[0]);
  if (!moment) return;
  sqlite3_result_double(context, static_cast<double>(moment->day) +
                                     static_cast<double>(moment->millisecond) / 86400000.0);
}

// vk_date_of_days(days, kind)
void DateOfDays(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const double days = sqlite3_value_double(values[0]);
  if (!(days >= -53690.0 && days < 2958464.0)) return FailOverflow(context, "datetime");
  const double whole = std::floor(days);
  Moment moment{static_cast<std::int64_t>(whole),
                static_cast<std::int64_t>(std::llround((days - whole) * 86400000.0))};
  moment.day += moment.millisecond / 86400000;
  moment.millisecond %= 86400000;
  ResultMoment(context, moment, TextOf(values[1]), "float");
}

// vk_dateadd(part, count, stored, kind)
void DateAdd(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Moment> moment = MomentOf(context, values[2]);
  if (!moment) return;
  const std::optional<Moment> result =
      Added(*moment, sqlite3_value_int(values[1]), TextOf(values[0]));
  if (!result) {
    return Fail(context, "Adding a value to a date column caused an overflow.");
  }
  ResultMoment(context, *result, TextOf(values[3]), "datetime2");
}

// vk_datediff(part, from, to)
void DateDiff(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Moment> from = MomentOf(context, values[1]);
  if (!from) return;
  const std::optional<Moment> to = MomentOf(context, values[2]);
  if (!to) return;
  const std::int64_t difference = Difference(*from, *to, TextOf(values[0]));
  if (difference > INT32_MAX || difference < INT32_MIN) {
    return Fail(context, "The datediff function resulted in an overflow.");
  }
  sqlite3_result_int64(context, difference);
}

void DatePart(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Moment> moment = MomentOf(context, values[1]);
  if (moment) sqlite3_result_int64(context, PartOf(*moment, TextOf(values[0])));
}

void DateName(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Moment> moment = MomentOf(context, values[1]);
  if (!moment) return;
  const std::string_view part = TextOf(values[0]);
  if (part == "month") return ResultText(context, MonthName(CalendarOf(moment->day).month));
  if (part == "weekday") return ResultText(context, WeekdayName(moment->day));
  ResultText(context, std::to_string(PartOf(*moment, part)));
}

// vk_date_of_bytes(bytes, kind): days and 300ths of a second, or days and minutes, as a server's
// tools script them.
void DateOfBytes(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view kind = TextOf(values[1]);
  const bool small = kind == "smalldatetime";
  const auto* bytes = static_cast<const unsigned char*>(sqlite3_value_blob(values[0]));
  const int half = small ? 2 : 4;
  if (sqlite3_value_bytes(values[0]) != 2 * half) return Fail(context, kBadDate);
  const auto number = [bytes, half](int from) {
    std::uint32_t value = 0;
    for (int i = from; i < from + half; ++i) value = (value << 8U) | bytes[i];
    return value;
  };
  const std::uint32_t day = number(0);
  const std::uint32_t rest = number(half);
  Moment moment;
  moment.day = small ? static_cast<std::int64_t>(day) : static_cast<std::int32_t>(day);
  moment.millisecond = small ? rest * 60000LL : (rest * 10LL + 1) / 3;
  if (moment.day < kFirstDateTimeDay || moment.day > 2958463 || moment.millisecond >= 86400000) {
    return Fail(context, kBadDate);
  }
  ResultText(context, StoredMoment(moment, kind));
}

// vk_date_of_parts(year, month, day)
void DateOfParts(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const auto part = [values](int i) {
    return static_cast<int>(std::clamp<std::int64_t>(sqlite3_value_int64(values[i]), 0, 10000));
  };
  const Calendar date{part(0), part(1), part(2)};
  const bool exists = date.year >= 1 && date.year <= 9999 && date.month >= 1 && date.month <= 12 &&
                      date.day >= 1 &&
                      date.day <= text::GregorianMonthLength(date.year, date.month);
  if (!exists) {
    return Fail(context,
                "Cannot construct data type date, some of the arguments have values which "
                "are not valid.");
  }
  ResultText(context, StoredMoment({DayOf(date), 0}, "date"));
}

void EoMonth(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Moment> moment = MomentOf(context, values[0]);
  if (!moment) return;
  const std::optional<Moment> shifted = Added(*moment, sqlite3_value_int(values[1]), "month");
  if (!shifted) return Fail(context, "Adding a value to a date column caused an overflow.");
  Calendar date = CalendarOf(shifted->day);
  date.day = text::GregorianMonthLength(date.year, date.month);
  ResultText(context, StoredMoment({DayOf(date), 0}, "date"));
}

}  // namespace

void RegisterDateFunctions(const Registry& registry) {
  Register(registry, "vk_date", 3, TextToDate, "vk_try_date");
  Register(registry, "vk_date_kind", 2, DateKind);
  Register(registry, "vk_date_text", 3, DateToText);
  Register(registry, "vk_days", 1, Days);
  Register(registry, "vk_date_of_days", 2, DateOfDays);
  Register(registry, "vk_dateadd", 4, DateAdd);
  Register(registry, "vk_datediff", 3, DateDiff);
  Register(registry, "vk_datepart", 2, DatePart);
  Register(registry, "vk_datename", 2, DateName);
  Register(registry, "vk_date_of_bytes", 2, DateOfBytes);
  Register(registry, "vk_date_of_parts", 3, DateOfParts);
  Register(registry, "vk_eomonth", 2, EoMonth);
}

}  // namespace vorek::sqlite
