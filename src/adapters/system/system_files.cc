#include "adapters/system/system_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <system_error>

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
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }

  int Get() const { return fd_; }

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

std::string TemporaryName(const std::string& path) {
  static std::atomic<unsigned> count{0};
  return path + "." + std::to_string(::getpid()) + "-" + std::to_string(count++) + ".tmp";
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
  throw Error(
      ErrorNumber::kPathAccess,
      path + ": " + std::generic_category().message(S_ISDIR(old.st_mode) ? EISDIR : EINVAL));
}

enum class Readers { kAsBefore, kOwner };

void WriteTemporary(const std::string& temporary, const std::string& path, std::string_view bytes,
                    Readers readers) {
  const bool shared = readers == Readers::kAsBefore;
  Descriptor out(temporary, O_WRONLY | O_CREAT | O_EXCL, shared ? 0666 : 0600);
  struct stat old {};
  if (shared && ::stat(path.c_str(), &old) == 0 && ::fchmod(out.Get(), old.st_mode & 07777U) != 0) {
    Fail(temporary, errno);
  }
  out.WriteAll(bytes);
  out.SyncAndClose();
}

// Puts the rename itself on the disk; a file system that can't is no fault.
void SyncFolderOf(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  IgnoreErrors([&] {
    Descriptor(folder.empty() ? "." : folder.string(), O_RDONLY | O_DIRECTORY).SyncAndClose();
  });
}

void Replace(const std::string& path, std::string_view bytes, Readers readers) {
  const std::string target = FollowLink(path);
  RefuseAllButFiles(target);
  const std::string temporary = TemporaryName(target);
  try {
    WriteTemporary(temporary, target, bytes, readers);
    if (::rename(temporary.c_str(), target.c_str()) != 0) Fail(path, errno);
  } catch (const Error&) {
    ::unlink(temporary.c_str());
    throw;
  }
  SyncFolderOf(target);
}

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

namespace {

// Written beside its place; a failure or a drop takes it away.
class MachineOutput : public OutputFile {
 public:
  explicit MachineOutput(const std::string& path)
      : path_(path), target_(FollowLink(path)), temporary_(TemporaryName(target_)) {
    RefuseAllButFiles(target_);
    out_ = std::make_unique<Descriptor>(temporary_, path_, O_WRONLY | O_CREAT | O_EXCL, 0666);
    struct stat old {};
    if (::stat(target_.c_str(), &old) == 0) ::fchmod(out_->Get(), old.st_mode & 07777U);
  }
  MachineOutput(const MachineOutput&) = delete;
  MachineOutput& operator=(const MachineOutput&) = delete;
  ~MachineOutput() override {
    if (!done_) ::unlink(temporary_.c_str());
  }

  void Write(std::string_view bytes) override { out_->WriteAll(bytes); }

  void Overwrite(std::uint64_t offset, std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t put =
          ::pwrite(out_->Get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
      if (put < 0 && errno == EINTR) continue;
      if (put < 0) Fail(path_, errno);
      bytes.remove_prefix(static_cast<std::size_t>(put));
      offset += static_cast<std::uint64_t>(put);
    }
  }

  void Commit() override {
    out_->SyncAndClose();
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) Fail(path_, errno);
    done_ = true;
    SyncFolderOf(target_);
  }

 private:
  std::string path_;
  std::string target_;
  std::string temporary_;
  std::unique_ptr<Descriptor> out_;
  bool done_ = false;
};

}  // namespace

std::unique_ptr<OutputFile> SystemFiles::Create(const std::string& path) {
  return std::make_unique<MachineOutput>(path);
}

void SystemFiles::MakeFoldersFor(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  std::error_code failed;
  if (!folder.empty()) fs::create_directories(folder, failed);
  if (failed) Fail(folder.string(), failed.value());
}

}  // namespace vorek
