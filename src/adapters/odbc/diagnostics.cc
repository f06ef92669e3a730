#include "adapters/odbc/diagnostics.h"

#include <sqlext.h>

#include <algorithm>
#include <array>
#include <utility>

#include "adapters/odbc/wide_text.h"
#include "text/utf8.h"

namespace vorek::odbc {

Diagnostic ReadDiagnostic(SQLSMALLINT kind, SQLHANDLE handle, bool unicode) {
  std::array<SQLWCHAR, 6> state{};
  std::array<SQLWCHAR, 2048> message{};
  SQLINTEGER native = 0;
  SQLSMALLINT length = 0;
  const SQLRETURN code = SQLGetDiagRecW(kind, handle, 1, state.data(), &native, message.data(),
                                        static_cast<SQLSMALLINT>(message.size()), &length);
  if (!SQL_SUCCEEDED(code)) return {"HY000", "The ODBC driver gives no reason."};
  return {FromDriver(state, unicode), FromDriver(message, unicode)};
}

std::string ServerWords(std::string_view message) {
  constexpr int kMostPrefixes = 4;  // manager, maker, driver, server
  for (int i = 0; i < kMostPrefixes && message.starts_with('['); ++i) {
    const std::size_t close = message.find(']');
    if (close == std::string_view::npos) break;
    message.remove_prefix(close + 1);
  }
  constexpr std::string_view kDriversOwn = ";\nError while executing the query";
  if (message.ends_with(kDriversOwn)) message.remove_suffix(kDriversOwn.size());
  while (!message.empty() && (message.back() == '\n' || message.back() == '\r')) {
    message.remove_suffix(1);
  }
  return text::Trim(message);
}

ErrorNumber NumberOfState(std::string_view state) {
  static constexpr std::array<std::pair<std::string_view, ErrorNumber>, 10> kStates = {
      {{"08", ErrorNumber::kConnection},          // any failure of the connection
       {"57P", ErrorNumber::kConnection},         // PostgreSQL: the server shuts down
       {"28", ErrorNumber::kConnection},          // the login is refused
       {"HYT", ErrorNumber::kTimeout},            //
       {"HY008", ErrorNumber::kCancelled},        //
       {"57014", ErrorNumber::kCancelled},        // PostgreSQL: cancelled
       {"42S02", ErrorNumber::kMissingObject},    // no such table or view
       {"42P01", ErrorNumber::kMissingObject},    // PostgreSQL: the same
       {"42883", ErrorNumber::kMissingObject},    // PostgreSQL: no such function
       {"3F000", ErrorNumber::kMissingObject}}};  // no such schema
  for (const auto& [prefix, number] : kStates) {
    if (state.starts_with(prefix)) return number;
  }
  return ErrorNumber::kSyntax;
}

std::string WithoutPassword(std::string message, const std::string& password) {
  constexpr std::size_t kTooShort = 3;  // would be found in ordinary words
  if (password.size() <= kTooShort) return message;
  return text::Replace(message, password, "***");
}

Error StatementError(SQLHANDLE statement, SQLHANDLE connection, bool unicode) {
  const Diagnostic diagnostic = ReadDiagnostic(SQL_HANDLE_STMT, statement, unicode);
  SQLUINTEGER dead = SQL_CD_FALSE;
  const SQLRETURN asked =
      SQLGetConnectAttrW(connection, SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr);
  // PostgreSQL's driver says so in words alone.
  const bool lost = (SQL_SUCCEEDED(asked) && dead == SQL_CD_TRUE) ||
                    text::Contains(diagnostic.message, "no connection to the server");
  return Error(lost ? ErrorNumber::kConnection : NumberOfState(diagnostic.state),
               ServerWords(diagnostic.message));
}

}  // namespace vorek::odbc
