#include "adapters/sqlite/define.h"

#include <algorithm>
#include <utility>

#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/parser.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::sqlite {
namespace {

std::string NameListSql(const std::vector<std::string>& names) {
  std::string sql;
  for (const std::string& name : names) sql += (sql.empty() ? "" : ", ") + QuoteName(name);
  return "(" + sql + ")";
}

std::string SchemaOf(const TableInfo& table) { return table.temporary ? "temp." : "main."; }

}  // namespace

void Definer::Define(const Statement& statement) {
  switch (statement.kind) {
    case StatementKind::kCreateTable:
      return CreateTable(statement);
    case StatementKind::kCreateIndex:
      return CreateIndex(statement);
    case StatementKind::kCreateModule:
      return CreateModule(statement);
    case StatementKind::kAlterTable:
      return AlterTable(statement);
    case StatementKind::kDropTable:
      return DropTable(statement);
    case StatementKind::kDropIndex:
      return DropIndex(statement);
    case StatementKind::kDropModule:
      return DropModule(statement);
    default:
      Refuse(source_, statement.at, "This isn't a definition");
  }
}

const TableInfo& Definer::NeedTable(const ObjectName& name) const {
  const TableInfo* table = schema_.FindTable(name.Last());
  if (table == nullptr || table->is_view) {
    throw Error(ErrorNumber::kMissingObject, "Cannot find the object \"" + name.Last() + "\" (" +
                                                 PlaceOf(source_, name.at) + ").");
  }
  return *table;
}

void Definer::RefuseTaken(const ObjectName& name) const {
  if (IsInternalName(name.Last()) || name.Last().rfind("#vorek", 0) == 0) {
    Refuse(source_, name.at, "The name '" + name.Last() + "' is kept for the provider itself");
  }
  if (schema_.FindTable(name.Last()) != nullptr || schema_.FindModule(name.Last()) != nullptr) {
    Refuse(source_, name.at,
           "There is already an object named '" + name.Last() + "' in the database");
  }
}

const ColumnDefinition* Definer::RowKey(const Statement& statement) const {
  // SQLite has one column that is the row's own number: the identity, or a key of one whole number.
  for (const ColumnDefinition& column : statement.definitions) {
    if (column.identity) return &column;
  }
  for (const Constraint& constraint : statement.constraints) {
    if (constraint.kind != Constraint::Kind::kPrimaryKey || constraint.columns.size() != 1) {
      continue;
    }
    for (const ColumnDefinition& column : statement.definitions) {
      if (text::EqualsIgnoreCase(column.name, constraint.columns[0]) && column.type.IsWhole() &&
          column.type.kind != TypeKind::kBit && column.computed == nullptr) {
        return &column;
      }
    }
  }
  return nullptr;
}

TableInfo Definer::Shape(const Statement& statement) const {
  TableInfo table;
  table.name = statement.name.Last();
  table.temporary = statement.name.IsTemporary();
  for (const ColumnDefinition& definition : statement.definitions) {
    if (table.Find(definition.name) != nullptr) {
      Refuse(source_, definition.at,
             "Column names in each table must be unique: '" + definition.name + "'");
    }
    ColumnInfo column;
    column.name = definition.name;
    column.type = definition.type;
    column.nullable = definition.nullable;
    column.collated = true;
    table.columns.push_back(std::move(column));
  }
  return table;
}

std::string Definer::ColumnSql(const Statement& statement, const ColumnDefinition& column,
                               const TableInfo& table) const {
  std::string sql = QuoteName(column.name) + " ";
  if (column.computed != nullptr) {
    const Variables none;
    const Bound value = Binder(schema_, none, source_).ComputedColumn(*column.computed, table);
    return sql + Declaration(value.type) + " GENERATED ALWAYS AS (" + value.sql + ") VIRTUAL";
  }
  if (&column == RowKey(statement)) {
    return sql + "INTEGER PRIMARY KEY" + (column.identity ? " AUTOINCREMENT" : "");
  }
  sql += Declaration(column.type);
  const bool key =
      std::any_of(statement.constraints.begin(), statement.constraints.end(),
                  [&](const Constraint& constraint) {
                    return constraint.kind == Constraint::Kind::kPrimaryKey &&
                           std::any_of(constraint.columns.begin(), constraint.columns.end(),
                                       [&](const std::string& name) {
                                         return text::EqualsIgnoreCase(name, column.name);
                                       });
                  });
  if (!column.nullable || key) sql += " NOT NULL";
  return sql;
}

