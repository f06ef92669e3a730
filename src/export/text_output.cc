#include "export/text_output.h"

#include "text/utf8.h"

namespace vorek {
namespace {

char* PutUnit(char* to, unsigned unit) {
  to[0] = static_cast<char>(unit & 0xFFU);
  to[1] = static_cast<char>(unit >> 8U);
  return to + 2;
}

bool Continues(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

}  // namespace

void TextOutput::Flush() {
  if (!buffer_.empty()) out_.Write(buffer_);
  buffer_.clear();
}

void TextOutput::PutUtf16(std::string_view text) {
  const std::size_t begin = buffer_.size();
  buffer_.resize(begin + text.size() * 2);  // a byte makes one unit at most
  char* to = buffer_.data() + begin;
  for (std::size_t at = 0; at < text.size();) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80) {
      to = PutUnit(to, byte);
      ++at;
    } else if (byte >= 0xC2 && byte < 0xE0 && at + 1 < text.size() && Continues(text[at + 1])) {
      const auto next = static_cast<unsigned char>(text[at + 1]);
      to = PutUnit(to, ((byte & 0x1FU) << 6U) | (next & 0x3FU));
      at += 2;
    } else {
      const auto letter = static_cast<unsigned>(text::DecodeAt(text, at));
      if (letter >= 0x10000) {
        to = PutUnit(to, 0xD800U + ((letter - 0x10000U) >> 10U));
        to = PutUnit(to, 0xDC00U + ((letter - 0x10000U) & 0x3FFU));
      } else {
        to = PutUnit(to, letter);
      }
    }
  }
  buffer_.resize(static_cast<std::size_t>(to - buffer_.data()));
}

}  // namespace vorek
