#include <algorithm>
#include <array>
#include <utility>

#include "adapters/sqlite/parser.h"
#include "text/utf8.h"

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

namespace {

// A setting of a session and the values that are taken: those that change nothing here, and the
// few that are done.
struct SettingRule {
  std::string_view name;
  std::string_view values;  // parted by blanks; "*" for any
  bool done = false;
};

constexpr std::array<SettingRule, 35> kSettings = {{
    {"nocount", "on off"},
    {"xact_abort", "on off", true},
    {"quoted_identifier", "on off", true},
    {"dateformat", "mdy dmy ymd", true},
    {"datefirst", "7"},
    {"language", "us_english english"},
    {"rowcount", "0"},
    {"ansi_nulls", "on"},
    {"ansi_padding", "on off"},
    {"ansi_warnings", "on"},
    {"ansi_null_dflt_on", "on"},
    {"ansi_null_dflt_off", "off"},
    {"ansi_defaults", "off"},
    {"arithabort", "on off"},
    {"arithignore", "off"},
    {"concat_null_yields_null", "on"},
    {"numeric_roundabort", "off"},
    {"implicit_transactions", "off"},
    {"cursor_close_on_commit", "on off"},
    {"identity_insert", "on off"},
    {"noexec", "off"},
    {"parseonly", "off"},
    {"fmtonly", "off"},
    {"showplan_all", "off"},
    {"showplan_text", "off"},
    {"showplan_xml", "off"},
    {"statistics", "on off"},
    {"forceplan", "on off"},
    {"no_browsetable", "on off"},
    {"remote_proc_transactions", "on off"},
    {"lock_timeout", "*"},
    {"deadlock_priority", "*"},
    {"query_governor_cost_limit", "*"},
    {"textsize", "2147483647 -1"},
    {"offsets", "off"},
}};

bool TakesValue(const SettingRule& rule, const std::string& value) {
  return rule.values == "*" ||
         (" " + std::string(rule.values) + " ").find(" " + value + " ") != std::string::npos;
}

}  // namespace

void Parser::Setting(Statement& set) {
  set.kind = StatementKind::kNothing;
  if (TakeWords({"transaction", "isolation", "level"})) {
    while (AtName() || AtWord("read")) Take();
    return;
  }
  std::vector<const SettingRule*> rules;
  do {
    const Token word = Take();
    const auto* rule = std::find_if(kSettings.begin(), kSettings.end(), [&](const auto& row) {
      return word.kind == TokenKind::kName && SameWord(row.name, word.value);
    });
    if (rule == kSettings.end()) RefuseWord(word);
    rules.push_back(rule);
  } while (TakeSymbol(","));
  const std::string last(rules.back()->name);
  if (last == "identity_insert") Object();
  if (last == "statistics") {
    do Name();
    while (TakeSymbol(","));
  }
  const std::size_t at = Here();
  std::string value = TakeSymbol("-") ? "-" : "";
  value += LowerWord(Take().value);
  for (const SettingRule* rule : rules) {
    if (!TakesValue(*rule, value)) {
      Refuse(source_, at,
             "SET " + std::string(rule->name) + " " + text::Left(value, 60) + " is not supported");
    }
    if (!rule->done) continue;
    if (rules.size() > 1 && rule->name != "quoted_identifier") RefuseHere();
    set.kind = StatementKind::kSetting;
    set.word = rule->name;
    set.variable = value;
  }
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
