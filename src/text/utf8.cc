#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "text/long_needle.h"

namespace vorek::text {
namespace {

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// The length of the well-formed sequence at `at`, 1 for a malformed byte, with its value.
std::size_t Sequence(std::string_view s, std::size_t at, char32_t& value) {
  const auto lead = static_cast<unsigned char>(s[at]);
  value = lead;
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
  value = lead & (0xFFU >> (length + 1));
  bool well_formed = lead >= 0xC2 && lead <= 0xF4 && at + length <= s.size();
  for (std::size_t i = 1; well_formed && i < length; ++i) {
    well_formed = IsContinuation(s[at + i]);
    value = (value << 6U) | (static_cast<unsigned char>(s[at + i]) & 0x3FU);
  }
  const bool in_range =
      value >= kLeast[length] && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
  if (well_formed && in_range) return length;
  value = 0xFFFD;
  return 1;
}

bool InRange(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }

// Capitals from the first to the last, each `step` behind the one before, whose small letters lie
// at one distance.
struct LetterRun {
  char32_t first;
  char32_t last;
  char32_t step;
  std::int32_t distance;
};

constexpr LetterRun kLetterRuns[] = {
#include "text/letter_case.inc"
};
constexpr std::size_t kRunCount = std::size(kLetterRuns);

// The same runs by their small letters, the distance turned.
constexpr std::array<LetterRun, kRunCount> RunsOfSmallLetters() {
  std::array<LetterRun, kRunCount> runs{};
  for (std::size_t i = 0; i < kRunCount; ++i) {
    const LetterRun& run = kLetterRuns[i];
    const auto moved = [&run](char32_t c) {
      return static_cast<char32_t>(static_cast<std::int32_t>(c) + run.distance);
    };
    runs[i] = {moved(run.first), moved(run.last), run.step, -run.distance};
  }
  std::sort(runs.begin(), runs.end(),
            [](const LetterRun& a, const LetterRun& b) { return a.first < b.first; });
  return runs;
}
constexpr std::array<LetterRun, kRunCount> kSmallRuns = RunsOfSmallLetters();

char32_t Shift(char32_t c, bool up) {
  if (c < 0x80) return InRange(c, up ? 'a' : 'A', up ? 'z' : 'Z') ? c ^ 0x20U : c;
  if (c < 0xC0 || InRange(c, 0x0588, 0x109F)) return c;  // Arabic letters among others have no case
  const LetterRun* const begin = up ? kSmallRuns.data() : kLetterRuns;
  const LetterRun* const behind =
      std::upper_bound(begin, begin + kRunCount, c,
                       [](char32_t letter, const LetterRun& run) { return letter < run.first; });
  if (behind == begin) return c;
  const LetterRun& run = behind[-1];
  if (c > run.last || (c - run.first) % run.step != 0) return c;
  return static_cast<char32_t>(static_cast<std::int32_t>(c) + run.distance);
}

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool IsAscii(std::string_view s) {
  return std::all_of(s.begin(), s.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string MapCase(std::string_view s, bool up) {
  std::string out;
  out.reserve(s.size());
  for (std::size_t at = 0; at < s.size();) {
    const std::size_t begin = at;
    const char32_t c = DecodeAt(s, at);
    const char32_t mapped = Shift(c, up);
    if (mapped == c) {
      out.append(s.substr(begin, at - begin));
    } else {
      AppendUtf8(out, mapped);
    }
  }
  return out;
}

// The byte length of the head of s that equals needle without regard to case, npos if none. The
// lengths may differ: a capital can take more bytes than its small letter.
std::size_t MatchHead(std::string_view s, std::string_view needle) {
  std::size_t i = 0;
  std::size_t j = 0;
  while (j < needle.size()) {
    if (i >= s.size()) return std::string_view::npos;
    if (s[i] == needle[j] && static_cast<unsigned char>(s[i]) < 0x80) {
      ++i;
      ++j;
      continue;
    }
    const std::size_t at_s = i;
    const std::size_t at_needle = j;
    const char32_t a = DecodeAt(s, i);
    const char32_t b = DecodeAt(needle, j);
    if (ToLower(a) != ToLower(b)) return std::string_view::npos;
    if (a == 0xFFFD && s.substr(at_s, i - at_s) != needle.substr(at_needle, j - at_needle)) {
      return std::string_view::npos;
    }
  }
  return i;
}

using Hit = LongNeedle::Hit;
constexpr std::size_t kLong = 64;  // bytes: shorter ones are faster tried letter by letter

Hit Search(std::string_view s, std::string_view needle, std::size_t from) {
  if (needle.size() > kLong) return LongNeedle(needle).In(s, from);
  const char first = needle.empty() ? '\0' : needle[0];
  const bool ascii = static_cast<unsigned char>(first) < 0x80;
  for (std::size_t at = from; at <= s.size(); ++at) {
    if (at < s.size() && IsContinuation(s[at])) continue;
    if (ascii && !needle.empty() && (at == s.size() || LowerAscii(s[at]) != LowerAscii(first))) {
      continue;
    }
    const std::size_t length = MatchHead(s.substr(at), needle);
    if (length != std::string_view::npos) return {at, length};
  }
  return {std::string_view::npos, 0};
}

std::size_t CharWidth(char32_t c) {
  const bool mark = InRange(c, 0x300, 0x36F) || InRange(c, 0x610, 0x61A) ||
                    InRange(c, 0x64B, 0x65F) || c == 0x670 || InRange(c, 0x6D6, 0x6DC) ||
                    InRange(c, 0x200B, 0x200F) || InRange(c, 0x202A, 0x202E) ||
                    InRange(c, 0x2066, 0x2069) || c == 0xFEFF;
  if (mark || c < 0x20) return 0;
  const bool wide = InRange(c, 0x1100, 0x115F) || InRange(c, 0x2E80, 0xA4CF) ||
                    InRange(c, 0xAC00, 0xD7A3) || InRange(c, 0xF900, 0xFAFF) ||
                    InRange(c, 0xFF00, 0xFF60) || InRange(c, 0x1F300, 0x1FAFF) ||
                    InRange(c, 0x20000, 0x3FFFD);
  return wide ? 2 : 1;
}

}  // namespace

std::size_t Length(std::string_view s) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < s.size(); ++count) DecodeAt(s, at);
  return count;
}

std::size_t ByteOffset(std::string_view s, std::size_t index) {
  std::size_t at = 0;
  while (at < s.size() && index-- > 0) DecodeAt(s, at);
  return at;
}

std::string Left(std::string_view s, std::size_t count) {
  return std::string(s.substr(0, ByteOffset(s, count)));
}

std::string Mid(std::string_view s, std::size_t start, std::size_t count) {
  const std::string_view rest = s.substr(ByteOffset(s, start > 0 ? start - 1 : 0));
  return count == std::string::npos ? std::string(rest) : Left(rest, count);
}

std::string Right(std::string_view s, std::size_t count) {
  const std::size_t length = Length(s);
  return count >= length ? std::string(s) : std::string(s.substr(ByteOffset(s, length - count)));
}

char32_t DecodeAt(std::string_view s, std::size_t& at) {
  char32_t value = 0;
  at += Sequence(s, at, value);
  return value;
}

void AppendUtf8(std::string& out, char32_t c) {
  const auto tail = [&](unsigned shift) {
    out += static_cast<char>(0x80U | ((c >> shift) & 0x3FU));
  };
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0U | (c >> 6U));
    tail(0);
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0U | (c >> 12U));
    tail(6);
    tail(0);
  } else {
    out += static_cast<char>(0xF0U | (c >> 18U));
    tail(12);
    tail(6);
    tail(0);
  }
}

