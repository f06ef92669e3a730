#include <algorithm>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "text/utf8.h"

// PIVOT and UNPIVOT, as a query with groups and as a union.
namespace vorek::sqlite {

std::string Binder::BindPivot(const TableRef& table, bool nullable) {
  Scope inner;
  Scope* const beside = scope_;
  inner.outer = beside->outer;
  scope_ = &inner;
  const std::string from = " FROM " + BindTable(*table.left, false, false);
  BoundQuery query =
      table.kind == TableRef::Kind::kPivot ? PivotRows(table, from) : UnpivotRows(table, from);
  scope_ = beside;
  Source source;
  source.name = table.alias;
  source.sql = QuoteName(prefix_ + table.alias);
  source.nullable = nullable;
  source.own = NamedColumns(query.columns, {}, table.alias, table.at);
  const std::string sql = "(" + query.sql + ") AS " + source.sql;
  AddSource(std::move(source), table.at);
  return sql;
}

Binder::BoundQuery Binder::PivotRows(const TableRef& table, const std::string& from) {
  const Expr& aggregate = *table.on;
  const bool plain = aggregate.kind == ExprKind::kFunction && aggregate.operands.size() == 1 &&
                     aggregate.operands[0] != nullptr &&
                     aggregate.operands[0]->kind == ExprKind::kColumn;
  if (!plain) Refuse(aggregate.at, "PIVOT takes an aggregate of a column");
  Expr name;
  name.kind = ExprKind::kColumn;
  name.at = table.at;
  name.path = table.turned;
  const Bound names = BindColumn(name);
  const Bound values = BindColumn(*aggregate.operands[0]);
  BoundQuery result;
  std::string keys;
  std::vector<Bound> items;
  for (const Source& source : scope_->sources) {
    for (const ColumnInfo& column : source.Columns()) {
      Bound key = ColumnOf(*scope_, source, column, name);
      if (key.sql == names.sql || key.sql == values.sql) continue;
      keys += (keys.empty() ? "" : ", ") + Collated(key).sql;
      items.push_back(std::move(key));
    }
  }
  for (const std::string& column : table.columns) {
    const Bound literal = TextLiteral(
        column, MakeText(TypeKind::kNVarChar, std::max<int>(1, static_cast<int>(column.size()))));
    Bound value = MakeBound(
        "CASE WHEN " + Compare("=", names, literal, name).sql + " THEN " + values.sql + " END",
        values.type);
    Bound item = AggregateOf(aggregate, LowerWord(aggregate.path.back()), std::move(value));
    item.name = column;
    item.nullable = true;
    items.push_back(std::move(item));
  }
  for (const Bound& item : items) {
    result.columns.push_back({item.name, item.type, item.nullable, item.collated});
  }
  result.sql = "SELECT " + WriteItems(items) + from +
               (keys.empty() ? " HAVING count(*) > 0" : " GROUP BY " + keys);
  return result;
}

Binder::BoundQuery Binder::UnpivotRows(const TableRef& table, const std::string& from) {
  Expr name;
  name.kind = ExprKind::kColumn;
  name.at = table.at;
  std::vector<Bound> taken;
  Type type;
  for (const std::string& column : table.columns) {
    name.path = {column};
    taken.push_back(BindColumn(name));
    type = CommonType(type, taken.back().type);
  }
  std::vector<Bound> items;
  for (const Source& source : scope_->sources) {
    for (const ColumnInfo& column : source.Columns()) {
      Bound item = ColumnOf(*scope_, source, column, name);
      const bool apart = std::any_of(taken.begin(), taken.end(),
                                     [&](const Bound& other) { return other.sql == item.sql; });
      if (!apart) items.push_back(std::move(item));
    }
  }
  BoundQuery result;
  const std::size_t others = items.size();
  for (std::size_t i = 0; i < taken.size(); ++i) {
    items.resize(others);
    const std::string condition = Wrap(taken[i], kEquality + 1) + " IS NOT NULL";
    items.push_back(Convert(taken[i], type, Mode::kImplicit, table.at));
    items.back().name = table.on->path.back();
    items.push_back(TextLiteral(table.columns[i], MakeText(TypeKind::kNVarChar, 128)));
    items.back().name = table.turned.back();
    result.sql += (i == 0 ? "SELECT " : " UNION ALL SELECT ") + WriteItems(items) + from +
                  " WHERE " + condition;
  }
  for (const Bound& item : items) {
    result.columns.push_back({item.name, item.type, item.nullable, false});
  }
  return result;
}

}  // namespace vorek::sqlite
