#include "snapshot_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "adapters/system/system_files.h"
#include "vorek/error.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

constexpr const char* kIndex = "snapshot.txt";
constexpr const char* kTimes = "times.txt";
constexpr int kVersion = 1;

[[noreturn]] void Fail(const std::string& path, int code) {
  throw Error(ErrorNumber::kPathAccess, path + ": " + std::strerror(code));
}

std::string MomentText(const DateTime& now) {
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", now.year, now.month, now.day,
                now.hour, now.minute, now.second);
  return text;
}

DateTime ParseMoment(const std::string& text) {
  DateTime now;
  const int read = std::sscanf(text.c_str(), "%d-%d-%d %d:%d:%d", &now.year, &now.month, &now.day,
                               &now.hour, &now.minute, &now.second);
  if (read == 6) return now;
  throw Error(ErrorNumber::kTypeMismatch, "The snapshot's moment can't be read: " + text);
}

std::string IndexText(const Snapshot& snapshot) {
  std::ostringstream out;
  out << "snapshot\t" << kVersion << "\nuser\t" << snapshot.user << "\nposition\t"
      << snapshot.position << "\nemployee\t" << snapshot.employee << "\nperiod\t" << snapshot.period
      << "\nnow\t" << MomentText(snapshot.now) << '\n';
  for (const SnapshotReport& report : snapshot.reports) {
    out << "report\t" << report.name << '\t';
    report.grid.failure.empty() ? out << report.grid.rows.size() << " rows\n" : out << "failed\n";
  }
  return out.str();
}

std::string TimesText(const Snapshot& snapshot) {
  std::ostringstream out;
  for (const SnapshotReport& report : snapshot.reports) {
    out << report.name << '\t' << report.milliseconds << '\n';
  }
  return out.str();
}

// True for the files that a snapshot is made of.
bool IsOurs(const std::string& name) {
  if (name == kIndex || name == kTimes) return true;
  const std::size_t dot = name.find(".txt");
  return dot != std::string::npos && dot > 0 && dot + 4 == name.size() &&
         name.substr(0, dot).find_first_not_of("0123456789-") == std::string::npos;
}

