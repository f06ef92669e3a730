// A text of the dialect. What is translated has to prepare in SQLite, writes to nothing but the
// table that it names, and a query writes nothing at all. The same bytes as a literal come back as
// they are.
#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/parser.h"
#include "adapters/sqlite/schema.h"
#include "vorek/error.h"

namespace {

using namespace vorek::sqlite;  // NOLINT: a program of one file

// What a statement asks leave to write, as SQLite reports it while it prepares.
std::set<std::string>* written = nullptr;

int Authorize(void*, int action, const char* table, const char*, const char*, const char*) {
  const bool writes = action == SQLITE_INSERT || action == SQLITE_UPDATE || action == SQLITE_DELETE;
  const bool reads = action == SQLITE_SELECT || action == SQLITE_READ ||
                     action == SQLITE_FUNCTION || action == SQLITE_RECURSIVE;
  if (written == nullptr || reads) return SQLITE_OK;
  written->insert(writes && table != nullptr ? table : "action " + std::to_string(action));
  return SQLITE_OK;
}

void Nothing(sqlite3_context* context, int, sqlite3_value**) { sqlite3_result_null(context); }

struct Database {
  Database() {
    sqlite3_open(":memory:", &db);
    RegisterFunctions(db);
    for (const char* name :
         {"vk_call", "vk_variable", "vk_assign", "vk_object_id", "vk_object_property"}) {
      sqlite3_create_function(db, name, -1, SQLITE_UTF8, nullptr, Nothing, nullptr, nullptr);
    }
    Run(db,
        "CREATE TABLE t (ID INTEGER PRIMARY KEY, Name nvarchar(20) COLLATE VOREK, Amount "
        "money_int, D decimal_int(18,3), F float, At datetime, B bit, N int)");
    Run(db, "CREATE TABLE u (ID int, TID int, Note nvarchar COLLATE VOREK)");
    Run(db, "INSERT INTO t VALUES (1, 'a', 10000, 1500, 0.5, '2024-01-15 00:00:00.000', 1, 7)");
    schema = std::make_unique<Schema>(db);
    sqlite3_set_authorizer(db, Authorize, nullptr);
  }

  sqlite3* db = nullptr;
  std::unique_ptr<Schema> schema;
};

[[noreturn]] void Fail(const std::string& what, const std::string& sql) {
  std::fprintf(stderr, "%s\n%s\n", what.c_str(), sql.c_str());
  std::abort();
}

// SQLite's own limits on a statement that is well formed.
bool IsLimit(std::string_view message) {
  constexpr std::array<std::string_view, 6> kLimits = {
      "parser stack overflow", "Expression tree is too large", "too many", "at most",
      "circular reference",    "string or blob too big"};
  for (const std::string_view limit : kLimits) {
    if (message.find(limit) != std::string_view::npos) return true;
  }
  return false;
}

void Check(Database& database, const Translation& translation, const std::string& target) {
  std::set<std::string> tables;
  written = &tables;
  try {
    const PreparedPtr prepared = Prepare(database.db, translation.sql);
    written = nullptr;
    if (target.empty() && sqlite3_stmt_readonly(prepared.get()) == 0) {
      Fail("a query writes", translation.sql);
    }
    if (sqlite3_column_count(prepared.get()) != static_cast<int>(translation.columns.size())) {
      Fail("the columns differ", translation.sql);
    }
  } catch (const vorek::Error& error) {
    written = nullptr;
    if (IsLimit(error.Description())) return;
    Fail("doesn't prepare: " + error.Description(), translation.sql);
  }
  for (const std::string& table : tables) {
    if (NameKey(table) != NameKey(target)) Fail("writes to " + table, translation.sql);
  }
}

void Translate(Database& database, const Statement& statement, const SourceText& source,
               Variables& variables) {
  Binder binder(*database.schema, variables, source);
  switch (statement.kind) {
    case StatementKind::kSelect:
      return Check(database, binder.Select(*statement.query), "");
    case StatementKind::kInsert:
      if (!statement.body.empty()) return;
      return Check(database, binder.Insert(statement), statement.name.Last());
    case StatementKind::kDelete:
    case StatementKind::kUpdate: {
      const bool erases = statement.kind == StatementKind::kDelete;
      const Translation translation = erases ? binder.Delete(statement) : binder.Update(statement);
      // The table behind an alias: both are in the schema, either may be meant.
      const bool first = translation.sql.find("main.\"t\"") != std::string::npos;
      return Check(database, translation,
                   translation.sql.find(erases ? "DELETE FROM main.\"u\"" : "UPDATE main.\"u\"") !=
                           std::string::npos
                       ? "u"
                   : first ? "t"
                           : statement.name.Last());
    }
    case StatementKind::kDeclare:
      for (const Parameter& variable : statement.parameters) {
        variables[LowerWord(variable.name)] = {variable.type, ""};
      }
      return;
    default:
      for (const StatementPtr& inner : statement.body) {
        Translate(database, *inner, source, variables);
      }
  }
}

void CheckLiteral(Database& database, std::string_view bytes) {
  std::string text = "select N'";
  for (const char c : bytes) {
    text += c;
    if (c == '\'') text += c;
  }
  text += "'";
  const Variables none;
  const std::shared_ptr<Batch> batch = Parser(text).ParseBatch();
  if (batch->statements.size() != 1) Fail("a literal ends early", text);
  Binder binder(*database.schema, none, text);
  const PreparedPtr prepared =
      Prepare(database.db, binder.Select(*batch->statements[0]->query).sql);
  if (!Step(database.db, prepared.get()) || ColumnText(prepared.get(), 0) != bytes) {
    Fail("a literal changes", text);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Database database;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  CheckLiteral(database, text);
  vorek::IgnoreErrors([&] {
    const std::shared_ptr<Batch> batch = Parser(text).ParseBatch();
    Variables variables;
    for (const StatementPtr& statement : batch->statements) {
      Translate(database, *statement, text, variables);
    }
  });
  return 0;
}
