#include <algorithm>
#include <array>
#include <utility>

#include "adapters/sqlite/parser.h"
#include "adapters/sqlite/reader.h"
#include "adapters/sqlite/runner.h"
#include "text/utf8.h"
#include "vorek/error.h"

// Procedures and functions: EXEC, its arguments, and what a module leaves behind.
namespace vorek::sqlite {
namespace {

constexpr int kMaxCalls = 32;

class CallLevel {
 public:
  explicit CallLevel(int& depth) : depth_(depth) {
    if (depth_ >= kMaxCalls) {
      throw Error(ErrorNumber::kSyntax,
                  "Maximum stored procedure or function nesting level exceeded (limit 32).");
    }
    ++depth_;
  }
  ~CallLevel() { --depth_; }
  CallLevel(const CallLevel&) = delete;
  CallLevel& operator=(const CallLevel&) = delete;

 private:
  int& depth_;
};

}  // namespace

void Runner::LeaveModule(Frame& frame) {
  schema_.SetSession(frame.session);
  DropCursors(frame);
  for (const std::string& name : frame.temporary_tables) {
    if (schema_.FindTable(name) == nullptr) continue;
    vorek::sqlite::Run(db_, "DROP TABLE temp." + QuoteName(name));
    schema_.TemporaryChanged();
  }
  frame.temporary_tables.clear();
}

void Runner::TakeArguments(Statement& statement, const Statement& definition, Frame& caller,
                           Frame& frame, std::size_t first) {
  const std::vector<vorek::sqlite::Parameter>& parameters = definition.parameters;
  std::vector<const Argument*> given(parameters.size(), nullptr);
  for (std::size_t at = first; at < statement.arguments.size(); ++at) {
    const Argument& argument = statement.arguments[at];
    std::size_t index = at - first;
    if (!argument.name.empty()) {
      const auto found = std::find_if(parameters.begin(), parameters.end(), [&](const auto& p) {
        return SameWord(p.name, argument.name);
      });
      if (found == parameters.end()) {
        Refuse(caller.source, statement.at,
               "'" + argument.name + "' is not a parameter of '" + definition.name.Last() + "'");
      }
      index = static_cast<std::size_t>(found - parameters.begin());
    }
    if (index >= parameters.size()) {
      Refuse(caller.source, statement.at,
             "The procedure '" + definition.name.Last() + "' has too many arguments specified");
    }
    given[index] = &argument;
  }
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const vorek::sqlite::Parameter& parameter = parameters[i];
    const std::string name = LowerWord(parameter.name);
    frame.types[name] = {parameter.type, ""};
    const bool told = given[i] != nullptr && given[i]->value != nullptr;
    if (!told && parameter.default_value == nullptr) {
      throw Error(ErrorNumber::kSyntax, "Procedure or function '" + definition.name.Last() +
                                            "' expects parameter '" + parameter.name +
                                            "', which was not supplied.");
    }
    const Expr& value = told ? *given[i]->value : *parameter.default_value;
    Frame& scope = told ? caller : frame;
    // Each default has its own piece, apart from those of the arguments.
    const int piece = static_cast<int>(i + first) + (told ? 0 : 1000);
    frame.values[name] = Evaluate(statement, piece, value, &parameter.type, scope);
  }
}

void Runner::GiveBack(const Statement& statement, const Statement& definition, Frame& caller,
                      const Frame& frame, std::size_t first) {
  for (std::size_t at = first; at < statement.arguments.size(); ++at) {
    const Argument& argument = statement.arguments[at];
    const std::size_t index = at - first;
    if (!argument.output || argument.value == nullptr ||
        argument.value->kind != ExprKind::kVariable) {
      continue;
    }
    for (std::size_t i = 0; i < definition.parameters.size(); ++i) {
      const auto& parameter = definition.parameters[i];
      const bool meant =
          argument.name.empty() ? i == index : SameWord(parameter.name, argument.name);
      if (!meant) continue;
      if (!parameter.output) {
        Refuse(caller.source, statement.at,
               "The parameter '" + parameter.name + "' was not declared as an OUTPUT parameter");
      }
      caller.values[LowerWord(argument.value->text)] = frame.values.at(LowerWord(parameter.name));
    }
  }
}

void Runner::RunExecuteSql(Statement& statement, Frame& frame) {
  const CallLevel level(depth_);
  const Type type = MakeText(TypeKind::kNVarChar, Type::kMax);
  const auto text = [&](std::size_t i) {
    if (i >= statement.arguments.size() || statement.arguments[i].value == nullptr) {
      return std::string();
    }
    const Cell cell =
        Evaluate(statement, static_cast<int>(i), *statement.arguments[i].value, &type, frame);
    const auto* value = std::get_if<std::string>(&cell);
    return value == nullptr ? std::string() : *value;
  };
  constexpr std::size_t kTexts = 2;  // the statements and the parameters' names
  const auto checkpoint = [this] { checkpoint_(0); };
  const std::shared_ptr<Batch> batch = Parser(text(0), checkpoint).ParseBatch();
  const std::string names = text(1);
  Statement definition;
  definition.name.parts = {"sp_executesql"};
  if (!names.empty()) definition.parameters = Parser(names, checkpoint).ParseParameters();
  Frame own = NewFrame(SourceText(batch->source), true);
  TakeArguments(statement, definition, frame, own, kTexts);
  RunModule(batch->statements, own);
  GiveBack(statement, definition, frame, own, kTexts);
}

