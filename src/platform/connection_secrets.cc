#include "platform/connection_secrets.h"

#include <algorithm>
#include <array>

#include "text/utf8.h"
#include "vorek/connection_string.h"
#include "vorek/error.h"

namespace vorek {
namespace {

using Pieces = std::vector<ConnectionPiece>;

// Strings within values of strings that are read. Each is put into quotes within the one around it,
// which doubles them: what lies deeper is dropped whole if it may have a secret.
constexpr int kMostNested = 3;

// "Password", "PWD", "Jet OLEDB:Database Password", "Access Token" and their kin.
bool IsSecret(std::string_view key) {
  static constexpr std::array<std::string_view, 5> kWords = {"password", "pwd", "passphrase",
                                                             "secret", "token"};
  return std::any_of(kWords.begin(), kWords.end(),
                     [&](std::string_view word) { return text::ContainsIgnoreCase(key, word); });
}

// Takes the secrets out. True if there was one, also within a value that is a string by itself.
bool DropSecrets(Pieces& pieces, int nested = 0) {
  const auto is_string = [](const ConnectionPiece& piece) {
    return text::Contains(piece.value, "=");
  };
  bool dropped = std::erase_if(pieces, [&](const ConnectionPiece& piece) {
                   return IsSecret(piece.key) ||
                          (nested == kMostNested && is_string(piece) && IsSecret(piece.value));
                 }) > 0;
  for (ConnectionPiece& piece : pieces) {
    if (nested == kMostNested || !is_string(piece)) continue;
    Pieces inner = ParseConnectionString(piece.value);
    if (!DropSecrets(inner, nested + 1)) continue;
    piece.value = FormatConnectionString(inner);
    dropped = true;
  }
  return dropped;
}

bool HasSecret(Pieces pieces) { return DropSecrets(pieces); }

bool IsTrue(std::string_view value) {
  return text::EqualsIgnoreCase(value, "true") || text::EqualsIgnoreCase(value, "yes");
}

}  // namespace

std::string WithoutPasswords(std::string_view text) {
  try {
    Pieces pieces = ParseConnectionString(text);
    return DropSecrets(pieces) ? FormatConnectionString(pieces) : std::string(text);
  } catch (const Error&) {
    return {};
  }
}

std::string StorableConnection(std::string_view text) {
  bool persist = false;
  IgnoreErrors([&] {
    persist = IsTrue(ConnectionValue(ParseConnectionString(text), {"Persist Security Info"}));
  });
  return persist ? std::string(text) : WithoutPasswords(text);
}

std::string WithPassword(std::string_view text, std::string_view password) {
  const Pieces pieces = ParseConnectionString(text);
  const std::string provider = ConnectionValue(pieces, {"Provider"});
  if (password.empty() || text::EqualsIgnoreCase(provider, "VorekSQLite") || HasSecret(pieces)) {
    return std::string(text);
  }
  std::string with(text);
  if (!with.ends_with(';')) with += ';';
  return with + FormatConnectionString({{"Password", std::string(password)}});
}

}  // namespace vorek
