#include "text/cell_text.h"

#include <algorithm>
#include <cmath>

#include "text/digits.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {
namespace {

std::string Without(std::string_view text, std::string_view characters) {
  std::string out;
  out.reserve(text.size());
  for (const char c : text) {
    if (characters.find(c) == std::string_view::npos) out += c;
  }
  return out;
}

// Takes an optional sign and digits off a text, and if allowed one point. True if there was a
// digit.
bool TakeDigits(std::string_view& text, bool point_allowed) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  bool digit = false;
  for (; !text.empty(); text.remove_prefix(1)) {
    const char c = text.front();
    if (c == '.' && point_allowed) {
      point_allowed = false;
    } else if (c >= '0' && c <= '9') {
      digit = true;
    } else {
      break;
    }
  }
  return digit;
}

// True if the whole text is one number, blanks around it aside.
bool IsNumber(std::string_view text) {
  std::string_view rest = text::TrimView(text);
  if (!TakeDigits(rest, true)) return false;
  if (rest.empty()) return true;
  const bool exponent = rest.front() == 'E' || rest.front() == 'e';
  rest.remove_prefix(1);
  return exponent && TakeDigits(rest, false) && rest.empty();
}

// Counts the digits of a plain number up to its fixed-point value: false for a text that is none,
// or for one beyond the range.
class FixedPointReader {
 public:
  bool Digit(char c) {
    if (places_ < 0 || places_ < kPlaces) {
      if (value_ > kMost) return false;
      value_ = value_ * 10 + static_cast<std::uint64_t>(c - '0');
    } else if (places_ == kPlaces) {
      next_ = c - '0';
    } else {
      rest_ = rest_ || c != '0';
    }
    if (places_ >= 0) ++places_;
    return true;
  }
  void Point() { places_ = 0; }
  bool PointSeen() const { return places_ >= 0; }

  bool Take(bool negative, FixedPoint& value) {
    for (; places_ < kPlaces; ++places_) {
      if (places_ < 0) places_ = 0;
      if (value_ > kMost) return false;
      value_ *= 10;
    }
    const bool up = next_ > 5 || (next_ == 5 && (rest_ || value_ % 2 == 1));
    value_ += up ? 1 : 0;
    if (value_ > (negative ? kLimit : kLimit - 1)) return false;
    value = static_cast<FixedPoint>(negative ? 0 - value_ : value_);
    return true;
  }

 private:
  static constexpr int kPlaces = 4;
  static constexpr std::uint64_t kLimit = std::uint64_t{1} << 63U;
  static constexpr std::uint64_t kMost = (UINT64_MAX - 9) / 10;  // that takes another digit

  std::uint64_t value_ = 0;
  int places_ = -1;  // behind the point; -1 in front of it
  int next_ = 0;     // the digit behind the last place
  bool rest_ = false;
};

bool ReadFixedPoint(std::string_view number, FixedPoint& value) {
  const bool negative = number.starts_with('-');
  FixedPointReader reader;
  for (const char c : number.substr(negative ? 1 : 0)) {
    if (c == '.') {
      reader.Point();
    } else if (c < '0' || c > '9' || !reader.Digit(c)) {
      return false;
    }
  }
  return reader.Take(negative, value);
}

// A cell as FormatMoney and the number forms write it: groups, one point, brackets or a "-". False
// for every other text, and for one of more digits than a bracketed value keeps.
bool ReadMoneyText(std::string_view text, FixedPoint& value) {
  constexpr std::size_t kMostBracketed = 15;
  if (text.empty()) {
    value = 0;
    return true;
  }
  const bool bracketed = text.front() == '(' && text.back() == ')' && text.size() > 2;
  if (bracketed) text = text.substr(1, text.size() - 2);
  const bool negative = bracketed || (text.front() == '-' && text.size() > 1);
  if (negative && !bracketed) text.remove_prefix(1);
  if (bracketed && text.size() > kMostBracketed) return false;
  if (text.front() < '0' || text.front() > '9') return false;
  FixedPointReader reader;
  for (const char c : text) {
    if (c == '/' && !reader.PointSeen()) continue;
    if (c == '.' && !reader.PointSeen()) {
      reader.Point();
    } else if (c < '0' || c > '9' || !reader.Digit(c)) {
      return false;
    }
  }
  return reader.Take(negative, value);
}

// Groups the digits of a whole number's text, which has one sign position in front.
void AppendGroups(std::string_view signed_text, std::string& out) {
  std::size_t head = signed_text.size();
  while (head > 4) head -= 3;
  const std::string_view first = signed_text.substr(0, head);
  out += first.substr(first.starts_with(' ') ? 1 : 0);
  for (std::size_t at = head; at < signed_text.size(); at += 3) {
    out.append("/").append(signed_text.substr(at, 3));
  }
}

