#ifndef VOREK_ADAPTERS_SQLITE_FILE_PLACE_H_
#define VOREK_ADAPTERS_SQLITE_FILE_PLACE_H_

#include <string>

namespace vorek::sqlite {

// True for a file on a disk of this machine. A write-ahead log lives in memory that programs share,
// which those of two machines can't.
bool IsOnLocalDisk(const std::string& path);

// True for a file on a file system that nobody can write to now.
bool IsOnReadOnlyDisk(const std::string& path);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_FILE_PLACE_H_
