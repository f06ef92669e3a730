#include "author/changing_statement.h"

#include <algorithm>
#include <initializer_list>

#include "text/utf8.h"

namespace vorek {
namespace {

using Tokens = std::vector<QueryToken>;

bool IsAnyOf(const QueryToken& token, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(),
                     [&](std::string_view word) { return IsKeyword(token, word); });
}

// Words that begin a statement or its part, none of which can be a bare name.
bool BeginsChange(const Tokens& tokens, std::size_t at) {
  if (IsKeyword(tokens[at], "create")) return IsKeyword(tokens[at + 1], "table");
  if (IsKeyword(tokens[at], "merge")) return !IsKeyword(tokens[at + 1], "join");
  // "into" is that of SELECT ... INTO.
  return IsAnyOf(tokens[at], {"insert", "update", "delete", "drop", "alter", "truncate", "into"});
}

// Behind "delete top (2) from", "drop table if exists" and their like.
std::size_t NameBehind(const Tokens& tokens, std::size_t begin) {
  const int depth = tokens[begin].depth;
  const auto name = std::find_if(
      tokens.begin() + static_cast<std::ptrdiff_t>(begin) + 1, tokens.end(),
      [depth](const QueryToken& token) {
        const bool in_brackets = token.depth > depth || IsSign(token, "(") || IsSign(token, ")");
        return !in_brackets &&
               !IsAnyOf(token, {"into", "from", "table", "top", "percent", "if", "exists"});
      });
  return static_cast<std::size_t>(name - tokens.begin());
}

bool IsOwnName(const QueryToken& name) {
  return name.text.starts_with('#') || name.text.starts_with('@');
}

// "#work w" or "#work as w" behind the statement's beginning.
bool IsOwnAlias(const Tokens& tokens, std::size_t begin, const QueryToken& alias) {
  for (std::size_t at = begin; at + 1 < tokens.size(); ++at) {
    const std::size_t behind = IsKeyword(tokens[at + 1], "as") ? at + 2 : at + 1;
    if (IsOwnName(tokens[at]) && behind < tokens.size() &&
        text::EqualsIgnoreCase(tokens[behind].text, alias.text)) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::optional<std::size_t> FindChange(const Tokens& tokens) {
  for (std::size_t at = 0; at + 1 < tokens.size(); ++at) {
    if (!BeginsChange(tokens, at)) continue;
    const std::size_t name = NameBehind(tokens, at);
    if (name >= tokens.size() || IsOwnName(tokens[name])) continue;
    if (!IsOwnAlias(tokens, name, tokens[name])) return at;
  }
  return std::nullopt;
}

}  // namespace vorek
