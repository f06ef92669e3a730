#include "adapters/sqlite/moment.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <vector>

#include "text/gregorian_date.h"
#include "text/utf8.h"

namespace vorek::sqlite {
namespace {

constexpr std::int64_t kDayMs = 86400000;
constexpr std::int64_t kDay1900 = -25567;    // 1900-01-01 as <chrono> counts
constexpr std::int64_t kFirstDay = -693595;  // 0001-01-01
constexpr std::int64_t kLastDay = 2958463;   // 9999-12-31

constexpr std::array<std::string_view, 12> kMonths = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays = {
    "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::int64_t FloorDiv(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

// A text cut into runs of digits, words and single marks.
struct Piece {
  enum class Kind { kDigits, kWord, kMark } kind;
  std::string_view text;
  int number = 0;
};

std::vector<Piece> Cut(std::string_view text) {
  std::vector<Piece> pieces;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at + 1;
    const char c = text[at];
    const auto letter = [](char x) { return (x >= 'a' && x <= 'z') || (x >= 'A' && x <= 'Z'); };
    if (c == ' ') {
      at = end;
      continue;
    }
    Piece piece{Piece::Kind::kMark, {}, 0};
    if (IsDigit(c)) {
      while (end < text.size() && IsDigit(text[end])) ++end;
      piece.kind = Piece::Kind::kDigits;
      for (std::size_t i = at; i < std::min(end, at + 9); ++i) {
        piece.number = piece.number * 10 + (text[i] - '0');
      }
    } else if (letter(c)) {
      while (end < text.size() && letter(text[end])) ++end;
      piece.kind = Piece::Kind::kWord;
    }
    piece.text = text.substr(at, end - at);
    pieces.push_back(piece);
    at = end;
  }
  return pieces;
}

class Reader {
 public:
  Reader(std::string_view text, int style) : pieces_(Cut(text)), style_(style % 100) {}

  std::optional<Moment> Read() {
    if (pieces_.empty()) return Moment{};
    if (!AtTime() && !ReadDate()) return std::nullopt;
    const bool joined = Is("T");
    if (joined) ++at_;
    if ((joined || at_ < pieces_.size()) && !ReadTime()) return std::nullopt;
    if (at_ != pieces_.size()) return std::nullopt;
    if (year_ < 1 || year_ > 9999 || month_ < 1 || month_ > 12 || day_ < 1 ||
        day_ > text::GregorianMonthLength(year_, month_)) {
      return std::nullopt;
    }
    return Moment{DayOf({year_, month_, day_}), millisecond_};
  }

 private:
  bool Is(std::string_view text, std::size_t ahead = 0) const {
    return at_ + ahead < pieces_.size() && text::EqualsIgnoreCase(pieces_[at_ + ahead].text, text);
  }
  bool IsDigits(std::size_t ahead = 0) const {
    return at_ + ahead < pieces_.size() && pieces_[at_ + ahead].kind == Piece::Kind::kDigits;
  }
  bool AtTime() const { return IsDigits() && (Is(":", 1) || Is("AM", 1) || Is("PM", 1)); }

  void Year(const Piece& piece) {
    year_ = piece.number;
    if (piece.text.size() <= 2) year_ += year_ < 50 ? 2000 : 1900;
  }

  bool ReadDate() {
    if (IsDigits() && (pieces_[at_].text.size() == 8 || pieces_[at_].text.size() == 6) &&
        !IsSeparator(1)) {
      const std::string_view digits = pieces_[at_].text;
      const int value = pieces_[at_++].number;
      year_ = value / 10000;
      if (digits.size() == 6) year_ += year_ < 50 ? 2000 : 1900;
      month_ = value / 100 % 100;
      day_ = value % 100;
      return true;
    }
    if (IsDigits() && pieces_.size() == 1 && pieces_[at_].text.size() == 4) {
      year_ = pieces_[at_++].number;
      return true;
    }
    if (IsDigits() && IsSeparator(1)) return ReadThreeNumbers();
    return ReadNamedMonth();
  }

  bool IsSeparator(std::size_t ahead) const {
    return Is("/", ahead) || Is("-", ahead) || Is(".", ahead);
  }

  bool ReadThreeNumbers() {
    if (!IsDigits(2)) {  // 15-Jan-2024
      return ReadNamedMonth();
    }
    if (!IsSeparator(3) || !IsDigits(4)) return false;
    const Piece first = pieces_[at_];
    const Piece second = pieces_[at_ + 2];
    const Piece third = pieces_[at_ + 4];
    at_ += 5;
    const bool dotted = style_ == kDayFirst || style_ == kDayFirstIsoYear;
    const bool day_first = dotted || style_ == 3 || style_ == 4 || style_ == 5 || style_ == 13;
    const bool year_first = first.text.size() == 4 || style_ == 2 || style_ == 11 ||
                            (style_ == kYearFirst && third.text.size() != 4);
    if (IsOtherOrder(year_first, day_first && !dotted)) return false;
    if (year_first) {
      // A year in front doesn't bring the month along, but in the form with a T.
      const bool turned = style_ == kDayFirst && !Is("T");
      Year(first);
      month_ = turned ? third.number : second.number;
      day_ = turned ? second.number : third.number;
    } else {
      Year(third);
      month_ = day_first ? second.number : first.number;
      day_ = day_first ? first.number : second.number;
    }
    return true;
  }

