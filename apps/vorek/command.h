#ifndef VOREK_APPS_VOREK_COMMAND_H_
#define VOREK_APPS_VOREK_COMMAND_H_

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>

#include "vorek/world.h"

// The subcommands of the program, one file each. A command does its work in the callback that it
// gives to CLI11 and ends with a non-zero exit code by throwing CLI::RuntimeError or vorek::Error.
namespace vorek {

void AddSampleCommand(CLI::App& app);
void AddCreateCommand(CLI::App& app);
void AddListCommand(CLI::App& app);
void AddShowCommand(CLI::App& app);
void AddExportCommand(CLI::App& app);
void AddDriveCommand(CLI::App& app);
void AddCheckCommand(CLI::App& app);
void AddExplainCommand(CLI::App& app);
void AddSnapshotCommand(CLI::App& app);
void AddEvalCommand(CLI::App& app);
void AddSqlCommand(CLI::App& app);
// Of all commands that the app has when it runs.
void AddCompletionCommand(CLI::App& app);
#ifdef VOREK_WITH_QT
void AddPrintCommand(CLI::App& app);
#endif

// The database and the user of a command.
struct ConnectOptions {
  std::string db;
  std::string password_file;
  std::int16_t user = -1;
  std::int16_t position = -1;
  std::int16_t employee = -1;
  std::int32_t period = -1;
};
void AddDatabaseOption(CLI::App& command, ConnectOptions& options);
void AddUserOptions(CLI::App& command, ConnectOptions& options);

// The connection string that the options stand for; see DatabaseOption.
std::string ConnectionString(const ConnectOptions& options);

// All providers, and messages on the standard error stream.
WorldOptions ConsoleWorld();

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_COMMAND_H_
