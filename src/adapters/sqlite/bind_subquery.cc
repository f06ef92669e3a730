#include <algorithm>
#include <array>
#include <string>

#include "adapters/sqlite/bind.h"
#include "text/utf8.h"

// Subqueries as values: those that can give more than one row are watched.
namespace vorek::sqlite {

bool Binder::GivesOneRow(const Query& query) {
  if (query.joins_texts) return true;
  const vorek::sqlite::Select* select =
      query.branches.size() == 1 ? query.branches[0].select.get() : nullptr;
  if (select == nullptr || !select->values.empty()) return false;
  if (select->top != nullptr && select->top->text == "1" && !select->top_percent) return true;
  if (!select->group.empty() || select->items.size() != 1) return false;
  const Expr& item = *select->items[0].expr;
  constexpr std::array<std::string_view, 6> kAggregates = {"max", "min",   "sum",
                                                           "avg", "count", "count_big"};
  const bool aggregate =
      item.kind == ExprKind::kFunction && item.window == nullptr &&
      std::any_of(kAggregates.begin(), kAggregates.end(),
                  [&](std::string_view name) { return SameWord(name, item.path.back()); });
  return aggregate || NamesRowKey(*select);
}

bool Binder::NamesRowKey(const vorek::sqlite::Select& select) {
  // "... from t where t.ID = <something from elsewhere>", ID being the row's number.
  const bool simple = select.where != nullptr && select.from.size() == 1 &&
                      select.from[0].kind == TableRef::Kind::kTable &&
                      FindCommonTable(select.from[0].name) == nullptr;
  if (!simple) return false;
  const TableRef& from = select.from[0];
  const TableInfo* table = schema_.FindTable(from.name.Last());
  if (table == nullptr || schema_.FindModule(from.name.Last()) != nullptr) return false;
  const std::string& name = from.alias.empty() ? from.name.Last() : from.alias;
  const auto own = [&](const Expr& expr) -> const ColumnInfo* {
    if (expr.kind != ExprKind::kColumn) return nullptr;
    const bool other =
        expr.path.size() > 1 && !text::EqualsIgnoreCase(expr.path[expr.path.size() - 2], name);
    return other ? nullptr : table->Find(expr.path.back());
  };
  const auto constant = [&](const Expr& expr) {
    return expr.operands.empty() && expr.query == nullptr && own(expr) == nullptr;
  };
  const auto pins = [&](const Expr& condition) {
    if (condition.kind != ExprKind::kCompare || condition.text != "=") return false;
    for (std::size_t side = 0; side < 2; ++side) {
      const ColumnInfo* key = own(*condition.operands[side]);
      if (key != nullptr && key->row_key && constant(*condition.operands[1 - side])) return true;
    }
    return false;
  };
  if (select.where->kind != ExprKind::kAll) return pins(*select.where);
  return std::any_of(select.where->operands.begin(), select.where->operands.end(),
                     [&](const ExprPtr& condition) { return pins(*condition); });
}

Bound Binder::BindSubquery(const Expr& expr) {
  BoundQuery query = BindQuery(*expr.query);
  if (query.columns.size() != 1) Refuse(expr.at, "A subquery used as a value must have one column");
  Bound bound = MakeBound("(" + query.sql + ")", query.columns[0].type);
  // More than one row is an error, where SQLite by itself would take the first.
  if (!GivesOneRow(*expr.query)) {
    bound.sql = "(WITH \"one\"(\"v\") AS (" + query.sql + ") SELECT vk_one(\"v\") FROM \"one\")";
  }
  return bound;
}

Bound Binder::BindQuantified(const Expr& expr) {
  const bool all = expr.path[0] == "all";
  if (expr.text == "=" && !all) {
    Refuse(expr.at, "'= ANY' is not supported: write IN");
  }
  Refuse(expr.at, std::string("A comparison with ") + (all ? "ALL" : "ANY") + " is not supported");
}

}  // namespace vorek::sqlite
