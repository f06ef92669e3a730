#include "adapters/sqlite/runner.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "adapters/sqlite/define.h"
#include "adapters/sqlite/moment.h"
#include "adapters/sqlite/parser.h"
#include "adapters/sqlite/reader.h"
#include "platform/result_limit.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

// Marks a program as running and rewinds it afterwards, whatever happens.
class Running {
 public:
  explicit Running(Compiled& compiled) : compiled_(compiled) { compiled_.running = true; }
  ~Running() {
    sqlite3_reset(compiled_.prepared.get());
    sqlite3_clear_bindings(compiled_.prepared.get());
    compiled_.running = false;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  Compiled& compiled_;
};

std::string TextOfCell(const Cell& cell) {
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) return std::to_string(*whole);
  return "";
}

// Goes up to "SELECT ... INTO" of a query without a UNION.
const Select* IntoOf(const Query& query) {
  const Select* select = query.branches[0].select.get();
  return select != nullptr && !select->into.Empty() ? select : nullptr;
}

}  // namespace

bool OnlyReads(const std::vector<StatementPtr>& statements) {
  return std::all_of(statements.begin(), statements.end(), [](const StatementPtr& statement) {
    switch (statement->kind) {
      case StatementKind::kSelect:
        return IntoOf(*statement->query) == nullptr;
      case StatementKind::kDeclare:
      case StatementKind::kSet:
      case StatementKind::kSetting:
      case StatementKind::kPrint:
      case StatementKind::kRaise:
      case StatementKind::kReturn:
      case StatementKind::kBreak:
      case StatementKind::kContinue:
      case StatementKind::kLabel:
      case StatementKind::kGoto:
      case StatementKind::kNote:
      case StatementKind::kNothing:
      case StatementKind::kIf:
      case StatementKind::kWhile:
      case StatementKind::kBlock:
      case StatementKind::kTry:
        return OnlyReads(statement->body);
      default:
        return false;
    }
  });
}

Runner::Runner(sqlite3* db, Schema& schema) : db_(db), schema_(schema) {}

ResultSetPtr Runner::Run(Batch& batch, const ExecuteOptions& options,
                         const std::function<void(std::size_t)>& checkpoint) {
  if (depth_ == 0) retired_.clear();
  result_.reset();
  collect_ = true;
  checkpoint_ = checkpoint;
  options_ = options;
  tell_lines_ = options.script_line > 0;
  pending_.reset();
  raised_.reset();
  caught_.clear();
  tries_ = functions_ = 0;
  const SourceText source(batch.source, batch.first_line);
  if (!schema_.CurrentSession().quotes_names && batch.double_quotes != std::string::npos) {
    Refuse(source, batch.double_quotes,
           "A text in double quotes, as QUOTED_IDENTIFIER OFF has it, is not supported");
  }
  if (waits_to_write_ && !OnlyReads(batch.statements) && tell_lines_) {
    BeginWriting();
    waits_to_write_ = false;
  }
  Frame frame = NewFrame(source, false);
  frame.identity = own_identity_;
  try {
    RunAll(batch.statements, frame);
    own_identity_ = frame.identity;
  } catch (const Error& error) {
    frame_ = &frame;
    own_identity_ = frame.identity;
    if (schema_.CurrentSession().ends_transactions) Rollback();
    IgnoreAllErrors([&] { DropVariables(frame); });
    if (!pending_) throw Error(error.Number(), error.Description());
  }
  DropVariables(frame);
  if (pending_) throw Error(*pending_);
  return std::move(result_);
}

Runner::Frame Runner::NewFrame(const SourceText& source, bool is_module) const {
  Frame frame{source,
              {},
              {},
              {},
              {},
              {},
              is_module,
              "",
              "",
              schema_.CurrentSession(),
              is_module ? frame_ : nullptr};
  return frame;
}

