#ifndef VOREK_TESTS_SUPPORT_SCRATCH_FOLDER_H_
#define VOREK_TESTS_SUPPORT_SCRATCH_FOLDER_H_

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace vorek {

// An empty folder of a test's own, gone with the object: runs of several checkouts don't meet.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "vorek-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder_ = name;
  }
  ~ScratchFolder() { std::filesystem::remove_all(folder_); }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }
  // The path of a file in it.
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

 private:
  std::filesystem::path folder_;
};

}  // namespace vorek

#endif  // VOREK_TESTS_SUPPORT_SCRATCH_FOLDER_H_
