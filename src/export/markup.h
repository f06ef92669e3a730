#ifndef VOREK_EXPORT_MARKUP_H_
#define VOREK_EXPORT_MARKUP_H_

#include <string>
#include <string_view>

namespace vorek {

// A text between the tags of a page: line ends become breaks.
std::string HtmlText(std::string_view text);

}  // namespace vorek

#endif  // VOREK_EXPORT_MARKUP_H_
