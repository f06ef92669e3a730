#include "adapters/system/system_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include "vorek/error.h"
#include "vorek/system.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& path, int code) {
  const bool missing = code == ENOENT || code == ENOTDIR;
  throw Error(missing ? ErrorNumber::kFileNotFound : ErrorNumber::kPathAccess,
              path + ": " + std::generic_category().message(code));
}

// An open file that is closed whatever happens.
class Descriptor {
 public:
  Descriptor(const std::string& path, int flags, mode_t mode = 0666)
      : Descriptor(path, path, flags, mode) {}
  // Failures name another path: that of the file in whose place this one comes.
  Descriptor(const std::string& path, const std::string& told, int flags, mode_t mode)
      : path_(told) {
    do {
      fd_ = ::open(path.c_str(), flags | O_CLOEXEC, mode);
    } while (fd_ < 0 && errno == EINTR);
    if (fd_ < 0) Fail(path_, errno);
  }
  Descriptor() = default;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }

  int Get() const { return fd_; }
  void Swap(Descriptor& other) noexcept {
    path_.swap(other.path_);
    std::swap(fd_, other.fd_);
  }

  void WriteAll(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
      if (written < 0 && errno != EINTR) Fail(path_, errno);
      if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }

  // Some file systems report a full disk only here.
  void SyncAndClose() {
    if (::fsync(fd_) != 0 && errno != EINVAL) Fail(path_, errno);
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0) Fail(path_, errno);
  }

 private:
  std::string path_;
  int fd_ = -1;
};

std::string FolderOf(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  return folder.empty() ? "." : folder.string();
}

// "report.csv.4711-0.tmp" beside report.csv, which a program may leave that is killed.
constexpr std::string_view kTemporaryEnding = ".tmp";

std::string TemporaryName(const std::string& path) {
  static std::atomic<unsigned> count{0};
  return path + "." + std::to_string(::getpid()) + "-" + std::to_string(count++) +
         std::string(kTemporaryEnding);
}

// The number of the program that made a temporary file for a file of this name; 0 for another file.
pid_t MakerOf(std::string_view temporary, std::string_view name) {
  if (!temporary.starts_with(name) || !temporary.ends_with(kTemporaryEnding)) return 0;
  temporary.remove_prefix(name.size());
  int maker = 0;
  unsigned count = 0;
  const std::string rest(temporary);
  const bool ours = std::sscanf(rest.c_str(), ".%d-%u", &maker, &count) == 2 && maker > 0;
  const std::string again =
      "." + std::to_string(maker) + "-" + std::to_string(count) + std::string(kTemporaryEnding);
  return ours && rest == again ? maker : 0;
}

bool IsGone(pid_t program) { return ::kill(program, 0) != 0 && errno == ESRCH; }

