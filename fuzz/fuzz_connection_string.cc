// A connection string as it is: what is read of it is written and read again the same, and no key
// of a secret is left in what is kept. And one that is made of the same bytes, "key TAB value" a
// line, its secrets marked: the mark is in nothing that is kept, and the rest is.
#include <algorithm>
#include <vector>

#include "platform/connection_secrets.h"
#include "require.h"
#include "text/utf8.h"
#include "vorek/connection_string.h"
#include "vorek/error.h"

namespace {

using namespace vorek;
using Pieces = std::vector<ConnectionPiece>;

constexpr std::string_view kMark = "s3cret";

bool IsSecret(std::string_view key) {
  for (const char* const word : {"PASSWORD", "PWD", "PASSPHRASE", "SECRET", "TOKEN"}) {
    if (text::ToUpper(key).find(word) != std::string::npos) return true;
  }
  return false;
}

bool Same(const Pieces& a, const Pieces& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
    return x.key == y.key && x.value == y.value;
  });
}

void CheckText(std::string_view text) {
  Pieces pieces;
  try {
    pieces = ParseConnectionString(text);
  } catch (const Error& error) {
    Require(WithoutPasswords(text).empty(), "what isn't read is kept");
    return;
  }
  const std::string written = FormatConnectionString(pieces);
  Require(Same(ParseConnectionString(written), pieces), "reads otherwise: " + written);
  const std::string kept = WithoutPasswords(text);
  for (const ConnectionPiece& piece : ParseConnectionString(kept)) {
    Require(!IsSecret(piece.key), "a secret is kept: " + kept);
  }
  Require(WithoutPasswords(kept) == kept, "kept otherwise the second time: " + kept);
}

// Every second value of Extended Properties is a string of the pieces behind it.
void CheckMade(std::string_view lines, std::size_t depth) {
  Pieces pieces;
  Pieces rest;
  while (!lines.empty()) {
    std::string_view value = TakeUpTo(lines, '\n');
    const std::string key(TakeUpTo(value, '\t'));
    if (text::Contains(key, kMark) || text::Contains(value, kMark)) return;
    // The key as it reads, without blanks; one that is empty isn't read.
    const Pieces read = ParseConnectionString(FormatConnectionString({{key, ""}}));
    if (read.empty()) continue;
    const std::string name = read[0].key;
    const bool secret = IsSecret(name);
    const std::string mark(kMark);
    pieces.push_back({name, secret ? mark + std::string(value) + mark : std::string(value)});
    if (!secret && !text::Contains(value, "=")) rest.push_back(pieces.back());
  }
  std::string text = FormatConnectionString(pieces);
  for (; depth > 0; --depth) text = FormatConnectionString({{"Extended Properties", text}});
  std::string kept = WithoutPasswords(text);
  Require(!text::Contains(kept, kMark), "the secret of " + text + " is in " + kept);
  if (kept.empty()) return;
  for (const ConnectionPiece& piece : rest) {
    Require(text::Contains(kept, piece.key.substr(0, piece.key.find_first_of("=\""))),
            piece.key + " isn't in " + kept);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = TextOf(data, size);
  CheckText(text);
  for (const std::size_t depth : {0U, 1U, 2U}) CheckMade(text, depth);
  return 0;
}
