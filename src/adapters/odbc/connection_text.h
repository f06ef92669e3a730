#ifndef VOREK_ADAPTERS_ODBC_CONNECTION_TEXT_H_
#define VOREK_ADAPTERS_ODBC_CONNECTION_TEXT_H_

#include <string>
#include <string_view>
#include <vector>

namespace vorek::odbc {

// What a connection string of a host becomes.
struct ConnectionText {
  std::string odbc;        // for the driver manager
  std::string password;    // to be kept out of messages
  int login_seconds = 15;  // how long a connect may take
};

// True for the providers that speak to SQL Server, and for the one that passes on to any driver.
bool IsSqlServerProvider(std::string_view provider);
bool IsPassThroughProvider(std::string_view provider);

// Turns "Provider=...;..." into an ODBC string. installed are the drivers' names as the driver
// manager lists them. Throws Error(kConnection) if there is no driver for SQL Server, for what the
// driver can't do, or for a string longer than the 32,767 units that the driver manager takes.
ConnectionText ToOdbc(std::string_view connection_string,
                      const std::vector<std::string>& installed);

// A value as an ODBC string holds it: in braces where it needs them.
std::string QuoteOdbc(std::string_view value);

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_CONNECTION_TEXT_H_
