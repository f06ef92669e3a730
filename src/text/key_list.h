#ifndef VOREK_TEXT_KEY_LIST_H_
#define VOREK_TEXT_KEY_LIST_H_

#include <string>
#include <string_view>

// The key list, a text of the form key=value&key=value: nothing in it is escaped, keys compare
// without regard to case. A value that holds "&" reads back only up to it.
namespace vorek {

// The value of the key, "" if it isn't there.
std::string getParameterValue(std::string_view list, std::string_view key);

// Sets the key's value, at the list's end if it is new. True if it was there before.
bool setParameterValue(std::string& list, std::string_view key, std::string_view value);

}  // namespace vorek

#endif  // VOREK_TEXT_KEY_LIST_H_
