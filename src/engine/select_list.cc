#include "engine/select_list.h"

#include <algorithm>

#include "text/utf8.h"

namespace vorek {
namespace {

using text::EqualsIgnoreCase;

// A word, a quoted name or text without its quotes, or a single sign.
struct Token {
  enum class Kind { kWord, kQuoted, kSign } kind;
  std::string text;
  int depth;  // of round brackets around it
};

bool IsWordByte(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         c == '@' || c == '#' || c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

class TokenScanner {
 public:
  explicit TokenScanner(std::string_view s) : s_(s) {}

  std::vector<Token> Scan() {
    while (at_ < s_.size()) Next();
    return std::move(tokens_);
  }

 private:
  void Next() {
    const char c = s_[at_];
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
      ++at_;
    } else if (s_.substr(at_, 2) == "--") {
      at_ = std::min(s_.find('\n', at_), s_.size());
    } else if (s_.substr(at_, 2) == "/*") {
      const std::size_t end = s_.find("*/", at_ + 2);
      at_ = end == std::string_view::npos ? s_.size() : end + 2;
    } else if (c == '\'' || c == '"' || c == '[') {
      Quoted(c == '[' ? ']' : c);
    } else if (IsWordByte(c)) {
      const std::size_t begin = at_;
      while (at_ < s_.size() && IsWordByte(s_[at_])) ++at_;
      tokens_.push_back({Token::Kind::kWord, std::string(s_.substr(begin, at_ - begin)), depth_});
    } else {
      Sign(c);
    }
  }

  void Quoted(char end) {
    std::string text;
    for (++at_; at_ < s_.size(); ++at_) {
      if (s_[at_] == end && at_ + 1 < s_.size() && s_[at_ + 1] == end) {
        ++at_;
      } else if (s_[at_] == end) {
        break;
      }
      text += s_[at_];
    }
    ++at_;
    tokens_.push_back({Token::Kind::kQuoted, text, depth_});
  }

  void Sign(char c) {
    if (c == ')') --depth_;
    tokens_.push_back({Token::Kind::kSign, std::string(1, c), depth_});
    if (c == '(') ++depth_;
    ++at_;
  }

  std::string_view s_;
  std::size_t at_ = 0;
  int depth_ = 0;
  std::vector<Token> tokens_;
};

bool IsKeyword(const Token& token, std::string_view word) {
  return token.kind == Token::Kind::kWord && EqualsIgnoreCase(token.text, word);
}

bool IsSign(const Token& token, std::string_view sign) {
  return token.kind == Token::Kind::kSign && token.text == sign;
}

// The alias of an item, or its last name. An alias in front, 'x' = expression, counts too.
std::string NameOf(const std::vector<Token>& item) {
  if (item.empty()) return {};
  if (item.size() > 2 && IsSign(item[1], "=")) return item[0].text;
  const Token& last = item.back();
  const bool is_alias = item.size() > 1 && IsKeyword(item[item.size() - 2], "as");
  if (is_alias) return last.text;
  if (last.kind == Token::Kind::kSign || last.depth != item.front().depth) return {};
  // A lone name, or one behind a dot or another operand.
  const bool after_name = item.size() == 1 || IsSign(item[item.size() - 2], ".") ||
                          item[item.size() - 2].kind != Token::Kind::kSign ||
                          IsSign(item[item.size() - 2], ")");
  const bool literal =
      last.kind == Token::Kind::kWord && last.text[0] >= '0' && last.text[0] <= '9';
  return after_name && !literal ? last.text : "";
}

// Where the outermost select list begins, behind DISTINCT and TOP; the count of tokens if nowhere.
std::size_t ListBegin(const std::vector<Token>& tokens) {
  const bool with = !tokens.empty() && IsKeyword(tokens[0], "with");
  const auto select = std::find_if(tokens.begin(), tokens.end(), [](const Token& token) {
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
  const std::vector<Token> tokens = TokenScanner(query).Scan();
  std::size_t at = ListBegin(tokens);
  if (at >= tokens.size()) return std::nullopt;
  std::vector<std::string> names;
  std::vector<Token> item;
  for (; at < tokens.size(); ++at) {
    const Token& token = tokens[at];
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

std::vector<bool> QuotedBytes(std::string_view query) {
  std::vector<bool> quoted(query.size(), false);
  for (std::size_t at = 0; at < query.size();) {
    std::size_t end = at + 1;
    const char c = query[at];
    if (c == '\'' || c == '"' || c == '[') {
      end = query.find(c == '[' ? ']' : c, at + 1);
      end = end == std::string_view::npos ? query.size() : end + 1;
    } else if (query.substr(at, 2) == "--") {
      end = std::min(query.find('\n', at), query.size());
    } else if (query.substr(at, 2) == "/*") {
      end = query.find("*/", at);
      end = end == std::string_view::npos ? query.size() : end + 2;
    } else {
      ++at;
      continue;
    }
    std::fill(quoted.begin() + static_cast<std::ptrdiff_t>(at),
              quoted.begin() + static_cast<std::ptrdiff_t>(end), true);
    at = end;
  }
  return quoted;
}

}  // namespace vorek