Runner::Flow Runner::RunAll(std::vector<StatementPtr>& statements, Frame& frame) {
  frame_ = &frame;
  for (std::size_t i = 0; i < statements.size(); ++i) {
    checkpoint_(0);
    const Flow flow = RunOne(*statements[i], frame);
    frame_ = &frame;
    if (flow == Flow::kNext) continue;
    if (flow != Flow::kGoto) return flow;
    const auto label = std::find_if(statements.begin(), statements.end(), [&](const auto& other) {
      return other->kind == StatementKind::kLabel && other->word == frame.label;
    });
    if (label == statements.end()) return flow;
    i = static_cast<std::size_t>(label - statements.begin());
  }
  return Flow::kNext;
}

Runner::Flow Runner::RunOne(Statement& statement, Frame& frame) {
  passing_ = false;
  try {
    const Flow flow = ErrorOfMemory([&] { return RunFlow(statement, frame); });
    const bool holds_others =
        statement.kind == StatementKind::kIf || statement.kind == StatementKind::kWhile ||
        statement.kind == StatementKind::kBlock || statement.kind == StatementKind::kTry;
    if (!holds_others) last_error_ = 0;
    return flow;
  } catch (const Error& error) {
    const bool outermost = tell_lines_ && !frame.is_module;
    const bool told = error.Description().find("(line ") != std::string::npos;
    // The innermost statement tells what happened; those around it only pass the error on.
    if (!std::exchange(passing_, true)) failed_ = FailureOf(error, statement, frame);
    last_error_ = failed_.number;
    const bool ends_statement = raised_ ? !raised_->ends_batch : EndsStatementOnly(last_error_);
    const bool goes_on = ends_statement && !error.Is(ErrorNumber::kOutOfMemory) && tries_ == 0 &&
                         functions_ == 0 && filling_.empty() && !tell_lines_ &&
                         !schema_.CurrentSession().ends_transactions;
    const std::string line = " (line " + std::to_string(LineOf(frame.source, statement.at)) + ")";
    const Error named(error.Number(), error.Description() + (outermost && !told ? line : ""));
    if (!goes_on) throw Error(named);
    if (!pending_) pending_ = named;
    raised_.reset();
    row_count_ = 0;
    return Flow::kNext;
  }
}

// What tells where it goes on.
Runner::Flow Runner::RunFlow(Statement& statement, Frame& frame) {
  switch (statement.kind) {
    case StatementKind::kIf:
      if (Holds(statement, frame)) return RunOne(*statement.body[0], frame);
      if (statement.body.size() > 1) return RunOne(*statement.body[1], frame);
      return Flow::kNext;
    case StatementKind::kWhile:
      return RunWhile(statement, frame);
    case StatementKind::kBlock:
      return RunAll(statement.body, frame);
    case StatementKind::kTry:
      return RunTry(statement, frame);
    case StatementKind::kReturn:
      if (statement.expr != nullptr) {
        const auto type = frame.types.find("@return value");
        frame.returned = Evaluate(statement, 0, *statement.expr,
                                  type == frame.types.end() ? nullptr : &type->second.type, frame);
      }
      return Flow::kReturn;
    case StatementKind::kBreak:
      return Flow::kBreak;
    case StatementKind::kContinue:
      return Flow::kContinue;
    case StatementKind::kGoto:
      frame.label = statement.word;
      return Flow::kGoto;
    default:
      RunAction(statement, frame);
      return Flow::kNext;
  }
}

