#ifndef VOREK_SQLITE_H_
#define VOREK_SQLITE_H_

#include <memory>

namespace vorek {

class DatabaseProvider;

// The embedded database: "Provider=VorekSQLite;Data Source=<file>". Add it to WorldOptions.
// A file that doesn't exist is refused unless the string holds "Mode=Create"; "Mode=ReadOnly" opens
// a file that nobody may write.
std::shared_ptr<DatabaseProvider> SqliteProvider();

}  // namespace vorek

#endif  // VOREK_SQLITE_H_
