#include "odbc/tds/tokens.h"

#include "odbc/tds/bytes.h"

namespace vorek::tds {
namespace {

constexpr std::string_view kServerName = "VOREK-TEST";

std::string NoticeToken(std::uint8_t token, const Notice& notice) {
  Bytes out;
  out.U8(token).U16(0);
  out.U32(static_cast<std::uint32_t>(notice.number));
  out.U8(static_cast<std::uint8_t>(notice.state)).U8(static_cast<std::uint8_t>(notice.severity));
  out.LongText(notice.text).ShortText(kServerName).ShortText(notice.procedure);
  out.U32(static_cast<std::uint32_t>(notice.line));
  return out.SizeAt(1).Text();
}

std::string Done(std::uint8_t token, unsigned flags, std::uint64_t rows) {
  constexpr int kSelect = 0xC1;
  return Bytes().U8(token).U16(flags).U16(kSelect).U64(rows).Text();
}

std::string ChangeToken(std::uint8_t kind, std::string_view now, std::string_view before) {
  Bytes out;
  out.U8(0xE3).U16(0).U8(kind).ShortText(now).ShortText(before);
  return out.SizeAt(1).Text();
}

}  // namespace

std::string ErrorToken(const Notice& notice) { return NoticeToken(0xAA, notice); }
std::string InfoToken(const Notice& notice) { return NoticeToken(0xAB, notice); }

std::string DoneToken(unsigned flags, std::uint64_t rows) { return Done(0xFD, flags, rows); }
std::string DoneProcedureToken(unsigned flags, std::uint64_t rows) {
  return Done(0xFE, flags, rows);
}
std::string DoneInProcedureToken(unsigned flags, std::uint64_t rows) {
  return Done(0xFF, flags, rows);
}

std::string ReturnStatusToken(std::int32_t status) {
  return Bytes().U8(0x79).U32(static_cast<std::uint32_t>(status)).Text();
}

std::string ReturnValueToken(std::string_view name, std::int32_t value) {
  constexpr int kOutput = 1;
  constexpr int kInt = 0x26;
  Bytes out;
  out.U8(0xAC).U16(0).ShortText(name).U8(kOutput).U32(0).U16(0);
  out.U8(kInt).U8(4).U8(4).U32(static_cast<std::uint32_t>(value));
  return out.Text();
}

std::string DatabaseChangeToken(std::string_view database) {
  return ChangeToken(1, database, "master");
}

std::string CollationChangeToken() {
  Bytes out;
  out.U8(0xE3).U16(0).U8(7).U8(Collation().size()).Raw(Collation()).U8(0);
  return out.SizeAt(1).Text();
}

std::string PacketSizeChangeToken(std::size_t now, std::size_t before) {
  return ChangeToken(4, std::to_string(now), std::to_string(before));
}

std::string LoginAcknowledgementToken() {
  constexpr int kTransactSql = 1;
  Bytes out;
  out.U8(0xAD).U16(0).U8(kTransactSql).Raw(std::string_view("\x74\x00\x00\x04", 4));
  out.ShortText("Microsoft SQL Server").U8(15).U8(0).U8(0x10).U8(0);
  return out.SizeAt(1).Text();
}

std::string_view Collation() {
  // 0x0429 is Persian's number; case, kana and width don't count.
  return {"\x29\x04\xD0\x00\x00", 5};
}

}  // namespace vorek::tds
