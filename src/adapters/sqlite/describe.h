#ifndef VOREK_ADAPTERS_SQLITE_DESCRIBE_H_
#define VOREK_ADAPTERS_SQLITE_DESCRIBE_H_

#include "adapters/sqlite/schema.h"
#include "vorek/result_set.h"

namespace vorek::sqlite {

// Translates a batch and has SQLite prepare it; nothing runs. Gives the columns of its first row
// set, without rows, or null: a procedure's are told by its run alone. The look ends at a statement
// that makes what the ones behind it may name. Throws Error with the place of what is refused.
ResultSetPtr Describe(sqlite3* db, Schema& schema, const Batch& batch);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_DESCRIBE_H_