std::vector<std::string> Definer::ReferencedColumns(const Constraint& constraint,
                                                    const TableInfo& parent) const {
  if (!constraint.referenced.empty()) return constraint.referenced;
  std::vector<std::string> columns;
  const PreparedPtr statement =
      Prepare(db_, "SELECT name FROM pragma_table_info(?1) WHERE pk > 0 ORDER BY pk");
  BindText(statement.get(), 1, parent.name);
  while (Step(db_, statement.get())) columns.push_back(ColumnText(statement.get(), 0));
  return columns;
}

std::string Definer::ForeignKeySql(const Statement& statement, const Constraint& constraint) const {
  const bool self = text::EqualsIgnoreCase(constraint.references.Last(), statement.name.Last());
  if (!self) NeedTable(constraint.references);
  std::string sql = "FOREIGN KEY " + NameListSql(constraint.columns) + " REFERENCES " +
                    QuoteName(constraint.references.Last());
  if (!constraint.referenced.empty()) {
    sql += " " + NameListSql(constraint.referenced);
  } else if (!self) {
    sql += " " + NameListSql(ReferencedColumns(constraint, NeedTable(constraint.references)));
  }
  if (!constraint.on_delete.empty()) sql += " ON DELETE " + constraint.on_delete;
  if (!constraint.on_update.empty()) sql += " ON UPDATE " + constraint.on_update;
  return sql;
}

std::string Definer::ConstraintSql(const Statement& statement, const Constraint& constraint,
                                   const TableInfo& table) const {
  const auto name = [&] {
    return constraint.name.empty() ? "" : "CONSTRAINT " + QuoteName(constraint.name) + " ";
  };
  for (const std::string& column : constraint.columns) {
    if (table.Find(column) == nullptr) {
      Refuse(source_, constraint.at, "Invalid column name '" + column + "'");
    }
  }
  switch (constraint.kind) {
    case Constraint::Kind::kPrimaryKey: {
      const ColumnDefinition* row_key = RowKey(statement);
      const bool is_row_key = row_key != nullptr && constraint.columns.size() == 1 &&
                              text::EqualsIgnoreCase(row_key->name, constraint.columns[0]);
      if (is_row_key) return "";
      return name() + (row_key != nullptr ? "UNIQUE " : "PRIMARY KEY ") +
             NameListSql(constraint.columns);
    }
    case Constraint::Kind::kUnique:
      return name() + "UNIQUE " + NameListSql(constraint.columns);
    case Constraint::Kind::kForeignKey:
      return name() + ForeignKeySql(statement, constraint);
    case Constraint::Kind::kCheck: {
      const Variables none;
      return name() + "CHECK (" +
             Binder(schema_, none, source_).ConditionOn(*constraint.check, table) + ")";
    }
    case Constraint::Kind::kDefault:
      break;
  }
  Refuse(source_, constraint.at, "A default stands with its column");
}

