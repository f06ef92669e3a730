#ifndef VOREK_TESTS_ODBC_TDS_LOGIN_H_
#define VOREK_TESTS_ODBC_TDS_LOGIN_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace vorek::tds {

// What a client says of itself.
struct Login {
  std::uint32_t version = 0;
  std::uint32_t packet_size = 0;
  std::string host;
  std::string user;
  std::string password;
  std::string application;
  std::string database;
};

// Throws ProtocolError.
Login ReadLogin(std::string_view payload);

// The answer to a client's first message: no encryption, one result at a time.
std::string PreLoginAnswer();

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_LOGIN_H_
