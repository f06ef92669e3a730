#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>

#include "adapters/sqlite/code_page.h"
#include "adapters/sqlite/functions.h"
#include "text/number.h"
#include "text/utf8.h"

// Texts. Lengths and positions count code points, from 1.
namespace vorek::sqlite {
namespace {

constexpr std::int64_t kMostCharacters = 100'000'000;  // that one call makes

// Where SUBSTRING begins, from 1, and how far it goes; one that begins in front of the text is that
// much shorter. Fails for a negative length.
struct Span {
  std::size_t start;
  std::size_t length;
};
std::optional<Span> SpanOf(sqlite3_context* context, sqlite3_value** values) {
  const std::int64_t start = sqlite3_value_int64(values[1]);
  std::int64_t length = sqlite3_value_int64(values[2]);
  if (length < 0) {
    Fail(context, "Invalid length parameter passed to the SUBSTRING function.");
    return std::nullopt;
  }
  length = std::min<std::int64_t>(length, INT32_MAX);
  if (start >= 1) return Span{static_cast<std::size_t>(start), static_cast<std::size_t>(length)};
  length = std::max<std::int64_t>(0, length + std::max<std::int64_t>(start, -INT32_MAX) - 1);
  return Span{1, static_cast<std::size_t>(length)};
}

void Substring(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Span> span = SpanOf(context, values);
  if (span) ResultText(context, text::Mid(TextOf(values[0]), span->start, span->length));
}

void SubBytes(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<Span> span = SpanOf(context, values);
  if (!span) return;
  const auto* bytes = static_cast<const char*>(sqlite3_value_blob(values[0]));
  const std::string_view all(bytes, static_cast<std::size_t>(sqlite3_value_bytes(values[0])));
  const std::string_view part = all.substr(std::min(span->start - 1, all.size()), span->length);
  sqlite3_result_blob64(context, part.data(), part.size(), SQLITE_TRANSIENT);
}

// SQLite's own length ends at a NUL. The blanks behind a text don't count for LEN.
void Letters(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  sqlite3_result_int64(context, static_cast<std::int64_t>(text::Length(TextOf(values[0]))));
}

void Len(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view s = TextOf(values[0]);
  const std::string_view shown = s.substr(0, s.find_last_not_of(' ') + 1);
  sqlite3_result_int64(context, static_cast<std::int64_t>(text::Length(shown)));
}

bool TakeCount(sqlite3_context* context, sqlite3_value* value, const char* function,
               std::size_t& count) {
  const std::int64_t given = sqlite3_value_int64(value);
  if (given < 0) {
    Fail(context, std::string("Invalid length parameter passed to the ") + function + " function.");
    return false;
  }
  count = static_cast<std::size_t>(given);
  return true;
}

void LeftOf(sqlite3_context* context, int count, sqlite3_value** values) {
  std::size_t length = 0;
  if (AnyNull(context, count, values) || !TakeCount(context, values[1], "LEFT", length)) return;
  ResultText(context, text::Left(TextOf(values[0]), length));
}

void RightOf(sqlite3_context* context, int count, sqlite3_value** values) {
  std::size_t length = 0;
  if (AnyNull(context, count, values) || !TakeCount(context, values[1], "RIGHT", length)) return;
  ResultText(context, text::Right(TextOf(values[0]), length));
}

void CharIndex(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view needle = TextOf(values[0]);
  const std::string_view s = TextOf(values[1]);
  const std::int64_t start = std::max<std::int64_t>(1, sqlite3_value_int64(values[2]));
  const std::size_t from = text::ByteOffset(s, static_cast<std::size_t>(start - 1));
  const std::size_t hit =
      needle.empty() ? std::string_view::npos : text::FindIgnoreCase(s, needle, from);
  if (hit == std::string_view::npos) return sqlite3_result_int64(context, 0);
  sqlite3_result_int64(context, static_cast<std::int64_t>(text::Length(s.substr(0, hit))) + 1);
}

void ReplaceAll(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view s = TextOf(values[0]);
  const std::string_view put = TextOf(values[2]);
  if (static_cast<std::int64_t>(s.size()) * static_cast<std::int64_t>(put.size() + 1) >
      kMostCharacters) {
    return Fail(context, "String or binary data would be truncated.");
  }
  const std::string out = text::ReplaceIgnoreCase(s, TextOf(values[1]), put);
  if (!MustStop(context, out.size())) ResultText(context, out);
}

void Stuff(sqlite3_context* context, int count, sqlite3_value** values) {
  // A NULL to put in is an empty text.
  if (AnyNull(context, std::min(count, 3), values)) return;
  const std::string_view s = TextOf(values[0]);
  const std::int64_t start = sqlite3_value_int64(values[1]);
  const std::int64_t length = sqlite3_value_int64(values[2]);
  const auto size = static_cast<std::int64_t>(text::Length(s));
  if (start < 1 || length < 0 || start > size) return sqlite3_result_null(context);
  const std::int64_t end = std::min(size, start - 1 + std::min(length, size));
  std::string out(s.substr(0, text::ByteOffset(s, static_cast<std::size_t>(start - 1))));
  out += TextOf(values[3]);
  out += s.substr(text::ByteOffset(s, static_cast<std::size_t>(end)));
  ResultText(context, out);
}

void Upper(sqlite3_context* context, int count, sqlite3_value** values) {
  if (!AnyNull(context, count, values)) ResultText(context, text::ToUpper(TextOf(values[0])));
}

void Lower(sqlite3_context* context, int count, sqlite3_value** values) {
  if (!AnyNull(context, count, values)) ResultText(context, text::ToLower(TextOf(values[0])));
}

void Reverse(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view s = TextOf(values[0]);
  std::string out;
  out.reserve(s.size());
  for (std::size_t end = s.size(); end > 0;) {
    std::size_t begin = end - 1;
    while (begin > 0 && (static_cast<unsigned char>(s[begin]) & 0xC0U) == 0x80U) --begin;
    out += s.substr(begin, end - begin);
    end = begin;
  }
  ResultText(context, out);
}

void Replicate(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view s = TextOf(values[0]);
  const std::int64_t times = sqlite3_value_int64(values[1]);
  if (times < 0) return sqlite3_result_null(context);
  if (times > 0 && static_cast<std::int64_t>(s.size()) > kMostCharacters / times) {
    return Fail(context, "String or binary data would be truncated.");
  }
  std::string out;
  out.reserve(s.size() * static_cast<std::size_t>(times));
  for (std::int64_t i = 0; i < times; ++i) out += s;
  if (!MustStop(context, out.size())) ResultText(context, out);
}

// STR(number, length, places): right in its field, stars if it doesn't fit.
void Str(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::int64_t length = sqlite3_value_int64(values[1]);
  const std::int64_t places = std::clamp<std::int64_t>(sqlite3_value_int64(values[2]), 0, 16);
  if (length < 1 || length > 8000) return sqlite3_result_null(context);
  const auto field = static_cast<std::size_t>(length);
  char digits[400];
  const auto write = [&](std::int64_t shown) {
    // Half goes away from zero, as a person rounds.
    const double value = sqlite3_value_double(values[0]);
    const double unit = std::pow(10.0, static_cast<double>(shown));
    double rounded = std::round(value * unit) / unit;
    if (!std::isfinite(rounded)) rounded = value;
    std::snprintf(digits, sizeof digits, "%.*f", static_cast<int>(shown), rounded);
    return std::string(digits);
  };
  std::string out = write(places);
  if (out.size() > field && places > 0) {
    const std::size_t point = out.find('.');
    if (point <= field) {
      out = write(std::max<std::int64_t>(
          0, static_cast<std::int64_t>(field) - static_cast<std::int64_t>(point) - 1));
    }
  }
  if (out.size() > field) out.assign(field, '*');
  out.insert(0, field - out.size(), ' ');
  ResultText(context, out);
}

void CharOf(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::int64_t code = sqlite3_value_int64(values[0]);
  if (code < 0 || code > 255) return sqlite3_result_null(context);
  std::string out;
  text::AppendUtf8(out, LetterOf(static_cast<unsigned char>(code)));
  ResultText(context, out);
}

void NCharOf(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::int64_t code = sqlite3_value_int64(values[0]);
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < 0 || code > 0x10FFFF || surrogate) return sqlite3_result_null(context);
  std::string out;
  text::AppendUtf8(out, static_cast<char32_t>(code));
  ResultText(context, out);
}

// The text as a varchar keeps it, a byte for each letter. Fails for a letter that it can't keep.
std::optional<std::string> BytesOf(sqlite3_context* context, std::string_view s) {
  std::string bytes;
  for (std::size_t at = 0; at < s.size();) {
    const std::size_t begin = at;
    const std::optional<unsigned char> byte = ByteOf(text::DecodeAt(s, at));
    if (!byte) {
      Fail(context, "The letter '" + std::string(s.substr(begin, at - begin)) +
                        "' has no place in the code page of varchar.");
      return std::nullopt;
    }
    bytes += static_cast<char>(*byte);
  }
  return bytes;
}

void Ascii(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view s = TextOf(values[0]);
  if (s.empty()) return sqlite3_result_null(context);
  const std::optional<std::string> bytes = BytesOf(context, text::Left(s, 1));
  if (bytes) sqlite3_result_int(context, static_cast<unsigned char>(bytes->front()));
}

void Bytes(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::optional<std::string> bytes = BytesOf(context, TextOf(values[0]));
  if (bytes) sqlite3_result_blob64(context, bytes->data(), bytes->size(), SQLITE_TRANSIENT);
}

// No name of an object is longer than 128 letters.
void QuoteName(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view name = TextOf(values[0]);
  if (text::Length(name) > 128) return sqlite3_result_null(context);
  ResultText(context, "[" + text::Replace(name, "]", "]]") + "]");
}

// A text for a column: cut only where blanks are cut.
void FitText(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const auto length = static_cast<std::size_t>(sqlite3_value_int64(values[1]));
  if (sqlite3_value_type(values[0]) == SQLITE_BLOB) {
    if (static_cast<std::size_t>(sqlite3_value_bytes(values[0])) > length) {
      return Fail(context, "String or binary data would be truncated.");
    }
    return sqlite3_result_value(context, values[0]);
  }
  const std::string_view s = TextOf(values[0]);
  if (s.size() <= length) return sqlite3_result_value(context, values[0]);
  const std::size_t end = text::ByteOffset(s, length);
  if (s.find_first_not_of(' ', end) != std::string_view::npos) {
    return Fail(context, "String or binary data would be truncated.");
  }
  ResultText(context, s.substr(0, end));
}

void PadTo(sqlite3_context* context, sqlite3_value** values, bool strict) {
  const auto length = static_cast<std::size_t>(sqlite3_value_int64(values[1]));
  std::string s(TextOf(values[0]));
  const std::size_t has = text::Length(s);
  if (has > length) {
    const std::size_t end = text::ByteOffset(s, length);
    if (strict && s.find_first_not_of(' ', end) != std::string::npos) {
      return Fail(context, "String or binary data would be truncated.");
    }
    s.resize(end);
  } else {
    s.append(length - has, ' ');
  }
  ResultText(context, s);
}

void Pad(sqlite3_context* context, int count, sqlite3_value** values) {
  if (!AnyNull(context, count, values)) PadTo(context, values, false);
}
void PadStrict(sqlite3_context* context, int count, sqlite3_value** values) {
  if (!AnyNull(context, count, values)) PadTo(context, values, true);
}

void NumberFit(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  const std::string_view s = TextOf(values[0]);
  if (s.size() <= static_cast<std::size_t>(sqlite3_value_int64(values[1]))) {
    return sqlite3_result_value(context, values[0]);
  }
  FailOverflow(context, "varchar");
}

// vk_int_text(whole number, length): a star if it doesn't fit.
void IntText(sqlite3_context* context, int count, sqlite3_value** values) {
  if (AnyNull(context, count, values)) return;
  std::array<char, 24> digits{};
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), sqlite3_value_int64(values[0]));
  const auto size = static_cast<std::size_t>(end - digits.data());
  const bool fits =
      error == std::errc() && size <= static_cast<std::size_t>(sqlite3_value_int64(values[1]));
  ResultText(context, fits ? std::string_view(digits.data(), size) : std::string_view("*"));
}

