#include <algorithm>

#include "adapters/sqlite/define.h"
#include "adapters/sqlite/only_reads.h"
#include "adapters/sqlite/runner.h"
#include "vorek/error.h"

namespace vorek::sqlite {

void Runner::RunSelectInto(Statement& statement, Frame& frame) {
  const ObjectName& name = IntoOf(*statement.query)->into;
  Binder binder(schema_, frame.types, frame.source);
  const std::vector<OutputColumn> columns = binder.Describe(*statement.query, {});
  Whole(name.IsTemporary(), [&] {
    Definer(db_, schema_, frame.source).CreateTable(name, columns);
    RunChange(
        Compile(statement, 1, frame,
                [&](Binder& inner) { return inner.InsertInto(*statement.query, name.Last()); }),
        frame);
  });
  if (name.IsTemporary()) frame.temporary_tables.insert(name.Last());
}

void Runner::Whole(bool temporary, const std::function<void()>& work) {
  try {
    AllOrNothing piece(db_, !temporary);
    work();
    piece.Keep();
  } catch (const Error& error) {
    schema_.Changed();
    schema_.TemporaryChanged();
    throw Error(error.Number(), error.Description());
  }
}

void Runner::RunChange(Compiled& compiled, Frame& frame) {
  const Running running(compiled);
  BindAll(compiled, frame);
  while (Step(db_, compiled.prepared.get())) {
  }
  row_count_ = sqlite3_changes64(db_);
}

void Runner::RunInsert(Statement& statement, Frame& frame) {
  if (!statement.body.empty()) return RunInsertOfProcedure(statement, frame);
  RunChange(Compile(statement, 0, frame, [&](Binder& b) { return b.Insert(statement); }), frame);
  if (row_count_ > 0) {
    const TableInfo* table = schema_.FindTable(statement.name.Last());
    const bool has_identity =
        table != nullptr && std::any_of(table->columns.begin(), table->columns.end(),
                                        [](const ColumnInfo& column) { return column.identity; });
    identity_ = has_identity ? Cell{std::int64_t{sqlite3_last_insert_rowid(db_)}} : Cell{};
    if (has_identity) frame.identity = identity_;
  }
}

void Runner::RunDefinition(Statement& statement, Frame& frame) {
  const ObjectName& table = statement.on.Empty() ? statement.name : statement.on;
  Whole(table.IsTemporary(), [&] { Definer(db_, schema_, frame.source).Define(statement); });
  if (statement.kind == StatementKind::kCreateTable && statement.name.IsTemporary()) {
    frame.temporary_tables.insert(statement.name.Last());
  }
}

void Runner::RunTruncate(Statement& statement, Frame& frame) {
  Whole(statement.name.IsTemporary(), [&] {
    RunChange(Compile(statement, 0, frame, [&](Binder& b) { return b.Delete(statement); }), frame);
    Definer(db_, schema_, frame.source).RestartIdentity(statement.name);
  });
}

}  // namespace vorek::sqlite
