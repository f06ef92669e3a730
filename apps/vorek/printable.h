#ifndef VOREK_APPS_VOREK_PRINTABLE_H_
#define VOREK_APPS_VOREK_PRINTABLE_H_

#include <string>
#include <string_view>

namespace vorek {

// The text for a terminal, to which no control character in it can give orders: each stands as its
// picture. A line end or a tab is a blank.
std::string Printable(std::string_view text);
// The same for a text of several lines: line feeds and tabs stay.
std::string PrintableLines(std::string_view text);

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_PRINTABLE_H_
