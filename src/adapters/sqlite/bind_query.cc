#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "text/utf8.h"

// Queries: WITH, select lists, grouping, UNION, order and TOP.
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

Binder::SelectParts Binder::BranchParts(const Query& query, const Branch& branch) {
  if (branch.select != nullptr && !branch.select->values.empty()) {
    return BindValues(*branch.select, nullptr);
  }
  if (branch.select != nullptr) {
    Query bare;  // ORDER BY and paging belong to the whole
    SelectParts parts = BindSelect(bare, *branch.select);
    if (parts.limit.empty()) return parts;
  }
  // A branch with its own TOP, or one in brackets, becomes a derived table.
  (void)query;
  Query bare;
  BoundQuery bound;
  if (branch.query != nullptr) {
    bound = BindQuery(*branch.query);
  } else {
    Scope scope;
    const ScopeGuard guard(*this, scope);
    SelectParts inner = BindSelect(bare, *branch.select);
    for (const Bound& item : inner.items) {
      bound.columns.push_back({item.name, item.type, item.nullable, item.collated});
    }
    bound.sql = Render(inner);
  }
  return Derived(std::move(bound));
}

Binder::SelectParts Binder::Derived(BoundQuery query) {
  SelectParts parts;
  parts.prefix = "SELECT ";
  std::string names;
  for (std::size_t i = 0; i < query.columns.size(); ++i) {
    const std::string name = QuoteName("c" + std::to_string(i + 1));
    names += (names.empty() ? "" : ", ") + name;
    Bound item = MakeBound(name, query.columns[i].type);
    item.name = query.columns[i].name;
    item.column = true;
    parts.items.push_back(std::move(item));
  }
  parts.tail = " FROM (WITH " + QuoteName("branch") + "(" + names + ") AS (" + query.sql +
               ") SELECT * FROM " + QuoteName("branch") + ")";
  return parts;
}

void Binder::Unify(std::vector<SelectParts>& branches, const Targets* targets, std::size_t at) {
  const std::size_t count =
      branches[0].rows.empty() ? branches[0].items.size() : branches[0].rows[0].size();
  for (const SelectParts& branch : branches) {
    if (branch.items.size() != count) {
      Refuse(at,
             "All queries combined by UNION, INTERSECT or EXCEPT must have an equal number of "
             "expressions");
    }
  }
  if (targets != nullptr && targets->size() != count) {
    Refuse(at, "The number of values (" + std::to_string(count) +
                   ") doesn't match the number of columns (" + std::to_string(targets->size()) +
                   ")");
  }
  for (std::size_t i = 0; i < count; ++i) {
    Type type;
    for (const SelectParts& branch : branches) type = CommonType(type, branch.items[i].type);
    if (targets != nullptr) type = (*targets)[i].type;
    for (SelectParts& branch : branches) {
      const std::string name = branch.items[i].name;
      branch.items[i] = Convert(std::move(branch.items[i]), type,
                                targets != nullptr ? Mode::kAssign : Mode::kImplicit, at);
      branch.items[i].name = name;
    }
  }
}

Binder::BoundQuery Binder::Compound(const Query& query, const Targets* targets) {
  std::vector<SelectParts> branches;
  for (const Branch& branch : query.branches) {
    Scope scope;
    const ScopeGuard guard(*this, scope);
    branches.push_back(BranchParts(query, branch));
  }
  const bool values = branches.size() == 1 && !branches[0].rows.empty();
  BoundQuery result;
  if (!values) {
    Unify(branches, targets, query.at);
    const bool compares = std::any_of(query.branches.begin() + 1, query.branches.end(),
                                      [](const Branch& b) { return b.link != "UNION ALL"; });
    for (SelectParts& branch : branches) {
      if (compares) CollateItems(branch.items);
    }
  }
  for (std::size_t i = 0; i < branches.size(); ++i) {
    // INTERSECT binds tighter than the others, which SQLite takes from left to right.
    const bool tighter =
        i > 1 && query.branches[i].link == "INTERSECT" && query.branches[i - 1].link != "INTERSECT";
    if (tighter) Refuse(query.at, "INTERSECT behind UNION or EXCEPT needs brackets");
    if (i > 0) result.sql += " " + query.branches[i].link + " ";
    result.sql += Render(branches[i]);
  }
  for (std::size_t i = 0; i < branches[0].items.size(); ++i) {
    const bool nullable = std::any_of(branches.begin(), branches.end(),
                                      [i](const auto& branch) { return branch.items[i].nullable; });
    const Bound& item = branches[0].items[i];
    result.columns.push_back({item.name, item.type, nullable, false});
  }
  Scope scope;
  const ScopeGuard guard(*this, scope);
  const std::vector<Bound>& items = branches[0].items;
  if (!query.order.empty() && std::any_of(items.begin(), items.end(), IsWide)) {
    // SQLite orders a UNION by its columns as they are, and by nothing else.
    SelectParts whole = Derived(result);
    whole.order = BindOrder(query.order, whole.items, true);
    whole.limit = BindLimit(query, nullptr);
    result.sql = Render(whole);
    return result;
  }
  result.sql += BindOrder(query.order, items, true);
  result.sql += BindLimit(query, nullptr);
  return result;
}

