#ifndef VOREK_PRINT_BASE64_H_
#define VOREK_PRINT_BASE64_H_

#include <optional>
#include <string>
#include <string_view>

namespace vorek::print {

// The bytes of a text in base 64 (RFC 4648); blanks and line ends are passed over. Nothing for a
// text with another character, or one that ends in the midst of a byte.
std::optional<std::string> DecodeBase64(std::string_view text);

}  // namespace vorek::print

#endif  // VOREK_PRINT_BASE64_H_
