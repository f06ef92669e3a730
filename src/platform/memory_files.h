#ifndef VOREK_PLATFORM_MEMORY_FILES_H_
#define VOREK_PLATFORM_MEMORY_FILES_H_

#include <map>
#include <string>
#include <string_view>

#include "vorek/error.h"
#include "vorek/files.h"

namespace vorek {

// Files in memory, with faults that can be switched on.
class MemoryFiles : public Files {
 public:
  bool Exists(const std::string& path) const override { return contents.count(path) > 0; }

  std::string Read(const std::string& path) const override {
    const auto found = contents.find(path);
    if (found == contents.end()) throw Error(ErrorNumber::kFileNotFound, "No such file: " + path);
    if (fail_reads) throw Error(ErrorNumber::kPathAccess, "Can't be read: " + path);
    return found->second;
  }

  void Write(const std::string& path, std::string_view bytes) override {
    if (fail_writes) throw Error(ErrorNumber::kPathAccess, "Can't be written: " + path);
    contents[path] = bytes;
    ++writes;
  }

  void MakeFoldersFor(const std::string&) override {}

  std::map<std::string, std::string> contents;  // by path
  int writes = 0;
  bool fail_reads = false;
  bool fail_writes = false;
};

}  // namespace vorek

#endif  // VOREK_PLATFORM_MEMORY_FILES_H_