Binder::SelectParts Binder::BindValues(const vorek::sqlite::Select& select,
                                       const Targets* targets) {
  SelectParts parts;
  for (const std::vector<ExprPtr>& row : select.values) {
    if (row.size() != select.values[0].size()) {
      Refuse(select.at, "The rows of VALUES must have an equal number of values");
    }
    std::vector<Bound> values;
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (row[i] == nullptr) Refuse(select.at, "DEFAULT stands where there is no default");
      values.push_back(BindValue(*row[i]));
    }
    parts.rows.push_back(std::move(values));
  }
  for (std::size_t i = 0; i < parts.rows[0].size(); ++i) {
    Type type;
    for (const auto& row : parts.rows) type = CommonType(type, row[i].type);
    if (targets != nullptr && i < targets->size()) type = (*targets)[i].type;
    for (auto& row : parts.rows) {
      row[i] = Convert(std::move(row[i]), type,
                       targets != nullptr ? Mode::kAssign : Mode::kImplicit, select.at);
    }
    parts.items.push_back(MakeBound("", type));
  }
  return parts;
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

Binder::BoundQuery Binder::GroupingSets(const Query& query, const vorek::sqlite::Select& select,
                                        const Targets* targets) {
  std::vector<SelectParts> branches;
  const Query bare;  // ORDER BY and TOP belong to the whole
  for (const std::vector<std::size_t>& set : select.grouping_sets) {
    Scope scope;
    const ScopeGuard guard(*this, scope);
    scope.grouping_set = &set;
    branches.push_back(BindSelect(bare, select));
    branches.back().limit.clear();
  }
  if (select.distinct || !assigned_.empty() || select.top_percent || select.top_ties) {
    Refuse(select.at, "ROLLUP, CUBE and GROUPING SETS take no DISTINCT, variables or TOP of ranks");
  }
  Unify(branches, targets, query.at);
  BoundQuery inner;
  for (const Bound& item : branches[0].items) {
    inner.columns.push_back({item.name, item.type, true, false});
  }
  for (SelectParts& branch : branches) {
    inner.sql += (inner.sql.empty() ? "" : " UNION ALL ") + Render(branch);
  }
  BoundQuery result;
  result.columns = inner.columns;
  SelectParts whole = Derived(std::move(inner));
  Scope scope;
  const ScopeGuard guard(*this, scope);
  whole.order = BindOrder(query.order, whole.items, true);
  whole.limit = BindLimit(query, &select);
  result.sql = Render(whole);
  return result;
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

std::string Binder::OrderTerm(const OrderItem& item, const std::vector<Bound>& items,
                              bool ordinals_only) {
  const auto ordinal = [&](std::size_t index) {
    if (IsWide(items[index])) return Ordered(items[index]).sql;
    std::string sql = std::to_string(index + 1);
    if (items[index].type.IsText() && !items[index].collated) sql += " COLLATE VOREK";
    return sql;
  };
  const Expr& expr = *item.expr;
  if (expr.kind == ExprKind::kNumber) {
    const int number = std::atoi(expr.text.c_str());
    if (number < 1 || number > static_cast<int>(items.size())) {
      Refuse(expr.at, "The ORDER BY position number " + expr.text + " is out of range");
    }
    return ordinal(static_cast<std::size_t>(number) - 1);
  }
  if (expr.kind == ExprKind::kColumn && expr.path.size() == 1) {
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (text::EqualsIgnoreCase(items[i].name, expr.path[0])) return ordinal(i);
    }
  }
  if (ordinals_only && scope_->sources.empty()) {
    Refuse(expr.at, "ORDER BY items must appear in the select list");
  }
  const Bound bound = BindValue(expr);
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].sql == bound.sql || items[i].sql == Collated(bound).sql) return ordinal(i);
  }
  if (ordinals_only) Refuse(expr.at, "ORDER BY items must appear in the select list");
  if (bound.literal != Bound::Literal::kNone) {
    Refuse(expr.at, "A constant expression stands in the ORDER BY list");
  }
  return Ordered(bound).sql;
}

