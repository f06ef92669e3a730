#ifndef VOREK_TESTS_ODBC_TDS_CALL_H_
#define VOREK_TESTS_ODBC_TDS_CALL_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorek::tds {

// Procedures of the server's own that a client calls by their numbers.
enum class Procedure : std::uint16_t {
  kExecuteSql = 10,
  kPrepare = 11,
  kExecute = 12,
  kPrepareAndExecute = 13,
  kUnprepare = 15,
};

// A client's call of a procedure.
struct Call {
  std::uint16_t number = 0;  // 0 if it is called by name
  std::string name;
  std::vector<std::string> arguments;  // as texts; a NULL is empty
};

// Reads a call, behind the headers of its message. Throws ProtocolError for a type of an argument
// that it doesn't know.
Call ReadCall(std::string_view payload);

// What stands behind the headers that a batch or a call begins with.
std::string_view WithoutHeaders(std::string_view payload);

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_CALL_H_