bool Runner::RunSystemProcedure(Statement& statement, Frame& frame) {
  const std::string name = LowerWord(statement.name.Last());
  if (name == "sp_executesql" && !statement.arguments.empty()) {
    RunExecuteSql(statement, frame);
    return true;
  }
  // Notes about the schema, as tools script them: nothing here reads them.
  constexpr std::array<std::string_view, 4> kIgnored = {
      "sp_addextendedproperty", "sp_updateextendedproperty", "sp_tableoption", "sp_dboption"};
  return std::find(kIgnored.begin(), kIgnored.end(), name) != kIgnored.end();
}

void Runner::RunExecute(Statement& statement, Frame& frame) {
  const ModuleInfo* module = schema_.FindModule(statement.name.Last());
  if (module == nullptr || module->kind != "P") {
    if (module == nullptr && RunSystemProcedure(statement, frame)) return;
    throw Error(ErrorNumber::kMissingObject, "Could not find stored procedure '" +
                                                 statement.name.Last() + "' (" +
                                                 PlaceOf(frame.source, statement.at) + ").");
  }
  const CallLevel level(depth_);
  // Kept while it runs, whatever becomes of the schema meanwhile.
  const std::shared_ptr<Batch> batch = module->batch;
  Statement& definition = *batch->statements.front();
  Frame inner = NewFrame(SourceText(batch->source), true);
  inner.procedure = module->name;
  inner.types["@return value"] = {Make(TypeKind::kInt), ""};
  TakeArguments(statement, definition, frame, inner);
  RunModule(definition.body, inner);
  GiveBack(statement, definition, frame, inner);
  if (statement.variable.empty()) return;
  const bool none = std::holds_alternative<std::monostate>(inner.returned);
  frame.values[LowerWord(statement.variable)] = none ? Cell{std::int64_t{0}} : inner.returned;
}

void Runner::RunExecuteText(Statement& statement, Frame& frame) {
  const CallLevel level(depth_);
  const Type text = MakeText(TypeKind::kNVarChar, Type::kMax);
  const Cell cell = Evaluate(statement, 0, *statement.expr, &text, frame);
  const auto* source = std::get_if<std::string>(&cell);
  if (source == nullptr) return;
  const std::shared_ptr<Batch> batch = Parser(*source, [this] { checkpoint_(0); }).ParseBatch();
  Frame inner = NewFrame(SourceText(batch->source), true);
  RunModule(batch->statements, inner);
}

void Runner::RunInsertOfProcedure(Statement& statement, Frame& frame) {
  // The procedure's row sets are taken aside, then inserted row by row.
  Sink sink;
  Sink* const outer = std::exchange(sink_, &sink);
  try {
    RunOne(*statement.body[0], frame);
  } catch (const Error& error) {
    sink_ = outer;
    throw Error(error.Number(), error.Description());
  }
  sink_ = outer;
  row_count_ = 0;
  if (sink.rows.empty()) return;
  Statement insert;
  insert.kind = StatementKind::kInsert;
  insert.at = statement.at;
  insert.name = statement.name;
  insert.columns = statement.columns;
  auto select = std::make_unique<Select>();
  std::vector<ExprPtr> values;
  Frame row_frame = NewFrame(frame.source, true);
  for (std::size_t i = 0; i < sink.columns.size(); ++i) {
    auto value = std::make_unique<Expr>();
    value->kind = ExprKind::kVariable;
    value->text = "@column" + std::to_string(i);
    row_frame.types[value->text] = {sink.columns[i].type, ""};
    values.push_back(std::move(value));
  }
  select->values.push_back(std::move(values));
  insert.query = std::make_unique<Query>();
  insert.query->branches.emplace_back();
  insert.query->branches[0].select = std::move(select);
  Whole(insert.name.IsTemporary(), [&] {
    for (std::vector<Cell>& row : sink.rows) {
      for (std::size_t i = 0; i < row.size(); ++i) {
        row_frame.values["@column" + std::to_string(i)] = std::move(row[i]);
      }
      RunInsert(insert, row_frame);
    }
  });
  if (!std::holds_alternative<std::monostate>(row_frame.identity)) {
    frame.identity = row_frame.identity;
  }
  row_count_ = static_cast<std::int64_t>(sink.rows.size());
}

void Runner::RunModule(std::vector<StatementPtr>& statements, Frame& frame) {
  try {
    RunAll(statements, frame);
  } catch (const Error& error) {
    IgnoreAllErrors([&] { LeaveModule(frame); });
    throw Error(error.Number(), error.Description());
  }
  LeaveModule(frame);
}

Cell Runner::Call(const std::string& function, std::vector<Cell> arguments) {
  const ModuleInfo* module = schema_.FindModule(function);
  if (module == nullptr || module->kind != "FN") {
    throw Error(ErrorNumber::kMissingObject, "Cannot find the function '" + function + "'.");
  }
  const CallLevel level(depth_);
  const std::shared_ptr<Batch> batch = module->batch;
  Statement& definition = *batch->statements.front();
  Frame frame = NewFrame(SourceText(batch->source), true);
  frame.types["@return value"] = {definition.returns, ""};
  for (std::size_t i = 0; i < definition.parameters.size() && i < arguments.size(); ++i) {
    const std::string name = LowerWord(definition.parameters[i].name);
    frame.types[name] = {definition.parameters[i].type, ""};
    frame.values[name] = std::move(arguments[i]);
  }
  const std::int64_t row_count = row_count_;
  const int last_error = last_error_;
  ++functions_;
  try {
    RunAll(definition.body, frame);
  } catch (const Error& error) {
    --functions_;
    throw Error(error.Number(), error.Description());
  }
  --functions_;
  row_count_ = row_count;
  last_error_ = last_error;
  return frame.returned;
}

}  // namespace vorek::sqlite
