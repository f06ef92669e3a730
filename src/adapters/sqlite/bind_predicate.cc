#include <utility>

#include "adapters/sqlite/bind.h"

// Conditions: AND and OR, BETWEEN, IN, LIKE, IS NULL.
namespace vorek::sqlite {
namespace {

// 'x' = 'x', by which an empty parameter switches a condition off: "Date >= 1 or ''=''". The server
// drops such a chain before it looks at any row, so that the rest of it can't fail.
bool IsAlwaysTrue(const Expr& expr) {
  return expr.kind == ExprKind::kCompare && expr.text == "=" &&
         expr.operands[0]->kind == ExprKind::kText && expr.operands[1]->kind == ExprKind::kText &&
         expr.operands[0]->text == expr.operands[1]->text;
}

}  // namespace

Bound Binder::BindChain(const Expr& expr) {
  const bool all = expr.kind == ExprKind::kAll;
  const int tightness = all ? kLooseAnd : kLooseOr;
  std::vector<std::string> terms;
  for (const ExprPtr& operand : expr.operands) {
    terms.push_back(IsAlwaysTrue(*operand) ? "1"
                                           : BindCondition(*operand, tightness + (all ? 0 : 1)));
  }
  // SQLite limits how deep a chain may be: pairs of pairs keep a long one flat.
  const std::string link = all ? " AND " : " OR ";
  constexpr std::size_t kLongChain = 200;
  while (terms.size() > kLongChain) {
    std::vector<std::string> pairs;
    for (std::size_t i = 0; i + 1 < terms.size(); i += 2) {
      pairs.push_back("(" + terms[i] + link + terms[i + 1] + ")");
    }
    if (terms.size() % 2 != 0) pairs.push_back(terms.back());
    terms = std::move(pairs);
  }
  std::string sql = terms[0];
  for (std::size_t i = 1; i < terms.size(); ++i) sql += link + terms[i];
  return MakeBound(std::move(sql), Make(TypeKind::kCondition), tightness);
}

Bound Binder::BindBetween(const Expr& expr) {
  Bound value = BindValue(*expr.operands[0]);
  Bound low = BindValue(*expr.operands[1]);
  Bound high = BindValue(*expr.operands[2]);
  Bound from = Compare(">=", value, std::move(low), expr);
  Bound to = Compare("<=", std::move(value), std::move(high), expr);
  Bound both = MakeBound(from.sql + " AND " + to.sql, Make(TypeKind::kCondition), kLooseAnd);
  if (!expr.negated) return both;
  return MakeBound("NOT (" + both.sql + ")", both.type, kLooseNot);
}

Bound Binder::BindIn(const Expr& expr) {
  Bound value = BindValue(*expr.operands[0]);
  return expr.query != nullptr ? InQuery(expr, std::move(value)) : InList(expr, std::move(value));
}

Bound Binder::InQuery(const Expr& expr, Bound value) {
  BoundQuery query = BindQuery(*expr.query);
  if (query.columns.size() != 1) {
    Refuse(expr.at, "A subquery behind IN must have one column");
  }
  // Both sides take one type; the subquery is bound again if it is the one that changes.
  const Type common = CommonType(value.type, query.columns[0].type);
  const Type& theirs = query.columns[0].type;
  const bool same_units = common.IsWhole() || common.IsText() || common.IsNull() ||
                          (theirs.kind == common.kind && theirs.scale == common.scale);
  if (!same_units || (common.IsWhole() && !theirs.IsWhole())) {
    const Targets targets = {{common, ""}};
    query = BindQuery(*expr.query, &targets);
  }
  const bool convert = common.IsText()
                           ? !value.type.IsText()
                           : value.type.kind != common.kind || value.type.scale != common.scale;
  if (convert && !(common.IsWhole() && value.type.IsWhole())) {
    value = Convert(std::move(value), common, Mode::kImplicit, expr.at);
  }
  return AmongThem(expr, std::move(value), query.sql);
}

Bound Binder::InList(const Expr& expr, Bound value) {
  std::string list;
  bool plain = true;
  std::vector<Bound> items;
  for (std::size_t i = 1; i < expr.operands.size(); ++i) {
    items.push_back(BindValue(*expr.operands[i]));
    Bound left = value;
    Bound right = items.back();
    MakeComparable(left, right, expr);
    const bool texts = left.type.IsText() && right.type.IsText();
    plain = plain && (texts || left.sql == value.sql);
    list += (i == 1 ? "" : ", ") + right.sql;
  }
  if (plain) return AmongThem(expr, std::move(value), list);
  // The left side changes its units with the item beside it: written out as comparisons.
  const Type condition = Make(TypeKind::kCondition);
  std::string any;
  for (Bound& item : items) {
    any += (any.empty() ? "" : " OR ") + Compare("=", value, std::move(item), expr).sql;
  }
  if (expr.negated) return MakeBound("NOT (" + any + ")", condition, kLooseNot);
  return MakeBound(any, condition, kLooseOr);
}

Bound Binder::AmongThem(const Expr& expr, Bound value, const std::string& them) {
  value = Collated(std::move(value));
  return MakeBound(Wrap(value, kEquality + 1) + (expr.negated ? " NOT IN (" : " IN (") + them + ")",
                   Make(TypeKind::kCondition), kEquality);
}

Bound Binder::BindLike(const Expr& expr) {
  const Type wide = MakeText(TypeKind::kNVarChar, Type::kMax);
  const auto as_text = [&](const Expr& operand) {
    Bound value = BindValue(operand);
    if (value.type.IsText() || value.type.IsNull()) return value;
    return Convert(std::move(value), wide, Mode::kImplicit, expr.at);
  };
  Bound value = as_text(*expr.operands[0]);
  const Bound pattern = as_text(*expr.operands[1]);
  std::string escape;
  if (expr.operands.size() == 3) escape = ", " + as_text(*expr.operands[2]).sql;
  const bool national = value.type.IsNational() || pattern.type.IsNational();
  std::string sql =
      (national ? "vk_like(" : "vk_like_char(") + value.sql + ", " + pattern.sql + escape + ")";
  // What stands in front of the first wildcard bounds the column from below, and the whole pattern
  // is the only text if there is none: an index then finds the few rows that are looked at.
  int tightness = kTight;
  if (pattern.literal == Bound::Literal::kText && value.column && escape.empty()) {
    const std::string head = pattern.value.substr(0, pattern.value.find_first_of("%_["));
    const std::string column = Wrap(Collated(value), kRelation + 1);
    const auto literal = [&](const std::string& text) {
      return TextLiteral(text, pattern.type).sql;
    };
    if (head.size() == pattern.value.size()) {
      sql = column + " = " + literal(head) + " AND " + sql;
      tightness = kLooseAnd;
    } else if (!head.empty()) {
      sql = column + " >= " + literal(head) + " AND " + column + " < " +
            literal(head + "\xF4\x8F\xBF\xBF") + " AND " + sql;
      tightness = kLooseAnd;
    }
  }
  const Type condition = Make(TypeKind::kCondition);
  if (expr.negated) {
    return MakeBound(tightness == kTight ? "NOT " + sql : "NOT (" + sql + ")", condition,
                     kLooseNot);
  }
  return MakeBound(std::move(sql), condition, tightness);
}

Bound Binder::BindIsNull(const Expr& expr) {
  const Bound value = BindValue(*expr.operands[0]);
  return MakeBound(Wrap(value, kEquality + 1) + (expr.negated ? " IS NOT NULL" : " IS NULL"),
                   Make(TypeKind::kCondition), kEquality);
}

}  // namespace vorek::sqlite
