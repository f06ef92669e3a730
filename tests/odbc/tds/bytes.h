#ifndef VOREK_TESTS_ODBC_TDS_BYTES_H_
#define VOREK_TESTS_ODBC_TDS_BYTES_H_

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vorek::tds {

// What a client sends isn't what the protocol lets it send.
class ProtocolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Whole numbers of the protocol, lowest byte first, and its texts, UTF-16 the same way.
class Bytes {
 public:
  Bytes& Number(std::uint64_t value, std::size_t bytes);
  Bytes& U8(std::uint64_t value) { return Number(value, 1); }
  Bytes& U16(std::uint64_t value) { return Number(value, 2); }
  Bytes& U32(std::uint64_t value) { return Number(value, 4); }
  Bytes& U64(std::uint64_t value) { return Number(value, 8); }
  Bytes& Raw(std::string_view bytes);
  // A text behind its count of units, in one byte or in two.
  Bytes& ShortText(std::string_view utf8);
  Bytes& LongText(std::string_view utf8);
  // Puts the count of bytes that follow `at`, a place of two bytes, there.
  Bytes& SizeAt(std::size_t at);

  std::string& Text() { return bytes_; }
  const std::string& Text() const { return bytes_; }
  std::size_t Size() const { return bytes_.size(); }
  void Clear() { bytes_.clear(); }

 private:
  std::string bytes_;
};

// The same, read. Everything throws ProtocolError behind the end.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

  std::uint64_t Number(std::size_t bytes);
  std::uint8_t U8() { return static_cast<std::uint8_t>(Number(1)); }
  std::uint16_t U16() { return static_cast<std::uint16_t>(Number(2)); }
  std::uint32_t U32() { return static_cast<std::uint32_t>(Number(4)); }
  std::string_view Take(std::size_t bytes);
  void Skip(std::size_t bytes) { Take(bytes); }
  bool AtEnd() const { return at_ == bytes_.size(); }
  std::string_view Rest() { return Take(bytes_.size() - at_); }

 private:
  std::string_view bytes_;
  std::size_t at_ = 0;
};

std::string ToUtf16(std::string_view utf8);
std::string FromUtf16(std::string_view bytes);

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_BYTES_H_
