#include <iostream>

#include "command.h"
#include "vorek/error.h"

namespace {

constexpr int kWrongUsage = 2;

int Run(CLI::App& app, int argc, char** argv) {
  try {
    app.parse(argc, argv);
  } catch (const CLI::RuntimeError& error) {
    return error.get_exit_code();
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kWrongUsage;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  CLI::App app("Vorek, a database-driven report engine");
  app.require_subcommand(1);
  vorek::AddSampleCommand(app);
  vorek::AddListCommand(app);
  vorek::AddShowCommand(app);
  vorek::AddDriveCommand(app);
  vorek::AddCheckCommand(app);
  vorek::AddEvalCommand(app);
  vorek::AddSqlCommand(app);
  try {
    return Run(app, argc, argv);
  } catch (const vorek::Error& error) {
    std::cerr << "vorek: " << error.Description() << '\n';
    return 1;
  }
}
