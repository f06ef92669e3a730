#include "export/document_name.h"

#include "text/persian_date.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::size_t kLongest = 80;  // characters of a title

std::string SafeTitle(const std::string& title) {
  std::string safe;
  for (const char c : text::ValidUtf8(title)) {
    const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
    const bool odd = std::string_view("/\\:*?\"<>|%$`").find(c) != std::string_view::npos;
    safe += control || odd ? ' ' : c;
  }
  safe = text::Trim(text::Left(safe, kLongest));
  while (safe.starts_with('.') || safe.starts_with('-')) safe = text::Trim(safe.substr(1));
  return safe.empty() ? "گزارش" : safe;
}

}  // namespace

std::string DocumentName(const std::string& title, const DateTime& day,
                         const std::string& extension) {
  const text::CalendarDate persian = text::ToPersian({day.year, day.month, day.day});
  return SafeTitle(title) + " " + text::Replace(text::DateText(persian), "/", "-") + "." +
         extension;
}

}  // namespace vorek