void Definer::CreateTable(const Statement& statement) {
  RefuseTaken(statement.name);
  const TableInfo table = Shape(statement);
  if (table.columns.empty()) Refuse(source_, statement.at, "A table must have a column");
  std::string parts;
  int identities = 0;
  for (const ColumnDefinition& column : statement.definitions) {
    if (column.identity && (!column.type.IsExact() || column.type.scale != 0)) {
      Refuse(source_, column.at, "An identity column must be a whole number");
    }
    if (column.identity && ++identities > 1) {
      Refuse(source_, column.at, "A table can have one identity column only");
    }
    if (column.identity && column.increment < 1) {
      Refuse(source_, column.at, "An identity that doesn't grow is not supported");
    }
    parts += (parts.empty() ? "" : ", ") + ColumnSql(statement, column, table);
  }
  for (const Constraint& constraint : statement.constraints) {
    const std::string sql = ConstraintSql(statement, constraint, table);
    if (!sql.empty()) parts += ", " + sql;
  }
  if (!table.temporary) schema_.EnsureCatalogue();
  Run(db_, "CREATE TABLE " + SchemaOf(table) + QuoteName(table.name) + " (" + parts + ")");
  const ColumnDefinition* row_key = RowKey(statement);
  for (const ColumnDefinition& column : statement.definitions) {
    const bool is_row_key = &column == row_key;
    if (!is_row_key && column.default_value == nullptr) continue;
    if (column.default_value != nullptr) DefaultValue(*column.default_value, column.type);
    Remember(table, column.name, is_row_key ? TypeName(column.type) : "", column.identity,
             column.default_source, column.seed, column.increment);
    if (column.identity && (column.seed != 1 || column.increment != 1)) {
      SetLast(table, column.seed - column.increment);
    }
  }
  for (const Constraint& constraint : statement.constraints) {
    if (constraint.kind != Constraint::Kind::kUnique) continue;
    AddOneNull(table,
               constraint.name.empty() ? "key " + NameListSql(constraint.columns) : constraint.name,
               constraint.columns, "");
  }
  table.temporary ? schema_.TemporaryChanged() : schema_.Changed();
}

void Definer::CreateTable(const ObjectName& name, const std::vector<OutputColumn>& columns) {
  RefuseTaken(name);
  std::string parts;
  for (const OutputColumn& column : columns) {
    Type type = column.type.IsNull() ? Make(TypeKind::kInt) : column.type;
    if (type.IsText() && type.length == 0) type.length = 1;
    parts += (parts.empty() ? "" : ", ") + QuoteName(column.name) + " " + Declaration(type);
  }
  if (!name.IsTemporary()) schema_.EnsureCatalogue();
  Run(db_, std::string("CREATE TABLE ") + (name.IsTemporary() ? "temp." : "main.") +
               QuoteName(name.Last()) + " (" + parts + ")");
  name.IsTemporary() ? schema_.TemporaryChanged() : schema_.Changed();
}

void Definer::SetLast(const TableInfo& table, long long last) {
  const std::string sequence = SchemaOf(table) + "sqlite_sequence";
  const PreparedPtr erase = Prepare(db_, "DELETE FROM " + sequence + " WHERE name = ?1");
  BindText(erase.get(), 1, table.name);
  Step(db_, erase.get());
  const PreparedPtr statement =
      Prepare(db_, "INSERT INTO " + sequence + " (name, seq) VALUES (?1, ?2)");
  BindText(statement.get(), 1, table.name);
  sqlite3_bind_int64(statement.get(), 2, last);
  Step(db_, statement.get());
}

void Definer::RestartIdentity(const ObjectName& name) {
  const TableInfo& table = NeedTable(name);
  for (const ColumnInfo& column : table.columns) {
    if (column.identity) SetLast(table, column.seed - column.step);
  }
}

void Definer::AddOneNull(const TableInfo& table, const std::string& index,
                         const std::vector<std::string>& columns, const std::string& condition) {
  std::string keys;
  std::string nulls;
  for (const std::string& name : columns) {
    const ColumnInfo& column = *table.Find(name);
    const std::string sql = QuoteName(column.name);
    if (!column.nullable) {
      keys += ", " + sql;
      continue;
    }
    keys += ", " + sql + " IS NULL, ifnull(" + sql + ", 0)" +
            (column.type.IsText() ? " COLLATE VOREK" : "");
    nulls += (nulls.empty() ? "" : " OR ") + sql + " IS NULL";
  }
  if (nulls.empty()) return;
  if (!condition.empty()) nulls = "(" + condition + ") AND (" + nulls + ")";
  Run(db_, "CREATE UNIQUE INDEX " + SchemaOf(table) +
               QuoteName(table.name + "." + index + ".one null") + " ON " + QuoteName(table.name) +
               " (" + keys.substr(2) + ") WHERE " + nulls);
}