// What the next statement always follows.
void Runner::RunAction(Statement& statement, Frame& frame) {
  switch (statement.kind) {
    case StatementKind::kSelect:
      return RunQuery(statement, frame);
    case StatementKind::kInsert:
      return RunInsert(statement, frame);
    case StatementKind::kUpdate:
      return RunChange(Compile(statement, 0, frame, [&](Binder& b) { return b.Update(statement); }),
                       frame);
    case StatementKind::kDelete:
      return RunChange(Compile(statement, 0, frame, [&](Binder& b) { return b.Delete(statement); }),
                       frame);
    case StatementKind::kDeclare:
      return RunDeclare(statement, frame);
    case StatementKind::kSet:
      return RunSet(statement, frame);
    case StatementKind::kExecute:
      return RunExecute(statement, frame);
    case StatementKind::kExecuteText:
      return RunExecuteText(statement, frame);
    case StatementKind::kPrint: {
      const Type text = MakeText(TypeKind::kNVarChar, Type::kMax);
      return Tell(TextOfCell(Evaluate(statement, 0, *statement.expr, &text, frame)));
    }
    case StatementKind::kRaise:
      return RunRaise(statement, frame);
    case StatementKind::kDeclareCursor:
    case StatementKind::kCursor:
      return RunCursor(statement, frame);
    case StatementKind::kSetting:
      return RunSetting(statement);
    case StatementKind::kNote:
      return Tell(statement.word);
    case StatementKind::kTruncate:
      return RunTruncate(statement, frame);
    case StatementKind::kBegin:
    case StatementKind::kCommit:
    case StatementKind::kRollback:
      return RunTransaction(statement);
    case StatementKind::kNothing:
    case StatementKind::kLabel:
      return;
    default:
      RunDefinition(statement, frame);
  }
}

Runner::Flow Runner::RunWhile(Statement& statement, Frame& frame) {
  while (Holds(statement, frame)) {
    checkpoint_(0);
    const Flow flow = RunOne(*statement.body[0], frame);
    if (flow == Flow::kBreak) break;
    if (flow == Flow::kReturn || flow == Flow::kGoto) return flow;
  }
  return Flow::kNext;
}

Compiled& Runner::Compile(Statement& statement, int piece, Frame& frame,
                          const Translate& translate) {
  std::shared_ptr<Compiled>& kept = statement.plan->pieces[piece];
  const bool fits =
      kept != nullptr && !kept->running && kept->stamp == schema_.Stamp() &&
      (!kept->translation.temporary || kept->temporary_stamp == schema_.TemporaryStamp());
  if (fits) return *kept;
  Binder binder(schema_, frame.types, frame.source);
  if (statement.plan->number == 0) statement.plan->number = ++statements_;
  binder.SetPlace(std::to_string(statement.plan->number) + "." + std::to_string(piece));
  auto compiled = std::make_shared<Compiled>();
  untranslated_ = &frame;
  compiled->translation = translate(binder);
  MakeFilled(compiled->translation, frame);
  compiled->prepared = Prepare(db_, compiled->translation.sql);
  untranslated_ = nullptr;
  compiled->stamp = schema_.Stamp();
  compiled->temporary_stamp = schema_.TemporaryStamp();
  // An outer run of the same statement keeps its program alive by itself.
  if (kept != nullptr && kept->running) retired_.push_back(kept);
  kept = std::move(compiled);
  return *kept;
}

Cell Runner::SystemValue(const std::string& name, const Frame& frame) const {
  if (name == "@@rowcount") return row_count_;
  if (name == "@@trancount") return std::int64_t{transactions_};
  if (name == "@@error") return std::int64_t{last_error_};
  if (name == "@@identity") return identity_;
  if (name == "@@fetch_status") return std::int64_t{fetch_status_};
  if (name == "@@scope_identity") return frame.identity;
  if (name == "@@xact_state") return std::int64_t{transactions_ > 0 ? 1 : 0};
  if (name == "@@now" || name == "@@utcnow")
    return StoredMoment(Now(name == "@@utcnow"), "datetime");
  if (caught_.empty()) return {};
  const Failure& failure = caught_.back();
  if (name == "@@error_message") return failure.message;
  if (name == "@@error_number") return std::int64_t{failure.number};
  if (name == "@@error_severity") return std::int64_t{failure.severity};
  if (name == "@@error_state") return std::int64_t{failure.state};
  if (name == "@@error_line") return std::int64_t{failure.line};
  return failure.procedure.empty() ? Cell{} : Cell{failure.procedure};
}

void Runner::BindAll(Compiled& compiled, const Frame& frame) {
  for (const Filled& filled : compiled.translation.filled) Fill(filled, frame);
  BindParameters(compiled.prepared.get(), compiled.translation, frame);
}

