#include <algorithm>

#include "adapters/sqlite/define.h"
#include "adapters/sqlite/handle.h"
#include "text/utf8.h"
#include "vorek/error.h"

// ALTER TABLE.
namespace vorek::sqlite {

void Definer::AlterTable(const Statement& statement) {
  const TableInfo table = NeedTable(statement.name);
  if (statement.word.rfind("drop", 0) == 0) {
    DropParts(table, statement);
  } else {
    for (const ColumnDefinition& column : statement.definitions) {
      AddColumn(table, column, statement.word == "with values");
    }
    for (const Constraint& constraint : statement.constraints) {
      AddConstraint(NeedTable(statement.name), constraint, statement.alter);
    }
  }
  table.temporary ? schema_.TemporaryChanged() : schema_.Changed();
}

void Definer::AddColumn(const TableInfo& table, const ColumnDefinition& column, bool with_values) {
  if (column.identity || column.computed != nullptr) {
    Refuse(source_, column.at, "An identity or computed column can't be added to a table");
  }
  if (table.Find(column.name) != nullptr) {
    Refuse(source_, column.at, "Column names in each table must be unique: '" + column.name + "'");
  }
  std::string sql = std::string("ALTER TABLE ") + (table.temporary ? "temp." : "main.") +
                    QuoteName(table.name) + " ADD COLUMN " + QuoteName(column.name) + " " +
                    Declaration(column.type);
  if (column.default_value != nullptr && (!column.nullable || with_values)) {
    // The rows that are there take the default's value of now.
    const Variables none;
    const Translation value =
        Binder(schema_, none, source_).Value(*column.default_value, column.type);
    if (!value.parameters.empty()) {
      Refuse(source_, column.at, "A default of a new column can't depend on the time");
    }
    const PreparedPtr literal = Prepare(db_, "SELECT quote((" + value.sql + "))");
    Step(db_, literal.get());
    sql += " DEFAULT " + ColumnText(literal.get(), 0);
  }
  if (!column.nullable) sql += " NOT NULL";
  Run(db_, sql);
  schema_.EnsureCatalogue();
  if (column.default_value != nullptr) {
    Remember(table, column.name, "", false, column.default_source);
  }
  table.temporary ? schema_.TemporaryChanged() : schema_.Changed();
}

void Definer::AddConstraint(const TableInfo& table, const Constraint& constraint, bool unchecked) {
  const TableInfo copy = table;
  for (const std::string& name : constraint.columns) {
    if (copy.Find(name) == nullptr) {
      Refuse(source_, constraint.at, "Invalid column name '" + name + "'");
    }
  }
  switch (constraint.kind) {
    case Constraint::Kind::kForeignKey:
      return AddForeignKey(copy, constraint, unchecked);
    case Constraint::Kind::kCheck:
      return AddCheck(copy, constraint, unchecked);
    case Constraint::Kind::kDefault: {
      const ColumnInfo& column = *copy.Find(constraint.columns[0]);
      DefaultValue(*constraint.check, column.type);
      schema_.EnsureCatalogue();
      Remember(copy, column.name, column.row_key ? TypeName(column.type) : "", column.identity,
               constraint.source);
      return;
    }
    default:
      break;
  }
  std::string columns;
  for (const std::string& name : constraint.columns) {
    columns += (columns.empty() ? "" : ", ") + QuoteName(name);
  }
  const std::string name = constraint.name.empty() ? "key " + columns : constraint.name;
  Run(db_, std::string("CREATE UNIQUE INDEX ") + (copy.temporary ? "temp." : "main.") +
               QuoteName(copy.name + "." + name) + " ON " + QuoteName(copy.name) + " (" + columns +
               ")");
  if (constraint.kind != Constraint::Kind::kPrimaryKey) {
    return AddOneNull(copy, name, constraint.columns, "");
  }
  for (const std::string& column : constraint.columns) {
    if (!copy.Find(column)->nullable) continue;
    Refuse(source_, constraint.at,
           "Cannot define a PRIMARY KEY on the nullable column '" + column + "'");
  }
}

namespace {

// Triggers that stand for a constraint which SQLite can only take when it makes the table.
std::string TriggerSql(const TableInfo& table, const std::string& name, const std::string& event,
                       const std::string& condition, const std::string& message) {
  return "CREATE TRIGGER main." + QuoteName(table.name + "." + name + "." + event) + " BEFORE " +
         event + " ON " + QuoteName(table.name) + " WHEN " + condition +
         " BEGIN SELECT RAISE(ABORT, " + QuoteText(message) + "); END";
}

}  // namespace

namespace {

// The two sides of a foreign key, and the conditions that its triggers go by.
struct Link {
  std::string child;
  std::string parent;
  std::vector<std::string> columns;  // of the child
  std::vector<std::string> keys;     // of the parent

