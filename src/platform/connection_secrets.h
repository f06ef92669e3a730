#ifndef VOREK_PLATFORM_CONNECTION_SECRETS_H_
#define VOREK_PLATFORM_CONNECTION_SECRETS_H_

#include <string>
#include <string_view>

// Passwords in connection strings: taken out of what is kept, put into what is opened.
namespace vorek {

// The text without its passwords, those of a whole string in one value (Extended Properties)
// included; a value four strings deep goes whole if it may have one. A text without any comes back
// as it is, one that can't be read as "".
std::string WithoutPasswords(std::string_view text);

// The text as it may be stored: with its passwords only if it says "Persist Security Info=True".
std::string StorableConnection(std::string_view text);

// The text with the password, unless it has one or names the embedded database, which knows none.
// An empty password changes nothing. Throws Error(kConnection) for a text that can't be read.
std::string WithPassword(std::string_view text, std::string_view password);

}  // namespace vorek

#endif  // VOREK_PLATFORM_CONNECTION_SECRETS_H_
