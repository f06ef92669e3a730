#include <algorithm>
#include <array>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "text/utf8.h"

// Queries: WITH, select lists and groups.
namespace vorek::sqlite {

Translation Binder::Finish(BoundQuery query) {
  Translation result;
  result.sql = std::move(query.sql);
  if (!view_tables_->sql.empty()) {
    constexpr std::string_view kWith = "WITH ";
    constexpr std::string_view kRecursive = "WITH RECURSIVE ";
    std::size_t head = 0;
    if (result.sql.rfind(kWith, 0) == 0) head = kWith.size();
    if (result.sql.rfind(kRecursive, 0) == 0) head = kRecursive.size();
    result.sql.replace(0, head, "WITH RECURSIVE " + view_tables_->sql + (head == 0 ? " " : ", "));
  }
  result.columns = std::move(query.columns);
  result.assigned = std::move(query.assigned);
  result.assigns = query.assigns;
  result.parameters = std::move(parameters_);
  result.temporary = temporary_;
  result.filled = view_tables_->filled;
  return result;
}

Translation Binder::Select(const Query& query) { return Finish(BindQuery(query)); }

std::vector<OutputColumn> Binder::Describe(const Query& query,
                                           const std::vector<std::string>& names) {
  BoundQuery bound = BindQuery(query);
  const std::vector<ColumnInfo> columns = NamedColumns(bound.columns, names, "the query", query.at);
  for (std::size_t i = 0; i < columns.size(); ++i) bound.columns[i].name = columns[i].name;
  return std::move(bound.columns);
}

Translation Binder::Value(const Expr& expr, const Type& type) {
  Scope scope;
  const ScopeGuard guard(*this, scope);
  // A variable keeps as much of a text as it holds.
  const Bound value = Convert(BindValue(expr), type, Mode::kCast, expr.at);
  BoundQuery query;
  query.sql = "SELECT " + value.sql;
  query.columns.push_back({"", type, true, false});
  return Finish(std::move(query));
}

Translation Binder::UntypedValue(const Expr& expr) {
  Scope scope;
  const ScopeGuard guard(*this, scope);
  const Bound value = BindValue(expr);
  BoundQuery query;
  query.sql = "SELECT " + value.sql;
  query.columns.push_back({"", value.type, true, false});
  return Finish(std::move(query));
}

Translation Binder::Condition(const Expr& expr) {
  Scope scope;
  const ScopeGuard guard(*this, scope);
  BoundQuery query;
  query.sql = "SELECT CASE WHEN " + BindCondition(expr, 0) + " THEN 1 ELSE 0 END";
  query.columns.push_back({"", Make(TypeKind::kInt), true, false});
  return Finish(std::move(query));
}

std::string Binder::BindWith(const std::vector<CommonTable>& tables) {
  std::string sql;
  for (const CommonTable& table : tables) {
    sql += (sql.empty() ? "WITH RECURSIVE " : ", ") + BindCommonTable(table);
  }
  return sql.empty() ? sql : sql + " ";
}

std::string Binder::BindCommonTable(const CommonTable& table) {
  const Query& query = *table.query;
  const bool may_recurse = query.branches.size() > 1 && query.branches[0].select != nullptr;
  std::string names;
  const auto declare = [&](const std::vector<OutputColumn>& outputs) {
    CommonTableInfo info;
    info.name = table.name;
    std::vector<std::string> told = table.columns;
    const bool hands_row = row_source_ != nullptr && row_source_ == query.branches[0].select.get();
    if (hands_row && !told.empty()) told.emplace_back(kRowOfTable);
    info.columns = NamedColumns(outputs, told, table.name, table.at);
    for (ColumnInfo& column : info.columns) column.nullable = true;
    names.clear();
    for (const ColumnInfo& column : info.columns) {
      names += (names.empty() ? "" : ", ") + QuoteName(column.name);
    }
    common_tables_.push_back(std::move(info));
  };
  BoundQuery bound;
  if (may_recurse) {
    if (query.joins_texts) Refuse(query.at, "FOR XML behind UNION is not supported here");
    // The first branch tells the columns by which the others may refer to the table itself, and a
    // branch behind it takes their types.
    Scope scope;
    const ScopeGuard guard(*this, scope);
    SelectParts anchor = BindSelect(query, *query.branches[0].select);
    std::vector<OutputColumn> outputs;
    Targets targets;
    for (const Bound& item : anchor.items) {
      outputs.push_back({item.name, item.type, true, item.collated});
      targets.push_back({item.type, ""});
    }
    declare(outputs);
    bound = BindQuery(query, &targets);
  } else {
    bound = BindQuery(query);
    declare(bound.columns);
  }
  return QuoteName(table.name) + "(" + names + ") AS (" + bound.sql + ")";
}

Binder::BoundQuery Binder::BindQuery(const Query& query, const Targets* targets) {
  const std::size_t tables = common_tables_.size();
  const std::string with = BindWith(query.with);
  BoundQuery result;
  const Branch& first = query.branches[0];
  const bool single = query.branches.size() == 1 && first.select != nullptr;
  if (single && !first.select->grouping_sets.empty()) {
    result = GroupingSets(query, *first.select, targets);
  } else if (single && first.select->values.empty()) {
    Scope scope;
    const ScopeGuard guard(*this, scope);
    std::vector<SelectParts> parts;
    parts.push_back(BindSelect(query, *first.select));
    result.assigned = std::move(assigned_);
    assigned_.clear();
    result.assigns = assigns_;
    if (targets != nullptr) Unify(parts, targets, query.at);
    for (const Bound& item : parts[0].items) {
      result.columns.push_back({item.name, item.type, item.nullable, item.collated});
    }
    result.sql = Render(parts[0]);
  } else {
    result = Compound(query, targets);
  }
  result.sql.insert(0, with);
  common_tables_.resize(tables);
  return query.joins_texts ? JoinTexts(query, std::move(result)) : std::move(result);
}

Binder::BoundQuery Binder::JoinTexts(const Query& query, BoundQuery rows) {
  const OutputColumn& column = rows.columns[0];
  const bool bare = column.name.empty() || column.name == "text()";
  if (rows.columns.size() != 1 || !bare || !rows.assigned.empty()) {
    Refuse(query.at, "FOR XML PATH('') is supported for one column without a name");
  }
  if (!column.type.IsText() && !column.type.IsWhole()) {
    Refuse(query.at, "FOR XML PATH('') is supported for texts and whole numbers");
  }
  if (query.xml_value) Refuse(query.at, "'type' is not supported without .value behind it");
  const Type text = MakeText(TypeKind::kNVarChar, Type::kMax);
  std::string sql = Convert(MakeBound("x", column.type), text, Mode::kCast, query.at).sql;
  if (!query.xml_taken) {
    constexpr std::array<std::array<std::string_view, 2>, 4> kWritten = {
        {{"'&'", "'&amp;'"}, {"'<'", "'&lt;'"}, {"'>'", "'&gt;'"}, {"char(13)", "'&#x0D;'"}}};
    for (const auto& [sign, written] : kWritten) {
      sql = "replace(" + sql + ", " + std::string(sign) + ", " + std::string(written) + ")";
    }
  }
  BoundQuery joined;
  joined.sql = "SELECT group_concat(" + sql + ", '') FROM (WITH texts(x) AS (" + rows.sql +
               ") SELECT x FROM texts)";
  joined.columns.push_back({"", text, true, false});
  return joined;
}

void Binder::ExpandStar(const Expr& star, std::vector<Bound>& items) {
  bool found = false;
  for (const Source& source : scope_->sources) {
    if (!star.path.empty() && !text::EqualsIgnoreCase(source.name, star.path.back())) continue;
    found = true;
    for (const ColumnInfo& column : source.Columns()) {
      items.push_back(ColumnOf(*scope_, source, column, star));
    }
  }
  if (!found) {
    Refuse(star.at, star.path.empty() ? "'*' needs a FROM clause"
                                      : "The column prefix '" + star.path.back() +
                                            "' does not match any table of the query");
  }
}

void Binder::BindItems(const vorek::sqlite::Select& select, SelectParts& parts,
                       std::vector<std::string>* assigned) {
  // A subquery in the list sees the variables as the list does.
  const bool assigns = std::any_of(select.items.begin(), select.items.end(),
                                   [](const SelectItem& item) { return !item.variable.empty(); });
  if (assigns) uses_running_ = false;
  for (const SelectItem& item : select.items) {
    if (!item.variable.empty()) running_.insert(LowerWord(item.variable));
  }
  for (const SelectItem& item : select.items) {
    if (item.expr->kind == ExprKind::kStar) {
      ExpandStar(*item.expr, parts.items);
      continue;
    }
    Bound value = BindValue(*item.expr);
    if (!item.alias.empty()) value.name = item.alias;
    if (item.expr->kind != ExprKind::kColumn && item.alias.empty()) value.name.clear();
    if (!item.variable.empty()) {
      const std::string name = LowerWord(item.variable);
      const auto variable = variables_.find(name);
      if (variable == variables_.end()) {
        Refuse(item.expr->at, "Must declare the scalar variable \"" + item.variable + "\"");
      }
      value = Convert(std::move(value), variable->second.type, Mode::kCast, item.expr->at);
      assigned->push_back(name);
    }
    parts.items.push_back(std::move(value));
  }
  if (assigns) running_.clear();
  if (!assigned->empty() && assigned->size() != parts.items.size()) {
    Refuse(select.at, "A SELECT that assigns a value to a variable must not return rows as well");
  }
}

void Binder::AssignItems(const Query& query, const vorek::sqlite::Select& select,
                         SelectParts& parts, const std::vector<std::string>& assigned) {
  const bool ordered = !query.order.empty();
  assigns_ = !ordered || uses_running_;
  if (!assigns_) return;  // the last row decides
  if (ordered) {
    // SQLite computes a select list before it sorts: the rows are put in order first.
    if (select.distinct || scope_->has_aggregate || !select.group.empty()) {
      Refuse(select.at,
             "A variable that goes on from row to row can't stand beside groups or DISTINCT in "
             "an order");
    }
    const std::string order = BindOrder(query.order, {}, false);
    std::vector<std::string> carried;
    scope_->carried = &carried;
    SelectParts again;
    std::vector<std::string> same;
    BindItems(select, again, &same);
    scope_->carried = nullptr;
    std::string columns;
    for (std::size_t i = 0; i < carried.size(); ++i) {
      columns += (i == 0 ? "" : ", ") + carried[i] + " AS \"c" + std::to_string(i) + "\"";
    }
    const std::string rows = QuoteName("rows in order");
    parts.items = std::move(again.items);
    parts.prefix = "WITH " + rows + " AS MATERIALIZED (SELECT " +
                   (columns.empty() ? "1" : columns) + parts.tail + order + parts.limit +
                   ") SELECT ";
    parts.tail = " FROM " + rows;
    parts.order.clear();
    parts.limit.clear();
  }
  for (std::size_t i = 0; i < assigned.size(); ++i) {
    Bound& item = parts.items[i];
    item = CallOf("vk_assign", {QuoteText(assigned[i]), item.sql}, item.type);
  }
}

void Binder::HandRow(const vorek::sqlite::Select& select, SelectParts& parts) {
  if (scope_->has_aggregate) Refuse(select.at, "A row of aggregates stands for no row of a table");
  const TableRef& table = select.from[0];
  const std::string alias = table.alias.empty() ? table.name.Last() : table.alias;
  parts.items.push_back(MakeBound(QuoteName(alias) + "." + row_id_, Make(TypeKind::kBigInt)));
  parts.items.back().name = kRowOfTable;
}

Binder::SelectParts Binder::BindSelect(const Query& query, const vorek::sqlite::Select& select) {
  SelectParts parts;
  parts.tail = BindFrom(select.from);
  if (select.where != nullptr) parts.tail += " WHERE " + BindCondition(*select.where, 0);
  scope_->ungrouped.clear();
  BindGroup(select, parts);
  scope_->takes_aggregates = true;
  std::vector<std::string> assigned;
  BindItems(select, parts, &assigned);
  if (row_source_ == &select) HandRow(select, parts);
  parts.prefix = select.distinct ? "SELECT DISTINCT " : "SELECT ";
  if (select.distinct) CollateItems(parts.items);
  const bool whole = select.top_percent && select.top->text == "100";
  if (select.top != nullptr && !whole && (select.top_percent || select.top_ties)) {
    RankRows(query, select, parts);
    CheckGrouping(select);
    assigned_ = std::move(assigned);
    if (!assigned_.empty()) Refuse(select.at, "A TOP of ranks can't assign variables");
    return parts;
  }
  parts.order = BindOrder(query.order, parts.items, select.distinct);
  CheckGrouping(select);
  parts.limit = BindLimit(query, &select);
  if (!assigned.empty()) AssignItems(query, select, parts, assigned);
  assigned_ = std::move(assigned);
  return parts;
}

void Binder::BindGroup(const vorek::sqlite::Select& select, SelectParts& parts) {
  std::string keys;
  std::set<std::string> absent;
  for (std::size_t i = 0; i < select.group.size(); ++i) {
    const ExprPtr& key = select.group[i];
    const Bound unchecked = BindOperand(*key);
    const Bound bound = Checked(unchecked);
    if (bound.literal != Bound::Literal::kNone) {
      Refuse(key->at, "Each GROUP BY expression must contain a column of the query");
    }
    const auto* set = scope_->grouping_set;
    if (set != nullptr && std::find(set->begin(), set->end(), i) == set->end()) {
      absent.insert(unchecked.sql);
      absent.insert(bound.sql);
      continue;
    }
    scope_->group_keys.insert(unchecked.sql);
    scope_->group_keys.insert(bound.sql);
    keys += (keys.empty() ? "" : ", ") + Collated(bound).sql;
  }
  scope_->ungrouped.clear();
  for (const std::string& key : absent) {
    if (scope_->group_keys.count(key) == 0) scope_->absent_keys.insert(key);
  }
  if (!keys.empty()) parts.tail += " GROUP BY " + keys;
  // The set without a key is one group, whatever is selected.
  if (keys.empty() && scope_->grouping_set != nullptr) parts.tail += " HAVING count(*) >= 0";
  if (scope_->grouping_set != nullptr) scope_->has_aggregate = true;
  if (select.having != nullptr) {
    scope_->takes_aggregates = true;
    std::string having = BindCondition(*select.having, 0);
    // Without groups SQLite takes HAVING only beside an aggregate; a query of one group is meant.
    const bool one_group = keys.empty() && scope_->grouping_set != nullptr;
    if (keys.empty()) scope_->has_aggregate = true;
    parts.tail += one_group ? " AND (" + having + ")" : " HAVING " + having;
  }
}

void Binder::CheckGrouping(const vorek::sqlite::Select& select) const {
  const bool grouped = !select.group.empty() || scope_->has_aggregate;
  if (!grouped || scope_->ungrouped.empty()) return;
  const Violation& first = scope_->ungrouped.front();
  Refuse(first.at, "Column '" + first.name +
                       "' is invalid here because it is not contained in either an aggregate "
                       "function or the GROUP BY clause");
}

void Binder::CollateItems(std::vector<Bound>& items) {
  for (Bound& item : items) item = Collated(std::move(item));
}

std::string Binder::WriteItems(const std::vector<Bound>& items) const {
  std::string sql;
  for (const Bound& item : items) {
    if (!sql.empty()) sql += ", ";
    sql += item.sql;
    if (!item.name.empty()) sql += " AS " + QuoteName(item.name);
  }
  return sql;
}

std::string Binder::Render(SelectParts& parts) const {
  if (parts.rows.empty()) {
    return parts.prefix + WriteItems(parts.items) + parts.tail + parts.order + parts.limit;
  }
  std::string sql = "VALUES ";
  for (std::size_t row = 0; row < parts.rows.size(); ++row) {
    sql += row == 0 ? "(" : ", (";
    for (std::size_t i = 0; i < parts.rows[row].size(); ++i) {
      sql += (i == 0 ? "" : ", ") + parts.rows[row][i].sql;
    }
    sql += ")";
  }
  return sql;
}

}  // namespace vorek::sqlite