// Up to 15 digits with an optional sign: read and grouped without a detour over numbers.
bool AppendPlainGroups(std::string_view whole, std::string& out) {
  const bool negative = whole.starts_with('-');
  std::string_view digits = whole.substr(negative ? 1 : 0);
  const bool plain =
      !digits.empty() && digits.size() <= 14 &&
      std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (!plain) return false;
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));
  if (negative && digits != "0") out += '-';
  const std::size_t head = (digits.size() - 1) % 3 + 1;
  out += digits.substr(0, head);
  for (std::size_t at = head; at < digits.size(); at += 3) {
    out.append("/").append(digits.substr(at, 3));
  }
  return true;
}

void AppendWhole(std::string_view whole, std::string& out) {
  if (whole.find('/') == std::string_view::npos && AppendPlainGroups(whole, out)) return;
  out += GroupDigits(ToFixedPoint(Without(whole, "/")));
}

std::string TwoDigits(std::int64_t value) {
  std::string text = std::to_string(value);
  return text.size() == 1 ? "0" + text : text;
}

}  // namespace

std::string UnformatNumber(std::string_view text) {
  const std::string_view trimmed = text::TrimView(text);
  const bool bracketed = text::Contains(trimmed, "(");
  std::string plain = Without(trimmed, "()/");
  if (bracketed && IsNumber(plain)) plain = text::PlainNumber(-text::NumericPrefix(plain));
  return plain;
}

double CellNumber(std::string_view text) {
  return text.find_first_of("()/ ") == std::string_view::npos
             ? text::NumericPrefix(text)
             : text::NumericPrefix(UnformatNumber(text));
}

FixedPoint ToFixedPoint(std::string_view text) {
  const std::string number = text::ExactNumber(text);
  FixedPoint value = 0;
  if (ReadFixedPoint(number, value)) return value;
  // Only a number with an exponent is no plain text.
  const double scaled = text::RoundHalfEven(text::NumericPrefix(number) * 10000);
  if (number.find('E') == std::string::npos || !(std::fabs(scaled) < 9223372036854775807.0)) {
    throw Error(ErrorNumber::kOverflow, "Overflow: " + text::Left(text, 50));
  }
  return static_cast<FixedPoint>(scaled);
}

FixedPoint CellFixedPoint(std::string_view text) {
  FixedPoint value = 0;
  return ReadMoneyText(text, value) ? value : ToFixedPoint(UnformatNumber(text));
}

std::string GroupDigits(FixedPoint value) {
  std::string text = value < 0 ? "" : " ";
  text::AppendScaled(value, 4, text);
  std::string out;
  AppendGroups(text, out);
  return out;
}

void AppendMoney(std::string_view text, std::string& out) {
  const std::string_view trimmed = text::TrimView(text);
  if (trimmed.empty() || trimmed == "txtMoney") return;
  const std::size_t begin = out.size();
  const std::size_t point = trimmed.find('.');
  AppendWhole(trimmed.substr(0, point), out);
  if (point != std::string_view::npos) out += trimmed.substr(point);
  if (out[begin] != '-') return;
  out[begin] = '(';
  out += ')';
}

void AppendScaledMoney(std::int64_t value, int scale, std::string& out) {
  constexpr std::uint64_t kLongest =
      100000000000000;  // of more digits than AppendPlainGroups takes
  const text::SplitNumber number(value, scale);
  if (number.whole >= kLongest) {
    std::string plain;
    text::AppendScaled(value, scale, plain);
    return AppendMoney(plain, out);
  }
  const bool bracketed = number.negative && number.whole > 0;
  text::Digits digits;
  if (bracketed) digits.Put(')');
  digits.PutPlaces(number.decimals, number.places);
  digits.PutGrouped(number.whole);
  if (bracketed) digits.Put('(');
  out += digits.View();
}

std::string FormatMoney(std::string& text) {
  std::string out;
  AppendMoney(text, out);
  text = out;
  return out;
}

bool IsTimeColumn(int ado_type, std::string_view name) {
  if (ado_type != 3) return false;
  return text::TrimView(name) == "زمان" || text::Contains(name, " زمان ") ||
         name.starts_with("زمان ") || name.ends_with(" زمان") ||
         text::EndsWithIgnoreCase(name, "CTime");
}

std::int32_t TimeToMinutes(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return text::ToInt32(text::NumericPrefix(text));
  return text::ToInt32(60 * text::NumericPrefix(text.substr(0, colon)) +
                       text::NumericPrefix(text.substr(colon + 1)));
}

std::string MinutesToTime(std::int64_t minutes) {
  return TwoDigits(minutes / 60) + ":" + TwoDigits(minutes % 60);
}

bool IsMoneyField(int ado_type) { return ado_type == 5 || ado_type == 6; }

bool IsNumericFieldType(int ado_type) {
  return ado_type == 20 || ado_type == 6 || ado_type == 5 || ado_type == 3 || ado_type == 2;
}

}  // namespace vorek
