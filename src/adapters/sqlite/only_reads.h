#ifndef VOREK_ADAPTERS_SQLITE_ONLY_READS_H_
#define VOREK_ADAPTERS_SQLITE_ONLY_READS_H_

#include <vector>

#include "adapters/sqlite/syntax.h"

// What a statement does to the file, by its text alone.
namespace vorek::sqlite {

// True for what surely changes nothing in the file.
bool OnlyReads(const std::vector<StatementPtr>& statements);

// The SELECT whose INTO makes a table of the query's rows; null for any other query. A query with a
// UNION has it in its first SELECT.
const Select* IntoOf(const Query& query);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_ONLY_READS_H_
