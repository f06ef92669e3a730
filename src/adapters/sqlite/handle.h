#ifndef VOREK_ADAPTERS_SQLITE_HANDLE_H_
#define VOREK_ADAPTERS_SQLITE_HANDLE_H_

#include <sqlite3.h>

#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "vorek/error.h"

// SQLite's handles with an owner, and its errors as the system's Error.
namespace vorek::sqlite {

struct StatementCloser {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using PreparedPtr = std::unique_ptr<sqlite3_stmt, StatementCloser>;

// Throws Error with ADO's number for SQLite's last error, in SQLite's or the function's own words.
[[noreturn]] void ThrowDatabaseError(sqlite3* db, int code);
// The number that goes with a message of the dialect ("Invalid object name ...").
long NumberOf(std::string_view message);

// One statement and nothing behind it. Throws Error for a text that SQLite refuses.
PreparedPtr Prepare(sqlite3* db, std::string_view sql);
// True for a row, false at the end. Throws Error.
bool Step(sqlite3* db, sqlite3_stmt* statement);
// Prepares, runs to the end and lets go.
void Run(sqlite3* db, std::string_view sql);
// Runs a part of the work; what it can't get memory for ends as the Error that it stands for, so
// that all who put something back behind an Error do.
template <typename Part>
auto ErrorOfMemory(const Part& part) {
  try {
    return part();
  } catch (const std::bad_alloc&) {
    throw Error(ErrorNumber::kOutOfMemory, "Out of memory");
  }
}
// A piece of work that stays as a whole or not at all, within a transaction or without one. Rolled
// back unless it is kept.
class AllOrNothing {
 public:
  // With `writes`, a writer's place in the file is taken at once, so that two don't wait for each
  // other; temporary tables need none. Throws Error.
  AllOrNothing(sqlite3* db, bool writes);
  ~AllOrNothing();
  AllOrNothing(const AllOrNothing&) = delete;
  AllOrNothing& operator=(const AllOrNothing&) = delete;

  void Keep();

 private:
  sqlite3* db_;
  bool whole_;  // the transaction itself
  bool kept_ = false;
};

// The text of a row's column; "" for NULL.
std::string ColumnText(sqlite3_stmt* statement, int column);
// Throws Error(kOutOfMemory), so that no NULL is bound for a text.
void BindText(sqlite3_stmt* statement, int index, std::string_view text);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_HANDLE_H_
