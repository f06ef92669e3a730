#include <algorithm>
#include <utility>

#include "adapters/sqlite/bind.h"

// Rows of several selects as one result: UNION and its like, VALUES, grouping sets.
namespace vorek::sqlite {

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

}  // namespace vorek::sqlite
