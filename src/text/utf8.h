#ifndef VOREK_TEXT_UTF8_H_
#define VOREK_TEXT_UTF8_H_

#include <cstddef>
#include <string>
#include <string_view>

// Text is UTF-8 everywhere. A length or a position that a rule of the system counts is one of code
// points; offsets into a std::string are bytes and are named so. Case means the simple case of a
// letter, by Unicode's data: a capital and a small letter that lead to one another. Persian letters
// have none.
namespace vorek::text {

// The count of code points. A byte that isn't part of a well-formed sequence counts as one.
std::size_t Length(std::string_view s);

// The byte offset at which code point number `index` (from 0) begins; s.size() if there are fewer.
std::size_t ByteOffset(std::string_view s, std::size_t index);

// VB's Left, Mid and Right in code points; start counts from 1. Out of range gives what there is.
std::string Left(std::string_view s, std::size_t count);
std::string Mid(std::string_view s, std::size_t start, std::size_t count = std::string::npos);
std::string Right(std::string_view s, std::size_t count);

// Reads one code point at byte offset `at` and moves `at` behind it; a malformed byte gives U+FFFD
// and moves by one. REQUIRES: at < s.size().
char32_t DecodeAt(std::string_view s, std::size_t& at);
void AppendUtf8(std::string& out, char32_t code_point);

// Replaces malformed sequences by U+FFFD; well-formed text comes back as it is.
std::string ValidUtf8(std::string_view s);

// Blanks (U+0020) off both ends, as the system trims; tabs and line ends stay.
std::string_view TrimView(std::string_view s);
std::string Trim(std::string_view s);

std::string ToUpper(std::string_view s);
std::string ToLower(std::string_view s);
char32_t ToLower(char32_t code_point);
// One for all that a reader takes for the same: small letters, Persian ی and ک for the Arabic ones,
// Latin digits for Persian and Arabic ones.
char32_t FoldLetter(char32_t code_point);

bool EqualsIgnoreCase(std::string_view a, std::string_view b);
bool StartsWithIgnoreCase(std::string_view s, std::string_view prefix);
bool EndsWithIgnoreCase(std::string_view s, std::string_view suffix);

// The byte offset of the first hit at or behind byte offset `from`, std::string::npos if none. An
// empty needle is found at `from`.
std::size_t FindIgnoreCase(std::string_view s, std::string_view needle, std::size_t from = 0);
inline bool ContainsIgnoreCase(std::string_view s, std::string_view needle) {
  return FindIgnoreCase(s, needle) != std::string_view::npos;
}
inline bool Contains(std::string_view s, std::string_view needle) {
  return s.find(needle) != std::string_view::npos;
}

// Every occurrence from the left, none of them overlapping. An empty needle changes nothing.
std::string Replace(std::string_view s, std::string_view needle, std::string_view put);
std::string ReplaceIgnoreCase(std::string_view s, std::string_view needle, std::string_view put);

// Columns that a text takes in a terminal: 2 for wide characters, 0 for combining marks and
// directional controls, 1 for others.
std::size_t DisplayWidth(std::string_view s);

}  // namespace vorek::text

#endif  // VOREK_TEXT_UTF8_H_
