#include "adapters/sqlite/token.h"

#include <algorithm>
#include <array>

#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsHex(char c) { return IsDigit(c) || (Lower(c) >= 'a' && Lower(c) <= 'f'); }
bool IsNameStart(char c) {
  return (Lower(c) >= 'a' && Lower(c) <= 'z') || c == '_' || c == '#' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool IsNamePart(char c) { return IsNameStart(c) || IsDigit(c) || c == '@' || c == '$'; }
bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

class Tokenizer {
 public:
  Tokenizer(const SourceText& source, const std::function<void()>& checkpoint)
      : source_(source), text_(source.text), checkpoint_(checkpoint) {}

  std::vector<Token> Run() {
    for (SkipBlanks(); at_ < text_.size(); SkipBlanks()) {
      Next();
      if (checkpoint_ && tokens_.size() % kTokensBetweenCheckpoints == 0) checkpoint_();
    }
    Token end;
    end.begin = end.end = text_.size();
    tokens_.push_back(end);
    return std::move(tokens_);
  }

 private:
  char Peek(std::size_t ahead = 0) const {
    return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
  }

  void SkipBlanks() {
    while (at_ < text_.size()) {
      if (IsBlank(Peek())) {
        ++at_;
      } else if (text_.substr(at_, 3) == "\xEF\xBB\xBF" || text_.substr(at_, 2) == "\xC2\xA0") {
        at_ += Peek() == '\xEF' ? 3U : 2U;
      } else if (Peek() == '-' && Peek(1) == '-') {
        at_ = std::min(text_.find('\n', at_), text_.size());
      } else if (Peek() == '/' && Peek(1) == '*') {
        SkipComment();
      } else {
        return;
      }
    }
  }

  void SkipComment() {
    const std::size_t begin = at_;
    int depth = 0;
    do {
      if (at_ >= text_.size()) Refuse(source_, begin, "Missing end comment mark '*/'");
      const bool opens = Peek() == '/' && Peek(1) == '*';
      const bool closes = Peek() == '*' && Peek(1) == '/';
      depth += opens ? 1 : closes ? -1 : 0;
      at_ += opens || closes ? 2U : 1U;
    } while (depth > 0);
  }

  void Next() {
    const char c = Peek();
    if (c == '\'') return Quoted(TokenKind::kText, '\'', 0);
    if ((c == 'N' || c == 'n') && Peek(1) == '\'') return Quoted(TokenKind::kText, '\'', 1);
    if (c == '[') return Quoted(TokenKind::kQuotedName, ']', 0);
    if (c == '"') return Quoted(TokenKind::kQuotedName, '"', 0);
    if (c == '0' && (Peek(1) == 'x' || Peek(1) == 'X')) return Run(TokenKind::kBytes, 2, IsHex);
    if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) return Number(TokenKind::kNumber, 0);
    if (c == '$' && (IsDigit(Peek(1)) || Peek(1) == '.')) return Number(TokenKind::kMoney, 1);
    if (c == '@') return Run(TokenKind::kVariable, 1, IsNamePart);
    if (IsNameStart(c)) return Run(TokenKind::kName, 1, IsNamePart);
    Symbol();
  }

  void Add(TokenKind kind, std::size_t end, std::string value, bool national = false) {
    tokens_.push_back({kind, at_, end, std::move(value), national});
    at_ = end;
  }

  void Run(TokenKind kind, std::size_t head, bool (*part)(char)) {
    std::size_t end = at_ + head;
    while (end < text_.size() && part(text_[end])) ++end;
    Add(kind, end, std::string(text_.substr(at_, end - at_)));
  }

  void Quoted(TokenKind kind, char close, std::size_t prefix) {
    std::string value;
    std::size_t end = at_ + prefix + 1;
    for (;; ++end) {
      if (end >= text_.size()) {
        Refuse(
            source_, at_,
            "Unclosed quotation mark before the character string '" + text::Left(value, 40) + "'");
      }
      if (text_[end] != close) {
        value += text_[end];
      } else if (end + 1 < text_.size() && text_[end + 1] == close) {
        value += text_[end++];
      } else {
        break;
      }
    }
    if (kind == TokenKind::kQuotedName && value.find('\0') != std::string::npos) {
      Refuse(source_, at_, "A name holds a NUL character");
    }
    Add(kind, end + 1, std::move(value), prefix == 1);
  }

  void Number(TokenKind kind, std::size_t head) {
    std::size_t end = at_ + head;
    const auto digits = [&] {
      while (end < text_.size() && IsDigit(text_[end])) ++end;
    };
    digits();
    if (end < text_.size() && text_[end] == '.') {
      ++end;
      digits();
    }
    const std::size_t exponent = end;
    if (kind == TokenKind::kNumber && end < text_.size() && Lower(text_[end]) == 'e') {
      ++end;
      if (end < text_.size() && (text_[end] == '+' || text_[end] == '-')) ++end;
      if (end < text_.size() && IsDigit(text_[end])) {
        digits();
      } else {
        end = exponent;
      }
    }
    Add(kind, end, std::string(text_.substr(at_ + head, end - at_ - head)));
  }

  void Symbol() {
    constexpr std::array<std::string_view, 13> kPairs = {
        "<>", "<=", ">=", "!=", "!<", "!>", "+=", "-=", "*=", "/=", "%=", "::", "||"};
    const std::string_view pair = text_.substr(at_, 2);
    if (std::find(kPairs.begin(), kPairs.end(), pair) != kPairs.end()) {
      return Add(TokenKind::kSymbol, at_ + 2, std::string(pair));
    }
    if (std::string_view("()+-*/%=<>.,;~&|^:{}").find(Peek()) == std::string_view::npos) {
      Refuse(source_, at_, "Incorrect syntax near '" + std::string(1, Peek()) + "'");
    }
    Add(TokenKind::kSymbol, at_ + 1, std::string(1, Peek()));
  }

  SourceText source_;
  std::string_view text_;
  const std::function<void()>& checkpoint_;
  std::size_t at_ = 0;
  std::vector<Token> tokens_;
};

