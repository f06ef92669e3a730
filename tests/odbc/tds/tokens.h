#ifndef VOREK_TESTS_ODBC_TDS_TOKENS_H_
#define VOREK_TESTS_ODBC_TDS_TOKENS_H_

#include <cstdint>
#include <string>
#include <string_view>

// The tokens of a reply beside rows and what describes them.
namespace vorek::tds {

// What an error or a piece of information says of itself.
struct Notice {
  std::int32_t number = 50000;
  int state = 1;
  int severity = 16;  // up to 10 for information
  std::string text;
  std::string procedure = {};
  std::int32_t line = 1;
};
std::string ErrorToken(const Notice& notice);
std::string InfoToken(const Notice& notice);

// Flags of the token that ends a statement.
enum DoneFlag : unsigned {
  kDoneFinal = 0,
  kDoneMore = 0x01,
  kDoneError = 0x02,
  kDoneCount = 0x10,
  kDoneAttention = 0x20,
};
std::string DoneToken(unsigned flags, std::uint64_t rows = 0);
// Of a procedure as a whole, and of a statement within one.
std::string DoneProcedureToken(unsigned flags, std::uint64_t rows = 0);
std::string DoneInProcedureToken(unsigned flags, std::uint64_t rows = 0);

std::string ReturnStatusToken(std::int32_t status);
// An output parameter that is a whole number.
std::string ReturnValueToken(std::string_view name, std::int32_t value);

std::string DatabaseChangeToken(std::string_view database);
std::string CollationChangeToken();
std::string PacketSizeChangeToken(std::size_t now, std::size_t before);
std::string LoginAcknowledgementToken();

// Persian, in the code page of Arabic letters; behind it the one that knows nothing but bytes.
std::string_view Collation();

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_TOKENS_H_
