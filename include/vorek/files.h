#ifndef VOREK_FILES_H_
#define VOREK_FILES_H_

#include <memory>
#include <string>
#include <string_view>

#include "vorek/output_file.h"

namespace vorek {

// A place in a file system that is kept from others as long as it lives.
class FileLock {
 public:
  virtual ~FileLock() = default;
};

// Whole files by their UTF-8 paths. Failures are Error: kFileNotFound if the file isn't there,
// kPathAccess with the system's words for everything else.
class Files {
 public:
  virtual ~Files() = default;

  // True if a file (no folder, no device) stands under the path. Throws kPathAccess if that can't
  // be found out, so that a file that can't be seen isn't taken for one that isn't there.
  virtual bool Exists(const std::string& path) const = 0;

  virtual std::string Read(const std::string& path) const = 0;

  // Puts the bytes under the path through a temporary file beside it and a rename: whoever reads
  // sees the old file or the new one, and a failure half-way leaves the old one. The folder has to
  // be there; what isn't a file (a device, a folder) is refused.
  virtual void Write(const std::string& path, std::string_view bytes) = 0;

  // The same for a file that nobody but its owner may read.
  virtual void WritePrivate(const std::string& path, std::string_view bytes) { Write(path, bytes); }

  // A file of any size, written piece by piece, with the same promise. Unless a file system has a
  // way of its own, the pieces are gathered in memory.
  virtual std::unique_ptr<OutputFile> Create(const std::string& path);

  // Keeps other programs and threads that ask the same away from the path's file while it is read,
  // changed and written. Its folder has to be there. Waits for some seconds, then throws
  // kPathAccess. Null where a file system has no such thing.
  virtual std::unique_ptr<FileLock> Lock(const std::string& /*path*/) { return nullptr; }

  // Makes the folders that the path's file lies in, as far as they are missing.
  virtual void MakeFoldersFor(const std::string& path) = 0;
};

}  // namespace vorek

#endif  // VOREK_FILES_H_
