#ifndef VOREK_TEXT_KEY_VALUE_FILE_H_
#define VOREK_TEXT_KEY_VALUE_FILE_H_

#include <map>
#include <string>
#include <string_view>

namespace vorek::text {

// Sections of keys with values. Keys that belong to no section stand in section "".
using Sections = std::map<std::string, std::map<std::string, std::string>>;

// A plain text of lines "key=value" under lines "[section]"; "\\", "\n" and "\r" in a value are
// written with a backslash, as is "[" or "=" in a key. Lines that are neither are passed over.
Sections ParseKeyValues(std::string_view text);
std::string FormatKeyValues(const Sections& sections);

}  // namespace vorek::text

#endif  // VOREK_TEXT_KEY_VALUE_FILE_H_
