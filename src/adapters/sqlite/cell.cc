#include "adapters/sqlite/cell.h"

#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/handle.h"

namespace vorek::sqlite {

Cell CellOf(sqlite3_value* value) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_value_int64(value)};
    case SQLITE_FLOAT:
      return sqlite3_value_double(value);
    case SQLITE_TEXT:
      return std::string(TextOf(value));
    case SQLITE_BLOB: {
      const auto* data = static_cast<const char*>(sqlite3_value_blob(value));
      const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
      return Bytes{size == 0 ? std::string() : std::string(data, size)};
    }
    default:
      return std::monostate{};
  }
}

Cell CellOf(sqlite3_stmt* statement, int column) {
  return CellOf(sqlite3_column_value(statement, column));
}

void BindCell(sqlite3_stmt* statement, int index, const Cell& cell) {
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    sqlite3_bind_int64(statement, index, *whole);
  } else if (const auto* real = std::get_if<double>(&cell)) {
    sqlite3_bind_double(statement, index, *real);
  } else if (const auto* text = std::get_if<std::string>(&cell)) {
    BindText(statement, index, *text);
  } else if (const auto* bytes = std::get_if<Bytes>(&cell)) {
    sqlite3_bind_blob64(statement, index, bytes->data.data(), bytes->data.size(), SQLITE_TRANSIENT);
  } else {
    sqlite3_bind_null(statement, index);
  }
}

void ResultCell(sqlite3_context* context, const Cell& cell) {
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    sqlite3_result_int64(context, *whole);
  } else if (const auto* real = std::get_if<double>(&cell)) {
    sqlite3_result_double(context, *real);
  } else if (const auto* text = std::get_if<std::string>(&cell)) {
    ResultText(context, *text);
  } else if (const auto* bytes = std::get_if<Bytes>(&cell)) {
    sqlite3_result_blob64(context, bytes->data.data(), bytes->data.size(), SQLITE_TRANSIENT);
  } else {
    sqlite3_result_null(context);
  }
}

}  // namespace vorek::sqlite
