#ifndef VOREK_ADAPTERS_ACCESS_JET_ROW_H_
#define VOREK_ADAPTERS_ACCESS_JET_ROW_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/access/jet_table.h"

namespace vorek::jet {

// The bytes of a column's value in a row; none for NULL. A Boolean has an empty text for true.
using Value = std::optional<std::string>;

// A number's text as the column holds it. Throws Error, which names the column, for one that isn't
// held exactly enough, and for a column that takes no numbers.
Value FromNumber(const Column& column, std::string_view number);
// A text as the column holds it. Throws Error for one that is too long.
Value FromText(const Column& column, std::string_view text);
Value FromLong(std::int32_t number);

// The row of these values, one for each of the table's columns in their order. Throws Error for a
// row that no page can take.
std::string MakeRow(const Table& table, const std::vector<Value>& values);

// The whole number that a column has in a row of the file; none for NULL.
std::optional<std::int32_t> ReadWhole(const JetFile& file, const JetFile::Span& row,
                                      const Column& column);

}  // namespace vorek::jet

#endif  // VOREK_ADAPTERS_ACCESS_JET_ROW_H_
