#include "adapters/odbc/diagnostics.h"

#include <sqlext.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "adapters/odbc/wide_text.h"
#include "text/utf8.h"

namespace vorek::odbc {

namespace {

constexpr std::string_view kNoReason = "The ODBC driver gives no reason.";

constexpr long kIntegrityViolation = -2147217873;  // 80040E2F
constexpr long kDataOverflow = -2147217833;        // 80040E57
constexpr long kConversionFailed = -2147217913;    // 80040E07

// One of the records, from 1 on; nothing behind the last.
std::optional<Diagnostic> ReadRecord(SQLSMALLINT kind, SQLHANDLE handle, SQLSMALLINT record,
                                     bool unicode) {
  std::array<SQLWCHAR, 6> state{};
  std::vector<SQLWCHAR> message(2048);
  Diagnostic diagnostic;
  const auto read = [&] {
    SQLSMALLINT length = 0;
    const SQLRETURN code =
        SQLGetDiagRecW(kind, handle, record, state.data(), &diagnostic.native, message.data(),
                       static_cast<SQLSMALLINT>(message.size()), &length);
    return SQL_SUCCEEDED(code) ? length : SQLSMALLINT{-1};
  };
  const SQLSMALLINT length = read();
  if (length < 0) return std::nullopt;
  if (static_cast<std::size_t>(length) >= message.size()) {
    message.assign(static_cast<std::size_t>(length) + 1, 0);
    read();
  }
  const auto end = std::find(message.begin(), message.end(), SQLWCHAR{0});
  diagnostic.state = FromDriver(state, unicode);
  diagnostic.message =
      FromDriver(message.data(), static_cast<std::size_t>(end - message.begin()), unicode);
  return diagnostic;
}

}  // namespace

bool Diagnostic::IsInformation() const {
  return state.starts_with("00") || state.starts_with("01");
}

Diagnostic ReadDiagnostic(SQLSMALLINT kind, SQLHANDLE handle, bool unicode) {
  constexpr SQLSMALLINT kMostRecords = 1000;
  std::optional<Diagnostic> first;
  for (SQLSMALLINT record = 1; record <= kMostRecords; ++record) {
    std::optional<Diagnostic> diagnostic = ReadRecord(kind, handle, record, unicode);
    if (!diagnostic) break;
    if (!diagnostic->IsInformation()) return *std::move(diagnostic);
    if (!first) first = std::move(diagnostic);
  }
  return first.value_or(Diagnostic{"HY000", std::string(kNoReason)});
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

long NumberOfSqlServer(SQLINTEGER native, std::string_view state) {
  static constexpr std::array<std::pair<SQLINTEGER, long>, 20> kNumbers = {
      {{208, static_cast<long>(ErrorNumber::kMissingObject)},
       {220, kDataOverflow},
       {232, kDataOverflow},
       {235, kConversionFailed},
       {241, kConversionFailed},
       {242, kDataOverflow},  // a text that is a date beyond the range
       {244, kDataOverflow},
       {245, kConversionFailed},
       {248, kDataOverflow},
       {295, kConversionFailed},
       {515, kIntegrityViolation},
       {517, kDataOverflow},
       {547, kIntegrityViolation},
       {2601, kIntegrityViolation},
       {2627, kIntegrityViolation},
       {2628, kDataOverflow},
       {2812, static_cast<long>(ErrorNumber::kMissingObject)},  // no such procedure
       {8114, kConversionFailed},
       {8115, kDataOverflow},
       {8152, kDataOverflow}}};
  for (const auto& [known, number] : kNumbers) {
    if (native == known) return number;
  }
  return NumberOfState(state);
}

std::string WithoutPassword(std::string message, const std::string& password) {
  constexpr std::size_t kTooShort = 3;  // would be found in ordinary words
  if (password.size() <= kTooShort) return message;
  return text::Replace(message, password, "***");
}

Error StatementError(SQLHANDLE statement, SQLHANDLE connection, const DriverTraits& traits) {
  const Diagnostic diagnostic = ReadDiagnostic(SQL_HANDLE_STMT, statement, traits.unicode);
  SQLUINTEGER dead = SQL_CD_FALSE;
  const SQLRETURN asked =
      SQLGetConnectAttrW(connection, SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr);
  // PostgreSQL's driver says so in words alone.
  const bool lost = (SQL_SUCCEEDED(asked) && dead == SQL_CD_TRUE) ||
                    text::Contains(diagnostic.message, "no connection to the server");
  const long number = traits.is_sql_server ? NumberOfSqlServer(diagnostic.native, diagnostic.state)
                                           : NumberOfState(diagnostic.state);
  const std::string words = ServerWords(diagnostic.message);
  if (!lost) return Error(number, words);
  // FreeTDS has nothing to say of a connection that it finds dead.
  const bool says = !words.empty() && words != "Unknown error" && words != kNoReason;
  return Error(ErrorNumber::kConnection, says ? words : "The connection to the server was lost.");
}

}  // namespace vorek::odbc
