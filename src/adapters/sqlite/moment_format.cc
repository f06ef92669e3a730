#include <algorithm>
#include <array>

#include "adapters/sqlite/moment.h"

namespace vorek::sqlite {
namespace {

void AppendDigits(std::string& out, std::int64_t value, std::size_t width, char fill = '0') {
  std::string digits = std::to_string(value);
  if (digits.size() < width) digits.insert(0, width - digits.size(), fill);
  out += digits;
}

struct Style {
  int number;
  std::string_view pattern;
};

// y year, Y its last two digits, m month, n its name, d day, D day behind a blank, H hour, h hour
// of twelve behind a blank, i minute, s second, f thousandths, p AM or PM.
constexpr std::array<Style, 38> kStyles = {{
    {0, "n D y h:ip"},
    {1, "m/d/Y"},
    {2, "Y.m.d"},
    {3, "d/m/Y"},
    {4, "d.m.Y"},
    {5, "d-m-Y"},
    {6, "d n Y"},
    {7, "n d, Y"},
    {8, "H:i:s"},
    {9, "n D y h:i:s:fp"},
    {10, "m-d-Y"},
    {11, "Y/m/d"},
    {12, "Ymd"},
    {13, "d n y H:i:s:f"},
    {14, "H:i:s:f"},
    {20, "y-m-d H:i:s"},
    {21, "y-m-d H:i:s.f"},
    {22, "m/d/Y h:i:s p"},
    {23, "y-m-d"},
    {24, "H:i:s"},
    {25, "y-m-d H:i:s.f"},
    {100, "n D y h:ip"},
    {101, "m/d/y"},
    {102, "y.m.d"},
    {103, "d/m/y"},
    {104, "d.m.y"},
    {105, "d-m-y"},
    {106, "d n y"},
    {107, "n d, y"},
    {108, "H:i:s"},
    {109, "n D y h:i:s:fp"},
    {110, "m-d-y"},
    {111, "y/m/d"},
    {112, "ymd"},
    {113, "d n y H:i:s:f"},
    {114, "H:i:s:f"},
    {120, "y-m-d H:i:s"},
    {121, "y-m-d H:i:s.f"},
}};

std::string Pattern(const Moment& moment, std::string_view pattern) {
  const Calendar date = CalendarOf(moment.day);
  const std::int64_t hour = moment.millisecond / 3600000;
  std::string out;
  for (const char c : pattern) {
    switch (c) {
      case 'y':
        AppendDigits(out, date.year, 4);
        break;
      case 'Y':
        AppendDigits(out, date.year % 100, 2);
        break;
      case 'm':
        AppendDigits(out, date.month, 2);
        break;
      case 'n':
        out += MonthName(date.month).substr(0, 3);
        break;
      case 'd':
        AppendDigits(out, date.day, 2);
        break;
      case 'D':
        AppendDigits(out, date.day, 2, ' ');
        break;
      case 'H':
        AppendDigits(out, hour, 2);
        break;
      case 'h':
        AppendDigits(out, (hour + 11) % 12 + 1, 2, ' ');
        break;
      case 'i':
        AppendDigits(out, moment.millisecond / 60000 % 60, 2);
        break;
      case 's':
        AppendDigits(out, moment.millisecond / 1000 % 60, 2);
        break;
      case 'f':
        AppendDigits(out, moment.millisecond % 1000, 3);
        break;
      case 'p':
        out += hour < 12 ? "AM" : "PM";
        break;
      default:
        out += c;
    }
  }
  return out;
}

}  // namespace

std::string StoredMoment(Moment moment, std::string_view kind) {
  if (kind == "date") return Pattern(moment, "y-m-d");
  if (kind == "time") return Pattern(moment, "H:i:s.f");
  if (kind == "smalldatetime") {
    // 29.998 seconds go down, 29.999 go up: they are half a minute in 300ths of a second.
    moment.millisecond = (moment.millisecond + 30001) / 60000 * 60000;
  } else if (kind == "datetime") {
    // Kept in 300ths of a second.
    const std::int64_t ticks = (moment.millisecond * 3 + 5) / 10;
    moment.millisecond = (ticks * 10 + 1) / 3;
  }
  moment.day += moment.millisecond / kDayMilliseconds;
  moment.millisecond %= kDayMilliseconds;
  return Pattern(moment, "y-m-d H:i:s.f");
}

std::optional<std::string> FormatMoment(const Moment& moment, int style, std::string_view kind) {
  const bool date = kind == "date";
  const bool time = kind == "time";
  if (style == kOwnStyle) style = date || time || kind == "datetime2" ? 121 : 0;
  std::string_view pattern;
  if (style == 126 || style == 127) {
    pattern = moment.millisecond % 1000 == 0 ? "y-m-dTH:i:s" : "y-m-dTH:i:s.f";
  } else {
    const auto* found = std::find_if(kStyles.begin(), kStyles.end(),
                                     [style](const Style& row) { return row.number == style; });
    if (found == kStyles.end()) return std::nullopt;
    pattern = found->pattern;
  }
  // A date shows no time of day, a time no day; a style that is nothing else is none for them.
  const std::size_t hour = std::min(pattern.find_first_of("hH"), pattern.size());
  if (time) pattern.remove_prefix(hour);
  if (date) pattern = pattern.substr(0, hour);
  while (date && !pattern.empty() && (pattern.back() == ' ' || pattern.back() == 'T')) {
    pattern.remove_suffix(1);
  }
  if (pattern.empty()) return std::nullopt;
  return Pattern(moment, pattern);
}

}  // namespace vorek::sqlite
