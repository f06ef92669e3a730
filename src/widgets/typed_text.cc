#include "widgets/typed_text.h"

#include <charconv>
#include <initializer_list>

#include "text/utf8.h"

namespace vorek {
namespace {

bool IsDirectionMark(char32_t c) {
  return c == U'\u200E' || c == U'\u200F' || c == U'\u061C' || c == U'\uFEFF' ||
         (c >= U'\u202A' && c <= U'\u202E') || (c >= U'\u2066' && c <= U'\u2069');
}

constexpr char32_t kPersianZero = U'\u06F0';
constexpr char32_t kArabicZero = U'\u0660';

// The digit's value, -1 for another character.
int DigitOf(char32_t c) {
  for (const char32_t zero : {U'0', kPersianZero, kArabicZero}) {
    if (c >= zero && c <= zero + 9) return static_cast<int>(c - zero);
  }
  return -1;
}

bool AllDigits(std::string_view s) {
  return !s.empty() && s.find_first_not_of("0123456789") == std::string_view::npos;
}

void AppendSet(std::string& out, std::initializer_list<char32_t> letters) {
  out += '[';
  for (const char32_t letter : letters) text::AppendUtf8(out, letter);
  out += ']';
}

void AppendPattern(std::string& out, char32_t c) {
  const int digit = DigitOf(c);
  if (digit >= 0) {
    const auto step = static_cast<char32_t>(digit);
    AppendSet(out, {U'0' + step, kPersianZero + step, kArabicZero + step});
  } else if (c == U'ي' || c == U'ی') {
    AppendSet(out, {U'ي', U'ی'});
  } else if (c == U'ك' || c == U'ک') {
    AppendSet(out, {U'ك', U'ک'});
  } else if (c == U'%' || c == U'_' || c == U'[') {
    AppendSet(out, {c});
  } else {
    text::AppendUtf8(out, c);
  }
}

}  // namespace

std::string PlainTyped(std::string_view typed) {
  std::string out;
  for (std::size_t at = 0; at < typed.size();) {
    const char32_t c = text::DecodeAt(typed, at);
    const int digit = DigitOf(c);
    if (digit >= 0) {
      out += static_cast<char>('0' + digit);
    } else if (!IsDirectionMark(c)) {
      text::AppendUtf8(out, c);
    }
  }
  return text::Trim(out);
}

std::string FoldTyped(std::string_view typed) {
  const std::string plain = PlainTyped(typed);
  std::string out;
  for (std::size_t at = 0; at < plain.size();) {
    const char32_t c = text::DecodeAt(plain, at);
    text::AppendUtf8(out, text::FoldLetter(c));
  }
  return out;
}

namespace {

struct HoursAndMinutes {
  std::string hours;
  std::string minutes = "0";
};

// A "." or a blank could also part a fraction: minutes behind them have both digits.
HoursAndMinutes SplitHours(const std::string& plain, BareNumber bare) {
  const std::size_t separator = plain.find_first_of(":./- ");
  if (separator != std::string::npos) {
    const std::string minutes = plain.substr(separator + 1);
    const bool clear = plain[separator] == ':' || minutes.size() == 2;
    return {plain.substr(0, separator), clear ? minutes : ""};
  }
  const bool parted = bare == BareNumber::kTimeOfDay && (plain.size() == 3 || plain.size() == 4);
  if (!parted) return {plain};
  return {plain.substr(0, plain.size() - 2), plain.substr(plain.size() - 2)};
}

}  // namespace

std::optional<std::int32_t> ParseHours(std::string_view typed, BareNumber bare, std::int32_t most) {
  const auto [hours, minutes] = SplitHours(PlainTyped(typed), bare);
  if (!AllDigits(hours) || !AllDigits(minutes) || hours.size() > 5 || minutes.size() > 2) {
    return std::nullopt;
  }
  const int minute = std::stoi(minutes);
  const int total = std::stoi(hours) * 60 + minute;
  return minute < 60 && total <= most ? std::optional<std::int32_t>(total) : std::nullopt;
}

std::optional<std::int32_t> TypedKey(std::string_view typed) {
  const std::string plain = PlainTyped(typed);
  if (!plain.starts_with('#')) return std::nullopt;
  std::int32_t key = 0;
  const char* const end = plain.data() + plain.size();
  const auto [behind, error] = std::from_chars(plain.data() + 1, end, key);
  return error == std::errc() && behind == end && key > 0 ? std::optional(key) : std::nullopt;
}

std::string InGuillemets(std::string_view typed) {
  constexpr std::size_t kMost = 50;  // code points
  const std::string plain = text::Trim(typed);
  const bool cut = text::Length(plain) > kMost;
  return "«" + (cut ? text::Left(plain, kMost) + "..." : plain) + "»";
}

std::string NoRowText(std::string_view typed) { return InGuillemets(typed) + " در فهرست نيست"; }

std::string SeveralRowsText(std::string_view typed) {
  return InGuillemets(typed) + " در چند سطر فهرست هست؛ يكي را برگزينيد";
}

std::string LikePattern(std::string_view typed) {
  std::string out;
  for (std::size_t at = 0; at < typed.size();) {
    const char32_t c = text::DecodeAt(typed, at);
    if (!IsDirectionMark(c)) AppendPattern(out, c);
  }
  return out;
}

std::string SqlText(std::string_view text) { return "N'" + text::Replace(text, "'", "''") + "'"; }

}  // namespace vorek
