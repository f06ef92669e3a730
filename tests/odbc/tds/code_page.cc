#include <iconv.h>

#include <memory>

#include "odbc/tds/column.h"

namespace vorek::tds {
namespace {

struct Closer {
  using pointer = iconv_t;
  void operator()(iconv_t converter) const { iconv_close(converter); }
};

// False for a text that the code page doesn't hold.
bool Convert(std::string_view utf8, std::string& out) {
  const std::unique_ptr<iconv_t, Closer> converter(iconv_open("CP1256", "UTF-8"));
  std::string from(utf8);
  out.resize(from.size());
  char* in = from.data();
  char* to = out.data();
  std::size_t in_left = from.size();
  std::size_t room = out.size();
  if (iconv(converter.get(), &in, &in_left, &to, &room) != 0) return false;
  out.resize(out.size() - room);
  return true;
}

}  // namespace

bool FitsCodePage(std::string_view utf8) {
  std::string ignored;
  return Convert(utf8, ignored);
}

std::string ToCodePage(std::string_view utf8) {
  std::string text;
  if (!Convert(utf8, text)) throw ProtocolError("a text that its code page doesn't hold");
  return text;
}

}  // namespace vorek::tds