std::string Binder::BindOrder(const std::vector<OrderItem>& order, const std::vector<Bound>& items,
                              bool ordinals_only) {
  std::string sql;
  for (const OrderItem& item : order) {
    sql += (sql.empty() ? " ORDER BY " : ", ") + OrderTerm(item, items, ordinals_only);
    if (item.descending) sql += " DESC";
  }
  return sql;
}

void Binder::RankRows(const Query& query, const vorek::sqlite::Select& select, SelectParts& parts) {
  if (select.top_ties && query.order.empty()) {
    Refuse(select.at, "The TOP N WITH TIES clause is not allowed without a corresponding ORDER BY");
  }
  // What the rows are ordered by goes along behind the select list.
  const std::size_t shown = parts.items.size();
  std::vector<std::size_t> keys;
  for (const OrderItem& item : query.order) {
    const std::string term = OrderTerm(item, parts.items, select.distinct);
    std::size_t index = 0;
    const auto [end, error] = std::from_chars(term.data(), term.data() + term.size(), index);
    const bool ordinal =
        error == std::errc() && index > 0 && index <= shown && (*end == '\0' || *end == ' ');
    if (!ordinal) {
      parts.items.push_back(BindValue(*item.expr));
      index = parts.items.size();
    }
    keys.push_back(index - 1);
  }
  BoundQuery inner;
  for (const Bound& item : parts.items) {
    inner.columns.push_back({item.name, item.type, item.nullable, false});
  }
  inner.sql = Render(parts);
  parts = Derived(std::move(inner));
  for (std::size_t i = 0; i < keys.size(); ++i) {
    parts.order += (i == 0 ? " ORDER BY " : ", ") + Ordered(parts.items[keys[i]]).sql +
                   (query.order[i].descending ? " DESC" : "");
  }
  const bool percent = select.top_percent;
  const Type number = Make(percent ? TypeKind::kFloat : TypeKind::kBigInt);
  const std::string top =
      Convert(BindValue(*select.top), number, Mode::kImplicit, select.top->at).sql;
  parts.tail = " FROM (SELECT *, " + std::string(select.top_ties ? "rank" : "row_number") +
               "() OVER (" + (parts.order.empty() ? "" : parts.order.substr(1)) +
               ") AS \"rank\", count(*) OVER () AS \"all\"" + parts.tail + ") WHERE \"rank\" <= " +
               (percent ? "ceil(\"all\" * (" + top + ") / 100.0)" : "(" + top + ")");
  parts.items.resize(shown);
}

std::string Binder::BindLimit(const Query& query, const vorek::sqlite::Select* select) {
  const auto count = [this](const Expr& expr) {
    Bound value = Convert(BindValue(expr), Make(TypeKind::kBigInt), Mode::kImplicit, expr.at);
    // A negative number would lift SQLite's limit.
    return value.literal == Bound::Literal::kNumber ? value.sql : "max(0, " + value.sql + ")";
  };
  if (select != nullptr && select->top != nullptr) {
    if (select->top->kind == ExprKind::kUnary)
      Refuse(select->top->at, "TOP takes no negative number");
    return select->top_percent ? "" : " LIMIT " + count(*select->top);
  }
  if (query.offset == nullptr) return "";
  const std::string limit = query.fetch == nullptr ? "-1" : count(*query.fetch);
  return " LIMIT " + limit + " OFFSET " + count(*query.offset);
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
