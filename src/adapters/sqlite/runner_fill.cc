#include <utility>

#include "adapters/sqlite/define.h"
#include "adapters/sqlite/runner.h"
#include "vorek/error.h"

// Functions of several statements that give a table.
namespace vorek::sqlite {

void Runner::MakeFilled(const Translation& translation, Frame& frame) {
  for (const Filled& filled : translation.filled) {
    if (functions_ > 0) {
      // Tables can't be made while SQLite is in the middle of a statement.
      throw Error(ErrorNumber::kSyntax, "The function '" + filled.function +
                                            "' of several statements within a scalar function is "
                                            "not supported");
    }
    if (schema_.FindTable(filled.table) != nullptr) {
      vorek::sqlite::Run(db_, "DROP TABLE temp." + QuoteName(filled.table));
      schema_.TemporaryChanged();
    }
    ObjectName name;
    name.parts = {filled.table};
    Definer(db_, schema_, frame.source).CreateTable(name, filled.columns);
    frame.temporary_tables.insert(filled.table);
  }
}

Runner::Filling::Filling(Runner& runner, const std::string& function, const Frame& frame)
    : runner_(runner),
      frame_(frame),
      key_(NameKey(function)),
      row_count_(runner.row_count_),
      last_error_(runner.last_error_) {
  constexpr int kMostCalls = 32;
  if (runner.depth_ >= kMostCalls || !runner.filling_.insert(key_).second) {
    throw Error(ErrorNumber::kSyntax, "The function '" + function +
                                          "' of several statements calls itself, which is not "
                                          "supported");
  }
  ++runner.depth_;
}

Runner::Filling::~Filling() {
  runner_.filling_.erase(key_);
  --runner_.depth_;
  runner_.frame_ = &frame_;
  runner_.row_count_ = row_count_;
  runner_.last_error_ = last_error_;
}

void Runner::Fill(const Filled& filled, const Frame& frame) {
  const ModuleInfo* module = schema_.FindModule(filled.function);
  if (module == nullptr) {
    throw Error(ErrorNumber::kMissingObject, "Cannot find the function '" + filled.function + "'.");
  }
  const std::shared_ptr<Batch> batch = module->batch;  // kept while it runs
  Statement& definition = *batch->statements.front();
  Frame inner = NewFrame(SourceText(batch->source), true);
  inner.procedure = module->name;
  const PreparedPtr arguments = Prepare(db_, filled.arguments->sql);
  BindParameters(arguments.get(), *filled.arguments, frame);
  Step(db_, arguments.get());
  int index = 0;
  for (const vorek::sqlite::Parameter& parameter : definition.parameters) {
    const std::string name = LowerWord(parameter.name);
    inner.types[name] = {parameter.type, ""};
    inner.values[name] = CellOf(arguments.get(), ++index);
  }
  sqlite3_reset(arguments.get());
  const Filling filling(*this, filled.function, frame);
  RunFilling(filled, definition, inner);
}

void Runner::RunFilling(const Filled& filled, Statement& definition, Frame& frame) {
  try {
    DeclareTable(*definition.body[1], frame);
    RunOne(*definition.body[0], frame);
    const std::string rows = "temp." + QuoteName(filled.table);
    const std::string from = frame.types[LowerWord(definition.body[1]->variable)].table;
    vorek::sqlite::Run(db_, "DELETE FROM " + rows);
    vorek::sqlite::Run(db_, "INSERT INTO " + rows + " SELECT * FROM temp." + QuoteName(from));
  } catch (const Error& error) {
    IgnoreAllErrors([&] { LeaveModule(frame); });
    throw Error(error.Number(), error.Description());
  }
  LeaveModule(frame);
}

}  // namespace vorek::sqlite
