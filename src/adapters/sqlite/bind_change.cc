#include <algorithm>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/parser.h"
#include "text/utf8.h"
#include "vorek/error.h"

// INSERT, UPDATE and DELETE.
namespace vorek::sqlite {
namespace {

constexpr long kNullViolation = -2147217873;  // 80040E2F

const CommonTable* CommonOf(const Statement& statement, const ObjectName& name) {
  const auto found = std::find_if(
      statement.with.begin(), statement.with.end(),
      [&](const CommonTable& table) { return text::EqualsIgnoreCase(table.name, name.Last()); });
  return name.parts.size() != 1 || found == statement.with.end() ? nullptr : &*found;
}

}  // namespace

const TableInfo& Binder::TargetTable(const ObjectName& name) {
  const TableInfo* table = schema_.FindTable(TableOf(name));
  const ModuleInfo* view = schema_.FindModule(name.Last());
  if (view != nullptr && view->kind == "V") {
    Refuse(name.at, "A change through the view '" + view->name + "' is not supported");
  }
  if (table == nullptr) MissingObject(name);
  if (table->is_view) {
    Refuse(name.at, "A change through the view '" + table->name + "' is not supported");
  }
  temporary_ = temporary_ || table->temporary;
  return *table;
}

Bound Binder::Assigned(Bound value, const ColumnInfo& column, std::size_t at) {
  if (column.computed) {
    Refuse(at, "The column \"" + column.name + "\" cannot be modified because it is computed");
  }
  if (column.row_key && !column.identity && value.nullable) {
    value = Convert(std::move(value), column.type, Mode::kAssign, at);
    return CallOf("vk_key", {value.sql, QuoteText(column.name)}, column.type);
  }
  return Convert(std::move(value), column.type, Mode::kAssign, at);
}

std::string Binder::RowIdOf(const TableInfo& table) const {
  for (const char* name : {"rowid", "_rowid_", "oid"}) {
    const ColumnInfo* column = table.Find(name);
    if (column == nullptr) return name;
  }
  throw Error(ErrorNumber::kSyntax, "The table '" + table.name + "' has no row number to go by.");
}

std::vector<const ColumnInfo*> Binder::InsertColumns(const Statement& statement,
                                                     const TableInfo& table) {
  std::vector<const ColumnInfo*> columns;
  for (const std::string& name : statement.columns) {
    const ColumnInfo* column = table.Find(name);
    if (column == nullptr) Refuse(statement.name.at, "Invalid column name '" + name + "'");
    if (std::find(columns.begin(), columns.end(), column) != columns.end()) {
      Refuse(statement.name.at, "The column name '" + name + "' is specified more than once");
    }
    columns.push_back(column);
  }
  if (!statement.columns.empty() || (statement.query == nullptr && statement.body.empty())) {
    return columns;
  }
  for (const ColumnInfo& column : table.columns) {
    if (!column.identity && !column.computed) columns.push_back(&column);
  }
  return columns;
}

std::string Binder::NextIdentity(const TableInfo& table, const ColumnInfo& column) {
  // SQLite counts by 1; the last number stands still until the whole statement is done.
  const std::string sql = std::string("(SELECT seq FROM ") + (table.temporary ? "temp" : "main") +
                          ".sqlite_sequence WHERE name = " + QuoteText(table.name) + ") + " +
                          std::to_string(column.step) + " * row_number() OVER ()";
  return Convert(MakeBound(sql, Make(TypeKind::kBigInt), kAdditive), column.type, Mode::kAssign, 0)
      .sql;
}

void Binder::AddDefaults(const TableInfo& table, std::vector<const ColumnInfo*>& columns,
                         std::vector<std::string>& defaults) {
  for (const ColumnInfo& column : table.columns) {
    if (column.computed || std::find(columns.begin(), columns.end(), &column) != columns.end()) {
      continue;
    }
    if (column.CountsApart()) {
      defaults.push_back(NextIdentity(table, column));
      columns.push_back(&column);
      continue;
    }
    if (column.row_key && !column.identity && column.default_source.empty()) {
      throw Error(kNullViolation, "Cannot insert the value NULL into column '" + column.name +
                                      "'; column does not allow nulls.");
    }
    if (column.default_source.empty()) continue;
    Parser parser(column.default_source);
    const ExprPtr expr = parser.ParseWholeExpression();
    defaults.push_back(Assigned(BindValue(*expr), column, 0).sql);
    columns.push_back(&column);
  }
}

std::string Binder::RowsInto(const std::vector<const ColumnInfo*>& columns,
                             const std::vector<std::string>& defaults, const Query* rows) {
  const std::size_t given = columns.size() - defaults.size();
  std::string tail;
  for (const std::string& value : defaults) tail += ", " + value;
  const vorek::sqlite::Select* values =
      rows != nullptr && rows->branches.size() == 1 ? rows->branches[0].select.get() : nullptr;
  if (values == nullptr || values->values.empty()) {
    Targets targets;
    for (std::size_t i = 0; i < given; ++i) {
      if (columns[i]->computed) Assigned(Bound{}, *columns[i], 0);
      targets.push_back({columns[i]->type, columns[i]->name});
    }
    const BoundQuery query = BindQuery(*rows, &targets);
    return tail.empty() ? query.sql : "SELECT *" + tail + " FROM (" + query.sql + ")";
  }
  // A number that goes on from row to row is counted over all of them.
  const bool counts =
      std::any_of(columns.begin() + static_cast<std::ptrdiff_t>(given), columns.end(),
                  [](const auto* column) { return column->CountsApart(); });
  std::string sql = "VALUES ";
  for (const std::vector<ExprPtr>& row : values->values) {
    if (row.size() != given) {
      Refuse(values->at, "The number of values (" + std::to_string(row.size()) +
                             ") doesn't match the number of columns (" + std::to_string(given) +
                             ")");
    }
    sql += sql.back() == ')' ? ", (" : "(";
    for (std::size_t i = 0; i < given; ++i) {
      if (i > 0) sql += ", ";
      if (row[i] != nullptr) {
        sql += Assigned(BindValue(*row[i]), *columns[i], row[i]->at).sql;
      } else if (columns[i]->default_source.empty()) {
        sql += "NULL";
      } else {
        Parser parser(columns[i]->default_source);
        sql += Assigned(BindValue(*parser.ParseWholeExpression()), *columns[i], 0).sql;
      }
    }
    sql += (counts ? "" : tail) + ")";
  }
  return counts ? "SELECT *" + tail + " FROM (" + sql + ")" : sql;
}

Translation Binder::Insert(const Statement& statement) {
  Scope scope;
  const ScopeGuard guard(*this, scope);
  const TableInfo& table = TargetTable(statement.name);
  std::vector<const ColumnInfo*> columns = InsertColumns(statement, table);
  std::vector<std::string> defaults;
  AddDefaults(table, columns, defaults);
  BoundQuery result;
  result.sql = BindWith(statement.with) + "INSERT INTO " + (table.temporary ? "temp." : "main.") +
               QuoteName(table.name);
  if (columns.empty()) {
    result.sql += " DEFAULT VALUES";
    return Finish(std::move(result));
  }
  std::string names;
  for (const ColumnInfo* column : columns) {
    names += (names.empty() ? "" : ", ") + QuoteName(column->name);
  }
  result.sql += " (" + names + ") ";
  if (statement.query == nullptr) {
    std::string values;
    for (const std::string& value : defaults) values += (values.empty() ? "" : ", ") + value;
    result.sql += "SELECT " + values;
  } else {
    result.sql += RowsInto(columns, defaults, statement.query.get());
  }
  return Finish(std::move(result));
}

Translation Binder::InsertInto(const Query& query, const std::string& table) {
  const TableInfo* info = schema_.FindTable(table);
  BoundQuery result = BindQuery(query);
  result.sql = "INSERT INTO " + std::string(info->temporary ? "temp." : "main.") +
               QuoteName(info->name) + " " + result.sql;
  result.columns.clear();
  temporary_ = temporary_ || info->temporary;
  return Finish(std::move(result));
}

const TableRef* Binder::FindTarget(const std::vector<TableRef>& from,
                                   const ObjectName& name) const {
  // The target of "UPDATE x ... FROM" is the table of that alias, or else of that name.
  std::vector<const TableRef*> open;
  for (const TableRef& table : from) open.push_back(&table);
  const TableRef* by_name = nullptr;
  for (std::size_t i = 0; i < open.size(); ++i) {
    const TableRef& table = *open[i];
    if (table.kind == TableRef::Kind::kJoin) {
      open.push_back(table.left.get());
      open.push_back(table.right.get());
    } else if (table.kind == TableRef::Kind::kTable) {
      if (text::EqualsIgnoreCase(table.alias, name.Last())) return &table;
      if (text::EqualsIgnoreCase(table.name.Last(), name.Last())) by_name = &table;
    }
  }
  return by_name;
}

std::string Binder::SetList(const Statement& statement, const TableInfo& table, bool inner,
                            std::string& names, std::string& values) {
  std::string sql;
  std::size_t number = 0;
  for (const Assignment& assignment : statement.assignments) {
    if (!assignment.variable.empty()) {
      Refuse(assignment.at, "An UPDATE that assigns to a variable is not supported");
    }
    const ColumnInfo* column = table.Find(assignment.path.back());
    if (column == nullptr) {
      Refuse(assignment.at, "Invalid column name '" + assignment.path.back() + "'");
    }
    if (column->identity) {
      Refuse(assignment.at, "Cannot update identity column '" + column->name + "'");
    }
    Bound value;
    if (assignment.value != nullptr) {
      value = BindValue(*assignment.value);
    } else if (column->default_source.empty()) {
      value = MakeBound("NULL", Type{});
      value.literal = Bound::Literal::kNull;
    } else {
      Parser parser(column->default_source);
      value = BindValue(*parser.ParseWholeExpression());
    }
    value = Assigned(std::move(value), *column, assignment.at);
    const std::string name = QuoteName("v" + std::to_string(++number));
    names += ", " + name;
    values += ", " + value.sql;
    sql += (sql.empty() ? "" : ", ") + QuoteName(column->name) + " = " +
           (inner ? QuoteName("new values") + "." + name : value.sql);
  }
  return sql;
}

Translation Binder::Update(const Statement& statement) {
  if (CommonTarget(statement) != nullptr) {
    Refuse(statement.name.at, "An UPDATE through a common table is not supported");
  }
  Scope scope;
  const ScopeGuard guard(*this, scope);
  BoundQuery result;
  const std::string with = BindWith(statement.with);
  const TableRef* target = FindTarget(statement.from, statement.name);
  const TableInfo& table = TargetTable(target == nullptr ? statement.name : target->name);
  const std::string name = (table.temporary ? "temp." : "main.") + QuoteName(table.name);
  const std::string row_id = RowIdOf(table);
  std::string names;
  std::string values;
  if (statement.from.empty() && statement.top == nullptr) {
    Source source;
    source.name = statement.name.Last();
    source.sql = QuoteName(table.name);
    source.columns = &table.columns;
    AddSource(std::move(source), statement.name.at);
    const std::string set = SetList(statement, table, false, names, values);
    result.sql = with + "UPDATE " + name + " SET " + set;
    if (statement.expr != nullptr) result.sql += " WHERE " + BindCondition(*statement.expr, 0);
    return Finish(std::move(result));
  }
  // The rows to change with their new values first, then each by its row number.
  std::string alias = target == nullptr       ? statement.name.Last()
                      : target->alias.empty() ? target->name.Last()
                                              : target->alias;
  std::string from = BindFrom(statement.from);
  if (target == nullptr) {
    Source source;
    source.name = alias;
    source.sql = QuoteName(alias);
    source.columns = &table.columns;
    AddSource(std::move(source), statement.name.at);
    from += (from.empty() ? " FROM " : ", ") + name + " AS " + QuoteName(alias);
  }
  const std::string set = SetList(statement, table, true, names, values);
  if (statement.expr != nullptr) from += " WHERE " + BindCondition(*statement.expr, 0);
  if (statement.top != nullptr) {
    from += " LIMIT " + RowCount(*statement.top);
  }
  const std::string hidden = QuoteName("new values");
  result.sql = with + (with.empty() ? "WITH " : ", ");
  if (!with.empty()) result.sql.erase(with.size() - 1, 1);  // the blank behind the last table
  result.sql += hidden + "(" + QuoteName("row") + names + ") AS (SELECT " + QuoteName(alias) + "." +
                row_id + values + from + ") UPDATE " + name + " SET " + set + " FROM " + hidden +
                " WHERE " + QuoteName(table.name) + "." + row_id + " = " + hidden + "." +
                QuoteName("row");
  return Finish(std::move(result));
}

const CommonTable* Binder::CommonTarget(const Statement& statement) const {
  const bool table = FindTarget(statement.from, statement.name) != nullptr;
  return table ? nullptr : CommonOf(statement, statement.name);
}

const TableInfo& Binder::TableBehind(const Statement& statement, const CommonTable& common) {
  const Query& query = *common.query;
  const vorek::sqlite::Select* select = query.branches[0].select.get();
  const bool plain = query.branches.size() == 1 && select != nullptr && !select->distinct &&
                     select->group.empty() && select->having == nullptr &&
                     select->from.size() == 1 && query.with.empty() && !query.joins_texts;
  const TableRef* table = plain ? &select->from.front() : nullptr;
  if (table == nullptr || table->kind != TableRef::Kind::kTable || table->call ||
      CommonOf(statement, table->name) != nullptr) {
    Refuse(common.at, "A change through the common table '" + common.name +
                          "' is supported over one table, without groups or DISTINCT");
  }
  row_source_ = select;
  return TargetTable(table->name);
}

Translation Binder::DeleteThrough(const Statement& statement, const CommonTable& common) {
  Scope scope;
  const ScopeGuard guard(*this, scope);
  const TableInfo& table = TableBehind(statement, common);
  if (!statement.from.empty()) Refuse(statement.name.at, "Such a DELETE takes no FROM clause");
  row_id_ = RowIdOf(table);
  BoundQuery result;
  result.sql = BindWith(statement.with);
  TableRef rows;
  rows.name = statement.name;
  std::string from = " FROM " + BindNamedTable(rows, false);
  if (statement.expr != nullptr) from += " WHERE " + BindCondition(*statement.expr, 0);
  if (statement.top != nullptr) from += " LIMIT " + RowCount(*statement.top);
  result.sql += std::string("DELETE FROM ") + (table.temporary ? "temp." : "main.") +
                QuoteName(table.name) + " WHERE " + row_id_ + " IN (SELECT " +
                QuoteName(kRowOfTable) + from + ")";
  return Finish(std::move(result));
}

std::string Binder::RowCount(const Expr& top) {
  return Convert(BindValue(top), Make(TypeKind::kBigInt), Mode::kImplicit, top.at).sql;
}

Translation Binder::Delete(const Statement& statement) {
  if (const CommonTable* common = CommonTarget(statement)) return DeleteThrough(statement, *common);
  Scope scope;
  const ScopeGuard guard(*this, scope);
  BoundQuery result;
  const std::string with = BindWith(statement.with);
  const TableRef* target = FindTarget(statement.from, statement.name);
  const TableInfo& table = TargetTable(target == nullptr ? statement.name : target->name);
  const std::string name = (table.temporary ? "temp." : "main.") + QuoteName(table.name);
  result.sql = with + "DELETE FROM " + name;
  const std::string row_id = RowIdOf(table);
  if (statement.from.empty()) {
    Source source;
    source.name = statement.name.Last();
    source.sql = QuoteName(table.name);
    source.columns = &table.columns;
    AddSource(std::move(source), statement.name.at);
    std::string where;
    if (statement.expr != nullptr) where = " WHERE " + BindCondition(*statement.expr, 0);
    if (statement.top != nullptr) {
      where = " WHERE " + row_id + " IN (SELECT " + row_id + " FROM " + name + where + " LIMIT " +
              RowCount(*statement.top) + ")";
    }
    result.sql += where;
    return Finish(std::move(result));
  }
  if (target == nullptr || statement.top != nullptr) {
    Refuse(statement.name.at, "The table of a DELETE must stand in its FROM clause, without TOP");
  }
  const std::string alias = target->alias.empty() ? target->name.Last() : target->alias;
  std::string from = BindFrom(statement.from);
  if (statement.expr != nullptr) from += " WHERE " + BindCondition(*statement.expr, 0);
  result.sql += " WHERE " + row_id + " IN (SELECT " + QuoteName(alias) + "." + row_id + from + ")";
  return Finish(std::move(result));
}

void Binder::AddBareTable(const TableInfo& table, std::size_t at) {
  Source source;
  source.name = table.name;
  source.sql = QuoteName(table.name);
  source.columns = &table.columns;
  source.bare = true;
  AddSource(std::move(source), at);
}

std::string Binder::ConditionOn(const Expr& expr, const TableInfo& table) {
  Scope scope;
  const ScopeGuard guard(*this, scope);
  AddBareTable(table, expr.at);
  std::string sql = BindCondition(expr, 0);
  if (!parameters_.empty() || calls_ || !view_tables_->sql.empty()) {
    Refuse(expr.at,
           "A condition of a table can't depend on the time or call a function of the "
           "database, nor read a view");
  }
  return sql;
}

Bound Binder::ComputedColumn(const Expr& expr, const TableInfo& table) {
  Scope scope;
  const ScopeGuard guard(*this, scope);
  AddBareTable(table, expr.at);
  Bound bound = BindValue(expr);
  if (!parameters_.empty() || calls_) {
    Refuse(expr.at,
           "A computed column can't depend on the time or call a function of the database");
  }
  return bound;
}

}  // namespace vorek::sqlite
