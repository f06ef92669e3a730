#include "adapters/odbc/value_text.h"

namespace vorek::odbc {
namespace {

void AppendPadded(unsigned value, unsigned digits, std::string& out) {
  std::string text = std::to_string(value);
  out.append(text.size() < digits ? digits - text.size() : 0, '0');
  out += text;
}

bool AddDigit(std::int64_t& value, int digit) {
  return !__builtin_mul_overflow(value, std::int64_t{10}, &value) &&
         !__builtin_sub_overflow(value, std::int64_t{digit}, &value);
}

}  // namespace

std::optional<std::int64_t> ScaledOf(std::string_view text, int scale) {
  std::int64_t value = 0;  // kept negative: the lowest number has no positive twin
  bool negative = false;
  bool in_fraction = false;
  bool has_digit = false;
  int places = 0;
  for (const char c : text) {
    if (c >= '0' && c <= '9') {
      has_digit = true;
      if (in_fraction && places == scale) {
        if (c != '0') return std::nullopt;
        continue;
      }
      if (!AddDigit(value, c - '0')) return std::nullopt;
      places += in_fraction ? 1 : 0;
    } else if (c == '.' && !in_fraction) {
      in_fraction = true;
    } else if (c == '-' && !has_digit) {
      negative = true;
    } else if (c != '$' && c != ',' && c != ' ' && c != '+') {
      return std::nullopt;
    }
  }
  if (!has_digit) return std::nullopt;
  for (; places < scale; ++places) {
    if (!AddDigit(value, 0)) return std::nullopt;
  }
  if (negative) return value;
  if (value == INT64_MIN) return std::nullopt;
  return -value;
}

std::string_view WithoutEndingZeros(std::string_view decimal) {
  if (decimal.find('.') == std::string_view::npos) return decimal;
  decimal.remove_suffix(decimal.size() - 1 - decimal.find_last_not_of('0'));
  if (decimal.ends_with('.')) decimal.remove_suffix(1);
  return decimal;
}

void AppendDate(const SQL_DATE_STRUCT& value, std::string& out) {
  AppendPadded(static_cast<unsigned>(value.year), 4, out);
  out += '-';
  AppendPadded(value.month, 2, out);
  out += '-';
  AppendPadded(value.day, 2, out);
}

void AppendTime(const SQL_TIMESTAMP_STRUCT& value, std::string& out) {
  AppendPadded(value.hour, 2, out);
  out += ':';
  AppendPadded(value.minute, 2, out);
  out += ':';
  AppendPadded(value.second, 2, out);
  const unsigned milliseconds = static_cast<unsigned>(value.fraction / 1000000);
  if (milliseconds == 0) return;
  out += '.';
  AppendPadded(milliseconds, 3, out);
}

void AppendTimestamp(const SQL_TIMESTAMP_STRUCT& value, std::string& out) {
  AppendDate({value.year, value.month, value.day}, out);
  out += ' ';
  AppendTime(value, out);
}

void AppendHex(const unsigned char* bytes, std::size_t count, std::string& out) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (std::size_t i = 0; i < count; ++i) {
    out += kDigits[bytes[i] >> 4];
    out += kDigits[bytes[i] & 0xF];
  }
}

}  // namespace vorek::odbc
