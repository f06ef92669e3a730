#include <algorithm>
#include <array>
#include <utility>

#include "adapters/sqlite/parser.h"

namespace vorek::sqlite {

StatementPtr Parser::Declare() {
  StatementPtr declare = NewStatement(StatementKind::kDeclare);
  NeedWord("declare");
  if (AtName()) return DeclareCursor();
  do {
    Parameter variable;
    variable.at = Here();
    if (Peek().kind != TokenKind::kVariable) RefuseHere();
    variable.name = Take().value;
    TakeWord("as");
    if (AtWord("cursor")) RefuseWord(Peek());
    if (TakeWord("table")) {
      StatementPtr table = NewStatement(StatementKind::kCreateTable);
      table->name.at = variable.at;
      table->variable = variable.name;
      NeedSymbol("(");
      TableParts(*table);
      NeedSymbol(")");
      declare->body.push_back(std::move(table));
      continue;
    }
    variable.type = TypeWords();
    if (TakeSymbol("=")) variable.default_value = Expression();
    declare->parameters.push_back(std::move(variable));
  } while (TakeSymbol(","));
  return declare;
}

StatementPtr Parser::DeclareCursor() {
  StatementPtr cursor = NewStatement(StatementKind::kDeclareCursor);
  cursor->variable = LowerWord(Name());
  // What a cursor of all rows as they were, read forward, fulfils.
  constexpr std::array<std::string_view, 8> kKinds = {"insensitive",  "local",  "forward_only",
                                                      "fast_forward", "static", "read_only",
                                                      "global",       "cursor"};
  while (std::any_of(kKinds.begin(), kKinds.end(), [&](auto word) { return AtWord(word); })) Take();
  NeedWord("for");
  cursor->query = ParseQuery();
  if (AtWord("for")) {
    if (!TakeWords({"for", "read"})) RefuseWord(Peek(1));
    NeedWord("only");
  }
  return cursor;
}

StatementPtr Parser::Cursor() {
  StatementPtr cursor = NewStatement(StatementKind::kCursor);
  cursor->word = LowerWord(Take().value);
  if (cursor->word == "fetch") {
    if (TakeWord("next")) NeedWord("from");
    TakeWord("from");
  }
  TakeWord("global");
  if (Peek().kind == TokenKind::kVariable) RefuseWord(Peek());
  cursor->variable = LowerWord(Name());
  if (cursor->word != "fetch") return cursor;
  if (!TakeWord("into")) RefuseHere("FETCH without INTO is not supported");
  do {
    if (Peek().kind != TokenKind::kVariable) RefuseHere();
    cursor->columns.push_back(LowerWord(Take().value));
  } while (TakeSymbol(","));
  return cursor;
}

StatementPtr Parser::Set() {
  StatementPtr set = NewStatement(StatementKind::kSet);
  NeedWord("set");
  if (Peek().kind == TokenKind::kVariable) {
    set->assignments.push_back(ParseAssignment());
    return set;
  }
  Setting(*set);
  return set;
}

}  // namespace vorek::sqlite