void Definer::Remember(const TableInfo& table, const std::string& column, const std::string& type,
                       bool identity, const std::string& default_source, long long seed,
                       long long step) {
  if (table.temporary) {
    Run(db_,
        "CREATE TEMP TABLE IF NOT EXISTS vorek_columns (table_name TEXT NOT NULL COLLATE "
        "NOCASE, column_name TEXT NOT NULL COLLATE NOCASE, type TEXT, identity INTEGER, "
        "default_source TEXT, seed INTEGER, step INTEGER, PRIMARY KEY (table_name, column_name))");
  }
  const PreparedPtr statement =
      Prepare(db_, "INSERT OR REPLACE INTO " + SchemaOf(table) +
                       "vorek_columns (table_name, column_name, type, identity, default_source, "
                       "seed, step) VALUES (?1, ?2, nullif(?3, ''), ?4, nullif(?5, ''), ?6, ?7)");
  BindText(statement.get(), 1, table.name);
  BindText(statement.get(), 2, column);
  BindText(statement.get(), 3, type);
  sqlite3_bind_int(statement.get(), 4, identity ? 1 : 0);
  BindText(statement.get(), 5, default_source);
  sqlite3_bind_int64(statement.get(), 6, seed);
  sqlite3_bind_int64(statement.get(), 7, step);
  Step(db_, statement.get());
}

void Definer::Forget(const TableInfo& table, const std::string& column) {
  const char* schema = table.temporary ? "temp" : "main";
  if (sqlite3_table_column_metadata(db_, schema, "vorek_columns", nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr) != SQLITE_OK) {
    return;
  }
  const PreparedPtr statement =
      Prepare(db_, "DELETE FROM " + SchemaOf(table) +
                       "vorek_columns WHERE table_name = ?1 AND ?2 IN ('', column_name)");
  BindText(statement.get(), 1, table.name);
  BindText(statement.get(), 2, column);
  Step(db_, statement.get());
}

std::string Definer::DefaultValue(const Expr& expr, const Type& type) const {
  // Bound for its errors, and for a value that can stand in SQLite's own definition.
  const Variables none;
  return Binder(schema_, none, source_).Value(expr, type).sql;
}

void Definer::CreateIndex(const Statement& statement) {
  const TableInfo& table = NeedTable(statement.on);
  std::string columns;
  for (std::size_t i = 0; i < statement.columns.size(); ++i) {
    if (table.Find(statement.columns[i]) == nullptr) {
      Refuse(source_, statement.at, "Invalid column name '" + statement.columns[i] + "'");
    }
    columns += (columns.empty() ? "" : ", ") + QuoteName(statement.columns[i]);
    if (statement.descending[i]) columns += " DESC";
  }
  std::string condition;
  std::string sql = statement.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
  // Names of indexes are the table's own in the dialect, the database's in SQLite.
  sql += SchemaOf(table) + QuoteName(table.name + "." + statement.name.Last()) + " ON " +
         QuoteName(table.name) + " (" + columns + ")";
  if (statement.expr != nullptr) {
    const Variables none;
    condition = Binder(schema_, none, source_).ConditionOn(*statement.expr, table);
    sql += " WHERE " + condition;
  }
  Run(db_, sql);
  if (statement.unique) AddOneNull(table, statement.name.Last(), statement.columns, condition);
}

