#include "command.h"

#include "text/utf8.h"
#include "vorek/odbc.h"
#include "vorek/sqlite.h"
#include "vorek/system.h"

namespace vorek {

void AddDatabaseOption(CLI::App& command, ConnectOptions& options) {
  command.add_option("--db", options.db, "connection string, or the file of an embedded database")
      ->required();
}

void AddUserOptions(CLI::App& command, ConnectOptions& options) {
  command.add_option("--user", options.user, "number of the user")->required();
  command.add_option("--position", options.position, "the user's position");
  command.add_option("--employee", options.employee, "the user's employee number");
  command.add_option("--period", options.period, "the accounting period");
}

std::string ConnectionString(const std::string& db) {
  if (text::StartsWithIgnoreCase(db, "Provider=")) return db;
  // A file's name may hold what parts the pieces.
  return "Provider=VorekSQLite;Data Source=\"" + text::Replace(db, "\"", "\"\"") + "\"";
}

WorldOptions ConsoleWorld() {
  WorldOptions options;
  options.providers = {SqliteProvider()};
#ifdef VOREK_WITH_ODBC
  options.providers.push_back(OdbcProvider());
#endif
  AddSystemServices(options);
  return options;
}

}  // namespace vorek
