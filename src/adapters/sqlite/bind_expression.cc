#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "text/utf8.h"

namespace vorek::sqlite {
namespace {

constexpr int kMaxBinding = 2000;  // frames of the walk over a tree that the parser let through

}  // namespace

Bound MakeBound(std::string sql, const Type& type, int tightness) {
  Bound bound;
  bound.sql = std::move(sql);
  bound.type = type;
  bound.tightness = tightness;
  return bound;
}

std::string Wrap(const Bound& value, int tightness) {
  return value.tightness < tightness ? "(" + value.sql + ")" : value.sql;
}

double MostOf(const Bound& value) {
  if (value.literal == Bound::Literal::kNull) return 0;
  if (value.literal == Bound::Literal::kNumber) {
    return std::abs(std::strtod(value.value.c_str(), nullptr));
  }
  return value.most < 0 ? MostUnits(value.type) : value.most;
}

bool IsWide(const Bound& value) { return value.type.IsDecimal() && MostOf(value) > kMostInteger; }

Bound Ordered(Bound value) {
  if (IsWide(value)) return CallOf("vk_order", {value.sql}, value.type);
  return Collated(std::move(value));
}

Bound Checked(Bound value) {
  if (!value.unchecked) return value;
  Bound checked = CallOf("vk_in_" + TypeName(value.type), {value.sql}, value.type);
  checked.nullable = value.nullable;
  return checked;
}

Bound CallOf(std::string_view name, std::initializer_list<std::string> arguments,
             const Type& type) {
  std::string sql(name);
  sql += "(";
  for (const std::string& argument : arguments) {
    if (sql.back() != '(') sql += ", ";
    sql += argument;
  }
  return MakeBound(sql + ")", type);
}

Bound Collated(Bound value) {
  if (value.collated || !value.type.IsText()) return value;
  value.sql = Wrap(value, kCollation) + " COLLATE VOREK";
  value.tightness = kCollation;
  value.collated = true;
  return value;
}

void Binder::Refuse(std::size_t at, const std::string& message) const {
  vorek::sqlite::Refuse(source_, at, message);
}

Bound Binder::Bind(const Expr& expr) { return Checked(BindUnchecked(expr)); }

Bound Binder::BindUnchecked(const Expr& expr) {
  if (++depth_ > kMaxBinding) Refuse(expr.at, "The expression is nested too deeply");
  schema_.KeepTime();
  const std::size_t before = scope_ == nullptr ? 0 : scope_->ungrouped.size();
  // Of the queries around, which have groups of their own.
  std::vector<std::pair<Scope*, std::size_t>> around;
  for (Scope* scope = scope_ == nullptr ? nullptr : scope_->outer; scope != nullptr;
       scope = scope->outer) {
    if (!scope->group_keys.empty()) around.emplace_back(scope, scope->ungrouped.size());
  }
  Bound bound = BindAny(expr);
  --depth_;
  // Whatever a GROUP BY names may stand as a whole; what was noted inside of it is no offence.
  if (scope_ != nullptr && !scope_->group_keys.empty() &&
      scope_->group_keys.count(bound.sql) != 0) {
    scope_->ungrouped.resize(before);
  }
  for (const auto& [scope, count] : around) {
    if (scope->group_keys.count(bound.sql) != 0) scope->ungrouped.resize(count);
  }
  const bool absent = scope_ != nullptr && scope_->inside_aggregate == 0 &&
                      scope_->absent_keys.count(bound.sql) != 0;
  if (absent) {
    scope_->ungrouped.resize(before);
    const std::string name = bound.name;
    bound = MakeBound("NULL", bound.type);
    bound.name = name;
  }
  return bound;
}

Bound Binder::BindAny(const Expr& expr) {
  switch (expr.kind) {
    case ExprKind::kNull:
    case ExprKind::kNumber:
    case ExprKind::kMoney:
    case ExprKind::kText:
    case ExprKind::kBytes:
      return BindLiteral(expr);
    case ExprKind::kVariable:
      return BindVariable(expr);
    case ExprKind::kColumn:
      return BindColumn(expr);
    case ExprKind::kStar:
      Refuse(expr.at, "Incorrect syntax near '*'");
    case ExprKind::kUnary:
      return BindUnary(expr);
    case ExprKind::kBinary:
      return BindBinary(expr);
    case ExprKind::kCompare:
      return BindCompare(expr);
    case ExprKind::kAll:
    case ExprKind::kAny:
      return BindChain(expr);
    case ExprKind::kNot:
      return MakeBound("NOT " + BindCondition(*expr.operands[0], kLooseNot),
                       Make(TypeKind::kCondition), kLooseNot);
    case ExprKind::kBetween:
      return BindBetween(expr);
    case ExprKind::kIn:
      return BindIn(expr);
    case ExprKind::kLike:
      return BindLike(expr);
    case ExprKind::kIsNull:
      return BindIsNull(expr);
    case ExprKind::kExists:
      return MakeBound("EXISTS (" + BindQuery(*expr.query).sql + ")", Make(TypeKind::kCondition));
    case ExprKind::kQuantified:
      return BindQuantified(expr);
    case ExprKind::kSubquery:
      return BindSubquery(expr);
    case ExprKind::kCase:
      return BindCase(expr);
    case ExprKind::kFunction:
      return BindFunction(expr);
    case ExprKind::kCast:
      return BindCast(expr);
    case ExprKind::kCollate:
      return BindValue(*expr.operands[0]);  // there is one collation
  }
  Refuse(expr.at, "Incorrect syntax");
}

Bound Binder::BindOperand(const Expr& expr) {
  Bound bound = BindUnchecked(expr);
  if (bound.type.IsCondition()) Refuse(expr.at, "A condition stands where a value is expected");
  return bound;
}

Bound Binder::BindValue(const Expr& expr) { return Checked(BindOperand(expr)); }

std::string Binder::BindCondition(const Expr& expr, int tightness) {
  const Bound bound = Bind(expr);
  if (!bound.type.IsCondition()) {
    Refuse(expr.at, "An expression of non-boolean type stands where a condition is expected");
  }
  return Wrap(bound, tightness);
}

std::string Binder::Parameter(const std::string& name) {
  const auto found = std::find(parameters_.begin(), parameters_.end(), name);
  const auto index = found - parameters_.begin();
  if (found == parameters_.end()) parameters_.push_back(name);
  return "?" + std::to_string(index + 1);
}

Bound Binder::BindVariable(const Expr& expr) {
  const std::string name = LowerWord(expr.text);
  const auto argument = arguments_.find(name);
  if (argument != arguments_.end()) return argument->second;
  const auto found = variables_.find(name);
  if (found != variables_.end() && !found->second.table.empty()) {
    Refuse(expr.at, "Must declare the scalar variable \"" + expr.text + "\"");
  }
  if (found != variables_.end() && running_.count(name) != 0) {
    // "SELECT @x = @x + ..": each row sees what the row before has left.
    uses_running_ = true;
    return CallOf("vk_variable", {QuoteText(name)}, found->second.type);
  }
  if (found != variables_.end()) return MakeBound(Parameter(name), found->second.type);
  if (name == "@@rowcount" || name == "@@error" || name == "@@trancount" ||
      name == "@@fetch_status") {
    return MakeBound(Parameter(name), Make(TypeKind::kInt));
  }
  if (name == "@@identity") return MakeBound(Parameter(name), MakeDecimal(18, 0));
  if (name == "@@servername" || name == "@@version") {
    return TextLiteral("VorekSQLite", MakeText(TypeKind::kNVarChar, 128));
  }
  if (name.rfind("@@", 0) == 0) Refuse(expr.at, "'" + expr.text + "' is not supported");
  Refuse(expr.at, "Must declare the scalar variable \"" + expr.text + "\"");
}

Bound Binder::ColumnOf(Scope& scope, const Source& source, const ColumnInfo& column,
                       const Expr& expr) {
  Bound bound =
      MakeBound((source.bare ? "" : source.sql + ".") + QuoteName(column.name), column.type);
  if (!source.expressions.empty()) {
    bound = source.expressions[static_cast<std::size_t>(&column - source.Columns().data())];
  } else {
    bound.column = true;
    bound.collated = column.collated;
  }
  bound.nullable = column.nullable || source.nullable;
  bound.name = column.name;
  if (scope.carried != nullptr) {
    std::vector<std::string>& carried = *scope.carried;
    const auto found = std::find(carried.begin(), carried.end(), bound.sql);
    const auto index = found - carried.begin();
    if (found == carried.end()) carried.push_back(bound.sql);
    bound.sql = QuoteName("rows in order") + ".\"c" + std::to_string(index) + "\"";
  }
  if (scope.inside_aggregate == 0 && scope.group_keys.count(bound.sql) == 0) {
    scope.ungrouped.push_back({expr.at, source.name + "." + column.name});
  }
  return bound;
}

Bound Binder::BindColumn(const Expr& expr) {
  const std::string& name = expr.path.back();
  const bool qualified = expr.path.size() > 1;
  const std::string* qualifier = qualified ? &expr.path[expr.path.size() - 2] : nullptr;
  bool found_source = false;
  for (Scope* scope = scope_; scope != nullptr; scope = scope->outer) {
    const Source* source = nullptr;
    const ColumnInfo* hit = nullptr;
    for (const Source& candidate : scope->sources) {
      if (qualified && !text::EqualsIgnoreCase(candidate.name, *qualifier)) continue;
      found_source = true;
      for (const ColumnInfo& column : candidate.Columns()) {
        if (!text::EqualsIgnoreCase(column.name, name)) continue;
        if (hit != nullptr) Refuse(expr.at, "Ambiguous column name '" + name + "'");
        hit = &column;
        source = &candidate;
        break;
      }
    }
    if (hit != nullptr) return ColumnOf(*scope, *source, *hit, expr);
  }
  if (qualified && !found_source) {
    std::string path;
    for (const std::string& part : expr.path) path += (path.empty() ? "" : ".") + part;
    Refuse(expr.at, "The multi-part identifier \"" + path + "\" could not be bound");
  }
  Refuse(expr.at, "Invalid column name '" + name + "'");
}

Bound Binder::BindUnary(const Expr& expr) {
  const Expr& operand = *expr.operands[0];
  const bool literal = operand.kind == ExprKind::kNumber || operand.kind == ExprKind::kMoney;
  // "-2147483648" is an int although its digits alone aren't.
  if (literal && expr.text == "-") return BindNumber(operand, true);
  Bound value = BindOperand(operand);
  if (expr.text == "+" && value.type.IsText()) return value;
  if (!value.type.IsNumber() && !value.type.IsNull()) {
    Refuse(expr.at, "The data type " + TypeName(value.type) + " is invalid for the operator '" +
                        expr.text + "'");
  }
  if (expr.text == "+" || value.type.IsNull()) return value;
  if (expr.text == "~") {
    if (!value.type.IsWhole()) Refuse(expr.at, "'~' takes whole numbers only");
    value = Checked(std::move(value));
    if (value.type.kind == TypeKind::kBit || value.type.kind == TypeKind::kTinyInt) {
      const char* const all = value.type.kind == TypeKind::kBit ? "1 - " : "255 - ";
      return MakeBound(all + Wrap(value, kAdditive + 1), value.type, kAdditive);
    }
    return MakeBound("~" + Wrap(value, kPrefix), value.type, kPrefix);
  }
  if (value.type.kind == TypeKind::kTinyInt) {  // which has no negative ones
    value = Convert(std::move(value), Make(TypeKind::kSmallInt), Mode::kImplicit, expr.at);
  }
  return Negated(value);
}

Bound Binder::BindCase(const Expr& expr) {
  std::size_t at = expr.has_base ? 1 : 0;
  const std::size_t end = expr.operands.size() - (expr.has_else ? 1 : 0);
  Bound base;
  if (expr.has_base) base = BindValue(*expr.operands[0]);
  std::vector<std::string> conditions;
  std::vector<Bound> values;
  for (; at < end; at += 2) {
    if (expr.has_base) {
      Bound when = BindValue(*expr.operands[at]);
      conditions.push_back(Compare("=", base, std::move(when), *expr.operands[at]).sql);
    } else {
      conditions.push_back(BindCondition(*expr.operands[at], 0));
    }
    values.push_back(BindValue(*expr.operands[at + 1]));
  }
  if (expr.has_else) values.push_back(BindValue(*expr.operands.back()));
  Type type;
  for (const Bound& value : values) type = CommonType(type, value.type);
  std::string sql = "CASE";
  bool nullable = !expr.has_else;
  for (std::size_t i = 0; i < values.size(); ++i) {
    nullable = nullable || values[i].nullable;
    const Bound value = Convert(std::move(values[i]), type, Mode::kImplicit, expr.at);
    sql += i < conditions.size() ? " WHEN " + conditions[i] + " THEN " : " ELSE ";
    sql += value.sql;
  }
  Bound bound = MakeBound(sql + " END", type);
  bound.nullable = nullable;
  return bound;
}

Bound Binder::BindCast(const Expr& expr) {
  Bound value = BindValue(*expr.operands[0]);
  int style = 0;
  if (expr.operands.size() == 2) {
    const Bound given = BindValue(*expr.operands[1]);
    if (given.literal != Bound::Literal::kNumber || !given.type.IsWhole() ||
        given.value[0] == '-') {
      Refuse(expr.operands[1]->at, "The style of CONVERT must be a number as it stands");
    }
    style = std::atoi(given.value.c_str());
    if (style == 0 && value.type.IsDate()) style = 100;  // the same, and not that of the kind
  }
  const Mode mode = expr.text.rfind("try_", 0) == 0 ? Mode::kTry : Mode::kCast;
  Bound result = Convert(std::move(value), expr.type, mode, expr.at, style);
  result.name.clear();
  if (result.column) {
    result.column = false;
    result.collated = false;
  }
  return result;
}

}  // namespace vorek::sqlite