void NewId(sqlite3_context* context, int, sqlite3_value**) {
  std::uint64_t high = 0;
  std::uint64_t low = 0;
  sqlite3_randomness(sizeof high, &high);
  sqlite3_randomness(sizeof low, &low);
  high = (high & ~0xF000ULL) | 0x4000ULL;
  low = (low & ~(3ULL << 62U)) | (1ULL << 63U);
  char out[40];
  std::snprintf(out, sizeof out, "%08X-%04X-%04X-%04X-%012llX", static_cast<unsigned>(high >> 32U),
                static_cast<unsigned>((high >> 16U) & 0xFFFFU),
                static_cast<unsigned>(high & 0xFFFFU), static_cast<unsigned>(low >> 48U),
                static_cast<unsigned long long>(low & 0xFFFFFFFFFFFFULL));
  ResultText(context, out);
}

}  // namespace

void RegisterTextFunctions(const Registry& registry) {
  Register(registry, "vk_substring", 3, Substring);
  Register(registry, "vk_subbytes", 3, SubBytes);
  Register(registry, "vk_letters", 1, Letters);
  Register(registry, "vk_len", 1, Len);
  Register(registry, "vk_left", 2, LeftOf);
  Register(registry, "vk_right", 2, RightOf);
  Register(registry, "vk_charindex", 3, CharIndex);
  Register(registry, "vk_replace", 3, ReplaceAll);
  Register(registry, "vk_stuff", 4, Stuff);
  Register(registry, "vk_upper", 1, Upper);
  Register(registry, "vk_lower", 1, Lower);
  Register(registry, "vk_reverse", 1, Reverse);
  Register(registry, "vk_replicate", 2, Replicate);
  Register(registry, "vk_str", 3, Str);
  Register(registry, "vk_char", 1, CharOf);
  Register(registry, "vk_nchar", 1, NCharOf);
  Register(registry, "vk_ascii", 1, Ascii);
  Register(registry, "vk_bytes", 1, Bytes);
  Register(registry, "vk_quotename", 1, QuoteName);
  Register(registry, "vk_fit_text", 2, FitText);
  Register(registry, "vk_pad", 2, Pad);
  Register(registry, "vk_pad_strict", 2, PadStrict);
  Register(registry, "vk_number_fit", 2, NumberFit);
  Register(registry, "vk_int_text", 2, IntText);
  RegisterVolatile(registry, "vk_newid", 0, NewId);
}

}  // namespace vorek::sqlite
