#ifndef VOREK_ADAPTERS_SQLITE_READER_H_
#define VOREK_ADAPTERS_SQLITE_READER_H_

#include <sqlite3.h>

#include <functional>
#include <vector>

#include "adapters/sqlite/bind.h"
#include "vorek/result_set.h"

namespace vorek::sqlite {

// Steps a statement to its end and keeps its rows, each column typed as its translation says.
// checkpoint is called every few thousand rows with them; it throws to stop. Throws Error for a
// number that its type can't hold.
ResultSetPtr ReadRows(sqlite3* db, sqlite3_stmt* statement,
                      const std::vector<OutputColumn>& columns,
                      const std::function<void(const ResultSet&)>& checkpoint);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_READER_H_
