#ifndef VOREK_TEMPORARY_FILES_H_
#define VOREK_TEMPORARY_FILES_H_

#include <string>

namespace vorek {

// The system's folder for temporary files.
class TemporaryFiles {
 public:
  virtual ~TemporaryFiles() = default;

  // Without a separator at its end; empty if there is none.
  virtual std::string Folder() const = 0;
  // A name that nobody can guess, without a folder: "rad3F2A.tmp". Another one at each call.
  virtual std::string NewName() = 0;
  // Deletes a file, whatever its rights.
  virtual void Delete(const std::string& path) = 0;
};

}  // namespace vorek

#endif  // VOREK_TEMPORARY_FILES_H_
