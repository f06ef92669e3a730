#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>

#include "command.h"
#include "interrupt_watch.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/version.h"

namespace {

constexpr int kWrongUsage = 2;

// A text that isn't UTF-8 would reach a query with other letters than it was given.
bool ArgumentsAreUtf8(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (vorek::text::ValidUtf8(argv[i]) == argv[i]) continue;
    std::fprintf(stderr, "vorek: argument %d isn't UTF-8\n", i);
    return false;
  }
  return true;
}

int Run(CLI::App& app, int argc, char** argv) {
  try {
    app.parse(argc, argv);
  } catch (const CLI::RuntimeError& error) {
    return error.get_exit_code();
  } catch (const CLI::ParseError& error) {
    if (app.get_subcommands().empty() && !app.remaining().empty()) {
      std::cerr << "vorek: there is no command " << app.remaining().front() << '\n';
      return kWrongUsage;
    }
    return app.exit(error) == 0 ? 0 : kWrongUsage;
  }
  return 0;
}

// What failed, in a way that works without memory as well.
int Tell(const char* what) {
  std::fprintf(stderr, "vorek: %s\n", what);
  return 1;
}

int RunToTheEnd(CLI::App& app, int argc, char** argv) {
  try {
    return Run(app, argc, argv);
  } catch (const std::bad_alloc&) {
    return Tell("out of memory");
  } catch (const vorek::Error& error) {
    Tell(error.what());
    return error.Is(vorek::ErrorNumber::kCancelled) ? vorek::InterruptWatch::kExitCode : 1;
  } catch (const std::exception& error) {
    return Tell(error.what());
  }
}

// A full disk shows when the last of the output is written. Where it showed before, what is left of
// the output is tried once more for the reason.
bool OutputIsWritten() {
  const bool failed_before = !std::cout.good();
  std::cout.clear();
  errno = 0;
  std::cout.flush();
  if (!failed_before && std::cout.good() && std::fflush(stdout) == 0) return true;
  std::fprintf(stderr, "vorek: the output can't be written%s%s\n", errno == 0 ? "" : ": ",
               errno == 0 ? "" : std::strerror(errno));
  return false;
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): of commands that are told twice, or without memory
int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  CLI::App app("Vorek, a database-driven report engine");
  app.name("vorek");
  app.require_subcommand(1);
  app.set_version_flag("--version", "vorek " VOREK_VERSION_TEXT);
  vorek::AddSampleCommand(app);
  vorek::AddCreateCommand(app);
  vorek::AddListCommand(app);
  vorek::AddShowCommand(app);
  vorek::AddExportCommand(app);
  vorek::AddDriveCommand(app);
  vorek::AddCheckCommand(app);
  vorek::AddExplainCommand(app);
  vorek::AddSnapshotCommand(app);
  vorek::AddEvalCommand(app);
  vorek::AddSqlCommand(app);
#ifdef VOREK_WITH_QT
  vorek::AddPrintCommand(app);
#endif
  vorek::AddCompletionCommand(app);
  if (!ArgumentsAreUtf8(argc, argv)) return kWrongUsage;
  const int code = RunToTheEnd(app, argc, argv);
  return OutputIsWritten() ? code : 1;
}
