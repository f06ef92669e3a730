#include "adapters/system/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
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

// A child and what it started: all of it goes with this.
class Group {
 public:
  explicit Group(pid_t child) : child_(child), ended_(child == 0) {}
  Group(const Group&) = delete;
  Group& operator=(const Group&) = delete;
  ~Group() {
    if (child_ == 0) return;
    ::kill(-child_, SIGKILL);
    if (!ended_) ::waitpid(child_, &status_, 0);
  }

  bool Ended() {
    if (ended_) return true;
    const pid_t got = ::waitpid(child_, &status_, WNOHANG);
    ended_ = got == child_ || (got < 0 && errno != EINTR);
    well_ = got == child_ && WIFEXITED(status_) && WEXITSTATUS(status_) == 0;
    return ended_;
  }
  bool EndedWell() const { return well_; }

 private:
  pid_t child_;
  bool ended_;
  bool well_ = false;
  int status_ = 0;
};

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

bool RunChild(const std::vector<std::string>& arguments, std::chrono::milliseconds limit,
              const Question& question) {
  constexpr std::chrono::milliseconds kBetween{5};
  Group child(Start(arguments));
  const Clock::time_point end = Clock::now() + limit;
  while (!child.Ended()) {
    if (Clock::now() >= end) return false;
    std::this_thread::sleep_for(kBetween);
    question();
  }
  return child.EndedWell();
}

}  // namespace vorek
