#include <algorithm>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "text/utf8.h"

// CROSS APPLY and OUTER APPLY, where they can be a join: SQLite has no table that depends on the
// tables beside it. Aggregates become subqueries for a value, the first row in an order a join by
// its row number, a plain query a join with its tables.
namespace vorek::sqlite {
namespace {

bool IsPlain(const Select& select) {
  return select.values.empty() && !select.distinct && select.group.empty() &&
         select.grouping_sets.empty() && select.having == nullptr && select.into.Empty() &&
         !select.top_percent && !select.top_ties;
}

bool IsFirstRow(const Select& select) {
  return select.top != nullptr && select.top->kind == ExprKind::kNumber && select.top->text == "1";
}

// Each aggregate becomes a query for its value.
void MakeQueries(std::vector<Bound>& items, const std::string& from, const std::string& condition) {
  const std::string rest = from + (condition.empty() ? "" : " WHERE " + condition) + ")";
  for (Bound& item : items) {
    Bound value = MakeBound("(SELECT " + item.sql + rest, item.type);
    value.name = std::move(item.name);
    item = std::move(value);
  }
}

}  // namespace

std::string Binder::BindApply(const TableRef& join, bool nullable) {
  const TableRef& right = *join.right;
  Source source;
  source.name =
      right.alias.empty() && right.kind == TableRef::Kind::kTable ? right.name.Last() : right.alias;
  source.nullable = nullable || join.join == TableRef::Join::kOuterApply;
  if (right.kind == TableRef::Kind::kQuery) {
    return ApplyQuery(join, *this, *right.query, std::move(source));
  }
  if (right.kind != TableRef::Kind::kTable || !right.call) {
    Refuse(right.at, "APPLY takes a query or a function that gives a table");
  }
  const ModuleInfo& module = TableFunction(right);
  if (module.kind == "TF") {
    Refuse(right.at, "APPLY of a function of several statements is not supported");
  }
  const Statement& definition = module.Definition();
  const Variables none;
  Binder inner(schema_, none, module.source);
  for (std::size_t i = 0; i < right.arguments.size(); ++i) {
    inner.arguments_[LowerWord(definition.parameters[i].name)] =
        ArgumentOf(module, i, right.arguments[i].get());
  }
  inner.views_ = views_;
  inner.views_.push_back(NameKey(module.name));
  inner.view_tables_ = view_tables_;
  inner.parameters_ = parameters_;
  std::string sql = ApplyQuery(join, inner, *definition.query, std::move(source));
  parameters_ = inner.parameters_;
  calls_ = calls_ || inner.calls_;
  temporary_ = temporary_ || inner.temporary_;
  CountTables(inner.tables_, right.at);
  return sql;
}

std::string Binder::ApplyQuery(const TableRef& join, Binder& in, const Query& query,
                               Source source) {
  if (query.branches.size() == 1 && query.branches[0].query != nullptr && query.with.empty() &&
      query.order.empty() && query.offset == nullptr) {
    return ApplyQuery(join, in, *query.branches[0].query, std::move(source));  // only brackets
  }
  const vorek::sqlite::Select* select =
      query.branches.size() == 1 ? query.branches[0].select.get() : nullptr;
  const bool fits = select != nullptr && IsPlain(*select) && query.with.empty() &&
                    query.offset == nullptr && !query.joins_texts &&
                    (select->top == nullptr || IsFirstRow(*select));
  const auto refuse = [&] {
    Refuse(join.right->at,
           "APPLY is supported with a function or a query of one SELECT without groups, DISTINCT "
           "and UNION, with TOP 1 over one table, or with aggregates alone");
  };
  if (!fits) refuse();
  const std::string number = std::to_string(scope_->sources.size());
  const std::string saved = in.prefix_;
  in.prefix_ = saved + "a" + number + " ";
  Scope scope;
  SelectParts parts;
  std::string condition;
  std::string from;
  {
    const ScopeGuard guard(in, scope);
    from = in.BindFrom(select->from);
    if (select->where != nullptr) condition = in.BindCondition(*select->where, kLooseAnd);
    scope.ungrouped.clear();
    scope.takes_aggregates = true;
    std::vector<std::string> assigned;
    in.BindItems(*select, parts, &assigned);
    if (!assigned.empty() || (scope.has_aggregate && !scope.ungrouped.empty())) refuse();
    if (select->top != nullptr) {
      if (scope.has_aggregate || scope.sources.size() != 1) refuse();
      in.prefix_ = saved + "b" + number + " ";
      condition = scope.sources[0].sql + "." + in.ApplyFirstRow(in, query, in.prefix_);
    }
  }
  in.prefix_ = saved;
  std::vector<OutputColumn> columns;
  const bool outer = join.join == TableRef::Join::kOuterApply;
  for (const Bound& item : parts.items) {
    columns.push_back({item.name, item.type, true, item.collated});
    // Beside a row that is missing, only a column is NULL by itself.
    if (outer && !scope.has_aggregate && !item.column) refuse();
  }
  if (scope.has_aggregate) MakeQueries(parts.items, from, condition);
  source.own = NamedColumns(columns, join.right->columns, source.name, join.right->at);
  source.expressions = std::move(parts.items);
  AddSource(std::move(source), join.right->at);
  if (scope.has_aggregate) return "";
  if (from.empty()) refuse();
  const std::string word = outer ? " LEFT JOIN " : " JOIN ";
  const bool one = select->from.size() == 1 && select->from[0].kind != TableRef::Kind::kJoin;
  const std::string tables = from.substr(std::string_view(" FROM ").size());
  return word + (one ? tables : "(" + tables + ")") + " ON " +
         (condition.empty() ? "1" : condition);
}

std::string Binder::ApplyFirstRow(Binder& in, const Query& query, const std::string& prefix) {
  const vorek::sqlite::Select& select = *query.branches[0].select;
  const TableRef& table = select.from[0];
  const TableInfo* info = table.kind == TableRef::Kind::kTable && !table.call
                              ? schema_.FindTable(TableOf(table.name))
                              : nullptr;
  if (info == nullptr || info->is_view || schema_.FindModule(table.name.Last()) != nullptr ||
      FindCommonTable(table.name) != nullptr) {
    Refuse(table.at, "APPLY with TOP 1 is supported over one table");
  }
  Scope scope;
  scope.outer = in.scope_->outer;
  Scope* const beside = std::exchange(in.scope_, &scope);
  std::string sql = in.BindFrom(select.from);
  if (select.where != nullptr) sql += " WHERE " + in.BindCondition(*select.where, 0);
  sql += in.BindOrder(query.order, {}, false) + " LIMIT 1";
  in.scope_ = beside;
  const std::string row = RowIdOf(*info);
  return row + " = (SELECT " +
         QuoteName(prefix + (table.alias.empty() ? table.name.Last() : table.alias)) + "." + row +
         sql + ")";
}

}  // namespace vorek::sqlite
