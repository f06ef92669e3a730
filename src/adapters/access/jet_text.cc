#include "adapters/access/jet_text.h"

#include "text/utf8.h"

namespace vorek::jet {
namespace {

void AppendUnit(std::string& out, char32_t unit) {
  out += static_cast<char>(unit & 0xffU);
  out += static_cast<char>(unit >> 8U);
}

}  // namespace

std::string ToUtf16(std::string_view utf8) {
  std::string out;
  out.reserve(2 * utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const char32_t c = text::DecodeAt(utf8, at);
    if (c < 0x10000) {
      AppendUnit(out, c);
    } else {
      AppendUnit(out, 0xd800 + ((c - 0x10000) >> 10U));
      AppendUnit(out, 0xdc00 + ((c - 0x10000) & 0x3ffU));
    }
  }
  return out;
}

std::string FromUtf16(std::string_view bytes) {
  const auto unit = [&](std::size_t at) {
    return static_cast<char32_t>(static_cast<unsigned char>(bytes[at]) |
                                 (static_cast<unsigned char>(bytes[at + 1]) << 8U));
  };
  std::string out;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    char32_t c = unit(at);
    if (c >= 0xd800 && c < 0xdc00 && at + 3 < bytes.size()) {
      at += 2;
      c = 0x10000 + ((c - 0xd800) << 10U) + ((unit(at) - 0xdc00) & 0x3ffU);
    }
    text::AppendUtf8(out, c >= 0xd800 && c < 0xe000 ? char32_t{0xfffd} : c);
  }
  return out;
}

}  // namespace vorek::jet
