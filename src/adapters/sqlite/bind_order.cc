#include <charconv>
#include <cstdlib>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "text/utf8.h"

// ORDER BY, and how many of the rows stay: TOP, OFFSET and FETCH.
namespace vorek::sqlite {

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

}  // namespace vorek::sqlite