// A folder beside the one that it takes the place of. Gone with the object unless it did.
class NewFolder {
 public:
  explicit NewFolder(const std::string& path) : path_(Resolved(path)) {
    Refuse();
    Sweep();
    std::string pattern = path_ + ".new-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) Fail(path, errno);
    made_ = pattern;
    lock_ = ::open(made_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (lock_ >= 0) ::flock(lock_, LOCK_EX | LOCK_NB);
    // mkdtemp's folder is for its owner alone; one that is replaced gives its rights on.
    struct stat old {};
    if (::stat(path_.c_str(), &old) == 0) ::chmod(made_.c_str(), old.st_mode & 07777U);
  }
  ~NewFolder() {
    std::error_code ignored;
    if (!made_.empty()) fs::remove_all(made_, ignored);
    if (lock_ >= 0) ::close(lock_);
  }
  NewFolder(const NewFolder&) = delete;
  NewFolder& operator=(const NewFolder&) = delete;

  void Write(const std::string& name, const std::string& bytes) {
    SystemFiles().Write(made_ + "/" + name, bytes);
  }

  // Whoever looks sees the old folder or the new one.
  void TakePlace() {
    if (!fs::exists(path_)) {
      if (::rename(made_.c_str(), path_.c_str()) != 0) Fail(path_, errno);
      made_.clear();
      return;
    }
    KeepOthers();
    const int exchanged =
        ::renameat2(AT_FDCWD, made_.c_str(), AT_FDCWD, path_.c_str(), RENAME_EXCHANGE);
    if (exchanged != 0) TakePlaceInTwoSteps();
  }

 private:
  static std::string Resolved(std::string path) {
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    std::error_code none;
    const fs::path resolved = fs::canonical(path, none);
    return none ? path : resolved.string();
  }

  void Refuse() const {
    if (!fs::exists(path_)) return;
    const bool folder = fs::is_directory(path_);
    if (folder && (fs::is_empty(path_) || fs::exists(path_ + "/" + kIndex))) return;
    throw Error(ErrorNumber::kPathAccess, path_ + " holds something else than a snapshot.");
  }

  void KeepOthers() const {
    for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
      const std::string name = entry.path().filename().string();
      if (IsOurs(name)) continue;
      fs::copy(entry.path(), made_ + "/" + name,
               fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    }
  }

  // For a file system that can't exchange: the old one stands under another name in between, and
  // comes back if the new one can't take its place.
  void TakePlaceInTwoSteps() {
    const std::string old = made_ + ".old";
    if (::rename(path_.c_str(), old.c_str()) != 0) Fail(path_, errno);
    if (::rename(made_.c_str(), path_.c_str()) != 0) {
      const int code = errno;
      if (::rename(old.c_str(), path_.c_str()) != 0) Fail(old, errno);
      Fail(path_, code);
    }
    made_ = old;
  }

  // What runs left that were killed: nobody holds it any more.
  void Sweep() const {
    const fs::path path(path_);
    const std::string head = path.filename().string() + ".new-";
    constexpr std::size_t kRandom = 6;  // letters of mkdtemp
    std::error_code none;
    const fs::path beside = path.has_parent_path() ? path.parent_path() : ".";
    for (const fs::directory_entry& entry : fs::directory_iterator(beside, none)) {
      const std::string name = entry.path().filename().string();
      const bool ours = name.starts_with(head) && name.size() == head.size() + kRandom;
      if (ours && entry.is_directory(none) && IsHeldByNobody(entry.path())) {
        fs::remove_all(entry.path(), none);
      }
    }
  }

  static bool IsHeldByNobody(const fs::path& folder) {
    const int held = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (held < 0) return false;
    const bool free = ::flock(held, LOCK_EX | LOCK_NB) == 0;
    ::close(held);
    return free;
  }

  std::string path_;
  std::string made_;
  int lock_ = -1;  // the folder that is being made
};

std::map<std::string, std::int64_t> ReadTimes(const std::string& path) {
  std::map<std::string, std::int64_t> times;
  std::istringstream in(SystemFiles().Read(path + "/" + kTimes));
  std::string name;
  std::int64_t milliseconds = 0;
  while (in >> name >> milliseconds) times[name] = milliseconds;
  return times;
}

void TakeIndexLine(const std::string& keyword, const std::string& value, Snapshot& snapshot) {
  const auto number = [&] { return static_cast<std::int32_t>(std::atoi(value.c_str())); };
  if (keyword == "user") snapshot.user = number();
  if (keyword == "position") snapshot.position = number();
  if (keyword == "employee") snapshot.employee = number();
  if (keyword == "period") snapshot.period = number();
  if (keyword == "now") snapshot.now = ParseMoment(value);
  if (keyword == "report") snapshot.reports.push_back({value.substr(0, value.find('\t')), {}, 0});
}

}  // namespace

void WriteSnapshot(const std::string& path, const Snapshot& snapshot) {
  try {
    NewFolder folder(path);
    for (const SnapshotReport& report : snapshot.reports) {
      folder.Write(report.name + ".txt", FormatGridText(report.grid));
    }
    folder.Write(kTimes, TimesText(snapshot));
    folder.Write(kIndex, IndexText(snapshot));
    folder.TakePlace();
  } catch (const fs::filesystem_error& error) {
    throw Error(ErrorNumber::kPathAccess, path + ": " + error.code().message());
  }
}

Snapshot ReadSnapshot(const std::string& path) {
  Snapshot snapshot;
  std::istringstream index(SystemFiles().Read(path + "/" + kIndex));
  std::string line;
  if (!std::getline(index, line) || line != "snapshot\t" + std::to_string(kVersion)) {
    throw Error(ErrorNumber::kPathAccess, path + " is no snapshot of this version.");
  }
  while (std::getline(index, line)) {
    const std::size_t tab = std::min(line.find('\t'), line.size());
    TakeIndexLine(line.substr(0, tab), tab < line.size() ? line.substr(tab + 1) : "", snapshot);
  }
  const std::map<std::string, std::int64_t> times = ReadTimes(path);
  for (SnapshotReport& report : snapshot.reports) {
    report.grid = ParseGridText(SystemFiles().Read(path + "/" + report.name + ".txt"));
    const auto time = times.find(report.name);
    report.milliseconds = time == times.end() ? 0 : time->second;
  }
  return snapshot;
}

}  // namespace vorek
