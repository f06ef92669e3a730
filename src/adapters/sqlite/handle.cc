#include "adapters/sqlite/handle.h"

#include <algorithm>
#include <array>
#include <utility>

#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

constexpr long kIntegrityViolation = -2147217873;  // 80040E2F
constexpr long kDataOverflow = -2147217833;        // 80040E57
constexpr long kConversionFailed = -2147217913;    // 80040E07

constexpr std::array<std::pair<std::string_view, long>, 11> kNumbers = {{
    {"Invalid object name", static_cast<long>(ErrorNumber::kMissingObject)},
    {"Could not find stored procedure", static_cast<long>(ErrorNumber::kMissingObject)},
    {"Cannot find", static_cast<long>(ErrorNumber::kMissingObject)},
    {"no such table", static_cast<long>(ErrorNumber::kMissingObject)},
    {"Arithmetic overflow", kDataOverflow},
    {"The conversion of", kDataOverflow},
    {"String or binary data would be truncated", kDataOverflow},
    {"Conversion failed", kConversionFailed},
    {"Error converting", kConversionFailed},
    {"Cannot insert the value NULL", kIntegrityViolation},
    {"FOREIGN KEY constraint", kIntegrityViolation},
}};

long NumberOfCode(int code, std::string_view message) {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return static_cast<long>(ErrorNumber::kTimeout);
    case SQLITE_INTERRUPT:
      return static_cast<long>(ErrorNumber::kCancelled);
    case SQLITE_NOMEM:
      return static_cast<long>(ErrorNumber::kOutOfMemory);
    case SQLITE_CONSTRAINT:
      return kIntegrityViolation;
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN:
    case SQLITE_CORRUPT:
    case SQLITE_IOERR:
    case SQLITE_FULL:
    case SQLITE_PERM:
      return static_cast<long>(ErrorNumber::kConnection);
    default:
      return NumberOf(message);
  }
}

}  // namespace

long NumberOf(std::string_view message) {
  const auto* found = std::find_if(kNumbers.begin(), kNumbers.end(), [message](const auto& row) {
    return message.substr(0, row.first.size()) == row.first;
  });
  return found == kNumbers.end() ? static_cast<long>(ErrorNumber::kSyntax) : found->second;
}

void ThrowDatabaseError(sqlite3* db, int code) {
  const char* text = sqlite3_errmsg(db);
  std::string message = text == nullptr ? "out of memory" : text;
  if (message == "integer overflow") message = "Arithmetic overflow error: the number is too big.";
  throw Error(NumberOfCode(code, message), message);
}

PreparedPtr Prepare(sqlite3* db, std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  const char* rest = nullptr;
  const int code = sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &statement, &rest);
  PreparedPtr prepared(statement);
  if (code != SQLITE_OK) ThrowDatabaseError(db, code);
  if (statement == nullptr || rest != sql.data() + sql.size()) {
    throw Error(ErrorNumber::kSyntax, "The statement ends before its text does.");
  }
  return prepared;
}

bool Step(sqlite3* db, sqlite3_stmt* statement) {
  const int code = sqlite3_step(statement);
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  ThrowDatabaseError(db, code);
}

void Run(sqlite3* db, std::string_view sql) {
  const PreparedPtr statement = Prepare(db, sql);
  while (Step(db, statement.get())) {
  }
}

AllOrNothing::AllOrNothing(sqlite3* db, bool writes)
    : db_(db), whole_(writes && sqlite3_get_autocommit(db) != 0) {
  Run(db_, whole_ ? "BEGIN IMMEDIATE" : "SAVEPOINT piece");
}

AllOrNothing::~AllOrNothing() {
  if (kept_) return;
  IgnoreAllErrors([&] { Run(db_, whole_ ? "ROLLBACK" : "ROLLBACK TO piece"); });
  if (!whole_) IgnoreAllErrors([&] { Run(db_, "RELEASE piece"); });
}

void AllOrNothing::Keep() {
  Run(db_, whole_ ? "COMMIT" : "RELEASE piece");
  kept_ = true;
}

std::string ColumnText(sqlite3_stmt* statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

void BindText(sqlite3_stmt* statement, int index, std::string_view text) {
  const int code = sqlite3_bind_text64(statement, index, text.data() == nullptr ? "" : text.data(),
                                       text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  if (code != SQLITE_OK) ThrowDatabaseError(sqlite3_db_handle(statement), code);
}

}  // namespace vorek::sqlite
