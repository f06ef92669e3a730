#include "vorek/connection_string.h"

#include <cstddef>

#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view TrimBlanks(std::string_view s) {
  const std::size_t first = s.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return s.substr(first, s.find_last_not_of(kBlanks) - first + 1);
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  std::vector<ConnectionPiece> Read() {
    std::vector<ConnectionPiece> pieces;
    while (at_ < text_.size()) {
      ConnectionPiece piece;
      if (!ReadKey(piece.key)) continue;
      piece.value = ReadValue();
      if (!piece.key.empty()) pieces.push_back(std::move(piece));
    }
    return pieces;
  }

 private:
  // False if the piece ends without "=".
  bool ReadKey(std::string& key) {
    while (at_ < text_.size()) {
      const char c = text_[at_++];
      if (c == ';') return false;
      if (c == '=') {
        if (at_ == text_.size() || text_[at_] != '=') {
          key = std::string(TrimBlanks(key));
          return true;
        }
        ++at_;
      }
      key += c;
    }
    return false;
  }

  std::string ReadValue() {
    while (at_ < text_.size() && kBlanks.find(text_[at_]) != std::string_view::npos) ++at_;
    if (at_ == text_.size()) return {};
    const char open = text_[at_];
    if (open == '\'' || open == '"') return ReadQuoted(open);
    if (open == '{') return ReadQuoted('}');
    const std::size_t end = EndOfPiece();
    std::string value(TrimBlanks(text_.substr(at_, end - at_)));
    at_ = end + 1;
    return value;
  }

  std::string ReadQuoted(char close) {
    std::string value;
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] != close) {
        value += text_[at_];
        continue;
      }
      if (at_ + 1 == text_.size() || text_[at_ + 1] != close) {
        at_ = EndOfPiece() + 1;
        return value;
      }
      value += text_[++at_];
    }
    throw Error(ErrorNumber::kConnection, "A quote in the connection string isn't closed.");
  }

  std::size_t EndOfPiece() const {
    const std::size_t end = text_.find(';', at_);
    return end == std::string_view::npos ? text_.size() : end;
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

std::vector<ConnectionPiece> ParseConnectionString(std::string_view text) {
  return Reader(text).Read();
}

std::string FormatConnectionString(const std::vector<ConnectionPiece>& pieces) {
  std::string text;
  for (const ConnectionPiece& piece : pieces) {
    const bool bare = piece.value.find_first_of(";\"'{}=") == std::string::npos &&
                      TrimBlanks(piece.value).size() == piece.value.size();
    const std::string quoted = "\"" + text::Replace(piece.value, "\"", "\"\"") + "\"";
    text += text::Replace(piece.key, "=", "==") + "=" + (bare ? piece.value : quoted) + ";";
  }
  return text;
}

std::string ConnectionValue(const std::vector<ConnectionPiece>& pieces,
                            std::initializer_list<std::string_view> names) {
  for (const ConnectionPiece& piece : pieces) {
    for (const std::string_view name : names) {
      if (text::EqualsIgnoreCase(piece.key, name)) return piece.value;
    }
  }
  return {};
}

}  // namespace vorek