// A file that is being written is locked: one of a program on another machine isn't taken away.
void RemoveUnlessWritten(const std::string& temporary) {
  const Descriptor file(temporary, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
  if (::flock(file.Get(), LOCK_EX | LOCK_NB) == 0) ::unlink(temporary.c_str());
}

struct FolderCloser {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

// Takes away what killed programs left of their work on this file.
void Sweep(const std::string& path) {
  const std::string name = fs::path(path).filename().string();
  const std::string folder = FolderOf(path);
  const std::unique_ptr<DIR, FolderCloser> entries(::opendir(folder.c_str()));
  while (entries != nullptr) {
    const dirent* const entry = ::readdir(entries.get());
    if (entry == nullptr) return;
    const pid_t maker = MakerOf(entry->d_name, name);
    if (maker == 0 || !IsGone(maker)) continue;
    IgnoreErrors([&] { RemoveUnlessWritten(folder + "/" + entry->d_name); });
  }
}

std::string FollowLink(const std::string& path) {
  std::error_code failed;
  if (!fs::is_symlink(path, failed)) return path;
  const fs::path target = fs::weakly_canonical(path, failed);
  return failed ? path : target.string();
}

// A rename would put a file in the place of a device or a folder.
void RefuseAllButFiles(const std::string& path) {
  struct stat old {};
  if (::stat(path.c_str(), &old) != 0 || S_ISREG(old.st_mode)) return;
  if (S_ISDIR(old.st_mode)) Fail(path, EISDIR);
  throw Error(ErrorNumber::kPathAccess, path + ": Not a regular file");
}

enum class Readers { kAsBefore, kOwner };

// Puts the rename itself on the disk; a file system that can't is no fault.
void SyncFolderOf(const std::string& path) {
  IgnoreAllErrors([&] { Descriptor(FolderOf(path), O_RDONLY | O_DIRECTORY).SyncAndClose(); });
}

// A file beside another one, unlinked with the object unless it took that one's place.
class Temporary {
 public:
  Temporary(const std::string& told, const std::string& target) : name_(TemporaryName(target)) {
    Descriptor made(name_, told, O_WRONLY | O_CREAT | O_EXCL, 0600);
    there_ = true;
    ::flock(made.Get(),
            LOCK_EX | LOCK_NB);  // a file system without locks is swept by the maker's number alone
    out_.Swap(made);
  }
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    if (there_) ::unlink(name_.c_str());
  }

  Descriptor& Out() { return out_; }
  void TakePlaceOf(const std::string& target, const std::string& told) {
    if (::rename(name_.c_str(), target.c_str()) != 0) Fail(told, errno);
    there_ = false;
  }

 private:
  std::string name_;
  bool there_ = false;
  Descriptor out_;
};

// Written beside its place; a failure or a drop takes it away. A new file is for its owner alone.
class MachineOutput : public OutputFile {
 public:
  MachineOutput(const std::string& path, Readers readers)
      : path_(path), target_(Swept(FollowLink(path))), temporary_(path, target_) {
    struct stat old {};
    if (readers == Readers::kOwner || ::stat(target_.c_str(), &old) != 0) return;
    if (::fchmod(temporary_.Out().Get(), old.st_mode & 07777U) != 0) Fail(path_, errno);
  }

  void Write(std::string_view bytes) override { temporary_.Out().WriteAll(bytes); }

  void Overwrite(std::uint64_t offset, std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t put =
          ::pwrite(temporary_.Out().Get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
      if (put < 0 && errno == EINTR) continue;
      if (put < 0) Fail(path_, errno);
      bytes.remove_prefix(static_cast<std::size_t>(put));
      offset += static_cast<std::uint64_t>(put);
    }
  }

  void Commit() override {
    temporary_.Out().SyncAndClose();
    temporary_.TakePlaceOf(target_, path_);
    SyncFolderOf(target_);
  }

 private:
  static std::string Swept(std::string target) {
    RefuseAllButFiles(target);
    IgnoreErrors([&] { Sweep(target); });
    return target;
  }

  std::string path_;
  std::string target_;
  Temporary temporary_;
};

void Replace(const std::string& path, std::string_view bytes, Readers readers) {
  MachineOutput out(path, readers);
  out.Write(bytes);
  out.Commit();
}

// A folder that is kept from other programs.
class FolderLock : public FileLock {
 public:
  explicit FolderLock(const std::string& path) : folder_(path, O_RDONLY | O_DIRECTORY) {
    constexpr auto kPatience = std::chrono::seconds(5);
    const auto until = std::chrono::steady_clock::now() + kPatience;
    while (::flock(folder_.Get(), LOCK_EX | LOCK_NB) != 0) {
      if (errno != EWOULDBLOCK && errno != EINTR) return;  // a file system without locks
      if (std::chrono::steady_clock::now() > until) Fail(path, EWOULDBLOCK);
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }

 private:
  Descriptor folder_;
};

}  // namespace

std::shared_ptr<Files> MachineFiles() { return std::make_shared<SystemFiles>(); }

bool SystemFiles::Exists(const std::string& path) const {
  struct stat found {};
  if (::stat(path.c_str(), &found) == 0) return S_ISREG(found.st_mode);
  if (errno != ENOENT && errno != ENOTDIR) Fail(path, errno);
  return false;
}

std::string SystemFiles::Read(const std::string& path) const {
  const Descriptor in(path, O_RDONLY);
  std::string bytes;
  std::array<char, 65536> buffer{};
  for (;;) {
    const ssize_t got = ::read(in.Get(), buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) Fail(path, errno);
    if (got == 0) return bytes;
    bytes.append(buffer.data(), static_cast<std::size_t>(got));
  }
}

void SystemFiles::Write(const std::string& path, std::string_view bytes) {
  Replace(path, bytes, Readers::kAsBefore);
}

void SystemFiles::WritePrivate(const std::string& path, std::string_view bytes) {
  Replace(path, bytes, Readers::kOwner);
}

std::unique_ptr<OutputFile> SystemFiles::Create(const std::string& path) {
  return std::make_unique<MachineOutput>(path, Readers::kAsBefore);
}

std::unique_ptr<FileLock> SystemFiles::Lock(const std::string& path) {
  return std::make_unique<FolderLock>(FolderOf(path));
}

// What they hold is their owner's alone; folders that are there keep their rights.
void SystemFiles::MakeFoldersFor(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  fs::path made;
  for (const fs::path& piece : folder) {
    made /= piece;
    if (::mkdir(made.c_str(), 0700) == 0 || errno == EEXIST) continue;
    const int code = errno;
    if (!fs::is_directory(made)) Fail(made.string(), code);
  }
  if (!folder.empty() && !fs::is_directory(folder)) Fail(folder.string(), ENOTDIR);
}

}  // namespace vorek
