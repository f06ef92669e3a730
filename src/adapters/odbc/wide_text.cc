#include "adapters/odbc/wide_text.h"

#include "text/utf8.h"

namespace vorek::odbc {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHigh(SQLWCHAR unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLow(SQLWCHAR unit) { return (unit & 0xFC00) == 0xDC00; }

}  // namespace

std::vector<SQLWCHAR> ToWide(std::string_view utf8) {
  std::vector<SQLWCHAR> wide;
  wide.reserve(utf8.size() + 1);
  for (std::size_t at = 0; at < utf8.size();) {
    const char32_t c = text::DecodeAt(utf8, at);
    if (c < 0x10000) {
      wide.push_back(static_cast<SQLWCHAR>(c));
    } else {
      wide.push_back(static_cast<SQLWCHAR>(0xD800 + ((c - 0x10000) >> 10)));
      wide.push_back(static_cast<SQLWCHAR>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    }
  }
  return wide;
}

void AppendUtf8(const SQLWCHAR* text, std::size_t length, std::string& out) {
  for (std::size_t i = 0; i < length; ++i) {
    const SQLWCHAR unit = text[i];
    if (unit < 0x80) {
      out += static_cast<char>(unit);
    } else if (unit < 0x800) {
      out += static_cast<char>(0xC0 | (unit >> 6));
      out += static_cast<char>(0x80 | (unit & 0x3F));
    } else if (IsHigh(unit) && i + 1 < length && IsLow(text[i + 1])) {
      const char32_t c = 0x10000 + ((static_cast<char32_t>(unit) & 0x3FF) << 10) +
                         (static_cast<char32_t>(text[++i]) & 0x3FF);
      text::AppendUtf8(out, c);
    } else {
      text::AppendUtf8(out, IsHigh(unit) || IsLow(unit) ? kReplacement : char32_t{unit});
    }
  }
}

std::string FromDriver(const SQLWCHAR* text, std::size_t length, bool unicode) {
  std::string result;
  const bool bytes =
      !unicode && std::all_of(text, text + length, [](SQLWCHAR unit) { return unit < 0x100; });
  if (!bytes) {
    AppendUtf8(text, length, result);
    return result;
  }
  for (std::size_t i = 0; i < length; ++i) result += static_cast<char>(text[i]);
  return text::ValidUtf8(result);
}

}  // namespace vorek::odbc
