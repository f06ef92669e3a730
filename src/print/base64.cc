#include "print/base64.h"

#include <cstdint>

namespace vorek::print {
namespace {

int ValueOf(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  return c == '/' ? 63 : -1;
}

}  // namespace

std::optional<std::string> DecodeBase64(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  std::string bytes;
  std::uint32_t held = 0;
  int bits = 0;
  bool ended = false;
  for (const char c : text) {
    if (kBlanks.find(c) != std::string_view::npos) continue;
    if (c == '=') {
      ended = true;
      continue;
    }
    const int value = ValueOf(c);
    if (value < 0 || ended) return std::nullopt;
    held = (held << 6U) | static_cast<std::uint32_t>(value);
    bits += 6;
    if (bits < 8) continue;
    bits -= 8;
    bytes.push_back(static_cast<char>((held >> static_cast<unsigned>(bits)) & 0xFFU));
  }
  if (bits == 6) return std::nullopt;
  return bytes;
}

}  // namespace vorek::print
