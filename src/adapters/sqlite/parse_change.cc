#include <algorithm>
#include <array>
#include <utility>

#include "adapters/sqlite/parser.h"

namespace vorek::sqlite {

StatementPtr Parser::Insert() {
  StatementPtr insert = NewStatement(StatementKind::kInsert);
  NeedWord("insert");
  if (AtWord("top")) RefuseWord(Peek());
  TakeWord("into");
  insert->name = TableName();
  Hints();
  if (AtSymbol("(") && !AtBracketedSelect()) {
    NeedSymbol("(");
    do insert->columns.push_back(Object().Last());  // t.column too
    while (TakeSymbol(","));
    NeedSymbol(")");
  }
  if (AtWord("output")) RefuseWord(Peek());
  if (TakeWords({"default", "values"})) return insert;
  if (AtWord("exec") || AtWord("execute")) {
    insert->body.push_back(Execute());
    return insert;
  }
  if (!AtWord("values") && !AtWord("with") && !AtBracketedSelect()) RefuseHere();
  insert->query = ParseQuery();
  return insert;
}

Assignment Parser::ParseAssignment() {
  Assignment assignment;
  assignment.at = Here();
  if (Peek().kind == TokenKind::kVariable) {
    assignment.variable = Take().value;
  } else {
    assignment.path = Object().parts;
  }
  constexpr std::array<std::string_view, 5> kOperators = {"+=", "-=", "*=", "/=", "%="};
  const auto* op = std::find_if(kOperators.begin(), kOperators.end(),
                                [&](std::string_view symbol) { return AtSymbol(symbol); });
  if (op == kOperators.end()) {
    NeedSymbol("=");
    if (!TakeWord("default")) assignment.value = Expression();
    return assignment;
  }
  Take();
  ExprPtr target =
      New(assignment.variable.empty() ? ExprKind::kColumn : ExprKind::kVariable, assignment.at);
  target->path = assignment.path;
  target->text = assignment.variable;
  assignment.value =
      Binary(ExprKind::kBinary, std::string(op->substr(0, 1)), std::move(target), Expression());
  return assignment;
}

StatementPtr Parser::Update() {
  StatementPtr update = NewStatement(StatementKind::kUpdate);
  NeedWord("update");
  Top(update->top, nullptr, nullptr);
  update->name = TableName();
  Hints();
  NeedWord("set");
  do update->assignments.push_back(ParseAssignment());
  while (TakeSymbol(","));
  if (AtWord("output")) RefuseWord(Peek());
  if (TakeWord("from")) update->from = FromList();
  if (TakeWord("where")) {
    if (AtWord("current")) RefuseWord(Peek());
    update->expr = Expression();
  }
  Option();
  return update;
}

StatementPtr Parser::Delete() {
  StatementPtr erase = NewStatement(StatementKind::kDelete);
  NeedWord("delete");
  Top(erase->top, nullptr, nullptr);
  TakeWord("from");
  erase->name = TableName();
  Hints();
  if (AtWord("output")) RefuseWord(Peek());
  if (TakeWord("from")) erase->from = FromList();
  if (TakeWord("where")) {
    if (AtWord("current")) RefuseWord(Peek());
    erase->expr = Expression();
  }
  Option();
  return erase;
}

}  // namespace vorek::sqlite
