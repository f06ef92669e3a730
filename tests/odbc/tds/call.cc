#include "odbc/tds/call.h"

#include "odbc/tds/bytes.h"
#include "odbc/tds/column.h"

namespace vorek::tds {
namespace {

constexpr std::uint64_t kPlpNull = ~std::uint64_t{0};

std::string PlpText(ByteReader& reader) {
  std::string bytes;
  if (reader.Number(8) == kPlpNull) return bytes;
  for (std::uint32_t piece = reader.U32(); piece > 0; piece = reader.U32()) {
    bytes += reader.Take(piece);
  }
  return FromUtf16(bytes);
}

std::string UnicodeText(ByteReader& reader) {
  const std::size_t size = reader.U16();
  reader.Skip(5);  // the collation
  if (size == Column::kMax) return PlpText(reader);
  const std::uint16_t bytes = reader.U16();
  return bytes == 0xFFFF ? std::string() : FromUtf16(reader.Take(bytes));
}

std::string LongUnicodeText(ByteReader& reader) {
  reader.Skip(4 + 5);  // the size at most, the collation
  const std::uint32_t bytes = reader.U32();
  return bytes == 0xFFFFFFFF ? std::string() : FromUtf16(reader.Take(bytes));
}

std::string WholeText(ByteReader& reader) {
  reader.Skip(1);  // the size at most
  const std::uint8_t bytes = reader.U8();
  return bytes == 0 ? std::string()
                    : std::to_string(static_cast<std::int64_t>(reader.Number(bytes)));
}

std::string Argument(ByteReader& reader) {
  constexpr std::uint8_t kLongUnicode = 0x63;
  reader.Skip(std::size_t{reader.U8()} * 2);  // its name
  reader.Skip(1);                             // whether it is an output
  const std::uint8_t type = reader.U8();
  if (type == static_cast<std::uint8_t>(Kind::kInt)) return WholeText(reader);
  if (type == static_cast<std::uint8_t>(Kind::kNVarChar)) return UnicodeText(reader);
  if (type == kLongUnicode) return LongUnicodeText(reader);
  throw ProtocolError("an argument of type " + std::to_string(type));
}

}  // namespace

std::string_view WithoutHeaders(std::string_view payload) {
  ByteReader reader(payload);
  const std::size_t size = reader.U32();
  if (size < 4) throw ProtocolError("headers without a size");
  reader.Skip(size - 4);
  return reader.Rest();
}

Call ReadCall(std::string_view payload) {
  constexpr std::uint16_t kByNumber = 0xFFFF;
  ByteReader reader(payload);
  Call call;
  const std::uint16_t units = reader.U16();
  if (units == kByNumber) {
    call.number = reader.U16();
  } else {
    call.name = FromUtf16(reader.Take(std::size_t{units} * 2));
  }
  reader.Skip(2);  // options
  while (!reader.AtEnd()) call.arguments.push_back(Argument(reader));
  return call;
}

}  // namespace vorek::tds
