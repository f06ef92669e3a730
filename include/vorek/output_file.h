#ifndef VOREK_OUTPUT_FILE_H_
#define VOREK_OUTPUT_FILE_H_

#include <cstdint>
#include <string_view>

namespace vorek {

// A file that is being written and takes its place when it is whole: until Commit, whoever reads
// its path sees the old file, or none; one that is dropped before leaves no trace. Failures are
// Error(kPathAccess) with the system's words.
class OutputFile {
 public:
  virtual ~OutputFile() = default;

  virtual void Write(std::string_view bytes) = 0;
  // Puts bytes over others that were written before. REQUIRES: offset + size <= what was written.
  virtual void Overwrite(std::uint64_t offset, std::string_view bytes) = 0;
  virtual void Commit() = 0;
};

}  // namespace vorek

#endif  // VOREK_OUTPUT_FILE_H_
