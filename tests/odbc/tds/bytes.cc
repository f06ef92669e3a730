#include "odbc/tds/bytes.h"

#include "text/utf8.h"

namespace vorek::tds {

Bytes& Bytes::Number(std::uint64_t value, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; ++i) {
    bytes_ += static_cast<char>(value & 0xFF);
    value >>= 8;
  }
  return *this;
}

Bytes& Bytes::Raw(std::string_view bytes) {
  bytes_ += bytes;
  return *this;
}

Bytes& Bytes::ShortText(std::string_view utf8) {
  const std::string units = ToUtf16(utf8);
  return U8(units.size() / 2).Raw(units);
}

Bytes& Bytes::LongText(std::string_view utf8) {
  const std::string units = ToUtf16(utf8);
  return U16(units.size() / 2).Raw(units);
}

Bytes& Bytes::SizeAt(std::size_t at) {
  const std::size_t size = bytes_.size() - at - 2;
  bytes_[at] = static_cast<char>(size & 0xFF);
  bytes_[at + 1] = static_cast<char>(size >> 8 & 0xFF);
  return *this;
}

std::uint64_t ByteReader::Number(std::size_t bytes) {
  std::uint64_t value = 0;
  std::size_t shift = 0;
  for (const char byte : Take(bytes)) {
    value |= std::uint64_t{static_cast<unsigned char>(byte)} << shift;
    shift += 8;
  }
  return value;
}

std::string_view ByteReader::Take(std::size_t bytes) {
  if (bytes > bytes_.size() - at_) throw ProtocolError("a message is cut");
  const std::string_view taken = bytes_.substr(at_, bytes);
  at_ += bytes;
  return taken;
}

std::string ToUtf16(std::string_view utf8) {
  Bytes units;
  for (std::size_t at = 0; at < utf8.size();) {
    const char32_t c = text::DecodeAt(utf8, at);
    if (c < 0x10000) {
      units.U16(c);
    } else {
      units.U16(0xD800 + ((c - 0x10000) >> 10)).U16(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
  }
  return std::move(units.Text());
}

std::string FromUtf16(std::string_view bytes) {
  std::string utf8;
  ByteReader units(bytes.substr(0, bytes.size() / 2 * 2));
  while (!units.AtEnd()) {
    char32_t c = units.U16();
    if ((c & 0xFC00) == 0xD800 && !units.AtEnd()) {
      c = 0x10000 + ((c & 0x3FF) << 10) + (char32_t{units.U16()} & 0x3FF);
    }
    text::AppendUtf8(utf8, c);
  }
  return utf8;
}

}  // namespace vorek::tds
