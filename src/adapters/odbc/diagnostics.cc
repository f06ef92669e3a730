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

long NumberOfState(std::string_view state) {
  constexpr long kIntegrityViolation = -2147217873;  // 80040E2F
  constexpr long kDataOverflow = -2147217833;        // 80040E57
  constexpr long kConversionFailed = -2147217913;    // 80040E07
  constexpr auto number_of = [](ErrorNumber number) { return static_cast<long>(number); };
  // What a state begins with; those of PostgreSQL beside ODBC's own.
  static constexpr std::array<std::pair<std::string_view, long>, 17> kStates = {
      {{"08", number_of(ErrorNumber::kConnection)},
       {"28", number_of(ErrorNumber::kConnection)},   // the login is refused
       {"57P", number_of(ErrorNumber::kConnection)},  // PostgreSQL shuts down
       {"HYT", number_of(ErrorNumber::kTimeout)},
       {"HY008", number_of(ErrorNumber::kCancelled)},
       {"57014", number_of(ErrorNumber::kCancelled)},
       {"42S02", number_of(ErrorNumber::kMissingObject)},
       {"42P01", number_of(ErrorNumber::kMissingObject)},
       {"42883", number_of(ErrorNumber::kMissingObject)},  // no such function
       {"3F000", number_of(ErrorNumber::kMissingObject)},  // no such schema
       {"23", kIntegrityViolation},
       {"22001", kDataOverflow},
       {"22003", kDataOverflow},
       {"22007", kConversionFailed},
       {"22008", kConversionFailed},
       {"22018", kConversionFailed},
       {"22P02", kConversionFailed}}};
  for (const auto& [prefix, number] : kStates) {
    if (state.starts_with(prefix)) return number;
  }
  return number_of(ErrorNumber::kSyntax);
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
  return Error(lost ? static_cast<long>(ErrorNumber::kConnection) : NumberOfState(diagnostic.state),
               ServerWords(diagnostic.message));
}

}  // namespace vorek::odbc
