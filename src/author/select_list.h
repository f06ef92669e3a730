#ifndef VOREK_AUTHOR_SELECT_LIST_H_
#define VOREK_AUTHOR_SELECT_LIST_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorek {

// The column names that a query's text gives, read off its outermost select list without running
// it: an item's alias, else its last name, else "". Nothing for a text in which they can't be seen:
// one that doesn't begin with SELECT (or WITH ... SELECT), or whose list holds "*".
std::optional<std::vector<std::string>> SelectListNames(std::string_view query);

}  // namespace vorek

#endif  // VOREK_AUTHOR_SELECT_LIST_H_