std::string ValidUtf8(std::string_view s) {
  if (IsAscii(s)) return std::string(s);
  std::string out;
  out.reserve(s.size());
  for (std::size_t at = 0; at < s.size();) AppendUtf8(out, DecodeAt(s, at));
  return out;
}

std::string_view TrimView(std::string_view s) {
  const std::size_t first = s.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

std::string Trim(std::string_view s) { return std::string(TrimView(s)); }

std::string ToUpper(std::string_view s) { return MapCase(s, true); }
std::string ToLower(std::string_view s) { return MapCase(s, false); }
char32_t ToLower(char32_t code_point) { return Shift(code_point, false); }

char32_t FoldLetter(char32_t c) {
  if (c == U'ي') return U'ی';
  if (c == U'ك') return U'ک';
  for (const char32_t zero : {U'\u06F0', U'\u0660'}) {
    if (InRange(c, zero, zero + 9)) return U'0' + (c - zero);
  }
  return ToLower(c);
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return MatchHead(a, b) == a.size();
}

bool StartsWithIgnoreCase(std::string_view s, std::string_view prefix) {
  return MatchHead(s, prefix) != std::string_view::npos;
}

bool EndsWithIgnoreCase(std::string_view s, std::string_view suffix) {
  const std::size_t length = Length(s);
  const std::size_t wanted = Length(suffix);
  return wanted <= length && EqualsIgnoreCase(s.substr(ByteOffset(s, length - wanted)), suffix);
}

std::size_t FindIgnoreCase(std::string_view s, std::string_view needle, std::size_t from) {
  return from > s.size() ? std::string_view::npos : Search(s, needle, from).at;
}

std::string Replace(std::string_view s, std::string_view needle, std::string_view put) {
  if (needle.empty()) return std::string(s);
  std::string out;
  std::size_t from = 0;
  for (std::size_t at; (at = s.find(needle, from)) != std::string_view::npos;) {
    out.append(s.substr(from, at - from)).append(put);
    from = at + needle.size();
  }
  return out.append(s.substr(from));
}

std::string ReplaceIgnoreCase(std::string_view s, std::string_view needle, std::string_view put) {
  if (needle.empty()) return std::string(s);
  std::string out;
  std::size_t from = 0;
  for (Hit hit = Search(s, needle, 0); hit.at != std::string_view::npos;
       hit = Search(s, needle, from)) {
    out.append(s.substr(from, hit.at - from)).append(put);
    from = hit.at + hit.length;
  }
  return out.append(s.substr(from));
}

std::size_t DisplayWidth(std::string_view s) {
  std::size_t width = 0;
  for (std::size_t at = 0; at < s.size();) width += CharWidth(DecodeAt(s, at));
  return width;
}

}  // namespace vorek::text
