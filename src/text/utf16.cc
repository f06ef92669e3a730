#include "text/utf16.h"

#include <cstdint>
#include <cstring>

#include "text/utf8.h"

namespace vorek::text {
namespace {

char* PutUnit(char* to, unsigned unit) {
  to[0] = static_cast<char>(unit & 0xFFU);
  to[1] = static_cast<char>(unit >> 8U);
  return to + 2;
}

bool Continues(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

char* PutLetter(char* to, unsigned letter) {
  if (letter < 0x10000) return PutUnit(to, letter);
  to = PutUnit(to, 0xD800U + ((letter - 0x10000U) >> 10U));
  return PutUnit(to, 0xDC00U + ((letter - 0x10000U) & 0x3FFU));
}

constexpr std::size_t kEight = 8;

// Digits, signs and Latin letters come in rows.
bool AreEightAscii(const char* from) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, from, kEight);
  return (bytes & 0x8080808080808080U) == 0;
}

// The end of what was written. REQUIRES: room for two bytes for each of the text's.
char* PutUtf16(std::string_view text, char* to) {
  for (std::size_t at = 0; at < text.size();) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (at + kEight <= text.size() && AreEightAscii(text.data() + at)) {
      for (std::size_t i = 0; i < kEight; ++i) {
        to = PutUnit(to, static_cast<unsigned>(text[at + i]));
      }
      at += kEight;
    } else if (byte < 0x80) {
      to = PutUnit(to, byte);
      ++at;
    } else if (byte >= 0xC2 && byte < 0xE0 && at + 1 < text.size() && Continues(text[at + 1])) {
      const auto next = static_cast<unsigned char>(text[at + 1]);
      to = PutUnit(to, ((byte & 0x1FU) << 6U) | (next & 0x3FU));
      at += 2;
    } else {
      to = PutLetter(to, static_cast<unsigned>(DecodeAt(text, at)));
    }
  }
  return to;
}

}  // namespace

void AppendUtf16(std::string_view utf8, std::string& out) {
  const std::size_t before = out.size();
  out.resize(before + utf8.size() * 2);  // a byte makes one unit at most
  const char* const end = PutUtf16(utf8, out.data() + before);
  out.resize(static_cast<std::size_t>(end - out.data()));
}

}  // namespace vorek::text