void Runner::BindParameters(sqlite3_stmt* prepared, const Translation& translation,
                            const Frame& frame) {
  int index = 0;
  for (const std::string& name : translation.parameters) {
    const bool system = name.rfind("@@", 0) == 0;
    const auto found = frame.values.find(name);
    BindCell(prepared, ++index,
             system || found == frame.values.end() ? (system ? SystemValue(name, frame) : Cell{})
                                                   : found->second);
  }
}

Cell Runner::Evaluate(Statement& statement, int piece, const Expr& expr, const Type* type,
                      Frame& frame) {
  Compiled& compiled = Compile(statement, piece, frame, [&](Binder& binder) {
    return type == nullptr ? binder.UntypedValue(expr) : binder.Value(expr, *type);
  });
  const Running running(compiled);
  BindAll(compiled, frame);
  return Step(db_, compiled.prepared.get()) ? CellOf(compiled.prepared.get(), 0) : Cell{};
}

bool Runner::Holds(Statement& statement, Frame& frame) {
  Compiled& compiled = Compile(statement, 0, frame,
                               [&](Binder& binder) { return binder.Condition(*statement.expr); });
  const Running running(compiled);
  BindAll(compiled, frame);
  return Step(db_, compiled.prepared.get()) && sqlite3_column_int(compiled.prepared.get(), 0) != 0;
}

void Runner::RunQuery(Statement& statement, Frame& frame) {
  if (IntoOf(*statement.query) != nullptr) return RunSelectInto(statement, frame);
  Compiled& compiled =
      Compile(statement, 0, frame, [&](Binder& binder) { return binder.Select(*statement.query); });
  const Running running(compiled);
  BindAll(compiled, frame);
  const Translation& translation = compiled.translation;
  if (translation.assigned.empty() && sink_ != nullptr) return TakeRows(compiled);
  if (translation.assigned.empty() && (collect_ || options_.more_rows) && functions_ == 0) {
    ResultSetPtr rows =
        ReadRows(db_, compiled.prepared.get(), translation.columns, [this](const ResultSet& read) {
          checkpoint_(read.rows);
          RefuseBeyond(options_.limits, read);
        });
    row_count_ = static_cast<std::int64_t>(rows->rows);
    if (!std::exchange(collect_, false)) return options_.more_rows(std::move(rows));
    result_ = std::move(rows);
    return;
  }
  // The last row's values stay in the variables; without a row they stay as they were.
  std::int64_t rows = 0;
  Frame* const outer = std::exchange(assigning_, &frame);
  struct Restore {
    Frame*& slot;
    Frame* value;
    ~Restore() { slot = value; }
  } const restore{assigning_, outer};
  while (Step(db_, compiled.prepared.get())) {
    ++rows;
    for (std::size_t i = 0; i < translation.assigned.size() && !translation.assigns; ++i) {
      frame.values[translation.assigned[i]] = CellOf(compiled.prepared.get(), static_cast<int>(i));
    }
    if (rows % 4096 == 0) checkpoint_(0);
  }
  row_count_ = rows;
}

void Runner::ReadAside(Compiled& compiled, const Frame& frame) {
  const Running running(compiled);
  BindAll(compiled, frame);
  TakeRows(compiled);
}

void Runner::TakeRows(Compiled& compiled) {
  const std::vector<OutputColumn>& columns = compiled.translation.columns;
  if (sink_->columns.empty()) sink_->columns = columns;
  if (sink_->columns.size() != columns.size()) {
    throw Error(ErrorNumber::kSyntax, "The row sets of the procedure differ in their columns.");
  }
  row_count_ = 0;
  while (Step(db_, compiled.prepared.get())) {
    std::vector<Cell> row;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      row.push_back(CellOf(compiled.prepared.get(), static_cast<int>(i)));
    }
    sink_->rows.push_back(std::move(row));
    if (++row_count_ % 4096 != 0) continue;
    checkpoint_(0);
    RefuseBeyond(options_.limits, sink_->rows.size());
  }
}

Cell Runner::Current(const std::string& variable) const {
  if (assigning_ == nullptr) return {};
  const auto found = assigning_->values.find(variable);
  return found == assigning_->values.end() ? Cell{} : found->second;
}

