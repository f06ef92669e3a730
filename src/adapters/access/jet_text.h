#ifndef VOREK_ADAPTERS_ACCESS_JET_TEXT_H_
#define VOREK_ADAPTERS_ACCESS_JET_TEXT_H_

#include <string>
#include <string_view>

namespace vorek::jet {

// Between UTF-8 and the UTF-16, little endian, of the file.
std::string ToUtf16(std::string_view utf8);
std::string FromUtf16(std::string_view bytes);

}  // namespace vorek::jet

#endif  // VOREK_ADAPTERS_ACCESS_JET_TEXT_H_
