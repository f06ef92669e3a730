#ifndef VOREK_TEXT_COLLATION_H_
#define VOREK_TEXT_COLLATION_H_

#include <string>
#include <string_view>

namespace vorek::text {

// A byte string whose order is the order in which people sort the text: Persian letters by the
// Persian alphabet, with Arabic ك and ي beside Persian ک and ی, other characters by code point,
// marks and directional controls left out. Without regard to case if ignore_case is set.
std::string SortKey(std::string_view s, bool ignore_case);
void AppendSortKey(std::string_view s, bool ignore_case, std::string& out);

// A number for a code point in the same order, but another one for each: Arabic ك comes right
// behind Persian ک instead of beside it. For comparisons that tell such letters apart.
char32_t LetterOrder(char32_t c);

}  // namespace vorek::text

#endif  // VOREK_TEXT_COLLATION_H_
