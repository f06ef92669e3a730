#ifndef VOREK_ADAPTERS_ODBC_DIAGNOSTICS_H_
#define VOREK_ADAPTERS_ODBC_DIAGNOSTICS_H_

#include <sql.h>

#include <string>
#include <string_view>

#include "vorek/error.h"

namespace vorek::odbc {

// What a handle says of its last call.
struct Diagnostic {
  std::string state;  // five characters
  std::string message;
};
Diagnostic ReadDiagnostic(SQLSMALLINT kind, SQLHANDLE handle, bool unicode);

// The server's own words: without the bracketed names of driver and server in front, and without
// what a driver says behind them of itself.
std::string ServerWords(std::string_view message);

// The number by which ADO knows a state.
long NumberOfState(std::string_view state);

// The message without the password, should a driver repeat it.
std::string WithoutPassword(std::string message, const std::string& password);

// The error of a statement; kConnection if its connection is dead, whatever the state says.
Error StatementError(SQLHANDLE statement, SQLHANDLE connection, bool unicode);

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_DIAGNOSTICS_H_
