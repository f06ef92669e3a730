#include <memory>
#include <utility>

#include "adapters/sqlite/moment.h"
#include "adapters/sqlite/only_reads.h"
#include "adapters/sqlite/reader.h"
#include "adapters/sqlite/runner.h"
#include "platform/result_limit.h"
#include "vorek/error.h"

namespace vorek::sqlite {

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

}  // namespace vorek::sqlite
