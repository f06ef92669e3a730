#ifndef VOREK_ADAPTERS_SQLITE_EXPLAIN_H_
#define VOREK_ADAPTERS_SQLITE_EXPLAIN_H_

#include <string>
#include <string_view>

namespace vorek {

class DatabaseConnection;

namespace sqlite {

// What SQLite would be given for a text, a statement a line, with the names and types of a query's
// columns behind it; nothing runs. Throws Error for a text that is refused, and for a connection of
// another provider.
std::string Explain(DatabaseConnection& connection, std::string_view text);

// How SQLite will go about the first statement of a text: its query plan, a step a line.
std::string ExplainPlan(DatabaseConnection& connection, std::string_view text);

}  // namespace sqlite
}  // namespace vorek

#endif  // VOREK_ADAPTERS_SQLITE_EXPLAIN_H_
