#include "adapters/system/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <thread>

namespace vorek {
namespace {

using Clock = std::chrono::steady_clock;

// The child, leader of a new group, with no streams; 0 if it can't be started.
pid_t Start(std::vector<std::string> arguments) {
  std::vector<char*> words;
  for (std::string& argument : arguments) words.push_back(argument.data());
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
  }
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  posix_spawnattr_setpgroup(&attributes, 0);
  pid_t child = 0;
  const int failed = ::posix_spawnp(&child, words[0], &actions, &attributes, words.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  return failed == 0 ? child : 0;
}

}  // namespace

std::string FindProgram(const std::string& name) {
  const char* const path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    const std::string file = folder + "/" + name;
    if (!folder.empty() && ::access(file.c_str(), X_OK) == 0) return file;
  }
  return {};
}

bool RunChild(const std::vector<std::string>& arguments, std::chrono::milliseconds limit) {
  constexpr std::chrono::milliseconds kBetween{5};
  const pid_t child = Start(arguments);
  if (child == 0) return false;
  const Clock::time_point end = Clock::now() + limit;
  int status = 0;
  for (;;) {
    const pid_t got = ::waitpid(child, &status, WNOHANG);
    if (got == child) break;
    if (got < 0 && errno != EINTR) return false;
    if (Clock::now() >= end) {
      ::kill(-child, SIGKILL);
      ::waitpid(child, &status, 0);
      return false;
    }
    std::this_thread::sleep_for(kBetween);
  }
  // What it may have left running goes too.
  ::kill(-child, SIGKILL);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace vorek