void Runner::Assign(const std::string& variable, Cell value) {
  if (assigning_ != nullptr) assigning_->values[variable] = std::move(value);
}

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

void Runner::RunDefinition(Statement& statement, Frame& frame) {
  const ObjectName& table = statement.on.Empty() ? statement.name : statement.on;
  Whole(table.IsTemporary(), [&] { Definer(db_, schema_, frame.source).Define(statement); });
  if (statement.kind == StatementKind::kCreateTable && statement.name.IsTemporary()) {
    frame.temporary_tables.insert(statement.name.Last());
  }
}

void Runner::BeginWriting() {
  // Taking the writer's place at once avoids that two wait for each other.
  vorek::sqlite::Run(db_, sqlite3_db_readonly(db_, "main") == 1 ? "BEGIN" : "BEGIN IMMEDIATE");
}

void Runner::RunTransaction(const Statement& statement) {
  const bool open = sqlite3_get_autocommit(db_) == 0 || waits_to_write_;
  if (statement.kind == StatementKind::kBegin) {
    if (!open) {
      transactions_ = 0;
      waits_to_write_ = tell_lines_;
      if (!waits_to_write_) BeginWriting();
    }
    ++transactions_;
    return;
  }
  const bool commits = statement.kind == StatementKind::kCommit;
  const std::string word = commits ? "COMMIT" : "ROLLBACK";
  if (!open) {
    transactions_ = 0;
    throw Error(ErrorNumber::kSyntax,
                "The " + word + " TRANSACTION request has no corresponding BEGIN TRANSACTION.");
  }
  if (tell_lines_ && (!commits || transactions_ <= 1)) {
    throw Error(ErrorNumber::kSyntax, "A " + word +
                                          " would end the script's own transaction, in which all "
                                          "of it runs or nothing.");
  }
  if (!commits) return Rollback();
  if (transactions_ <= 1) {
    if (!waits_to_write_) vorek::sqlite::Run(db_, "COMMIT");
    waits_to_write_ = false;
  }
  transactions_ = std::max(0, transactions_ - 1);
}

void Runner::Rollback() {
  if (sqlite3_get_autocommit(db_) == 0) vorek::sqlite::Run(db_, "ROLLBACK");
  transactions_ = 0;
  waits_to_write_ = false;
  schema_.Changed();
  schema_.TemporaryChanged();
  // A table variable would keep its rows on a server: better none than those of before.
  for (const Frame* frame = frame_; frame != nullptr; frame = frame->caller) {
    for (const std::string& name : frame->temporary_tables) {
      if (name.rfind("#@", 0) == 0) {
        vorek::sqlite::Run(db_, "DROP TABLE IF EXISTS temp." + QuoteName(name));
      }
    }
  }
}

void Runner::DropVariables(Frame& frame) {
  DropCursors(frame);
  for (const std::string& name : frame.temporary_tables) {
    if (name.rfind("#@", 0) != 0 || schema_.FindTable(name) == nullptr) continue;
    vorek::sqlite::Run(db_, "DROP TABLE temp." + QuoteName(name));
    schema_.TemporaryChanged();
  }
}

void Runner::RunTruncate(Statement& statement, Frame& frame) {
  Whole(statement.name.IsTemporary(), [&] {
    RunChange(Compile(statement, 0, frame, [&](Binder& b) { return b.Delete(statement); }), frame);
    Definer(db_, schema_, frame.source).RestartIdentity(statement.name);
  });
}

void Runner::RunSetting(const Statement& statement) {
  Session session = schema_.CurrentSession();
  if (statement.word == "xact_abort") session.ends_transactions = statement.variable == "on";
  if (statement.word == "quoted_identifier") session.quotes_names = statement.variable == "on";
  if (statement.word == "dateformat") session.date_format = statement.variable;
  schema_.SetSession(session);
}

void Runner::Tell(const std::string& message) const {
  if (options_.message) options_.message(message);
}

}  // namespace vorek::sqlite