void Definer::CreateModule(const Statement& statement) {
  const ModuleInfo* old = schema_.FindModule(statement.name.Last());
  const bool replaces = statement.alter || (statement.or_alter && old != nullptr);
  if (!replaces) RefuseTaken(statement.name);
  if (replaces && (old == nullptr || old->kind != statement.word)) {
    throw Error(ErrorNumber::kMissingObject, "Invalid object name '" + statement.name.Last() +
                                                 "' (" + PlaceOf(source_, statement.name.at) +
                                                 ").");
  }
  if (statement.word == "V") {
    const Variables none;
    Binder(schema_, none, source_).Describe(*statement.query, statement.view_columns);
  } else if (statement.word == "IF") {
    Variables parameters;
    for (const auto& parameter : statement.parameters) {
      parameters[LowerWord(parameter.name)] = {parameter.type, ""};
    }
    Binder(schema_, parameters, source_).Describe(*statement.query, {});
  }
  schema_.EnsureCatalogue();
  const PreparedPtr insert = Prepare(
      db_, "INSERT OR REPLACE INTO main.vorek_objects (name, kind, source) VALUES (?1, ?2, ?3)");
  BindText(insert.get(), 1, statement.name.Last());
  BindText(insert.get(), 2, statement.word);
  BindText(insert.get(), 3, statement.columns.front());
  Step(db_, insert.get());
  TellOthers();
}

void Definer::TellOthers() {
  // Other connections see a change by the version of SQLite's schema, which a row doesn't change.
  Run(db_, "CREATE TABLE main.\"vorek changed\" (x)");
  Run(db_, "DROP TABLE main.\"vorek changed\"");
  schema_.Changed();
}

void Definer::DropTable(const Statement& statement) {
  std::vector<std::string> names = {statement.name.Last()};
  names.insert(names.end(), statement.columns.begin(), statement.columns.end());
  for (const std::string& name : names) {
    const TableInfo* found = schema_.FindTable(name);
    if (found == nullptr && statement.if_exists) continue;
    if (found == nullptr || found->is_view) {
      throw Error(ErrorNumber::kMissingObject, "Cannot drop the table '" + name +
                                                   "', because it does not exist (" +
                                                   PlaceOf(source_, statement.name.at) + ").");
    }
    const TableInfo table = *found;
    Run(db_, "DROP TABLE " + SchemaOf(table) + QuoteName(table.name));
    Forget(table);
    table.temporary ? schema_.TemporaryChanged() : schema_.Changed();
  }
}

void Definer::DropIndex(const Statement& statement) {
  // DROP INDEX table.index, DROP INDEX index ON table
  const bool dotted = statement.on.Empty() && statement.name.parts.size() > 1;
  ObjectName name = statement.on;
  if (dotted) name.parts = {statement.name.parts[statement.name.parts.size() - 2]};
  if (name.Empty()) Refuse(source_, statement.at, "DROP INDEX must name the table as well");
  const TableInfo& table = NeedTable(name);
  const std::string index = table.name + "." + statement.name.Last();
  Run(db_, std::string("DROP INDEX ") + (statement.if_exists ? "IF EXISTS " : "") +
               SchemaOf(table) + QuoteName(index));
  Run(db_, "DROP INDEX IF EXISTS " + SchemaOf(table) + QuoteName(index + ".one null"));
}

void Definer::DropModule(const Statement& statement) {
  std::vector<std::string> names = {statement.name.Last()};
  names.insert(names.end(), statement.columns.begin(), statement.columns.end());
  for (const std::string& name : names) {
    const ModuleInfo* module = schema_.FindModule(name);
    const bool function = statement.word == "FN" && module != nullptr &&
                          (module->kind == "IF" || module->kind == "TF");
    if (module == nullptr || (module->kind != statement.word && !function)) {
      if (statement.if_exists) continue;
      throw Error(ErrorNumber::kMissingObject, "Cannot drop '" + name +
                                                   "', because it does not exist (" +
                                                   PlaceOf(source_, statement.name.at) + ").");
    }
    const PreparedPtr erase = Prepare(db_, "DELETE FROM main.vorek_objects WHERE name = ?1");
    BindText(erase.get(), 1, module->name);
    Step(db_, erase.get());
    TellOthers();
  }
}

}  // namespace vorek::sqlite
