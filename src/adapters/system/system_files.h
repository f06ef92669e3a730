#ifndef VOREK_ADAPTERS_SYSTEM_SYSTEM_FILES_H_
#define VOREK_ADAPTERS_SYSTEM_SYSTEM_FILES_H_

#include <memory>
#include <string>
#include <string_view>

#include "vorek/files.h"

namespace vorek {

// The machine's file system. A written file is on the disk before it takes the old one's place, and
// keeps the old one's permissions; a new one is for its owner alone, and so are new folders. A
// symbolic link is followed. What a killed program left beside a file goes when that is written
// again.
class SystemFiles : public Files {
 public:
  bool Exists(const std::string& path) const override;
  std::string Read(const std::string& path) const override;
  void Write(const std::string& path, std::string_view bytes) override;
  void WritePrivate(const std::string& path, std::string_view bytes) override;
  std::unique_ptr<OutputFile> Create(const std::string& path) override;
  std::unique_ptr<FileLock> Lock(const std::string& path) override;
  void MakeFoldersFor(const std::string& path) override;
};

}  // namespace vorek

#endif  // VOREK_ADAPTERS_SYSTEM_SYSTEM_FILES_H_
