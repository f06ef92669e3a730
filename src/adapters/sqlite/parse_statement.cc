#include <algorithm>
#include <array>
#include <utility>

#include "adapters/sqlite/parser.h"

namespace vorek::sqlite {

void Parser::SkipStatementEnd() {
  while (TakeSymbol(";")) {
  }
}

StatementPtr Parser::NewStatement(StatementKind kind) const {
  auto statement = std::make_unique<Statement>();
  statement->kind = kind;
  statement->at = Here();
  return statement;
}

StatementPtr Parser::ParseStatement() {
  const Level level(*this);
  const std::size_t at = Here();
  StatementPtr statement = StatementByWord();
  statement->at = at;
  statement->end = LastEnd();
  SkipStatementEnd();
  return statement;
}

StatementPtr Parser::StatementByWord() {
  using Rule = StatementPtr (Parser::*)();
  static constexpr std::array<std::pair<std::string_view, Rule>, 25> kRules = {{
      {"insert", &Parser::Insert},
      {"update", &Parser::Update},
      {"delete", &Parser::Delete},
      {"declare", &Parser::Declare},
      {"set", &Parser::Set},
      {"if", &Parser::If},
      {"while", &Parser::While},
      {"return", &Parser::Return},
      {"exec", &Parser::Execute},
      {"execute", &Parser::Execute},
      {"print", &Parser::Print},
      {"raiserror", &Parser::Raise},
      {"commit", &Parser::Transaction},
      {"rollback", &Parser::Transaction},
      {"save", &Parser::Transaction},
      {"create", &Parser::Create},
      {"alter", &Parser::Alter},
      {"drop", &Parser::Drop},
      {"truncate", &Parser::Truncate},
      {"begin", &Parser::Block},
      {"throw", &Parser::Raise},
      {"open", &Parser::Cursor},
      {"fetch", &Parser::Cursor},
      {"close", &Parser::Cursor},
      {"deallocate", &Parser::Cursor},
  }};
  if (AtWord("with")) {
    std::vector<CommonTable> with = With();
    if (AtWord("select") || AtSymbol("(")) return SelectStatement(std::move(with));
    StatementPtr statement = AtWord("insert")   ? Insert()
                             : AtWord("update") ? Update()
                             : AtWord("delete") ? Delete()
                                                : nullptr;
    if (statement == nullptr) RefuseHere();
    statement->with = std::move(with);
    return statement;
  }
  if (AtWord("select") || AtSymbol("(")) return SelectStatement({});
  if (TakeWord("break")) return NewStatement(StatementKind::kBreak);
  if (TakeWord("continue")) return NewStatement(StatementKind::kContinue);
  if (TakeWord("use")) return Note("USE " + Name() + " is passed over: there is one database");
  const auto* rule = std::find_if(kRules.begin(), kRules.end(),
                                  [&](const auto& row) { return AtWord(row.first); });
  if (rule != kRules.end()) return (this->*rule->second)();
  if (TakeWord("goto")) return Labelled(StatementKind::kGoto);
  if (AtLabel()) return Labelled(StatementKind::kLabel);
  // "spName 1, 2" at the head of a text calls a procedure.
  if (at_ == 0 && AtName()) return Execute();
  if (Peek().kind == TokenKind::kName && IsReserved(Peek().value)) RefuseWord(Peek());
  RefuseHere();
}

StatementPtr Parser::SelectStatement(std::vector<CommonTable> with) {
  StatementPtr statement = NewStatement(StatementKind::kSelect);
  statement->query = QueryBody(std::move(with));
  return statement;
}

StatementPtr Parser::Note(const std::string& what) {
  StatementPtr note = NewStatement(StatementKind::kNote);
  note->word = what;
  return note;
}

StatementPtr Parser::Try() {
  const auto block = [this](std::string_view word) {
    StatementPtr inner = NewStatement(StatementKind::kBlock);
    NeedWord("begin");
    NeedWord(word);
    for (SkipStatementEnd(); !AtWord("end"); SkipStatementEnd()) {
      if (Peek().kind == TokenKind::kEnd) RefuseHere();
      inner->body.push_back(ParseStatement());
    }
    NeedWord("end");
    NeedWord(word);
    return inner;
  };
  StatementPtr statement = NewStatement(StatementKind::kTry);
  statement->body.push_back(block("try"));
  SkipStatementEnd();
  statement->body.push_back(block("catch"));
  return statement;
}

StatementPtr Parser::If() {
  StatementPtr statement = NewStatement(StatementKind::kIf);
  NeedWord("if");
  statement->expr = Expression();
  statement->body.push_back(ParseStatement());
  if (TakeWord("else")) statement->body.push_back(ParseStatement());
  return statement;
}

StatementPtr Parser::While() {
  StatementPtr statement = NewStatement(StatementKind::kWhile);
  NeedWord("while");
  statement->expr = Expression();
  statement->body.push_back(ParseStatement());
  return statement;
}

StatementPtr Parser::Block() {
  if (Peek(1).IsWord("tran") || Peek(1).IsWord("transaction")) return Transaction();
  if (Peek(1).IsWord("try")) return Try();
  if (Peek(1).IsWord("catch")) RefuseWord(Peek(1));
  StatementPtr block = NewStatement(StatementKind::kBlock);
  NeedWord("begin");
  for (SkipStatementEnd(); !AtWord("end"); SkipStatementEnd()) {
    if (Peek().kind == TokenKind::kEnd) RefuseHere();
    block->body.push_back(ParseStatement());
  }
  Take();
  return block;
}

StatementPtr Parser::Labelled(StatementKind kind) {
  StatementPtr statement = NewStatement(kind);
  const bool label = kind == StatementKind::kLabel;
  statement->word = LowerWord(label ? Take().value : Name());
  if (label) NeedSymbol(":");
  return statement;
}

void Parser::CheckLabels(const std::vector<StatementPtr>& statements,
                         std::set<std::string> labels) const {
  for (const StatementPtr& statement : statements) {
    if (statement->kind != StatementKind::kLabel || labels.insert(statement->word).second) continue;
    Refuse(source_, statement->at,
           "The label '" + statement->word + "' is declared more than once");
  }
  for (const StatementPtr& statement : statements) {
    const bool leads =
        statement->kind != StatementKind::kGoto || labels.count(statement->word) != 0;
    if (!leads) {
      Refuse(source_, statement->at,
             "The label '" + statement->word + "' of GOTO isn't declared in a block around it");
    }
    CheckLabels(statement->body, labels);
  }
}

StatementPtr Parser::Return() {
  StatementPtr statement = NewStatement(StatementKind::kReturn);
  NeedWord("return");
  const TokenKind next = Peek().kind;
  const bool value = next == TokenKind::kNumber || next == TokenKind::kMoney ||
                     next == TokenKind::kText || next == TokenKind::kBytes ||
                     next == TokenKind::kVariable || AtSymbol("(") || AtSymbol("-") ||
                     AtSymbol("+") || AtSymbol("~") || AtName() || AtWord("case") ||
                     AtWord("null") || AtWord("convert") || AtWord("coalesce") ||
                     AtWord("nullif") || AtWord("left") || AtWord("right");
  if (value) statement->expr = Expression();
  return statement;
}

StatementPtr Parser::Print() {
  StatementPtr statement = NewStatement(StatementKind::kPrint);
  NeedWord("print");
  statement->expr = Expression();
  return statement;
}

StatementPtr Parser::Raise() {
  StatementPtr statement = NewStatement(StatementKind::kRaise);
  if (TakeWord("throw")) {
    statement->word = "throw";
    const bool bare = AtSymbol(";") || Peek().kind == TokenKind::kEnd || AtWord("end");
    if (bare) return statement;
    Argument number;
    number.value = Literal();
    statement->arguments.push_back(std::move(number));
    NeedSymbol(",");
    statement->expr = Literal();
    NeedSymbol(",");
    Argument state;
    state.value = Literal();
    statement->arguments.push_back(std::move(state));
    return statement;
  }
  NeedWord("raiserror");
  if (Peek().kind == TokenKind::kNumber) {  // RAISERROR 50001 'text', as it was written once
    Take();
    TakeSymbol(",");
    statement->expr = Literal();
    return statement;
  }
  NeedSymbol("(");
  statement->expr = Expression();
  while (TakeSymbol(",")) {
    Argument argument;
    argument.value = Expression();
    statement->arguments.push_back(std::move(argument));
  }
  NeedSymbol(")");
  if (!TakeWord("with")) return statement;
  do Name();
  while (TakeSymbol(","));
  return statement;
}

StatementPtr Parser::Transaction() {
  StatementPtr statement = NewStatement(StatementKind::kBegin);
  if (AtWord("save")) RefuseWord(Peek());
  if (AtWord("commit")) statement->kind = StatementKind::kCommit;
  if (AtWord("rollback")) statement->kind = StatementKind::kRollback;
  Take();
  const bool told = TakeWord("transaction") || TakeWord("tran") || TakeWord("work");
  if (told && AtName() && !Peek(1).Is("=")) Take();  // a transaction's name
  return statement;
}

}  // namespace vorek::sqlite
