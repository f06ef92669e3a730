#ifndef VOREK_TESTS_SQL_SQL_CASES_H_
#define VOREK_TESTS_SQL_SQL_CASES_H_

#include <filesystem>
#include <string>
#include <vector>

#include "vorek/database.h"

namespace vorek {

// A text file of cases in the dialect:
//
//   # name of the case, and what it shows
//   statements in the dialect, one or more lines
//   ----
//   the rows as expected: a line a row, values between "|", NULL for NULL, after a line of the
//   columns as "name:type"; or "error: a piece of the message"; or "ok" for no rows
//
// "---- each" makes each line above it a case of its own that ends so. A case of one line that
// ends in one line may stand on one: "statement ---- how it ends", and several of them without a
// line between them. Other cases are parted by an empty line. All cases of a file run in order on
// one fresh database. A first line "!types" makes the columns' line part of the expectation from
// there on, "!notypes" ends that.
struct SqlCase {
  int line = 0;
  std::string name;
  std::string statement;
  std::string expected;
  bool types = false;
};

std::vector<SqlCase> ReadSqlCases(const std::filesystem::path& path);

// Whose words an error is told in.
enum class SqlServer {
  kEmbedded,
  // An error is expected then, in any words; a case that the embedded database refuses to
  // translate isn't run at all.
  kOther,
};

// Runs a file's cases on the connection. Each that ends otherwise than it says is told in one text
// with its place, its statement, what it wanted and what it gave.
std::vector<std::string> DifferingCases(DatabaseConnection& connection,
                                        const std::filesystem::path& path, SqlServer server);

}  // namespace vorek

#endif  // VOREK_TESTS_SQL_SQL_CASES_H_
