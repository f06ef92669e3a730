#include "text/number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "text/digits.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::text {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// Reads a number's head off a text, leaving its characters without blanks for std::from_chars.
class PrefixScanner {
 public:
  explicit PrefixScanner(std::string_view s) : s_(s) {}

  std::string Scan() {
    Sign();
    const std::size_t digits = Digits();
    std::size_t decimals = 0;
    if (Peek() == '.') {
      Take();
      decimals = Digits();
    }
    if (digits + decimals == 0) return {};
    Exponent();
    return std::move(out_);
  }

 private:
  char Peek() {
    while (at_ < s_.size() && IsBlank(s_[at_])) ++at_;
    return at_ < s_.size() ? s_[at_] : '\0';
  }
  void Take() { out_ += s_[at_++]; }
  void Sign() {
    if (Peek() == '-')
      Take();
    else if (Peek() == '+')
      ++at_;
  }
  std::size_t Digits() {
    std::size_t count = 0;
    for (; IsDigit(Peek()); ++count) Take();
    return count;
  }
  void Exponent() {
    if (Peek() != 'e' && Peek() != 'E') return;
    const std::size_t keep = out_.size();
    Take();
    Sign();
    if (Digits() == 0) out_.resize(keep);
  }

  std::string_view s_;
  std::size_t at_ = 0;
  std::string out_;
};

// A short run of digits and nothing else, by far the most frequent text.
bool ShortWhole(std::string_view s, double& value) {
  if (s.empty() || s.size() > 15) return false;
  std::int64_t whole = 0;
  for (const char c : s) {
    if (!IsDigit(c)) return false;
    whole = whole * 10 + (c - '0');
  }
  value = static_cast<double>(whole);
  return true;
}

// A magnitude below 0.0001 in plain decimals: 1.5E-05 is 0.000015.
void AppendSmall(double value, std::string& out) {
  std::array<char, 32> buffer{};
  char* const begin = buffer.data();
  char* const last = std::to_chars(begin, begin + buffer.size(), std::fabs(value),
                                   std::chars_format::scientific, 14)
                         .ptr;
  const std::string_view text(begin, static_cast<std::size_t>(last - begin));
  const std::size_t e = text.find('e');
  std::size_t places = 0;
  std::from_chars(begin + e + 2, last, places);
  std::string digits(1, text.front());
  digits += text.substr(2, e - 2);
  digits.erase(digits.find_last_not_of('0') + 1);
  if (value < 0) out += '-';
  out.append("0.").append(places - 1, '0').append(digits);
}

double OutOfRange(std::string_view number) {
  const std::size_t e = number.find_first_of("eE");
  const bool tiny = e != std::string_view::npos && e + 1 < number.size() && number[e + 1] == '-';
  if (tiny) return 0;
  const double largest = std::numeric_limits<double>::max();
  return number.front() == '-' ? -largest : largest;
}

}  // namespace

double NumericPrefix(std::string_view s) {
  double value = 0;
  if (ShortWhole(s, value)) return value;
  const std::string number = PrefixScanner(s).Scan();
  if (number.empty()) return 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  return result.ec == std::errc::result_out_of_range ? OutOfRange(number) : value;
}

void AppendPlainNumber(double value, std::string& out) {
  std::array<char, 32> buffer{};
  char* const begin = buffer.data();
  char* const end = begin + buffer.size();
  if (!std::isfinite(value)) {
    out += '0';
  } else if (std::fabs(value) < 1e15 && value == std::trunc(value)) {
    out.append(begin, std::to_chars(begin, end, static_cast<std::int64_t>(value)).ptr);
  } else if (std::fabs(value) < 1e-4) {
    AppendSmall(value, out);
  } else {
    char* const last = std::to_chars(begin, end, value, std::chars_format::general, 15).ptr;
    std::replace(begin, last, 'e', 'E');
    out.append(begin, last);
  }
}

std::string PlainNumber(double value) {
  std::string out;
  AppendPlainNumber(value, out);
  return out;
}

void AppendExactNumber(std::string_view s, std::string& out) {
  const std::string number = PrefixScanner(s).Scan();
  if (number.find_first_of("eE") != std::string::npos) {
    AppendPlainNumber(NumericPrefix(number), out);
    return;
  }
  const bool negative = number.starts_with('-');
  const std::string_view digits = std::string_view(number).substr(negative ? 1 : 0);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::size_t first = std::min(digits.find_first_not_of('0'), point);
  const std::string_view whole = digits.substr(first, point - first);
  std::string_view decimals = digits.substr(std::min(point + 1, digits.size()));
  decimals = decimals.substr(0, decimals.find_last_not_of('0') + 1);
  if (negative && !(whole.empty() && decimals.empty())) out += '-';
  out += whole.empty() ? std::string_view("0") : whole;
  if (!decimals.empty()) out.append(".").append(decimals);
}

std::string ExactNumber(std::string_view s) {
  std::string out;
  AppendExactNumber(s, out);
  return out;
}

double DoubleOf(float value) {
  std::array<char, 64> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  double read = value;
  std::from_chars(digits.data(), written.ptr, read);
  return read;
}

double RoundHalfEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

std::int32_t ToInt32(double value) {
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) {
    throw Error(ErrorNumber::kOverflow, "Overflow: " + PlainNumber(value));
  }
  return static_cast<std::int32_t>(rounded);
}

std::int32_t TextToNumber(std::string_view s) {
  return TrimView(s).empty() ? -1 : ToInt32(NumericPrefix(s));
}

void AppendScaled(std::int64_t value, int scale, std::string& out) {
  const SplitNumber number(value, scale);
  Digits digits;
  digits.PutPlaces(number.decimals, number.places);
  digits.PutWhole(number.whole);
  if (number.negative) digits.Put('-');
  out += digits.View();
}

}  // namespace vorek::text
