#include <algorithm>
#include <array>
#include <utility>

#include "adapters/sqlite/bind.h"

// Aggregates and window functions.
namespace vorek::sqlite {
namespace {

constexpr std::array<std::string_view, 12> kAggregates = {
    "count", "count_big", "sum", "avg",  "min",        "max",
    "stdev", "stdevp",    "var", "varp", "string_agg", "checksum_agg"};
constexpr std::array<std::string_view, 8> kRanking = {
    "row_number", "rank", "dense_rank", "ntile", "lag", "lead", "first_value", "last_value"};

template <typename List>
bool Holds(const List& list, std::string_view name) {
  return std::find(list.begin(), list.end(), name) != list.end();
}

}  // namespace

std::string Binder::BindWindow(const Expr& expr) {
  if (expr.window == nullptr) return "";
  if (scope_ != nullptr && scope_->grouping_set != nullptr) {
    Refuse(expr.at, "A window beside ROLLUP, CUBE or GROUPING SETS is not supported");
  }
  std::string sql;
  for (const ExprPtr& key : expr.window->partition) {
    sql += (sql.empty() ? "PARTITION BY " : ", ") + Collated(BindValue(*key)).sql;
  }
  std::string order;
  for (const OrderItem& item : expr.window->order) {
    order += (order.empty() ? "ORDER BY " : ", ") + Ordered(BindValue(*item.expr)).sql;
    if (item.descending) order += " DESC";
  }
  if (!sql.empty() && !order.empty()) sql += " ";
  sql += order;
  if (!expr.window->frame.empty()) sql += " " + expr.window->frame;
  return " OVER (" + sql + ")";
}

Bound Binder::BindAggregate(const Expr& expr, const std::string& name) {
  if (Holds(kRanking, name)) return BindRanking(expr, name);
  if (name == "grouping" && expr.operands.size() == 1 && scope_ != nullptr) {
    // Bound as in an aggregate, where a key of another set stays what it is.
    ++scope_->inside_aggregate;
    const Bound key = BindOperand(*expr.operands[0]);
    --scope_->inside_aggregate;
    const bool absent = scope_->absent_keys.count(key.sql) != 0;
    if (!absent && scope_->group_keys.count(key.sql) == 0) {
      Refuse(expr.at, "GROUPING takes a key of the GROUP BY");
    }
    return NumberLiteral(absent ? 1 : 0, Make(TypeKind::kTinyInt));
  }
  if (!Holds(kAggregates, name)) {
    const ModuleInfo* module = schema_.FindModule(name);
    if (module != nullptr && module->kind == "FN") return BindUserFunction(expr);
    Refuse(expr.at, "'" + expr.path[0] + "' is not a recognized built-in function name");
  }
  if (name == "checksum_agg") Refuse(expr.at, "'" + expr.path[0] + "' is not supported");
  const std::size_t takes = name == "string_agg" ? 2 : 1;
  if (expr.operands.size() != takes) {
    Refuse(expr.at,
           "The function '" + expr.path[0] + "' takes " + std::to_string(takes) + " argument(s)");
  }
  if (scope_ == nullptr || !scope_->takes_aggregates) {
    Refuse(expr.at, "An aggregate may not stand here: a select list, HAVING and ORDER BY take one");
  }
  if (scope_->inside_aggregate > 0) {
    Refuse(expr.at, "An aggregate may not stand inside of an aggregate");
  }
  const bool whole_query = expr.window == nullptr;
  if (whole_query) {
    scope_->has_aggregate = true;
    ++scope_->inside_aggregate;
  }
  Bound argument;
  if (expr.operands[0]->kind == ExprKind::kStar) {
    argument = MakeBound("*", Make(TypeKind::kInt));
    if (name != "count" && name != "count_big") Refuse(expr.at, "Incorrect syntax near '*'");
  } else {
    const bool sums = name == "sum" || name == "avg";
    argument = sums ? BindOperand(*expr.operands[0]) : BindValue(*expr.operands[0]);
  }
  Bound result = AggregateOf(expr, name, std::move(argument));
  if (whole_query) --scope_->inside_aggregate;
  return result;
}

Bound Binder::AggregateOf(const Expr& expr, const std::string& name, Bound argument) {
  const std::string window = BindWindow(expr);
  const std::string distinct = expr.distinct ? "DISTINCT " : "";
  const auto invalid = [&] {
    Refuse(expr.at, "Operand data type " + TypeName(argument.type) + " is invalid for " + name +
                        " operator");
  };
  if (name == "count" || name == "count_big") {
    if (expr.distinct) argument = Collated(std::move(argument));
    Bound result = MakeBound("count(" + distinct + argument.sql + ")" + window,
                             Make(name == "count" ? TypeKind::kInt : TypeKind::kBigInt));
    result.nullable = false;
    return result;
  }
  if (name == "min" || name == "max") {
    if (argument.type.kind == TypeKind::kBit) invalid();
    const Bound extreme =
        MakeBound(name + "(" + Ordered(argument).sql + ")" + window, argument.type);
    return IsWide(argument) ? CallOf("vk_of_order", {extreme.sql}, extreme.type) : extreme;
  }
  if (name == "string_agg") {
    if (expr.distinct) Refuse(expr.at, "STRING_AGG takes no DISTINCT");
    if (!argument.type.IsText()) {
      argument = Convert(std::move(argument), MakeText(TypeKind::kNVarChar, Type::kMax),
                         Mode::kImplicit, expr.at);
    }
    const Bound separator = BindValue(*expr.operands[1]);
    return MakeBound("group_concat(" + argument.sql + ", " + separator.sql + ")" + window,
                     MakeText(TypeKind::kNVarChar, Type::kMax));
  }
  if (!argument.type.IsNumber() || argument.type.kind == TypeKind::kBit) invalid();
  if (name != "sum" && name != "avg") {
    const Bound number =
        Convert(std::move(argument), Make(TypeKind::kFloat), Mode::kImplicit, expr.at);
    return MakeBound("vk_" + name + "(" + distinct + number.sql + ")" + window,
                     Make(TypeKind::kFloat));
  }
  Type type = argument.type;
  if (type.kind == TypeKind::kTinyInt || type.kind == TypeKind::kSmallInt) {
    type = Make(TypeKind::kInt);
  }
  if (type.kind == TypeKind::kReal) type = Make(TypeKind::kFloat);
  if (type.kind == TypeKind::kSmallMoney) type = Make(TypeKind::kMoney);
  if (type.IsDecimal()) type = MakeDecimal(38, type.scale);
  const std::string function = type.IsDecimal() ? "vk_sum(" : "sum(";
  const bool product = type.IsDecimal() && !expr.distinct && !argument.factors.empty();
  const std::string& summed = product ? argument.factors : argument.sql;
  Bound sum = MakeBound(function + distinct + summed + ")" + window, type);
  // An overflow of SQLite's sum is an error of its own, save for one that was handed to it.
  sum.unchecked = type.IsWhole() || type.IsMoney();
  sum = Checked(std::move(sum));
  if (name == "sum") return sum;
  if (type.IsFloat()) return MakeBound("avg(" + distinct + argument.sql + ")" + window, type);
  const std::string count = "count(" + distinct + argument.sql + ")" + window;
  if (!type.IsDecimal()) return MakeBound(sum.sql + " / " + count, type, kMultiplicative);
  const Type average = MakeDecimal(38, std::max(type.scale, 6));
  return CallOf("vk_quotient", {sum.sql, count, std::to_string(average.scale - type.scale)},
                average);
}

Bound Binder::BindRanking(const Expr& expr, const std::string& name) {
  if (scope_ == nullptr || !scope_->takes_aggregates) {
    Refuse(expr.at, "A window function may not stand here: a select list and ORDER BY take one");
  }
  if (expr.window == nullptr || expr.window->order.empty()) {
    Refuse(expr.at, "The function '" + name + "' must have an OVER clause with ORDER BY");
  }
  const bool ranks = name == "row_number" || name == "rank" || name == "dense_rank";
  const std::size_t count = expr.operands.size();
  const std::size_t most = ranks ? 0 : name == "lag" || name == "lead" ? 3 : 1;
  if (count > most || (!ranks && count == 0)) {
    Refuse(expr.at, "Wrong number of arguments of the function '" + name + "'");
  }
  Type type = Make(TypeKind::kBigInt);
  std::string arguments;
  for (std::size_t i = 0; i < count; ++i) {
    Bound argument = BindValue(*expr.operands[i]);
    if (i == 0 && name != "ntile") type = argument.type;
    if (i == 1 && argument.literal == Bound::Literal::kNumber && argument.value[0] == '-') {
      Refuse(expr.at, "The offset of '" + name + "' can't be negative");
    }
    if (i == 2) argument = Convert(std::move(argument), type, Mode::kImplicit, expr.at);
    arguments += (i == 0 ? "" : ", ") + argument.sql;
  }
  return MakeBound(name + "(" + arguments + ")" + BindWindow(expr), type);
}

}  // namespace vorek::sqlite