std::string Enclose(std::string_view s, char quote) {
  std::string out(1, quote);
  for (const char c : s) {
    out += c;
    if (c == quote) out += c;
  }
  out += quote;
  return out;
}

}  // namespace

bool Token::IsWord(std::string_view word) const {
  return kind == TokenKind::kName && SameWord(value, word);
}

std::vector<Token> Tokenize(const SourceText& source, const std::function<void()>& checkpoint) {
  return Tokenizer(source, checkpoint).Run();
}

int LineOf(const SourceText& source, std::size_t offset) {
  const std::string_view head = source.text.substr(0, offset);
  return source.first_line + static_cast<int>(std::count(head.begin(), head.end(), '\n'));
}

std::string PlaceOf(const SourceText& source, std::size_t offset) {
  const std::string_view head = source.text.substr(0, offset);
  const std::size_t begin = head.rfind('\n') + 1;  // npos + 1 is 0
  return "line " + std::to_string(LineOf(source, offset)) + ", column " +
         std::to_string(text::Length(head.substr(begin)) + 1);
}

void Refuse(const SourceText& source, std::size_t offset, const std::string& message) {
  throw Error(ErrorNumber::kSyntax, message + " (" + PlaceOf(source, offset) + ").");
}

bool SameWord(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                            [](char x, char y) { return Lower(x) == Lower(y); });
}

std::string LowerWord(std::string_view word) {
  std::string out(word);
  std::transform(out.begin(), out.end(), out.begin(), Lower);
  return out;
}

std::string QuoteName(std::string_view name) { return Enclose(name, '"'); }
std::string QuoteText(std::string_view text) { return Enclose(text, '\''); }

}  // namespace vorek::sqlite
