#ifndef VOREK_ADAPTERS_ODBC_DIAGNOSTICS_H_
#define VOREK_ADAPTERS_ODBC_DIAGNOSTICS_H_

#include <sql.h>

#include <string>
#include <string_view>

#include "adapters/odbc/driver_traits.h"
#include "vorek/error.h"

namespace vorek::odbc {

// What a handle says of its last call.
struct Diagnostic {
  std::string state;  // five characters
  std::string message;
  SQLINTEGER native = 0;  // the server's own number

  // What PRINT tells, warnings and notices.
  bool IsInformation() const;
};
// The first that is an error; without one the first at all.
Diagnostic ReadDiagnostic(SQLSMALLINT kind, SQLHANDLE handle, bool unicode);

// The server's own words: without the bracketed names of driver and server in front, and without
// what a driver says behind them of itself.
std::string ServerWords(std::string_view message);

// The number by which ADO knows a state.
long NumberOfState(std::string_view state);
// The same for an error of SQL Server, whose states its drivers don't all give alike.
long NumberOfSqlServer(SQLINTEGER native, std::string_view state);

// The message without the password, should a driver repeat it.
std::string WithoutPassword(std::string message, const std::string& password);

// The error of a statement; kConnection if its connection is dead, whatever the state says.
Error StatementError(SQLHANDLE statement, SQLHANDLE connection, const DriverTraits& traits);

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_DIAGNOSTICS_H_
