#include "adapters/sqlite/define.h"
#include "adapters/sqlite/runner.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::sqlite {

void Runner::RunDeclare(Statement& statement, Frame& frame) {
  for (StatementPtr& table : statement.body) DeclareTable(*table, frame);
  int piece = 0;
  for (const Parameter& variable : statement.parameters) {
    const std::string name = LowerWord(variable.name);
    frame.types[name] = {variable.type, ""};
    frame.values[name] =
        variable.default_value == nullptr
            ? Cell{}
            : Evaluate(statement, piece, *variable.default_value, &variable.type, frame);
    ++piece;
  }
}

void Runner::DeclareTable(Statement& table, Frame& frame) {
  // The statement may run again in a loop, or in another call of its procedure.
  const std::string variable = LowerWord(table.variable);
  if (frame.types.count(variable) != 0) return;
  table.name.parts = {"#" + variable + " " + std::to_string(depth_)};
  Whole(true, [&] { Definer(db_, schema_, frame.source).Define(table); });
  frame.types[variable] = {Type{}, table.name.Last()};
  frame.temporary_tables.insert(table.name.Last());
}

void Runner::RunSet(Statement& statement, Frame& frame) {
  const Assignment& assignment = statement.assignments[0];
  const std::string name = LowerWord(assignment.variable);
  const auto variable = frame.types.find(name);
  if (variable == frame.types.end() || assignment.value == nullptr) {
    Refuse(frame.source, assignment.at,
           "Must declare the scalar variable \"" + assignment.variable + "\"");
  }
  const Type type = variable->second.type;
  frame.values[name] = Evaluate(statement, 0, *assignment.value, &type, frame);
}

void Runner::DropVariables(Frame& frame) {
  DropCursors(frame);
  for (const std::string& name : frame.temporary_tables) {
    if (name.rfind("#@", 0) != 0 || schema_.FindTable(name) == nullptr) continue;
    vorek::sqlite::Run(db_, "DROP TABLE temp." + QuoteName(name));
    schema_.TemporaryChanged();
  }
}

}  // namespace vorek::sqlite
