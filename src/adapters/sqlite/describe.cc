#include "adapters/sqlite/describe.h"

#include <algorithm>
#include <string>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/reader.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

class Describer {
 public:
  Describer(sqlite3* db, Schema& schema, const Batch& batch)
      : db_(db), schema_(schema), source_(batch.source, batch.first_line) {}

  // False at a statement that the look can't go beyond.
  bool All(const std::vector<StatementPtr>& statements) {
    return std::all_of(statements.begin(), statements.end(),
                       [this](const StatementPtr& statement) { return One(*statement); });
  }

  ResultSetPtr Columns() const { return columns_; }

 private:
  bool One(const Statement& statement) {
    Binder binder(schema_, types_, source_);
    switch (statement.kind) {
      case StatementKind::kSelect:
        return Query(statement, binder);
      case StatementKind::kInsert:
        return statement.body.empty() ? Take(binder.Insert(statement)) : All(statement.body);
      case StatementKind::kUpdate:
        return Take(binder.Update(statement));
      case StatementKind::kDelete:
        return Take(binder.Delete(statement));
      case StatementKind::kDeclare:
        return Declare(statement);
      case StatementKind::kSet:
        return Take(binder.UntypedValue(*statement.assignments[0].value));
      case StatementKind::kIf:
      case StatementKind::kWhile:
        return Take(binder.Condition(*statement.expr)) && All(statement.body);
      case StatementKind::kBlock:
        return All(statement.body);
      case StatementKind::kExecute:
        return Call(statement);
      case StatementKind::kPrint:
      case StatementKind::kSetting:
      case StatementKind::kNote:
      case StatementKind::kNothing:
        return true;
      default:
        return false;
    }
  }

  bool Query(const Statement& statement, Binder& binder) {
    const auto& branches = statement.query->branches;
    const bool makes_table = branches[0].select != nullptr && !branches[0].select->into.Empty();
    if (makes_table) return false;
    const Translation translation = binder.Select(*statement.query);
    const PreparedPtr prepared = Prepared(translation);
    const bool rows = translation.assigned.empty() && !translation.assigns;
    if (columns_ == nullptr && rows) columns_ = WithoutRows(translation.columns);
    return true;
  }

  bool Take(const Translation& translation) {
    Prepared(translation);
    return true;
  }

  // The tables of functions are made by the run.
  PreparedPtr Prepared(const Translation& translation) {
    return translation.filled.empty() ? Prepare(db_, translation.sql) : nullptr;
  }

  ResultSetPtr WithoutRows(const std::vector<OutputColumn>& columns) {
    const PreparedPtr none = Prepare(db_, "SELECT 1 WHERE 0");
    return ReadRows(db_, none.get(), columns, [](const ResultSet&) {});
  }

  bool Declare(const Statement& statement) {
    for (const Parameter& variable : statement.parameters) {
      types_[LowerWord(variable.name)] = {variable.type, ""};
    }
    return statement.body.empty();  // of a table variable
  }

  bool Call(const Statement& call) {
    const ModuleInfo* const module = schema_.FindModule(call.name.Last());
    const bool known = module != nullptr && module->kind == "P";
    if (known) {
      CheckArguments(call, module->Definition());
    } else if (module != nullptr || LowerWord(call.name.Last()).rfind("sp_", 0) != 0) {
      throw Error(ErrorNumber::kMissingObject, "Could not find stored procedure '" +
                                                   call.name.Last() + "' (" +
                                                   PlaceOf(source_, call.at) + ").");
    }
    return false;  // what it does to the database isn't known
  }

  // Those that are needed are there, and no more than are taken.
  void CheckArguments(const Statement& call, const Statement& definition) const {
    const auto given = [&](std::size_t index) {
      const auto named = [&](const Argument& argument) {
        return SameWord(argument.name, definition.parameters[index].name);
      };
      const bool by_place = index < call.arguments.size() && call.arguments[index].name.empty();
      return by_place || std::any_of(call.arguments.begin(), call.arguments.end(), named);
    };
    const std::string& name = definition.name.Last();
    if (call.arguments.size() > definition.parameters.size()) {
      Refuse(source_, call.at, "The procedure '" + name + "' has too many arguments specified");
    }
    for (std::size_t i = 0; i < definition.parameters.size(); ++i) {
      if (definition.parameters[i].default_value != nullptr || given(i)) continue;
      Refuse(source_, call.at,
             "Procedure or function '" + name + "' expects parameter '" +
                 definition.parameters[i].name + "', which was not supplied");
    }
  }

  sqlite3* db_;
  Schema& schema_;
  SourceText source_;
  Variables types_;
  ResultSetPtr columns_;
};

}  // namespace

ResultSetPtr Describe(sqlite3* db, Schema& schema, const Batch& batch) {
  Describer describer(db, schema, batch);
  describer.All(batch.statements);
  return describer.Columns();
}

}  // namespace vorek::sqlite
