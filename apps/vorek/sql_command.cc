#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "adapters/sqlite/explain.h"
#include "catalog/data_connection.h"
#include "command.h"
#include "interrupt_watch.h"
#include "limit_options.h"
#include "progress_line.h"
#include "result_writer.h"
#include "text/utf8.h"
#include "vorek/connection_string.h"
#include "vorek/script.h"

namespace vorek {
namespace {

struct SqlOptions {
  std::string text;
  ConnectOptions connect;
  std::string format = "table";
  bool explain = false;
  bool create = false;
  int timeout = 0;
  LimitOptions limits;
};

std::string ReadAll(std::istream& in) {
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool IsNameOfScript(const std::string& text) {
  return text.find_first_of(" \t\r\n") == std::string::npos &&
         text::EqualsIgnoreCase(std::filesystem::path(text).extension().string(), ".sql");
}

// The statements themselves, "-" for the standard input, or the name of a file that is there.
std::string ScriptOf(const std::string& text) {
  if (text == "-") return ScriptText(ReadAll(std::cin));
  std::error_code error;
  if (text.size() > 1000) return text;
  const bool folder = std::filesystem::is_directory(text, error);
  if (folder || (!std::filesystem::exists(text, error) && IsNameOfScript(text))) {
    throw Error(ErrorNumber::kFileNotFound, "There is no script '" + text + "'.");
  }
  if (!std::filesystem::exists(text, error)) return text;
  std::ifstream file(text, std::ios::binary);
  if (!file) throw Error(ErrorNumber::kPathAccess, "Cannot read '" + text + "'.");
  return ScriptText(ReadAll(file));
}

std::unique_ptr<DatabaseConnection> Connect(const SqlOptions& options) {
  std::string connection_string = ConnectionString(options.connect);
  if (options.create) connection_string += ";Mode=Create";
  const std::string name = ConnectionValue(ParseConnectionString(connection_string), {"Provider"});
  const ProviderList providers = ConsoleWorld().providers;
  return FindProvider(providers, name).Connect(connection_string);
}

void WriteResults(const std::vector<ResultSetPtr>& results, const std::string& format) {
  if (format == "json") {
    WriteJson(results, std::cout);
    return;
  }
  for (std::size_t i = 0; i < results.size(); ++i) {
    if (i > 0) std::cout << '\n';
    const ResultTable table(*results[i]);
    (format == "tsv" ? WriteTsv : format == "csv" ? WriteCsv : WriteTable)(table, std::cout);
  }
}

// Ctrl+C takes the script back as a whole, on the server too.
std::vector<ResultSetPtr> RunUntilInterrupted(DatabaseConnection& connection,
                                              const std::string& script, ExecuteOptions execute) {
  ProgressLine line;
  const InterruptWatch watch([&connection] { connection.Cancel(); });
  execute.message = [&line](std::string_view text) {
    line.Clear();
    std::cerr << text << '\n';
  };
  execute.progress = [&](std::size_t rows) {
    if (line.Due()) line.Show(std::to_string(rows) + " rows");
    return !watch.Interrupted();
  };
  return RunScript(connection, script, execute);
}

void RunSql(const SqlOptions& options) {
  const std::string script = ScriptOf(options.text);
  const auto connection = Connect(options);
  if (options.explain) {
    for (const ScriptBatch& batch : SplitScript(script)) {
      std::cout << sqlite::Explain(*connection, batch.text);
    }
    return;
  }
  ExecuteOptions execute;
  execute.timeout_seconds = options.timeout;
  execute.limits = options.limits.Limits();
  WriteResults(RunUntilInterrupted(*connection, script, execute), options.format);
}

}  // namespace

void AddSqlCommand(CLI::App& app) {
  auto options = std::make_shared<SqlOptions>();
  CLI::App* const command =
      app.add_subcommand("sql", "Run statements, or a script with GO, in one transaction");
  command->add_option("TEXT", options->text, "the statements, a script file, or - to read them")
      ->required();
  AddDatabaseOption(*command, options->connect);
  command->add_option("--format", options->format, "of the rows: table, tsv, csv or json")
      ->check(CLI::IsMember({"table", "tsv", "csv", "json"}));
  command->add_flag("--explain", options->explain, "show the translation, run nothing");
  command->add_flag("--create", options->create,
                    "make the file of an embedded database if it isn't there");
  command->add_option("--timeout", options->timeout, "seconds for each piece; 0 waits for ever");
  AddLimitOptions(*command, options->limits);
  command->callback([options] { RunSql(*options); });
}

}  // namespace vorek
