#ifndef VOREK_ADAPTERS_SQLITE_CODE_PAGE_H_
#define VOREK_ADAPTERS_SQLITE_CODE_PAGE_H_

#include <optional>

// The code page of char and varchar, that of Persian collations: 1256. Texts of these types are
// kept in UTF-8 as all are; what asks for their bytes goes through here.
namespace vorek::sqlite {

char32_t LetterOf(unsigned char byte);
// Nothing for a letter that the code page doesn't have, such as the Persian ی (U+06CC).
std::optional<unsigned char> ByteOf(char32_t letter);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_CODE_PAGE_H_