  // "p.key = NEW.column AND ..."
  std::string Pairs(const std::string& of_child, const std::string& of_parent) const {
    return Each(" AND ", [&](std::size_t i) {
      return of_parent + QuoteName(keys[i]) + " = " + of_child + QuoteName(columns[i]);
    });
  }
  // No row of the parent has the key that a row of the child names.
  std::string Orphan(const std::string& row) const {
    return Each(" AND ",
                [&](std::size_t i) { return row + QuoteName(columns[i]) + " IS NOT NULL"; }) +
           " AND NOT EXISTS (SELECT 1 FROM " + QuoteName(parent) + " AS p WHERE " +
           Pairs(row, "p.") + ")";
  }
  std::string Used() const {
    return "EXISTS (SELECT 1 FROM " + QuoteName(child) + " AS c WHERE " + Pairs("c.", "OLD.") + ")";
  }
  std::string KeyChanged() const {
    return "(" +
           Each(" OR ",
                [&](std::size_t i) {
                  return "OLD." + QuoteName(keys[i]) + " IS NOT NEW." + QuoteName(keys[i]);
                }) +
           ")";
  }
  // The rows of the child that name the old key take the new one, or NULL.
  std::string Follow(bool null) const {
    return "UPDATE " + QuoteName(child) + " SET " +
           Each(", ",
                [&](std::size_t i) {
                  return QuoteName(columns[i]) + " = " +
                         (null ? "NULL" : "NEW." + QuoteName(keys[i]));
                }) +
           " WHERE " + Pairs("", "OLD.");
  }

