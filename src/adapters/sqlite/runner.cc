#include "adapters/sqlite/runner.h"

#include <algorithm>
#include <utility>

#include "adapters/sqlite/only_reads.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

std::string TextOfCell(const Cell& cell) {
  if (const auto* text = std::get_if<std::string>(&cell)) return *text;
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) return std::to_string(*whole);
  return "";
}

}  // namespace

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
