#ifndef VOREK_CONNECTION_STRING_H_
#define VOREK_CONNECTION_STRING_H_

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace vorek {

// One "key=value" piece of a connection string, without its quotes.
struct ConnectionPiece {
  std::string key;
  std::string value;
};

// The pieces in their order. A value may stand in single or double quotes, doubled within, or in
// braces, the closing one doubled within; blanks round keys and bare values don't count; "==" in a
// key stands for "=". A piece without "=" is left out. Throws Error(kConnection) for a quote that
// isn't closed; no value stands in its text.
std::vector<ConnectionPiece> ParseConnectionString(std::string_view text);

// The text that reads as these pieces; each ends with ";".
std::string FormatConnectionString(const std::vector<ConnectionPiece>& pieces);

// The value of the first piece whose key is one of the names, in any case; empty without one.
std::string ConnectionValue(const std::vector<ConnectionPiece>& pieces,
                            std::initializer_list<std::string_view> names);

}  // namespace vorek

#endif  // VOREK_CONNECTION_STRING_H_
