#ifndef VOREK_ADAPTERS_SQLITE_TOKEN_H_
#define VOREK_ADAPTERS_SQLITE_TOKEN_H_

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vorek::sqlite {

enum class TokenKind {
  kEnd,
  kName,        // a word: a name or a keyword
  kQuotedName,  // [name] or "name"
  kText,        // 'text' or N'text'
  kNumber,
  kMoney,  // $12.5
  kBytes,  // 0x0AFF
  kVariable,
  kSymbol,
};

struct Token {
  TokenKind kind = TokenKind::kEnd;
  std::size_t begin = 0;  // offsets in bytes
  std::size_t end = 0;
  std::string value;      // names and texts without their quotes, symbols and numbers as they stand
  bool national = false;  // N'text'

  bool Is(std::string_view symbol) const { return kind == TokenKind::kSymbol && value == symbol; }
  // A keyword, in any case; never a quoted name.
  bool IsWord(std::string_view word) const;
};

// A text with the number of its first line, which a script's later batches count on from.
struct SourceText {
  SourceText(std::string_view source, int line = 1) : text(source), first_line(line) {}  // NOLINT
  SourceText(const std::string& source) : text(source) {}                                // NOLINT
  SourceText(const char* source) : text(source) {}                                       // NOLINT

  std::string_view text;
  int first_line = 1;
};

// All tokens of a text, the last one kEnd. Blanks and comments ("--", nested "/* */") are left out.
// Throws Error(kSyntax) for an open quote or comment and for a character that nothing begins with.
// checkpoint is called every few hundred tokens; it throws to stop.
std::vector<Token> Tokenize(const SourceText& source, const std::function<void()>& checkpoint = {});
inline constexpr std::size_t kTokensBetweenCheckpoints = 256;

// "line 3, column 12" of a byte offset; columns count code points.
std::string PlaceOf(const SourceText& source, std::size_t offset);
int LineOf(const SourceText& source, std::size_t offset);

// Throws Error(kSyntax) with the message and the place of the offset.
[[noreturn]] void Refuse(const SourceText& source, std::size_t offset, const std::string& message);

// ASCII letters only: keywords and names of the dialect's own functions.
bool SameWord(std::string_view a, std::string_view b);
std::string LowerWord(std::string_view word);

// A name and a text as SQLite writes them.
std::string QuoteName(std::string_view name);
std::string QuoteText(std::string_view text);

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_TOKEN_H_