  template <typename Text>
  std::string Each(const std::string& between, Text&& text) const {
    std::string sql;
    for (std::size_t i = 0; i < keys.size(); ++i) sql += (i == 0 ? "" : between) + text(i);
    return sql;
  }
};

}  // namespace

void Definer::AddForeignKey(const TableInfo& table, const Constraint& constraint, bool unchecked) {
  if (table.temporary) return;  // a server keeps none on temporary tables either
  const TableInfo parent = NeedTable(constraint.references);
  const Link link{table.name, parent.name, constraint.columns,
                  ReferencedColumns(constraint, parent)};
  if (link.keys.size() != link.columns.size()) {
    Refuse(source_, constraint.at, "The foreign key and what it refers to differ in their columns");
  }
  const std::string name = constraint.name.empty() ? "fk " + parent.name : constraint.name;
  const std::string message =
      "The statement conflicted with the FOREIGN KEY constraint \"" + name + "\"";
  if (!unchecked) {
    const PreparedPtr check =
        Prepare(db_, "SELECT 1 FROM " + QuoteName(table.name) + " AS c WHERE " + link.Orphan("c."));
    if (Step(db_, check.get())) Refuse(source_, constraint.at, message);
  }
  const std::string of_parent = name + " of " + table.name;
  const auto follow = [&](const char* event, const std::string& when, const std::string& action) {
    Run(db_, "CREATE TRIGGER main." + QuoteName(parent.name + "." + of_parent + "." + event) +
                 " AFTER " + event + " ON " + QuoteName(parent.name) + when + " BEGIN " + action +
                 "; END");
  };
  Run(db_, TriggerSql(table, name, "INSERT", link.Orphan("NEW."), message + "."));
  Run(db_, TriggerSql(table, name, "UPDATE", link.Orphan("NEW."), message + "."));
  if (constraint.on_delete == "SET DEFAULT" || constraint.on_update == "SET DEFAULT") {
    Refuse(source_, constraint.at, "SET DEFAULT of an added foreign key is not supported");
  }
  if (constraint.on_delete == "CASCADE") {
    follow("DELETE", "",
           "DELETE FROM " + QuoteName(table.name) + " WHERE " + link.Pairs("", "OLD."));
  } else if (constraint.on_delete == "SET NULL") {
    follow("DELETE", "", link.Follow(true));
  } else {
    Run(db_, TriggerSql(parent, of_parent, "DELETE", link.Used(), message + "."));
  }
  if (!constraint.on_update.empty()) {
    follow("UPDATE", " WHEN " + link.KeyChanged(), link.Follow(constraint.on_update == "SET NULL"));
  } else {
    Run(db_, TriggerSql(parent, of_parent, "UPDATE", link.KeyChanged() + " AND " + link.Used(),
                        message + "."));
  }
}

void Definer::AddCheck(const TableInfo& table, const Constraint& constraint, bool unchecked) {
  const Variables none;
  const std::string condition =
      Binder(schema_, none, source_).ConditionOn(*constraint.check, table);
  const std::string name = constraint.name.empty() ? "check" : constraint.name;
  const std::string message =
      "The statement conflicted with the CHECK constraint \"" + name + "\".";
  const std::string row = QuoteName(table.name);
  if (!unchecked) {
    const PreparedPtr check =
        Prepare(db_, "SELECT 1 FROM " + row + " WHERE NOT (" + condition + ")");
    if (Step(db_, check.get()))
      Refuse(source_, constraint.at, message.substr(0, message.size() - 1));
  }
  // Checked behind the change, on the row as it stands then.
  for (const char* event : {"INSERT", "UPDATE"}) {
    Run(db_, std::string("CREATE TRIGGER ") + (table.temporary ? "temp." : "main.") +
                 QuoteName(table.name + "." + name + "." + event) + " AFTER " + event + " ON " +
                 row + " WHEN EXISTS (SELECT 1 FROM " + row + " WHERE rowid = NEW.rowid AND NOT (" +
                 condition + ")) BEGIN SELECT RAISE(ABORT, " + QuoteText(message) + "); END");
  }
}

void Definer::DropParts(const TableInfo& table, const Statement& statement) {
  const std::string schema = table.temporary ? "temp." : "main.";
  for (const std::string& name : statement.columns) {
    if (statement.word == "drop column") {
      Run(db_, "ALTER TABLE " + schema + QuoteName(table.name) + " DROP COLUMN " + QuoteName(name));
      Forget(table, name);
      continue;
    }
    const std::string index = QuoteName(table.name + "." + name);
    const PreparedPtr find =
        Prepare(db_,
                "SELECT type, name FROM main.sqlite_schema WHERE name COLLATE NOCASE IN (?1, ?1 || "
                "'.one null') OR "
                "(type = 'trigger' AND (name LIKE ?1 || '.%' OR name LIKE '%.' || ?2 || ' of "
                "' || ?3 || '.%'))");
    BindText(find.get(), 1, table.name + "." + name);
    BindText(find.get(), 2, name);
    BindText(find.get(), 3, table.name);
    std::vector<std::string> drops;
    while (Step(db_, find.get())) {
      drops.push_back("DROP " + ColumnText(find.get(), 0) + " main." +
                      QuoteName(ColumnText(find.get(), 1)));
    }
    if (drops.empty()) {
      Refuse(source_, statement.at,
             "The constraint '" + name +
                 "' can't be dropped: it was made with the table, or is "
                 "a default");
    }
    for (const std::string& drop : drops) Run(db_, drop);
  }
}

}  // namespace vorek::sqlite
