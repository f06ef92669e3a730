#include <utility>

#include "adapters/sqlite/parser.h"

namespace vorek::sqlite {

Argument Parser::ExecuteArgument() {
  Argument argument;
  if (Peek().kind == TokenKind::kVariable && Peek(1).Is("=")) {
    argument.name = Take().value;
    Take();
  }
  if (TakeWord("default")) return argument;
  if (AtSymbol("(")) {
    // A parameter form puts a value into brackets, which a server wouldn't take.
    const Level level(*this);
    Take();
    argument.value = ExecuteArgument().value;
    NeedSymbol(")");
    return argument;
  }
  if (AtWord("null")) {
    argument.value = New(ExprKind::kNull, Take().begin);
  } else if (AtSymbol("-") || AtSymbol("+")) {
    argument.value = New(ExprKind::kUnary, Here());
    argument.value->text = Take().value;
    Adopt(*argument.value, Literal());
  } else if (AtName()) {
    argument.value = New(ExprKind::kText, Here());  // a bare word is a text
    argument.value->text = Take().value;
  } else {
    argument.value = Literal();
  }
  argument.output = TakeWord("output") || TakeWord("out");
  return argument;
}

StatementPtr Parser::Execute() {
  StatementPtr statement = NewStatement(StatementKind::kExecute);
  if (!TakeWord("exec")) TakeWord("execute");
  if (TakeSymbol("(")) {
    statement->kind = StatementKind::kExecuteText;
    statement->expr = Expression();
    NeedSymbol(")");
    return statement;
  }
  if (Peek().kind == TokenKind::kVariable && Peek(1).Is("=")) {
    statement->variable = Take().value;
    Take();
  }
  statement->name = Object();
  const TokenKind next = Peek().kind;
  const bool arguments = next == TokenKind::kNumber || next == TokenKind::kMoney ||
                         next == TokenKind::kText || next == TokenKind::kBytes ||
                         next == TokenKind::kVariable || AtSymbol("-") || AtSymbol("+") ||
                         AtWord("null") || AtWord("default") || AtName();
  if (!arguments && !AtSymbol("(")) return statement;
  do {
    const std::size_t at = Here();
    const bool named = !statement->arguments.empty() && !statement->arguments.back().name.empty();
    statement->arguments.push_back(ExecuteArgument());
    if (named && statement->arguments.back().name.empty()) {
      Refuse(source_, at, "Behind a named argument each must be named");
    }
  } while (TakeSymbol(","));
  return statement;
}

}  // namespace vorek::sqlite