  // A style that asks for a day in front, and a year stands there; or the other way round. A server
  // turns the former about, which is rather refused than guessed.
  bool IsOtherOrder(bool year_first, bool by_day) const {
    constexpr std::array<int, 6> kByYear = {20, 21, 23, 25, 26, 27};
    const bool by_year = std::find(kByYear.begin(), kByYear.end(), style_) != kByYear.end();
    return year_first ? by_day && !Is("T") : by_year;
  }

  bool ReadNamedMonth() {
    // "Jan 15 2024", "January 15, 2024", "15 Jan 2024", "15-Jan-24", "Jan 2024"
    std::vector<Piece> numbers;
    bool named = false;
    while (at_ < pieces_.size() && numbers.size() < 2 + (named ? 0U : 1U)) {
      if (AtTime()) break;
      const Piece& piece = pieces_[at_];
      if (piece.kind == Piece::Kind::kDigits) {
        numbers.push_back(piece);
      } else if (piece.kind == Piece::Kind::kWord) {
        if (named || !TakeMonth(piece.text)) return false;
        named = true;
      } else if (piece.text != "," && piece.text != "-" && piece.text != "/") {
        return false;
      }
      ++at_;
      if (named && numbers.size() == 2) break;
    }
    if (!named || numbers.empty()) return false;
    if (numbers.size() == 1) {
      if (numbers[0].text.size() != 4) return false;
      year_ = numbers[0].number;
      return true;
    }
    const bool year_first = numbers[0].text.size() == 4;
    Year(numbers[year_first ? 0 : 1]);
    day_ = numbers[year_first ? 1 : 0].number;
    return true;
  }

  bool TakeMonth(std::string_view word) {
    for (std::size_t i = 0; i < kMonths.size(); ++i) {
      if (text::EqualsIgnoreCase(word, kMonths[i]) ||
          text::EqualsIgnoreCase(word, kMonths[i].substr(0, 3))) {
        month_ = static_cast<int>(i) + 1;
        return true;
      }
    }
    return false;
  }

  bool ReadTime() {
    if (!IsDigits()) return false;
    std::array<int, 3> parts = {pieces_[at_++].number, 0, 0};
    std::size_t count = 1;
    while (count < 3 && Is(":") && IsDigits(1)) {
      parts[count++] = pieces_[at_ + 1].number;
      at_ += 2;
    }
    int fraction = 0;
    if (count == 3 && (Is(".") || Is(":")) && IsDigits(1)) {
      const std::string digits = std::string(pieces_[at_ + 1].text.substr(0, 3));
      fraction = std::stoi(digits);
      if (Is(".")) {
        for (std::size_t i = digits.size(); i < 3; ++i) fraction *= 10;
      }
      at_ += 2;
    }
    if (Is("AM") || Is("PM")) {
      if (parts[0] < 1 || parts[0] > 12) return false;
      parts[0] = parts[0] % 12 + (Is("PM") ? 12 : 0);
      ++at_;
    } else if (count == 1) {
      return false;
    }
    if (Is("Z")) ++at_;
    if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return false;
    millisecond_ = ((parts[0] * 60LL + parts[1]) * 60 + parts[2]) * 1000 + fraction;
    return true;
  }

  std::vector<Piece> pieces_;
  std::size_t at_ = 0;
  int style_;
  int year_ = 1900;
  int month_ = 1;
  int day_ = 1;
  std::int64_t millisecond_ = 0;
};

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
  if (part == "week") return 7 * kDayMs;
  if (part == "day" || part == "dayofyear" || part == "weekday") return kDayMs;
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

std::optional<Moment> ParseMoment(std::string_view text, int style) {
  return Reader(text, style).Read();
}

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
  moment.day += moment.millisecond / kDayMs;
  moment.millisecond %= kDayMs;
  return Pattern(moment, "y-m-d H:i:s.f");
}

std::optional<Moment> ReadStored(std::string_view text) {
  const auto digits = [text](std::size_t at, std::size_t count, std::int64_t& value) {
    if (at + count > text.size()) return false;
    value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
      if (!IsDigit(text[i])) return false;
      value = value * 10 + (text[i] - '0');
    }
    return true;
  };
  std::int64_t year = 0;
  std::int64_t month = 0;
  std::int64_t day = 0;
  std::int64_t hour = 0;
  std::int64_t minute = 0;
  std::int64_t second = 0;
  std::int64_t fraction = 0;
  const bool plain = text.size() == 23 && digits(0, 4, year) && digits(5, 2, month) &&
                     digits(8, 2, day) && digits(11, 2, hour) && digits(14, 2, minute) &&
                     digits(17, 2, second) && digits(20, 3, fraction) && month >= 1 &&
                     month <= 12 && day >= 1 && day <= 31;
  if (!plain) return ParseMoment(text, 121);
  return Moment{DayOf({static_cast<int>(year), static_cast<int>(month), static_cast<int>(day)}),
                ((hour * 60 + minute) * 60 + second) * 1000 + fraction};
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
    return unit >= kDayMs ? moment.day : moment.day * (kDayMs / unit) + moment.millisecond / unit;
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
  result.day = moment.day + FloorDiv(total, kDayMs);
  result.millisecond = total - FloorDiv(total, kDayMs) * kDayMs;
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
