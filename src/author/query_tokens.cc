#include "author/query_tokens.h"

#include <algorithm>
#include <utility>

#include "text/utf8.h"

namespace vorek {
namespace {

bool IsWordByte(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         c == '@' || c == '#' || c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

class TokenScanner {
 public:
  explicit TokenScanner(std::string_view s) : s_(s) {}

  QueryScan Scan() {
    while (at_ < s_.size()) Next();
    return std::move(scan_);
  }

 private:
  void Next() {
    const char c = s_[at_];
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
      ++at_;
    } else if (s_.substr(at_, 2) == "--") {
      at_ = std::min(s_.find('\n', at_), s_.size());
      scan_.ends_in_comment = at_ == s_.size();
    } else if (s_.substr(at_, 2) == "/*") {
      const std::size_t end = s_.find("*/", at_ + 2);
      at_ = end == std::string_view::npos ? s_.size() : end + 2;
      scan_.ends_in_comment = end == std::string_view::npos;
    } else if (c == '\'' || c == '"' || c == '[') {
      Quoted(c == '[' ? ']' : c);
    } else if (IsWordByte(c)) {
      const std::size_t begin = at_;
      while (at_ < s_.size() && IsWordByte(s_[at_])) ++at_;
      Add(QueryToken::Kind::kWord, std::string(s_.substr(begin, at_ - begin)), begin);
    } else {
      Sign(c);
    }
  }

  void Quoted(char end) {
    std::string text;
    const std::size_t begin = at_;
    for (++at_; at_ < s_.size(); ++at_) {
      if (s_[at_] == end && at_ + 1 < s_.size() && s_[at_ + 1] == end) {
        ++at_;
      } else if (s_[at_] == end) {
        break;
      }
      text += s_[at_];
    }
    ++at_;
    Add(QueryToken::Kind::kQuoted, std::move(text), begin);
  }

  void Sign(char c) {
    if (c == ')') --depth_;
    Add(QueryToken::Kind::kSign, std::string(1, c), at_);
    if (c == '(') ++depth_;
    ++at_;
  }

  void Add(QueryToken::Kind kind, std::string text, std::size_t begin) {
    scan_.tokens.push_back({kind, std::move(text), depth_, begin});
  }

  std::string_view s_;
  std::size_t at_ = 0;
  int depth_ = 0;
  QueryScan scan_;
};

}  // namespace

QueryScan ScanQuery(std::string_view query) { return TokenScanner(query).Scan(); }

bool IsKeyword(const QueryToken& token, std::string_view word) {
  return token.kind == QueryToken::Kind::kWord && text::EqualsIgnoreCase(token.text, word);
}

bool IsSign(const QueryToken& token, std::string_view sign) {
  return token.kind == QueryToken::Kind::kSign && token.text == sign;
}

std::vector<bool> QuotedBytes(std::string_view query) {
  std::vector<bool> quoted(query.size(), false);
  for (std::size_t at = 0; at < query.size();) {
    std::size_t end = 0;
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

std::vector<Marker> MarkersOf(std::string_view query) {
  constexpr std::size_t kMostDigits = 9;
  std::vector<Marker> markers;
  for (std::size_t at = query.find('@'); at != std::string_view::npos; at = query.find('@', at)) {
    const std::size_t begin = at;
    while (at < query.size() && query[at] == '@') ++at;
    std::size_t end = at;
    while (end < query.size() && query[end] >= '0' && query[end] <= '9') ++end;
    const std::string digits(query.substr(at, std::min(end - at, kMostDigits)));
    markers.push_back({digits.empty() ? -1 : std::stoi(digits), begin});
  }
  return markers;
}

bool HasMarker(std::string_view query, std::int32_t number) {
  const std::vector<Marker> markers = MarkersOf(query);
  return std::any_of(markers.begin(), markers.end(),
                     [&](const Marker& marker) { return marker.number == number; });
}

}  // namespace vorek
