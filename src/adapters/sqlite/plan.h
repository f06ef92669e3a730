#ifndef VOREK_ADAPTERS_SQLITE_PLAN_H_
#define VOREK_ADAPTERS_SQLITE_PLAN_H_

#include <map>
#include <memory>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/handle.h"

namespace vorek::sqlite {

// A translation with SQLite's program for it.
struct Compiled {
  Translation translation;
  PreparedPtr prepared;
  long long stamp = 0;            // of the schema that it was made by
  long long temporary_stamp = 0;  // counts if it touches a temporary table
  bool running = false;           // an inner call of the same procedure takes another one
};

// Marks a program as running and rewinds it afterwards, whatever happens.
class Running {
 public:
  explicit Running(Compiled& compiled) : compiled_(compiled) { compiled_.running = true; }
  ~Running() {
    sqlite3_reset(compiled_.prepared.get());
    sqlite3_clear_bindings(compiled_.prepared.get());
    compiled_.running = false;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  Compiled& compiled_;
};

// What is kept of a statement of the dialect between two runs: it has one piece for each expression
// or query in it that runs by itself.
struct Plan {
  std::map<int, std::shared_ptr<Compiled>> pieces;
  const Statement* cursor = nullptr;  // whose columns a FETCH was translated for
  int number = 0;                     // of the statement, once it has been run
};

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_PLAN_H_
