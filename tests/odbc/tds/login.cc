#include "odbc/tds/login.h"

#include <array>
#include <utility>

#include "odbc/tds/bytes.h"

namespace vorek::tds {
namespace {

// A password travels with its half bytes exchanged and some bits turned.
std::string Uncovered(std::string_view bytes) {
  std::string plain;
  for (const char byte : bytes) {
    const unsigned turned = static_cast<unsigned char>(byte) ^ 0xA5U;
    plain += static_cast<char>((turned << 4 | turned >> 4) & 0xFF);
  }
  return plain;
}

// The bytes of a text whose place and count of units stand at `entry`.
std::string_view TextAt(std::string_view payload, std::size_t entry) {
  ByteReader place(payload);
  place.Skip(entry);
  const std::size_t begin = place.U16();
  const std::size_t bytes = std::size_t{place.U16()} * 2;
  ByteReader text(payload);
  text.Skip(begin);
  return text.Take(bytes);
}

}  // namespace

Login ReadLogin(std::string_view payload) {
  Login login;
  ByteReader head(payload);
  if (head.U32() != payload.size()) throw ProtocolError("a login of another size than it says");
  login.version = head.U32();
  login.packet_size = head.U32();
  login.host = FromUtf16(TextAt(payload, 36));
  login.user = FromUtf16(TextAt(payload, 40));
  login.password = FromUtf16(Uncovered(TextAt(payload, 44)));
  login.application = FromUtf16(TextAt(payload, 48));
  login.database = FromUtf16(TextAt(payload, 68));
  return login;
}

std::string PreLoginAnswer() {
  constexpr char kVersion = 0;
  constexpr char kEncryption = 1;
  constexpr char kMars = 4;
  constexpr char kEnd = '\xFF';
  constexpr char kNotSupported = 2;
  const std::array<std::pair<char, std::string>, 3> options = {
      {{kVersion, std::string("\x0F\x00\x10\x00\x00\x00", 6)},
       {kEncryption, std::string(1, kNotSupported)},
       {kMars, std::string(1, '\0')}}};
  std::string table;
  std::string values;
  constexpr std::size_t kEntry = 5;
  const std::size_t begin = options.size() * kEntry + 1;
  for (const auto& [option, value] : options) {
    const std::size_t at = begin + values.size();
    table += option;
    // These alone have their highest byte first.
    table += {static_cast<char>(at >> 8), static_cast<char>(at & 0xFF), 0,
              static_cast<char>(value.size())};
    values += value;
  }
  return table + kEnd + values;
}

}  // namespace vorek::tds
