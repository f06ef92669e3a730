#include <memory>
#include <utility>

#include "adapters/sqlite/runner.h"
#include "vorek/error.h"

// Cursors: all rows as they are when it is opened, read forward.
namespace vorek::sqlite {

void Runner::RunCursor(Statement& statement, Frame& frame) {
  const auto fail = [](const std::string& message) { throw Error(ErrorNumber::kSyntax, message); };
  const std::string& name = statement.variable;
  const auto found = cursors_.find(name);
  if (statement.kind == StatementKind::kDeclareCursor) {
    if (found != cursors_.end()) fail("A cursor with the name '" + name + "' already exists.");
    cursors_[name] = {&statement, &frame, false, 0, {}};
    return;
  }
  if (found == cursors_.end()) fail("A cursor with the name '" + name + "' does not exist.");
  Cursor& cursor = found->second;
  if (statement.word == "deallocate") {
    cursors_.erase(found);
    return;
  }
  if (statement.word != "open" && !cursor.open) fail("Cursor '" + name + "' is not open.");
  if (statement.word == "fetch") return Fetch(statement, cursor, frame);
  cursor.open = false;
  cursor.rows = {};
  cursor.next = 0;
  if (statement.word == "close") return;
  Statement& query = *cursor.statement;
  Compiled& compiled =
      Compile(query, 0, *cursor.frame, [&](Binder& binder) { return binder.Select(*query.query); });
  Sink* const outer = std::exchange(sink_, &cursor.rows);
  try {
    ReadAside(compiled, *cursor.frame);
  } catch (const Error& error) {
    sink_ = outer;
    throw Error(error.Number(), error.Description());
  }
  sink_ = outer;
  cursor.open = true;
}

void Runner::Fetch(Statement& statement, Cursor& cursor, Frame& frame) {
  if (statement.columns.size() != cursor.rows.columns.size()) {
    Refuse(frame.source, statement.at,
           "The number of variables of FETCH differs from the columns of the cursor");
  }
  if (cursor.next >= cursor.rows.rows.size()) {
    fetch_status_ = -1;
    return;
  }
  if (std::exchange(statement.plan->cursor, cursor.statement) != cursor.statement) {
    statement.plan->pieces.clear();  // another one of the same name has other types
  }
  const std::vector<Cell>& row = cursor.rows.rows[cursor.next++];
  Frame values = NewFrame(frame.source, true);
  for (std::size_t i = 0; i < row.size(); ++i) {
    const auto variable = frame.types.find(statement.columns[i]);
    if (variable == frame.types.end()) {
      Refuse(frame.source, statement.at,
             "Must declare the scalar variable \"" + statement.columns[i] + "\"");
    }
    Expr column;
    column.kind = ExprKind::kVariable;
    column.text = "@column" + std::to_string(i);
    values.types[column.text] = {cursor.rows.columns[i].type, ""};
    values.values[column.text] = row[i];
    const Type type = variable->second.type;
    frame.values[statement.columns[i]] =
        Evaluate(statement, static_cast<int>(i), column, &type, values);
  }
  fetch_status_ = 0;
}

void Runner::DropCursors(const Frame& frame) {
  for (auto at = cursors_.begin(); at != cursors_.end();) {
    at = at->second.frame == &frame ? cursors_.erase(at) : std::next(at);
  }
}

}  // namespace vorek::sqlite
