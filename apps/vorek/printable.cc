#include "printable.h"

#include <algorithm>

#include "text/utf8.h"

namespace vorek {
namespace {

// U+2400 begins the pictures of the control characters.
char32_t Picture(char32_t c) {
  if (c < 0x20) return 0x2400 + c;
  if (c == 0x7F) return 0x2421;
  if (c >= 0x80 && c < 0xA0) return 0xFFFD;
  return c;
}

char32_t OnOneLine(char32_t c) { return c == '\t' || c == '\n' || c == '\r' ? ' ' : Picture(c); }
char32_t OnLines(char32_t c) { return c == '\t' || c == '\n' ? c : Picture(c); }

// C1 controls begin with C2 in UTF-8, and so do some letters.
bool MayHoldControls(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](unsigned char c) { return c < 0x20 || c == 0x7F || c == 0xC2; });
}

std::string Changed(std::string_view text, char32_t (*change)(char32_t)) {
  if (!MayHoldControls(text)) return std::string(text);
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    text::AppendUtf8(out, change(text::DecodeAt(text, at)));
  }
  return out;
}

}  // namespace

std::string Printable(std::string_view text) { return Changed(text, OnOneLine); }
std::string PrintableLines(std::string_view text) { return Changed(text, OnLines); }

}  // namespace vorek
