#include <utility>

#include "adapters/sqlite/parser.h"
#include "text/utf8.h"

namespace vorek::sqlite {
namespace {

std::string CutBlanks(std::string s) {
  const std::size_t end = s.find_last_not_of(" \t\r\n;");
  s.resize(end == std::string::npos ? 0 : end + 1);
  return s;
}

}  // namespace

StatementPtr Parser::Create() {
  const std::size_t at = Here();
  NeedWord("create");
  const bool or_alter = TakeWords({"or", "alter"});
  if (AtWord("view") || AtWord("proc") || AtWord("procedure") || AtWord("function")) {
    return Module(at, false, or_alter);
  }
  if (TakeWord("table")) return CreateTable();
  if (TakeWord("database")) {
    const std::string name = Name();
    while (Peek().kind != TokenKind::kEnd && !AtSymbol(";")) Take();
    return Note("CREATE DATABASE " + name + " is passed over: the file is the database");
  }
  if (AtWord("unique") || AtWord("clustered") || AtWord("nonclustered") || AtWord("index")) {
    return CreateIndex();
  }
  RefuseWord(Peek());
}

StatementPtr Parser::Alter() {
  const std::size_t at = Here();
  NeedWord("alter");
  if (AtWord("view") || AtWord("proc") || AtWord("procedure") || AtWord("function")) {
    return Module(at, true, false);
  }
  if (TakeWord("table")) return AlterTable();
  if (TakeWord("database")) {  // settings of a database file as such: none applies
    while (Peek().kind != TokenKind::kEnd && !AtSymbol(";")) Take();
    return NewStatement(StatementKind::kNothing);
  }
  RefuseWord(Peek());
}

StatementPtr Parser::Drop() {
  NeedWord("drop");
  StatementPtr drop = NewStatement(StatementKind::kDropTable);
  const Token word = Take();
  if (word.IsWord("index")) {
    drop->kind = StatementKind::kDropIndex;
  } else if (word.IsWord("view") || word.IsWord("procedure") || word.IsWord("proc") ||
             word.IsWord("function")) {
    drop->kind = StatementKind::kDropModule;
    drop->word = word.IsWord("view") ? "V" : word.IsWord("function") ? "FN" : "P";
  } else if (!word.IsWord("table")) {
    RefuseWord(word);
  }
  drop->if_exists = TakeWords({"if", "exists"});
  drop->name = Object();
  if (drop->kind == StatementKind::kDropIndex && TakeWord("on")) drop->on = Object();
  while (TakeSymbol(",")) drop->columns.push_back(Object().Last());
  return drop;
}

StatementPtr Parser::Truncate() {
  NeedWord("truncate");
  NeedWord("table");
  StatementPtr erase = NewStatement(StatementKind::kTruncate);
  erase->name = Object();
  return erase;
}

StatementPtr Parser::CreateTable() {
  StatementPtr table = NewStatement(StatementKind::kCreateTable);
  table->name = Object();
  NeedSymbol("(");
  TableParts(*table);
  NeedSymbol(")");
  if (TakeWord("on")) Name();  // a file group
  if (TakeWord("textimage_on")) Name();
  return table;
}

void Parser::TableParts(Statement& table) {
  do {
    if (AtSymbol(")")) return;  // a comma behind the last one, as some tools script it
    const bool constraint = AtWord("constraint") || AtWord("primary") || AtWord("unique") ||
                            AtWord("foreign") || AtWord("check") || AtWord("default");
    if (constraint) {
      table.constraints.push_back(TableConstraint());
    } else {
      table.definitions.push_back(Column());
      ColumnOptions(table.definitions.back(), table);
    }
  } while (TakeSymbol(","));
}

ColumnDefinition Parser::Column() {
  ColumnDefinition column;
  column.at = Here();
  column.name = Name();
  if (TakeWord("as")) {
    const std::size_t begin = Here();
    column.computed = Expression();
    column.computed_source = SourceOf(begin, LastEnd());
    TakeWord("persisted");
    return column;
  }
  const bool stamp = AtWord("timestamp") && (Peek(1).Is(",") || Peek(1).Is(")"));
  if (stamp) RefuseWord(Peek());
  column.type = TypeWords();
  return column;
}

std::string Parser::DefaultSource(ExprPtr& expr) {
  const std::size_t begin = Here();
  expr = Sum();
  return SourceOf(begin, LastEnd());
}

void Parser::ColumnOptions(ColumnDefinition& column, Statement& table) {
  for (;;) {
    if (TakeWord("collate")) {
      Collation();
    } else if (TakeWords({"not", "null"})) {
      column.nullable = false;
      column.not_null_told = true;
    } else if (TakeWord("null")) {
      column.nullable = true;
    } else if (TakeWords({"not", "for", "replication"}) || TakeWord("rowguidcol") ||
               TakeWord("sparse")) {
      continue;
    } else if (TakeWord("identity")) {
      column.identity = true;
      column.nullable = false;
      if (!TakeSymbol("(")) continue;
      if (AtWord("max")) RefuseHere();
      column.seed = (TakeSymbol("-") ? -1LL : 1LL) * TypeNumber();
      NeedSymbol(",");
      column.increment = (TakeSymbol("-") ? -1LL : 1LL) * TypeNumber();
      NeedSymbol(")");
    } else if (!ColumnConstraint(column, table)) {
      return;
    }
  }
}

bool Parser::ColumnConstraint(ColumnDefinition& column, Statement& table) {
  Constraint constraint;
  constraint.at = Here();
  if (TakeWord("constraint")) constraint.name = Name();
  if (TakeWord("default")) {
    column.default_source = DefaultSource(column.default_value);
    if (TakeWords({"with", "values"})) table.word = "with values";
    return true;
  }
  constraint.columns = {column.name};
  if (TakeWords({"primary", "key"})) {
    constraint.kind = Constraint::Kind::kPrimaryKey;
    column.nullable = false;
  } else if (TakeWord("unique")) {
    constraint.kind = Constraint::Kind::kUnique;
  } else if (AtWord("check")) {
    Take();
    constraint.kind = Constraint::Kind::kCheck;
    NeedSymbol("(");
    const std::size_t begin = Here();
    constraint.check = Expression();
    constraint.source = SourceOf(begin, LastEnd());
    NeedSymbol(")");
    table.constraints.push_back(std::move(constraint));
    return true;
  } else if (AtWord("references") || AtWords({"foreign", "key"})) {
    if (AtWord("foreign")) TakeWords({"foreign", "key"});
    References(constraint);
    table.constraints.push_back(std::move(constraint));
    return true;
  } else {
    if (!constraint.name.empty()) RefuseHere();
    return false;
  }
  if (!TakeWord("clustered")) TakeWord("nonclustered");
  IndexOptions();
  table.constraints.push_back(std::move(constraint));
  return true;
}

Constraint Parser::TableConstraint() {
  Constraint constraint;
  constraint.at = Here();
  if (TakeWord("constraint")) constraint.name = Name();
  if (TakeWords({"primary", "key"})) {
    ConstraintColumns(constraint);
  } else if (TakeWord("unique")) {
    constraint.kind = Constraint::Kind::kUnique;
    ConstraintColumns(constraint);
  } else if (TakeWords({"foreign", "key"})) {
    constraint.columns = NameList();
    References(constraint);
  } else if (TakeWord("check")) {
    constraint.kind = Constraint::Kind::kCheck;
    TakeWords({"not", "for", "replication"});
    NeedSymbol("(");
    const std::size_t begin = Here();
    constraint.check = Expression();
    constraint.source = SourceOf(begin, LastEnd());
    NeedSymbol(")");
  } else if (TakeWord("default")) {
    constraint.kind = Constraint::Kind::kDefault;
    constraint.source = DefaultSource(constraint.check);
    NeedWord("for");
    constraint.columns = {Name()};
    TakeWords({"with", "values"});
  } else {
    RefuseHere();
  }
  return constraint;
}

void Parser::ConstraintColumns(Constraint& constraint) {
  if (!TakeWord("clustered")) TakeWord("nonclustered");
  NeedSymbol("(");
  do {
    constraint.columns.push_back(Name());
    if (!TakeWord("asc")) TakeWord("desc");
  } while (TakeSymbol(","));
  NeedSymbol(")");
  IndexOptions();
}

void Parser::References(Constraint& constraint) {
  constraint.kind = Constraint::Kind::kForeignKey;
  NeedWord("references");
  constraint.references = Object();
  if (AtSymbol("(")) constraint.referenced = NameList();
  while (AtWord("on") && (Peek(1).IsWord("delete") || Peek(1).IsWord("update"))) {
    Take();
    std::string& action = Take().IsWord("delete") ? constraint.on_delete : constraint.on_update;
    if (TakeWord("cascade")) {
      action = "CASCADE";
    } else if (TakeWords({"set", "null"})) {
      action = "SET NULL";
    } else if (TakeWords({"set", "default"})) {
      action = "SET DEFAULT";
    } else {
      NeedWord("no");
      NeedWord("action");
    }
  }
  TakeWords({"not", "for", "replication"});
}

void Parser::IndexOptions() {
  if (AtWord("with") && Peek(1).Is("(")) {
    Hints();
  } else if (TakeWord("with")) {  // WITH FILLFACTOR = 90
    Name();
    NeedSymbol("=");
    Take();
  }
  if (TakeWord("on")) Name();
  if (TakeWord("textimage_on")) Name();
}

StatementPtr Parser::CreateIndex() {
  StatementPtr index = NewStatement(StatementKind::kCreateIndex);
  index->unique = TakeWord("unique");
  if (!TakeWord("clustered")) TakeWord("nonclustered");
  NeedWord("index");
  index->name = Object();
  NeedWord("on");
  index->on = Object();
  NeedSymbol("(");
  do {
    index->columns.push_back(Name());
    index->descending.push_back(!TakeWord("asc") && TakeWord("desc"));
  } while (TakeSymbol(","));
  NeedSymbol(")");
  if (TakeWord("include")) NameList();  // columns that a search needn't leave the index for
  if (TakeWord("where")) index->expr = Expression();
  IndexOptions();
  return index;
}

StatementPtr Parser::Module(std::size_t at, bool alter, bool or_alter) {
  StatementPtr module = NewStatement(StatementKind::kCreateModule);
  module->alter = alter;
  module->or_alter = or_alter;
  const Token word = Take();
  module->word = word.IsWord("view") ? "V" : word.IsWord("function") ? "FN" : "P";
  module->name = Object();
  if (module->word == "V") {
    ViewBody(*module);
  } else if (module->word == "P") {
    ProcedureBody(*module);
  } else {
    FunctionBody(*module);
  }
  if (Peek().kind != TokenKind::kEnd) RefuseHere();
  // Kept in its own words, from CREATE on, whether it was made by CREATE or ALTER.
  module->columns = {"CREATE " + CutBlanks(SourceOf(word.begin, source_.text.size()))};
  module->at = at;
  return module;
}

void Parser::ViewBody(Statement& view) {
  if (AtSymbol("(")) view.view_columns = NameList();
  if (TakeWord("with")) {
    do Name();
    while (TakeSymbol(","));
  }
  NeedWord("as");
  view.query = ParseQuery();
  if (TakeWords({"with", "check"})) NeedWord("option");
  SkipStatementEnd();
}

std::vector<Parameter> Parser::Parameters() {
  std::vector<Parameter> parameters;
  while (Peek().kind == TokenKind::kVariable) {
    Parameter parameter;
    parameter.at = Here();
    parameter.name = Take().value;
    TakeWord("as");
    parameter.type = TypeWords();
    TakeWord("null");
    if (TakeSymbol("=")) {
      parameter.default_value = AtName() ? Literal() : Unary();
    }
    parameter.output = TakeWord("output") || TakeWord("out");
    if (AtWord("readonly")) RefuseWord(Peek());
    parameters.push_back(std::move(parameter));
    if (!TakeSymbol(",")) break;
    if (Peek().kind != TokenKind::kVariable) RefuseHere();
  }
  return parameters;
}

void Parser::ProcedureBody(Statement& procedure) {
  const bool brackets = TakeSymbol("(");
  procedure.parameters = Parameters();
  if (brackets) NeedSymbol(")");
  if (TakeWord("with")) {
    do {
      Take();
      if (TakeWord("as")) {  // EXECUTE AS OWNER
        Take();
      }
    } while (TakeSymbol(","));
  }
  NeedWord("as");
  for (SkipStatementEnd(); Peek().kind != TokenKind::kEnd; SkipStatementEnd()) {
    procedure.body.push_back(ParseStatement());
  }
}

void Parser::FunctionBody(Statement& function) {
  NeedSymbol("(");
  function.parameters = Parameters();
  NeedSymbol(")");
  NeedWord("returns");
  const bool fills = Peek().kind == TokenKind::kVariable;
  StatementPtr filled = fills ? ReturnTable(function) : nullptr;
  const bool table = !fills && TakeWord("table");
  if (!table && !fills) function.returns = TypeWords();
  if (TakeWord("with")) {
    do {
      while (AtName() || AtWord("null") || AtWord("on")) Take();
    } while (TakeSymbol(","));
  }
  TakeWord("as");
  if (table) {
    function.word = "IF";
    NeedWord("return");
    function.query = ParseQuery();
    SkipStatementEnd();
    return;
  }
  if (!AtWord("begin")) RefuseHere();
  function.body.push_back(ParseStatement());
  RefuseEffects(*function.body[0], fills);
  if (fills) function.body.push_back(std::move(filled));
}

StatementPtr Parser::ReturnTable(Statement& function) {
  function.word = "TF";
  StatementPtr table = NewStatement(StatementKind::kCreateTable);
  table->variable = Take().value;
  NeedWord("table");
  NeedSymbol("(");
  TableParts(*table);
  NeedSymbol(")");
  for (const ColumnDefinition& column : table->definitions) {
    if (column.computed == nullptr) continue;
    Refuse(source_, column.at, "A computed column in a function's table is not supported");
  }
  return table;
}

void Parser::RefuseEffects(const Statement& statement, bool fills_table) const {
  // A function computes: whatever reads it must not change anything by that.
  switch (statement.kind) {
    case StatementKind::kDeclare:
      if (!statement.body.empty() && !fills_table) {
        Refuse(source_, statement.at, "A table variable in a scalar function is not supported");
      }
      return;
    case StatementKind::kSet:
    case StatementKind::kReturn:
    case StatementKind::kBreak:
    case StatementKind::kContinue:
    case StatementKind::kLabel:
    case StatementKind::kGoto:
    case StatementKind::kIf:
    case StatementKind::kWhile:
    case StatementKind::kBlock:
      for (const StatementPtr& inner : statement.body) RefuseEffects(*inner, fills_table);
      return;
    case StatementKind::kSelect: {
      const Select* select = statement.query->branches[0].select.get();
      const bool assigns = select != nullptr && select->into.Empty() && !select->items.empty() &&
                           !select->items[0].variable.empty();
      if (assigns) return;
      Refuse(source_, statement.at,
             "Select statements within a function cannot return data to a client");
    }
    case StatementKind::kInsert:
    case StatementKind::kUpdate:
    case StatementKind::kDelete:
      if (fills_table && statement.name.IsVariable() && statement.body.empty()) return;
      [[fallthrough]];
    default:
      Refuse(source_, statement.at, "A function may not change anything nor call a procedure");
  }
}

StatementPtr Parser::AlterTable() {
  StatementPtr alter = NewStatement(StatementKind::kAlterTable);
  alter->name = Object();
  const bool told = TakeWord("with");
  if (told) {
    if (!TakeWord("check")) NeedWord("nocheck");
    alter->alter = tokens_[at_ - 1].IsWord("nocheck");
  }
  if (TakeWord("add")) {
    alter->word = "add";
    TableParts(*alter);
  } else if (TakeWord("drop")) {
    alter->word = TakeWord("constraint") ? "drop constraint" : "drop column";
    if (alter->word == "drop column") NeedWord("column");
    do alter->columns.push_back(Name());
    while (TakeSymbol(","));
  } else if (!told && TakeWord("check")) {
    NeedWord("constraint");
    if (!TakeWord("all")) Name();
    alter->kind = StatementKind::kNothing;
  } else {
    RefuseWord(Peek());
  }
  return alter;
}

}  // namespace vorek::sqlite
