#include "adapters/sqlite/explain.h"

#include "adapters/sqlite/connection.h"
#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/parser.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

std::string Commented(const std::string& source) {
  std::string out = "-- ";
  for (const char c : source) out += c == '\n' ? std::string("\n-- ") : std::string(1, c);
  return out + "\n";
}

class Explainer {
 public:
  Explainer(Schema& schema, const Batch& batch)
      : schema_(schema), source_(batch.source, batch.first_line) {}

  void All(const std::vector<StatementPtr>& statements) {
    for (const StatementPtr& statement : statements) One(*statement);
  }

  std::string Take() { return std::move(out_); }

 private:
  void One(const Statement& statement) {
    Binder binder(schema_, types_, source_);
    switch (statement.kind) {
      case StatementKind::kSelect:
        return Write(binder.Select(*statement.query));
      case StatementKind::kInsert:
        if (!statement.body.empty()) break;
        return Write(binder.Insert(statement));
      case StatementKind::kUpdate:
        return Write(binder.Update(statement));
      case StatementKind::kDelete:
        return Write(binder.Delete(statement));
      case StatementKind::kDeclare:
        for (const Parameter& variable : statement.parameters) {
          types_[LowerWord(variable.name)] = {variable.type, ""};
        }
        return;
      case StatementKind::kIf:
      case StatementKind::kWhile:
        out_ += "-- if ";
        Write(binder.Condition(*statement.expr));
        return All(statement.body);
      case StatementKind::kBlock:
        return All(statement.body);
      case StatementKind::kSet:
        return Write(binder.UntypedValue(*statement.assignments[0].value));
      default:
        break;
    }
    // What the provider does by itself is shown as it was written.
    out_ += Commented(std::string(source_.text.substr(statement.at, statement.end - statement.at)));
  }

  void Write(const Translation& translation) {
    out_ += translation.sql + ";\n";
    for (std::size_t i = 0; i < translation.parameters.size(); ++i) {
      out_ += "--   ?" + std::to_string(i + 1) + " is " + translation.parameters[i] + "\n";
    }
    for (const OutputColumn& column : translation.columns) {
      out_ += "--   " + (column.name.empty() ? "(no name)" : column.name) + " " +
              TypeName(column.type) + ", ADO type " + std::to_string(AdoType(column.type)) + "\n";
    }
  }

  Schema& schema_;
  SourceText source_;
  Variables types_;
  std::string out_;
};

}  // namespace

std::string Connection::Explain(std::string_view text) {
  schema_->Refresh();
  const std::shared_ptr<Batch> batch = Parser(text).ParseBatch();
  Explainer explainer(*schema_, *batch);
  explainer.All(batch->statements);
  return explainer.Take();
}

std::string Connection::ExplainPlan(std::string_view text) {
  schema_->Refresh();
  const std::shared_ptr<Batch> batch = Parser(text).ParseBatch();
  Explainer explainer(*schema_, *batch);
  explainer.All(batch->statements);
  const std::string sql = explainer.Take();
  const PreparedPtr statement =
      Prepare(db_.get(), "EXPLAIN QUERY PLAN " + sql.substr(0, sql.find(";\n")));
  std::string plan;
  while (Step(db_.get(), statement.get())) plan += ColumnText(statement.get(), 3) + "\n";
  return plan;
}

namespace {

Connection& Ours(DatabaseConnection& connection) {
  auto* ours = dynamic_cast<Connection*>(&connection);
  if (ours != nullptr) return *ours;
  throw Error(ErrorNumber::kInvalidCall, "Only the embedded database translates its statements.");
}

}  // namespace

std::string Explain(DatabaseConnection& connection, std::string_view text) {
  return Ours(connection).Explain(text);
}

std::string ExplainPlan(DatabaseConnection& connection, std::string_view text) {
  return Ours(connection).ExplainPlan(text);
}

}  // namespace vorek::sqlite
