#include "command.h"

#include "adapters/system/database_option.h"
#include "vorek/odbc.h"
#ifdef VOREK_WITH_ACCESS
#include "vorek/access.h"
#endif
#include "vorek/sqlite.h"
#include "vorek/system.h"
#ifdef VOREK_WITH_XLSX
#include "vorek/xlsx.h"
#endif

namespace vorek {

void AddDatabaseOption(CLI::App& command, ConnectOptions& options) {
  command.add_option("--db", options.db, "connection string, or the file of an embedded database")
      ->required();
  command.add_option("--password-file", options.password_file,
                     "file whose first line is the password; else $VOREK_PASSWORD");
}

void AddUserOptions(CLI::App& command, ConnectOptions& options) {
  command.add_option("--user", options.user, "number of the user")->required();
  command.add_option("--position", options.position, "the user's position");
  command.add_option("--employee", options.employee, "the user's employee number");
  command.add_option("--period", options.period, "the accounting period");
}

std::string ConnectionString(const ConnectOptions& options) {
  return DatabaseOption(options.db, options.password_file);
}

WorldOptions ConsoleWorld() {
  WorldOptions options;
  options.providers = {SqliteProvider()};
#ifdef VOREK_WITH_ODBC
  options.providers.push_back(OdbcProvider());
#endif
#ifdef VOREK_WITH_XLSX
  options.spreadsheet = XlsxSpreadsheet();
#endif
  AddSystemServices(options);
#ifdef VOREK_WITH_ACCESS
  options.access_file = JetAccessFiles(options.files);
#endif
  return options;
}

}  // namespace vorek
