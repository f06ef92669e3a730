#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include "adapters/sqlite/exact.h"
#include "adapters/sqlite/functions.h"
#include "text/number.h"
#include "text/utf8.h"

// Conversions between texts and numbers. Each function that can fail has a twin "vk_try_..." that
// gives NULL instead.
namespace vorek::sqlite {
namespace {

struct Bounds {
  std::int64_t least;
  std::int64_t most;
};

Bounds BoundsOf(std::string_view type) {
  if (type == "tinyint") return {0, 255};
  if (type == "smallint") return {INT16_MIN, INT16_MAX};
  if (type == "int") return {INT32_MIN, INT32_MAX};
  return {INT64_MIN, INT64_MAX};
}

void ResultWhole(sqlite3_context* context, std::int64_t value, std::string_view type) {
  if (type == "bit") return sqlite3_result_int(context, value != 0 ? 1 : 0);
  const Bounds bounds = BoundsOf(type);
  if (value < bounds.least || value > bounds.most) return FailOverflow(context, type);
  sqlite3_result_int64(context, value);
}

// A text in a message: a short piece of it.
std::string Shown(std::string_view s) { return text::Left(s, 60); }

std::string_view KindName(std::string_view type) { return type.substr(0, type.find('(')); }

void FailConversion(sqlite3_context* context, std::string_view value, std::string_view from,
                    std::string_view to) {
  Fail(context, "Conversion failed when converting the " + std::string(KindName(from)) +
                    " value '" + Shown(value) + "' to data type " + std::string(KindName(to)) +
                    ".");
}

void FailType(sqlite3_context* context, std::string_view from, std::string_view to) {
  Fail(context, "Error converting data type " + std::string(KindName(from)) + " to " +
                    std::string(KindName(to)) + ".");
}

std::string_view Trimmed(std::string_view s) {
  const std::size_t begin = std::min(s.find_first_not_of(" \t\r\n"), s.size());
  s.remove_prefix(begin);
  while (!s.empty() && std::string_view(" \t\r\n").find(s.back()) != std::string_view::npos) {
    s.remove_suffix(1);
  }
  return s;
}

// vk_int(text, from, to)
void TextToInt(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view text = TextOf(values[0]);
  const std::string_view from = TextOf(values[1]);
  const std::string_view to = TextOf(values[2]);
  std::string_view s = Trimmed(text);
  if (to == "bit") {
    if (text::EqualsIgnoreCase(s, "true")) return sqlite3_result_int(context, 1);
    if (text::EqualsIgnoreCase(s, "false")) return sqlite3_result_int(context, 0);
  }
  if (s.empty()) return sqlite3_result_int(context, 0);
  const bool plus = s.front() == '+';
  if (plus) s.remove_prefix(1);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(s.data(), s.data() + s.size(), value);
  const bool digits = end == s.data() + s.size() && !s.empty() && !(plus && s.front() == '-');
  if (digits && error == std::errc::result_out_of_range) {
    return Fail(context, "The conversion of the " + std::string(KindName(from)) + " value '" +
                             Shown(text) + "' overflowed an " + std::string(to) + " column.");
  }
  if (!digits) return FailConversion(context, text, from, to);
  const Bounds bounds = BoundsOf(to);
  if (to != "bit" && (value < bounds.least || value > bounds.most)) {
    return Fail(context, "The conversion of the " + std::string(KindName(from)) + " value '" +
                             Shown(text) + "' overflowed an " + std::string(to) + " column.");
  }
  ResultWhole(context, value, to);
}

// Units for a type of so many digits; money has the range of 64 bits, which is told by its name.
bool FitsType(Wide units, int digits, std::string_view to) {
  const std::string_view kind = KindName(to);
  if (kind == "money") return units >= INT64_MIN && units <= INT64_MAX;
  if (kind == "smallmoney") return units >= INT32_MIN && units <= INT32_MAX;
  return HasDigits(units, digits);
}

void ResultUnits(sqlite3_context* context, const DecimalText& number, int digits,
                 std::string_view to) {
  if (!number.fits || !FitsType(number.units, digits, to)) {
    return FailOverflow(context, KindName(to) == "decimal" ? "numeric" : KindName(to));
  }
  ResultWide(context, number.units);
}

// vk_decimal(text, from, scale, digits, to)
void TextToDecimal(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view text = TextOf(values[0]);
  const std::string_view to = TextOf(values[4]);
  std::string s(Trimmed(text));
  const bool money = KindName(to) == "money" || KindName(to) == "smallmoney";
  if (money) {
    s.erase(std::remove(s.begin(), s.end(), ','), s.end());
    const std::size_t sign = s.find('$');
    if (sign == 0 || (sign == 1 && s[0] == '-')) s.erase(sign, 1);
    if (s.empty()) s = "0";
  }
  const DecimalText number = ReadDecimal(s, sqlite3_value_int(values[2]));
  if (!number.well_formed) {
    if (money) return FailConversion(context, text, TextOf(values[1]), to);
    return FailType(context, TextOf(values[1]), "numeric");
  }
  ResultUnits(context, number, sqlite3_value_int(values[3]), to);
}

// vk_float(text, from)
void TextToFloat(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  std::string_view s = Trimmed(TextOf(values[0]));
  if (s.empty()) return sqlite3_result_double(context, 0);
  if (s.front() == '+') s.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(s.data(), s.data() + s.size(), value);
  if (end != s.data() + s.size() || error != std::errc() || !std::isfinite(value)) {
    return FailType(context, TextOf(values[1]), "float");
  }
  sqlite3_result_double(context, value);
}

// vk_range(integer, to)
void Range(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  if (!IsInteger(values[0])) return FailOverflow(context, TextOf(values[1]));
  ResultWhole(context, sqlite3_value_int64(values[0]), TextOf(values[1]));
}

// vk_whole(units, scale, rounds, to): decimals are cut off, money is rounded.
void Whole(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view to = TextOf(values[3]);
  const std::optional<Wide> units = WideOf(values[0]);
  if (!units) return FailOverflow(context, to);
  const Wide unit = WidePower(sqlite3_value_int(values[1]));
  const Wide whole =
      Scale(*units, 1, 0, unit, sqlite3_value_int(values[2]) != 0).value_or(Wide{INT64_MAX} + 1);
  if (whole < INT64_MIN || whole > INT64_MAX) return FailOverflow(context, to);
  ResultWhole(context, static_cast<std::int64_t>(whole), to);
}

// vk_trunc(real, to)
void Trunc(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const double value = std::trunc(sqlite3_value_double(values[0]));
  const std::string_view to = TextOf(values[1]);
  if (!(std::abs(value) < 9.223372036854775e18)) return FailOverflow(context, to);
  ResultWhole(context, static_cast<std::int64_t>(value), to);
}

// vk_exact(real, scale, digits, to)
void Exact(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const int scale = sqlite3_value_int(values[1]);
  const double value = sqlite3_value_double(values[0]);
  const std::string_view to = TextOf(values[3]);
  // Seventeen digits tell a double from its neighbours; fifteen is what its text is good for.
  char digits[400];
  std::snprintf(digits, sizeof digits, "%.*f", std::min(scale + 3, 20), value);
  char precise[64];
  std::snprintf(precise, sizeof precise, "%.15g", value);
  const bool plain = std::string_view(precise).find('e') == std::string_view::npos;
  ResultUnits(context, ReadDecimal(plain ? precise : digits, scale), sqlite3_value_int(values[2]),
              to);
}

// vk_fit(units, digits, to): an exact number that goes where fewer digits have room.
void Fit(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Wide> units = WideOf(values[0]);
  const DecimalText number{true, units.has_value(), units.value_or(0)};
  ResultUnits(context, number, sqlite3_value_int(values[1]), TextOf(values[2]));
}

// vk_decimal_text(units, scale): all places of the scale.
void DecimalToText(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Wide> units = WideOf(values[0]);
  if (!units) return FailOverflow(context, "numeric");
  ResultText(context, WideText(*units, sqlite3_value_int(values[1])));
}

// vk_money_text(units, style): 0 two places, 1 two with commas, 2 four places.
void MoneyToText(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const int style = sqlite3_value_int(values[1]);
  if (!IsInteger(values[0])) return FailOverflow(context, "money");
  const std::int64_t units = sqlite3_value_int64(values[0]);
  if (style == 2 || style == 126) return ResultText(context, WideText(units, 4));
  const Wide cents = (Wide{units} + (units < 0 ? -50 : 50)) / 100;
  std::string out = WideText(cents, 2);
  if (style == 1) {
    const std::size_t first = out[0] == '-' ? 1 : 0;
    for (std::size_t at = out.find('.'); at > first + 3;) {
      at -= 3;
      out.insert(at, ",");
    }
  }
  ResultText(context, out);
}

// vk_float_text(real, style): 0 six digits, 1 eight, 2 sixteen, 3 seventeen.
void FloatToText(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const int style = sqlite3_value_int(values[1]);
  const double value = sqlite3_value_double(values[0]);
  char digits[64];
  if (style == 0) {
    std::snprintf(digits, sizeof digits, "%.6g", value);
  } else {
    const int places = style == 1 ? 7 : style == 2 ? 15 : 16;
    std::snprintf(digits, sizeof digits, "%.*e", places, value);
  }
  // An exponent has three digits.
  std::string out = digits;
  const std::size_t mark = out.find('e');
  if (mark != std::string::npos && out.size() - mark == 4) out.insert(mark + 2, "0");
  ResultText(context, out);
}

// A number as one of the types reads it: money takes a sign, "$", digits with commas, and each of
// them by itself; float an exponent, with "d" too.
bool LooksNumeric(std::string_view s) {
  if (s.empty()) return false;
  std::string digits;
  bool sign = false;
  bool currency = false;
  for (const char c : s) {
    const bool is_sign = c == '+' || c == '-';
    if (is_sign && !sign && digits.empty()) {
      sign = true;
    } else if (c == '$' && !currency && digits.empty()) {
      currency = true;
    } else if (c != ',') {
      digits += c;
    }
  }
  if (digits.empty() || digits == ".") return true;
  if (ReadDecimal(digits, kMostDigits).well_formed && digits[0] != '+' && digits[0] != '-') {
    return true;
  }
  std::string real(s);
  const std::size_t exponent = real.find_first_of("dD");
  if (exponent != std::string::npos) real[exponent] = 'e';
  const char* begin = real.data() + (real[0] == '+' ? 1 : 0);
  const bool starts = *begin == '-' || *begin == '.' || (*begin >= '0' && *begin <= '9');
  double value = 0;
  const auto [end, error] = std::from_chars(begin, real.data() + real.size(), value);
  return starts && error == std::errc() && end == real.data() + real.size() && std::isfinite(value);
}

void IsNumeric(sqlite3_context* context, int, sqlite3_value** values) {
  const std::string_view text = TextOf(values[0]);
  // A tab or a line's end alone passes for an empty amount of money.
  const bool blank =
      !text.empty() && text.find_first_not_of(" \t\r\n\f\v") == std::string_view::npos;
  const bool numeric =
      blank ? text.find_first_not_of(' ') != std::string_view::npos : LooksNumeric(Trimmed(text));
  sqlite3_result_int(context, numeric ? 1 : 0);
}

void Guid(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  std::string s(Trimmed(TextOf(values[0])));
  if (s.size() == 38 && s.front() == '{' && s.back() == '}') s = s.substr(1, 36);
  bool well_formed = s.size() == 36;
  for (std::size_t i = 0; well_formed && i < s.size(); ++i) {
    const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
    well_formed = dash ? s[i] == '-' : std::isxdigit(static_cast<unsigned char>(s[i])) != 0;
  }
  if (!well_formed) {
    return Fail(context,
                "Conversion failed when converting from a character string to "
                "uniqueidentifier.");
  }
  ResultText(context, text::ToUpper(s));
}

// vk_hex(bytes, style): style 1 has "0x" in front.
void Hex(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const auto* bytes = static_cast<const unsigned char*>(sqlite3_value_blob(values[0]));
  const int size = sqlite3_value_bytes(values[0]);
  std::string out = sqlite3_value_int(values[1]) == 1 ? "0x" : "";
  for (int i = 0; i < size; ++i) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    out += kDigits[bytes[i] >> 4U];
    out += kDigits[bytes[i] & 15U];
  }
  ResultText(context, out);
}

void Unhex(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  std::string_view s = TextOf(values[0]);
  const bool marked = s.size() >= 2 && s[0] == '0' && (s[1] == 'x' || s[1] == 'X');
  if (marked) s.remove_prefix(2);
  std::string bytes;
  bool well_formed = s.size() % 2 == 0 && marked == (sqlite3_value_int(values[1]) == 1);
  for (std::size_t i = 0; well_formed && i < s.size(); i += 2) {
    unsigned byte = 0;
    const auto [end, error] = std::from_chars(s.data() + i, s.data() + i + 2, byte, 16);
    well_formed = error == std::errc() && end == s.data() + i + 2;
    bytes += static_cast<char>(byte);
  }
  if (!well_formed) return FailType(context, "varchar", "varbinary");
  sqlite3_result_blob(context, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
}

// vk_int_of_bytes(bytes, to): the last bytes, the highest first.
void IntOfBytes(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const auto* bytes = static_cast<const unsigned char*>(sqlite3_value_blob(values[0]));
  const int size = sqlite3_value_bytes(values[0]);
  const std::string_view to = TextOf(values[1]);
  const int takes = to == "bigint" ? 8 : to == "int" ? 4 : to == "smallint" ? 2 : 1;
  std::uint64_t value = 0;
  for (int i = std::max(0, size - takes); i < size; ++i) value = (value << 8U) | bytes[i];
  const auto whole = static_cast<std::int64_t>(value);
  if (takes == 4) return sqlite3_result_int64(context, static_cast<std::int32_t>(value));
  sqlite3_result_int64(context, takes == 2 ? static_cast<std::int16_t>(value) : whole);
}

// vk_bytes_of_int(whole number, bytes of its type, length, fixed): the highest first; a fixed
// length is filled up in front, a short one cut there.
void BytesOfInt(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const auto value = static_cast<std::uint64_t>(sqlite3_value_int64(values[0]));
  const auto size = static_cast<std::size_t>(sqlite3_value_int64(values[1]));
  const std::int64_t length = sqlite3_value_int64(values[2]);
  const bool fixed = sqlite3_value_int(values[3]) != 0;
  std::string bytes;
  for (std::size_t i = size; i-- > 0;) {
    bytes += static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
  }
  const std::size_t wanted = length < 0 ? size : static_cast<std::size_t>(length);
  if (bytes.size() > wanted) bytes.erase(0, bytes.size() - wanted);
  if (fixed && bytes.size() < wanted) bytes.insert(0, wanted - bytes.size(), '\0');
  sqlite3_result_blob64(context, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
}

// vk_pad_bytes(bytes, length): cut or filled up behind.
void PadBytes(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const auto* data = static_cast<const char*>(sqlite3_value_blob(values[0]));
  std::string bytes(data == nullptr ? "" : data,
                    static_cast<std::size_t>(sqlite3_value_bytes(values[0])));
  bytes.resize(static_cast<std::size_t>(sqlite3_value_int64(values[1])), '\0');
  sqlite3_result_blob64(context, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
}

// vk_key(value, column): a row's key can't be NULL, for which SQLite would take a new number.
void Key(sqlite3_context* context, int, sqlite3_value** values) {
  if (sqlite3_value_type(values[0]) != SQLITE_NULL) {
    return sqlite3_result_value(context, values[0]);
  }
  Fail(context, "Cannot insert the value NULL into column '" + std::string(TextOf(values[1])) +
                    "'; column does not allow nulls.");
}

}  // namespace

void RegisterConversions(const Registry& registry) {
  Register(registry, "vk_int", 3, TextToInt, "vk_try_int");
  Register(registry, "vk_decimal", 5, TextToDecimal, "vk_try_decimal");
  Register(registry, "vk_float", 2, TextToFloat, "vk_try_float");
  Register(registry, "vk_range", 2, Range, "vk_try_range");
  Register(registry, "vk_whole", 4, Whole, "vk_try_whole");
  Register(registry, "vk_trunc", 2, Trunc, "vk_try_trunc");
  Register(registry, "vk_exact", 4, Exact, "vk_try_exact");
  Register(registry, "vk_fit", 3, Fit, "vk_try_fit");
  Register(registry, "vk_decimal_text", 2, DecimalToText);
  Register(registry, "vk_money_text", 2, MoneyToText);
  Register(registry, "vk_float_text", 2, FloatToText);
  Register(registry, "vk_isnumeric", 1, IsNumeric);
  Register(registry, "vk_guid", 1, Guid, "vk_try_guid");
  Register(registry, "vk_hex", 2, Hex);
  Register(registry, "vk_unhex", 2, Unhex, "vk_try_unhex");
  Register(registry, "vk_int_of_bytes", 2, IntOfBytes);
  Register(registry, "vk_bytes_of_int", 4, BytesOfInt);
  Register(registry, "vk_pad_bytes", 2, PadBytes);
  Register(registry, "vk_key", 2, Key);
}

}  // namespace vorek::sqlite
