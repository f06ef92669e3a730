#ifndef VOREK_ADAPTERS_SQLITE_CELL_H_
#define VOREK_ADAPTERS_SQLITE_CELL_H_

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <variant>

namespace vorek::sqlite {

struct Bytes {
  std::string data;
};

// The value of a variable, in the form in which the database keeps one of its type.
using Cell = std::variant<std::monostate, std::int64_t, double, std::string, Bytes>;

Cell CellOf(sqlite3_value* value);
Cell CellOf(sqlite3_stmt* statement, int column);
void BindCell(sqlite3_stmt* statement, int index, const Cell& cell);
void ResultCell(sqlite3_context* context, const Cell& cell);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_CELL_H_
