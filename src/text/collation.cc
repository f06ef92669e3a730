#include "text/collation.h"

#include <array>
#include <cstdint>

#include "text/utf8.h"

namespace vorek::text {
namespace {

constexpr char32_t kFirst = 0x621;
constexpr char32_t kLast = 0x6CC;

// The letters in the order of the Persian alphabet; those in one group sort together.
constexpr std::array<std::u32string_view, 33> kAlphabet = {U"\u0622",  // آ
                                                           U"\u0627\u0623\u0625\u0671\u0621",
                                                           U"\u0628",
                                                           U"\u067E",
                                                           U"\u062A\u0629",
                                                           U"\u062B",
                                                           U"\u062C",
                                                           U"\u0686",
                                                           U"\u062D",
                                                           U"\u062E",
                                                           U"\u062F",
                                                           U"\u0630",
                                                           U"\u0631",
                                                           U"\u0632",
                                                           U"\u0698",
                                                           U"\u0633",
                                                           U"\u0634",
                                                           U"\u0635",
                                                           U"\u0636",
                                                           U"\u0637",
                                                           U"\u0638",
                                                           U"\u0639",
                                                           U"\u063A",
                                                           U"\u0641",
                                                           U"\u0642",
                                                           U"\u06A9\u0643",
                                                           U"\u06AF",
                                                           U"\u0644",
                                                           U"\u0645",
                                                           U"\u0646",
                                                           U"\u0648\u0624",
                                                           U"\u0647\u06C0\u06C1",
                                                           U"\u06CC\u064A\u0649\u0626"};

constexpr auto MakeRanks() {
  std::array<std::uint8_t, kLast - kFirst + 1> ranks{};
  std::uint8_t rank = 0;
  for (const std::u32string_view group : kAlphabet) {
    ++rank;
    for (const char32_t letter : group) ranks[letter - kFirst] = rank;
  }
  return ranks;
}
constexpr auto kRanks = MakeRanks();

// The same letters one behind the other, then what else stands among them, by code point: the
// numbers of the block in another order, so that they keep their place between the other blocks.
constexpr auto MakeOrder() {
  std::array<std::uint16_t, kLast - kFirst + 1> order{};
  std::uint16_t next = kFirst;
  for (const std::u32string_view group : kAlphabet) {
    for (const char32_t letter : group) order[letter - kFirst] = next++;
  }
  for (std::uint16_t& place : order) {
    if (place == 0) place = next++;
  }
  return order;
}
constexpr auto kOrder = MakeOrder();

bool IsMark(char32_t c) {
  return (c >= 0x64B && c <= 0x65F) || c == 0x640 || c == 0x670 || (c >= 0x200B && c <= 0x200F) ||
         (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

// Ranked letters take the place of the code points from U+0622 on, below other Arabic letters.
char32_t Weight(char32_t c) {
  if (c < kFirst || c > kLast || kRanks[c - kFirst] == 0) return c;
  return 0x621 + kRanks[c - kFirst];
}

}  // namespace

char32_t LetterOrder(char32_t c) { return c < kFirst || c > kLast ? c : kOrder[c - kFirst]; }

void AppendSortKey(std::string_view s, bool ignore_case, std::string& out) {
  for (std::size_t at = 0; at < s.size();) {
    const char byte = s[at];
    if (static_cast<unsigned char>(byte) < 0x80) {
      out += ignore_case && byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
      ++at;
      continue;
    }
    const char32_t c = DecodeAt(s, at);
    if (IsMark(c)) continue;
    AppendUtf8(out, Weight(ignore_case ? ToLower(c) : c));
  }
}

std::string SortKey(std::string_view s, bool ignore_case) {
  std::string key;
  key.reserve(s.size());
  AppendSortKey(s, ignore_case, key);
  return key;
}

}  // namespace vorek::text
