#include "author/select_list.h"

#include <algorithm>

#include "author/query_tokens.h"

namespace vorek {
namespace {

// The alias of an item, or its last name. An alias in front, 'x' = expression, counts too.
std::string NameOf(const std::vector<QueryToken>& item) {
  if (item.empty()) return {};
  if (item.size() > 2 && IsSign(item[1], "=")) return item[0].text;
  const QueryToken& last = item.back();
  const bool is_alias = item.size() > 1 && IsKeyword(item[item.size() - 2], "as");
  if (is_alias) return last.text;
  if (last.kind == QueryToken::Kind::kSign || last.depth != item.front().depth) return {};
  // A lone name, or one behind a dot or another operand.
  const bool after_name = item.size() == 1 || IsSign(item[item.size() - 2], ".") ||
                          item[item.size() - 2].kind != QueryToken::Kind::kSign ||
                          IsSign(item[item.size() - 2], ")");
  const bool literal =
      last.kind == QueryToken::Kind::kWord && last.text[0] >= '0' && last.text[0] <= '9';
  return after_name && !literal ? last.text : "";
}

// Where the outermost select list begins, behind DISTINCT and TOP; the count of tokens if nowhere.
std::size_t ListBegin(const std::vector<QueryToken>& tokens) {
  const bool with = !tokens.empty() && IsKeyword(tokens[0], "with");
  const auto select = std::find_if(tokens.begin(), tokens.end(), [](const QueryToken& token) {
    return token.depth == 0 && IsKeyword(token, "select");
  });
  if (select == tokens.end() || (select != tokens.begin() && !with)) return tokens.size();
  auto at = static_cast<std::size_t>(select - tokens.begin()) + 1;
  while (at < tokens.size() && (IsKeyword(tokens[at], "distinct") || IsKeyword(tokens[at], "all")))
    ++at;
  if (at < tokens.size() && IsKeyword(tokens[at], "top")) {
    ++at;
    const bool bracketed = at < tokens.size() && IsSign(tokens[at], "(");
    do ++at;
    while (bracketed && at < tokens.size() && tokens[at - 1].text != ")");
    if (at < tokens.size() && IsKeyword(tokens[at], "percent")) ++at;
  }
  return at;
}

}  // namespace

std::optional<std::vector<std::string>> SelectListNames(std::string_view query) {
  const std::vector<QueryToken> tokens = ScanQuery(query).tokens;
  std::size_t at = ListBegin(tokens);
  if (at >= tokens.size()) return std::nullopt;
  std::vector<std::string> names;
  std::vector<QueryToken> item;
  for (; at < tokens.size(); ++at) {
    const QueryToken& token = tokens[at];
    const bool outermost = token.depth == 0;
    if (outermost && (IsKeyword(token, "from") || IsKeyword(token, "where") ||
                      IsKeyword(token, "union") || IsSign(token, ";"))) {
      break;
    }
    const bool star = IsSign(token, "*") && outermost && (item.empty() || IsSign(item.back(), "."));
    if (star) return std::nullopt;
    if (outermost && IsSign(token, ",")) {
      names.push_back(NameOf(item));
      item.clear();
    } else {
      item.push_back(token);
    }
  }
  names.push_back(NameOf(item));
  return names;
}

}  // namespace vorek
