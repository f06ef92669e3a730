#ifndef VOREK_DRILL_QUERY_COLUMNS_H_
#define VOREK_DRILL_QUERY_COLUMNS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "grid/grid.h"

// From a name in a query's text to the grid column of its field, by counting commas: no statement
// is parsed. Names are found anywhere in the text, in any case.
namespace vorek {

// The select list of a query: what stands before its first " FROM ", in capitals. Nothing for a
// query without one.
std::optional<std::string> SelectListOf(const std::string& query);

// Where a name, in any case, stands in a select list, as an offset in bytes.
std::optional<std::size_t> FindInList(const std::string& select_list, const std::string& name);

// The grid column of what stands at the offset: 1 and the commas up to there behind which a blank,
// a Latin letter or a digit follows, so that those between a bracket and a quote don't count.
std::int32_t CommaColumn(std::string_view select_list, std::size_t at);
// The same without the commas inside of brackets.
std::int32_t OuterCommaColumn(std::string_view select_list, std::size_t at);

// The grid column of a field by a mention of it that isn't inside quotes or brackets: 1 and the
// commas before it that aren't either. -1 if there is none.
std::int32_t FieldColumn(const std::string& query, const std::string& name);

// The grid column with that header, in any case.
std::optional<std::int32_t> FindColumn(const std::string& name, const Grid& grid);

}  // namespace vorek

#endif  // VOREK_DRILL_QUERY_COLUMNS_H_
