#include "adapters/sqlite/parser.h"

#include <algorithm>
#include <array>
#include <utility>

#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

constexpr std::array<std::string_view, 108> kReserved = {
    "add",           "all",         "alter",      "and",       "any",        "as",      "asc",
    "authorization", "backup",      "begin",      "between",   "break",      "by",      "cascade",
    "case",          "check",       "close",      "coalesce",  "collate",    "column",  "commit",
    "compute",       "constraint",  "continue",   "convert",   "create",     "cross",   "current",
    "cursor",        "database",    "deallocate", "declare",   "default",    "delete",  "deny",
    "desc",          "distinct",    "drop",       "else",      "end",        "escape",  "except",
    "exec",          "execute",     "exists",     "fetch",     "for",        "foreign", "from",
    "full",          "function",    "goto",       "grant",     "group",      "having",  "holdlock",
    "identity",      "if",          "in",         "index",     "inner",      "insert",  "intersect",
    "into",          "is",          "join",       "key",       "left",       "like",    "merge",
    "not",           "null",        "nullif",     "of",        "off",        "on",      "open",
    "option",        "or",          "order",      "outer",     "over",       "percent", "pivot",
    "primary",       "print",       "procedure",  "raiserror", "references", "return",  "revoke",
    "right",         "rollback",    "select",     "set",       "some",       "table",   "then",
    "top",           "transaction", "trigger",    "truncate",  "union",      "unique",  "unpivot",
    "update",        "values",      "when",
};
// Reserved too, told apart only for the array's length.
constexpr std::array<std::string_view, 6> kReservedRest = {"where", "while", "with",
                                                           "view",  "use",   "proc"};

}  // namespace

bool IsReserved(std::string_view word) {
  const auto same = [word](std::string_view candidate) { return SameWord(candidate, word); };
  return std::any_of(kReserved.begin(), kReserved.end(), same) ||
         std::any_of(kReservedRest.begin(), kReservedRest.end(), same);
}

Parser::Parser(const SourceText& source, std::function<void()> checkpoint)
    : source_(source), tokens_(Tokenize(source, checkpoint)), checkpoint_(std::move(checkpoint)) {}

Parser::Level::Level(Parser& parser) : parser_(parser) {
  if (parser_.depth_ >= kMaxDepth) parser_.RefuseHere("The text is nested too deeply");
  ++parser_.depth_;
}

std::shared_ptr<Batch> Parser::ParseBatch() {
  auto batch = std::make_shared<Batch>();
  batch->source = std::string(source_.text);
  batch->first_line = source_.first_line;
  for (const Token& token : tokens_) {
    const bool quoted = token.kind == TokenKind::kQuotedName && source_.text[token.begin] == '"';
    if (quoted) batch->double_quotes = std::min(batch->double_quotes, token.begin);
  }
  for (SkipStatementEnd(); Peek().kind != TokenKind::kEnd; SkipStatementEnd()) {
    batch->statements.push_back(ParseStatement());
  }
  CheckLabels(batch->statements, {});
  return batch;
}

std::vector<Parameter> Parser::ParseParameters() {
  std::vector<Parameter> parameters = Parameters();
  if (Peek().kind != TokenKind::kEnd) RefuseHere();
  return parameters;
}

ExprPtr Parser::ParseWholeExpression() {
  ExprPtr expr = Expression();
  if (Peek().kind != TokenKind::kEnd) RefuseHere();
  return expr;
}

const Token& Parser::Peek(std::size_t ahead) const {
  return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

const Token& Parser::Take() {
  if (checkpoint_ && ++taken_ % kTokensBetweenCheckpoints == 0) checkpoint_();
  const Token& token = Peek();
  if (at_ + 1 < tokens_.size()) ++at_;
  return token;
}

bool Parser::AtWords(std::initializer_list<std::string_view> words) const {
  std::size_t ahead = 0;
  return std::all_of(words.begin(), words.end(),
                     [&](std::string_view word) { return Peek(ahead++).IsWord(word); });
}

bool Parser::TakeWord(std::string_view word) { return TakeWords({word}); }

bool Parser::TakeWords(std::initializer_list<std::string_view> words) {
  if (!AtWords(words)) return false;
  at_ += words.size();
  return true;
}

bool Parser::TakeSymbol(std::string_view symbol) {
  if (!AtSymbol(symbol)) return false;
  Take();
  return true;
}

void Parser::NeedWord(std::string_view word) {
  if (!TakeWord(word)) RefuseHere();
}

void Parser::NeedSymbol(std::string_view symbol) {
  if (!TakeSymbol(symbol)) RefuseHere();
}

void Parser::RefuseHere() const {
  const Token& token = Peek();
  if (token.kind == TokenKind::kEnd) {
    const std::string last = tokens_.size() > 1 ? tokens_[tokens_.size() - 2].value : "";
    RefuseHere("Incorrect syntax near '" + text::Left(last, 60) + "': the text ends too early");
  }
  RefuseHere("Incorrect syntax near '" + text::Left(token.value, 60) + "'");
}

void Parser::RefuseHere(const std::string& message) const { Refuse(source_, Here(), message); }

void Parser::RefuseWord(const Token& token) const {
  Refuse(source_, token.begin, "'" + text::Left(token.value, 60) + "' is not supported");
}

bool Parser::AtName() const {
  return Peek().kind == TokenKind::kQuotedName ||
         (Peek().kind == TokenKind::kName && !IsReserved(Peek().value) && !AtLabel());
}

bool Parser::AtLabel() const { return Peek().kind == TokenKind::kName && Peek(1).Is(":"); }

std::string Parser::Name() {
  if (!AtName()) RefuseHere();
  if (Peek().value.empty()) RefuseHere("An object or column name is missing or empty");
  return Take().value;
}

std::string Parser::Collation() {
  const Token& token = Peek();
  const std::string name = LowerWord(Name());
  const bool known = name == "database_default" || name == "catalog_default" ||
                     name.find("_ci_") != std::string::npos;
  if (!known) {
    Refuse(source_, token.begin,
           "The collation " + text::Left(token.value, 60) +
               " is not supported: texts are compared without regard to case");
  }
  return name;
}

std::string Parser::AliasName() {
  if (Peek().kind != TokenKind::kText) return Name();
  if (Peek().value.find('\0') != std::string::npos) RefuseHere("A name holds a NUL character");
  return Take().value;
}

ObjectName Parser::Object() {
  ObjectName name;
  name.at = Here();
  name.parts.push_back(Name());
  while (TakeSymbol(".")) {
    if (TakeSymbol(".")) name.parts.emplace_back();  // database..table
    name.parts.push_back(Name());
  }
  if (name.parts.size() > 3) {
    Refuse(source_, name.at,
           "A table of another server, '" + text::Left(name.parts[0], 60) + "', is not supported");
  }
  return name;
}

ObjectName Parser::TableName() {
  if (Peek().kind != TokenKind::kVariable) return Object();
  ObjectName name;
  name.at = Here();
  name.parts.push_back(Take().value);
  return name;
}

std::vector<std::string> Parser::NameList() {
  std::vector<std::string> names;
  NeedSymbol("(");
  do names.push_back(Name());
  while (TakeSymbol(","));
  NeedSymbol(")");
  return names;
}

std::string Parser::SourceOf(std::size_t begin, std::size_t end) const {
  return std::string(source_.text.substr(begin, end - begin));
}

std::size_t Parser::LastEnd() const { return at_ == 0 ? 0 : tokens_[at_ - 1].end; }

}  // namespace vorek::sqlite
