#ifndef VOREK_APPS_VOREK_RESULT_WRITER_H_
#define VOREK_APPS_VOREK_RESULT_WRITER_H_

#include <ostream>

#include "platform/result_set.h"

namespace vorek {

// Writers of a row set as it comes from the database; NULL shows as NULL, in JSON as null.

void WriteTable(const ResultSet& result, std::ostream& out);
// A line of names, then a line a row; tabs and line ends in a text become blanks.
void WriteTsv(const ResultSet& result, std::ostream& out);
// {"columns": [{"name", "type"}], "rows": [[..]]}; numbers as numbers, exact to their scale.
void WriteJson(const ResultSet& result, std::ostream& out);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_RESULT_WRITER_H_
