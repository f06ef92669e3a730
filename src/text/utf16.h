#ifndef VOREK_TEXT_UTF16_H_
#define VOREK_TEXT_UTF16_H_

#include <string>
#include <string_view>

namespace vorek::text {

// Appends the text in UTF-16, little endian; malformed UTF-8 becomes U+FFFD.
void AppendUtf16(std::string_view utf8, std::string& out);

}  // namespace vorek::text

#endif  // VOREK_TEXT_UTF16_H_
