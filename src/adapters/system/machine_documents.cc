#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "vorek/documents.h"
#include "vorek/error.h"
#include "vorek/system.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

std::string Home() {
  const char* const home = std::getenv("HOME");
  return home == nullptr ? "" : home;
}

// XDG_DOCUMENTS_DIR="$HOME/Documents" in the file of the user's folders.
std::string DocumentsOfDesktop() {
  const char* const config = std::getenv("XDG_CONFIG_HOME");
  const std::string folder = config != nullptr && *config != '\0' ? config : Home() + "/.config";
  std::ifstream file(folder + "/user-dirs.dirs");
  constexpr std::string_view kKey = "XDG_DOCUMENTS_DIR=\"";
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(kKey) || !line.ends_with('"')) continue;
    std::string value = line.substr(kKey.size(), line.size() - kKey.size() - 1);
    if (value.starts_with("$HOME")) value = Home() + value.substr(5);
    if (value.starts_with('/')) return value;
  }
  return Home() + "/Documents";
}

class MachineFolder : public Documents {
 public:
  explicit MachineFolder(std::string folder) : folder_(std::move(folder)) {}

  std::string NewPath(const std::string& file_name) override {
    if (folder_.empty() && Home().empty()) {
      throw Error(ErrorNumber::kPathAccess, "پوشه اي براي فايلهاي كاربر نيست.");
    }
    const fs::path folder = folder_.empty() ? DocumentsOfDesktop() : folder_;
    const fs::path name = fs::path(file_name).filename();
    fs::path path = folder / name;
    std::error_code failed;
    for (int count = 2; fs::exists(path, failed); ++count) {
      path = folder / (name.stem().string() + " (" + std::to_string(count) + ")" +
                       name.extension().string());
    }
    return path.string();
  }

  // The desktop's own way to open a file; where there is none, the file lies there all the same.
  void Show(const std::string& path) override {
    std::string program = "xdg-open";
    std::string file = path;
    char* const arguments[] = {program.data(), file.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    }
    pid_t child = 0;
    const int failed =
        ::posix_spawnp(&child, program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) return;
    std::thread([child] { ::waitpid(child, nullptr, 0); }).detach();
  }

 private:
  std::string folder_;
};

}  // namespace

std::shared_ptr<Documents> MachineDocuments(const std::string& folder) {
  return std::make_shared<MachineFolder>(folder);
}

}  // namespace vorek
