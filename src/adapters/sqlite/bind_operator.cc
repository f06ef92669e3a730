#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/exact.h"

// Operators: what they give depends on the types of both sides.
namespace vorek::sqlite {
namespace {

bool IsNonZeroLiteral(const Bound& value) {
  return value.literal == Bound::Literal::kNumber && value.value != "0";
}

// The decimal that a product or a quotient gives, held to 38 digits as the dialect does it.
Type Held(int precision, int scale) {
  const int whole = precision - scale;
  if (precision > kMostDigits) scale = std::max(kMostDigits - whole, std::min(scale, 6));
  return MakeDecimal(precision, scale);
}

bool IsLiteral(const Expr& expr) {
  if (expr.kind == ExprKind::kUnary) return IsLiteral(*expr.operands[0]);
  return expr.kind == ExprKind::kNumber || expr.kind == ExprKind::kText;
}

// The digits that a literal has of itself: 3 is decimal(1,0), not decimal(10,0).
Type DigitsOf(const Bound& value) {
  if (value.literal != Bound::Literal::kNumber || !value.type.IsWhole()) {
    return AsDecimal(value.type);
  }
  const int digits = static_cast<int>(value.value.size()) - (value.value[0] == '-' ? 1 : 0);
  return MakeDecimal(std::max(digits, 1), 0);
}

// A real number has single precision behind each operator.
Bound Single(Bound value) {
  if (value.type.kind != TypeKind::kReal) return value;
  return CallOf("vk_real", {value.sql}, value.type);
}

// A whole number's or money's result: one that may leave its range is checked, at once or, where
// SQLite itself marks it by a real number, behind the last operator.
Bound Ranged(Bound result, double most) {
  const Type& type = result.type;
  if (type.kind == TypeKind::kBigInt || type.kind == TypeKind::kMoney) {
    result.unchecked = result.unchecked || most > kMostInteger;
    return result;
  }
  const bool fits = type.kind != TypeKind::kTinyInt && most < MostUnits(type);
  result.most = fits ? most : -1;
  result.unchecked = !fits;
  return Checked(std::move(result));
}

// An operation of exact numbers that gives at most so many units: by SQLite's operator where that
// is exact, by the function where it isn't.
Bound Computed(Bound native, double most, std::string_view function,
               const std::vector<Bound>& operands) {
  if (native.type.IsFloat()) return Single(std::move(native));
  const bool wide = std::any_of(operands.begin(), operands.end(), IsWide) ||
                    (native.type.IsDecimal() && most > kMostInteger);
  Bound result = std::move(native);
  if (wide) {
    std::string sql;
    for (const Bound& operand : operands) sql += (sql.empty() ? "" : ", ") + operand.sql;
    result.sql = std::string(function) + "(" + sql + ")";
    result.tightness = kTight;
  }
  result.nullable = std::any_of(operands.begin(), operands.end(),
                                [](const Bound& operand) { return operand.nullable; });
  if (!result.type.IsDecimal()) return Ranged(std::move(result), wide ? 2 * kMostInteger : most);
  result.most = std::min(most, MostUnits(result.type));
  return result;
}

Bound Count(int number) { return NumberLiteral(number, Make(TypeKind::kInt)); }

}  // namespace

Bound CutToRoom(Bound text) {
  const int most = LongestText(text.type.IsNational());
  if (text.type.length == Type::kMax || text.type.length < most) return text;
  Bound cut = CallOf("substr", {text.sql, "1", std::to_string(most)}, text.type);
  cut.nullable = text.nullable;
  return cut;
}

Bound Binder::BindBinary(const Expr& expr) {
  Bound left = BindOperand(*expr.operands[0]);
  Bound right = BindOperand(*expr.operands[1]);
  return Arithmetic(expr, expr.text, std::move(left), std::move(right));
}

Bound Binder::Negated(const Bound& value) {
  Bound native = MakeBound("-" + Wrap(value, kPrefix + 1), value.type, kPrefix);
  native.nullable = value.nullable;
  return Computed(std::move(native), MostOf(value), "vk_negate", {value});
}

void Binder::RefuseOperands(const Expr& expr, const Bound& a, const Bound& b) const {
  Refuse(expr.at, "The data types " + TypeName(a.type) + " and " + TypeName(b.type) +
                      " are incompatible in the operator '" + expr.text + "'");
}

Bound Binder::Arithmetic(const Expr& expr, const std::string& op, Bound a, Bound b) {
  const bool both_text = (a.type.IsText() || a.type.IsNull()) &&
                         (b.type.IsText() || b.type.IsNull()) &&
                         (a.type.IsText() || b.type.IsText());
  if (op == "+" && both_text) return Concatenate(a, b);
  if (a.type.IsDate() || b.type.IsDate()) {
    return DateArithmetic(expr, op, std::move(a), std::move(b));
  }
  if (a.type.IsNull() && b.type.IsNull()) a.type = b.type = Make(TypeKind::kInt);
  const Type common = CommonType(a.type, b.type);
  const bool bitwise = op == "&" || op == "|" || op == "^";
  if (!common.IsNumber() || (common.kind == TypeKind::kBit && !bitwise)) {
    RefuseOperands(expr, a, b);
  }
  // A text takes the type of the number beside it.
  if (a.type.IsText() || a.type.IsNull()) a = Convert(a, common, Mode::kImplicit, expr.at);
  if (b.type.IsText() || b.type.IsNull()) b = Convert(b, common, Mode::kImplicit, expr.at);
  if (!a.type.IsNumber() || !b.type.IsNumber()) RefuseOperands(expr, a, b);
  if (op != "+" && op != "-" && op != "*") {
    a = Checked(std::move(a));
    b = Checked(std::move(b));
  }
  if (bitwise) {
    if (!common.IsWhole()) RefuseOperands(expr, a, b);
    if (op == "^") return CallOf("vk_xor", {a.sql, b.sql}, common);
    return MakeBound(Wrap(a, kBitwise) + " " + op + " " + Wrap(b, kBitwise + 1), common, kBitwise);
  }
  if (op == "%" && common.IsFloat()) RefuseOperands(expr, a, b);
  if (common.IsFloat()) {
    a = Convert(std::move(a), common, Mode::kImplicit, expr.at);
    b = Convert(std::move(b), common, Mode::kImplicit, expr.at);
  }
  if (op == "*") return Multiply(a, b, common);
  if (op == "/") return Divide(a, b, common);
  if (op == "%") return Modulo(std::move(a), std::move(b), common);
  return AddOrSubtract(op, std::move(a), std::move(b), common);
}

Bound Binder::Concatenate(const Bound& a, const Bound& b) {
  Type type = CommonType(a.type, b.type);
  bool longer = false;
  if (a.type.IsText() && b.type.IsText()) {
    const bool unlimited = a.type.length == Type::kMax || b.type.length == Type::kMax;
    const int most = LongestText(type.IsNational());
    const int length = a.type.length + b.type.length;
    longer = !unlimited && length > most;
    type = MakeText(type.IsNational() ? TypeKind::kNVarChar : TypeKind::kVarChar,
                    unlimited ? Type::kMax : std::min(length, most));
  }
  Bound result = MakeBound(Wrap(a, kConcatenation) + " || " + Wrap(b, kConcatenation + 1), type,
                           kConcatenation);
  result.nullable = a.nullable || b.nullable;
  return longer ? CutToRoom(std::move(result)) : result;
}

Bound Binder::Rescaled(const Bound& value, int step) {
  if (step == 0 || value.literal == Bound::Literal::kNull) return value;
  if (step < 0) {
    Bound down = CallOf("vk_rescale", {value.sql, std::to_string(step)},
                        MakeDecimal(kMostDigits, value.type.scale + step));
    down.most = MostOf(value) * std::pow(10.0, step) + 1;
    down.nullable = value.nullable;
    return down;
  }
  const double most = MostOf(value) * std::pow(10.0, step);
  const Type type = MakeDecimal(kMostDigits, value.type.scale + step);
  const std::string unit = most > kMostInteger ? "" : WideText(WidePower(std::min(step, 18)), 0);
  if (value.literal == Bound::Literal::kNumber && most < kMostInteger) {
    return NumberLiteral(
        std::strtoll(value.value.c_str(), nullptr, 10) * std::strtoll(unit.c_str(), nullptr, 10),
        type);
  }
  return Computed(MakeBound(Wrap(value, kMultiplicative) + " * " + unit, type, kMultiplicative),
                  most, "vk_rescale", {Checked(value), Count(step)});
}

void Binder::AlignScales(Bound& a, Bound& b) {
  const int scale = std::max(a.type.scale, b.type.scale);
  if (a.type.scale < scale) a = Rescaled(a, scale - a.type.scale);
  if (b.type.scale < scale) b = Rescaled(b, scale - b.type.scale);
}

Bound Binder::AddOrSubtract(const std::string& op, Bound a, Bound b, const Type& common) {
  Type type = common;
  int down = 0;
  if (common.IsDecimal()) {
    const Type da = DigitsOf(a);
    const Type db = DigitsOf(b);
    const int scale = std::max(da.scale, db.scale);
    const int whole = std::max(da.precision - da.scale, db.precision - db.scale);
    type = MakeDecimal(whole + scale + 1, scale);
    down = whole + scale + 1 > kMostDigits ? std::max(0, scale - (kMostDigits - whole)) : 0;
  }
  if (common.IsExact()) AlignScales(a, b);
  Bound result =
      MakeBound(Wrap(a, kAdditive) + " " + op + " " + Wrap(b, kAdditive + 1), type, kAdditive);
  result.nullable = a.nullable || b.nullable;
  result = Computed(std::move(result), MostOf(a) + MostOf(b), op == "+" ? "vk_plus" : "vk_minus",
                    {a, b});
  return down == 0 ? result : Rescaled(result, -down);
}

Bound Binder::Multiply(const Bound& a, const Bound& b, const Type& common) {
  const double most = MostOf(a) * MostOf(b);
  Bound product = MakeBound(Wrap(a, kMultiplicative) + " * " + Wrap(b, kMultiplicative + 1), common,
                            kMultiplicative);
  product.nullable = a.nullable || b.nullable;
  if (common.IsMoney() && a.type.scale + b.type.scale > common.scale) {
    return Ranged(CallOf("vk_times", {a.sql, b.sql, "4"}, common), most);
  }
  if (!common.IsDecimal()) return Computed(std::move(product), most, "vk_times", {a, b, Count(0)});
  const Type da = DigitsOf(a);
  const Type db = DigitsOf(b);
  product.type = Held(da.precision + db.precision + 1, da.scale + db.scale);
  const int down = da.scale + db.scale - product.type.scale;
  if (down == 0) {
    product = Computed(std::move(product), most, "vk_times", {a, b, Count(0)});
    if (product.tightness == kTight) product.factors = a.sql + ", " + b.sql;
    return product;
  }
  Bound rounded = CallOf("vk_times", {a.sql, b.sql, std::to_string(down)}, product.type);
  rounded.nullable = product.nullable;
  return rounded;
}

Bound Binder::Divide(const Bound& a, const Bound& b, const Type& common) {
  Bound native = MakeBound(Wrap(a, kMultiplicative) + " / " + Wrap(b, kMultiplicative + 1), common,
                           kMultiplicative);
  if (common.IsFloat()) {
    return Single(IsNonZeroLiteral(b) ? native : CallOf("vk_divide", {a.sql, b.sql}, common));
  }
  if (common.IsWhole() || (common.IsMoney() && b.type.scale == 0)) {
    const bool native_fits = IsNonZeroLiteral(b) && !IsWide(a);
    Bound result =
        native_fits ? std::move(native) : CallOf("vk_quotient", {a.sql, b.sql, "0"}, common);
    // Nothing but the least number by -1 leaves the range.
    return Ranged(std::move(result), MostOf(a) / (IsNonZeroLiteral(b) ? MostOf(b) : 1));
  }
  Type type = common;
  if (!common.IsMoney()) {
    const Type da = DigitsOf(a);
    const Type db = DigitsOf(b);
    const int scale = std::max(6, da.scale + db.precision + 1);
    type = Held(da.precision - da.scale + db.scale + scale, scale);
  }
  // units(a) 10^-sa / (units(b) 10^-sb) in units of 10^-s is units(a) 10^(s - sa + sb) / units(b).
  const int step = type.scale - a.type.scale + b.type.scale;
  Bound quotient = CallOf("vk_quotient", {a.sql, b.sql, std::to_string(step)}, type);
  return type.IsDecimal() ? quotient : Ranged(std::move(quotient), 2 * kMostInteger);
}

Bound Binder::Modulo(Bound a, Bound b, const Type& common) {
  Type type = common;
  if (common.IsDecimal()) {
    const Type da = DigitsOf(a);
    const Type db = DigitsOf(b);
    const int scale = std::max(da.scale, db.scale);
    type = MakeDecimal(std::min(da.precision - da.scale, db.precision - db.scale) + scale, scale);
  }
  AlignScales(a, b);
  if (!IsNonZeroLiteral(b)) return CallOf("vk_remainder", {a.sql, b.sql}, type);
  return Computed(MakeBound(Wrap(a, kMultiplicative) + " % " + Wrap(b, kMultiplicative + 1), type,
                            kMultiplicative),
                  std::min(MostOf(a), MostOf(b)), "vk_remainder", {a, b});
}

Bound Binder::DateArithmetic(const Expr& expr, const std::string& op, Bound a, Bound b) {
  const Type common = CommonType(a.type, b.type);
  const bool moment = common.kind == TypeKind::kDateTime || common.kind == TypeKind::kSmallDateTime;
  if (!moment || (op != "+" && op != "-")) RefuseOperands(expr, a, b);
  const Type days = Make(TypeKind::kFloat);
  a = Convert(a, a.type.IsNumber() ? days : common, Mode::kImplicit, expr.at);
  b = Convert(b, b.type.IsNumber() ? days : common, Mode::kImplicit, expr.at);
  const auto in_days = [](const Bound& value) {
    return value.type.IsDate() ? "vk_days(" + value.sql + ")" : Wrap(value, kAdditive + 1);
  };
  return CallOf("vk_date_of_days",
                {in_days(a) + " " + op + " " + in_days(b), QuoteText(TypeName(common))}, common);
}

void Binder::MakeComparable(Bound& a, Bound& b, const Expr& expr) {
  const Type common = CommonType(a.type, b.type);
  if (a.type.IsNull() || b.type.IsNull()) return;
  if (common.IsText()) {
    if (!a.collated && (a.column || !b.collated)) a = Collated(std::move(a));
    return;
  }
  const bool exact = a.type.IsExact() && b.type.IsExact();
  if (!exact) {
    // Whole numbers and floats compare as they are; everything else takes the common type.
    const auto takes = [&](Bound& value) {
      if (value.type.IsWhole() && common.IsFloat()) return;
      if (value.type.kind != common.kind || value.type.scale != common.scale) {
        value = Convert(std::move(value), common, Mode::kImplicit, expr.at);
      }
    };
    takes(a);
    takes(b);
    if (!a.type.IsExact() || !b.type.IsExact()) return;
  }
  if (IsWide(a) || IsWide(b)) return AlignScales(a, b);
  // A literal with more places than the column has is put into the column's units, as a real
  // number if it falls between two of them: the column stays bare, so that its index serves.
  const auto into_units_of = [](Bound& literal, const Bound& other) {
    const int step = literal.type.scale - other.type.scale;
    if (literal.literal != Bound::Literal::kNumber || !other.column || step <= 0) return;
    std::string digits = literal.value;
    const bool negative = digits[0] == '-';
    if (negative) digits.erase(0, 1);
    if (digits.size() <= static_cast<std::size_t>(step)) {
      digits.insert(0, static_cast<std::size_t>(step) + 1 - digits.size(), '0');
    }
    digits.insert(digits.size() - static_cast<std::size_t>(step), ".");
    literal.sql = (negative ? "-" : "") + digits;
    literal.tightness = negative ? kPrefix : kTight;
    literal.type.scale = other.type.scale;
  };
  into_units_of(a, b);
  into_units_of(b, a);
  AlignScales(a, b);
}

Bound Binder::Compare(const std::string& op, Bound a, Bound b, const Expr& expr) {
  MakeComparable(a, b, expr);
  const int tightness = op == "=" || op == "<>" ? kEquality : kRelation;
  if (tightness == kRelation && (IsWide(a) || IsWide(b))) {
    a = CallOf("vk_order", {a.sql}, a.type);
    b = CallOf("vk_order", {b.sql}, b.type);
  }
  return MakeBound(Wrap(a, tightness + 1) + " " + op + " " + Wrap(b, tightness + 1),
                   Make(TypeKind::kCondition), tightness);
}

bool Binder::CompareIsNull(const Expr& expr, Bound& result) {
  // "IsNull(column, 0) = 5" holds where "column = 5" does, and "IsNull(column, 5) = 5" also where
  // the column is NULL: written so, an index on the column serves.
  if (expr.text != "=") return false;
  // Behind GROUP BY the call stands for a group, and no index is searched.
  if (scope_ != nullptr && (scope_->takes_aggregates || !scope_->group_keys.empty())) return false;
  for (std::size_t side = 0; side < 2; ++side) {
    const Expr& call = *expr.operands[side];
    const Expr& other = *expr.operands[1 - side];
    const bool fits = call.kind == ExprKind::kFunction && call.path.size() == 1 &&
                      SameWord(call.path[0], "isnull") && call.operands.size() == 2 &&
                      call.operands[0]->kind == ExprKind::kColumn;
    if (!fits || !IsLiteral(*call.operands[1]) || !IsLiteral(other)) continue;
    Bound column = BindValue(*call.operands[0]);
    const Bound instead = BindValue(*call.operands[1]);
    const Bound value = BindValue(other);
    const bool numbers = instead.literal == Bound::Literal::kNumber &&
                         value.literal == Bound::Literal::kNumber && instead.type.IsWhole() &&
                         value.type.IsWhole() && column.type.IsWhole();
    const bool texts = instead.literal == Bound::Literal::kText &&
                       value.literal == Bound::Literal::kText && column.type.IsText() &&
                       value.value.find_first_not_of("0123456789") == std::string::npos &&
                       instead.value.find_first_not_of("0123456789") == std::string::npos;
    if (!numbers && !texts) continue;
    const bool same = instead.value == value.value;
    const std::string is_null = column.sql + " IS NULL";
    const std::string not_null = column.sql + " IS NOT NULL";
    result = Compare("=", std::move(column), value, expr);
    // A NULL makes the comparison false, not unknown: NOT would tell the difference.
    result.sql += same ? " OR " + is_null : " AND " + not_null;
    result.tightness = same ? kLooseOr : kLooseAnd;
    return true;
  }
  return false;
}

Bound Binder::BindCompare(const Expr& expr) {
  Bound result;
  if (CompareIsNull(expr, result)) return result;
  Bound left = BindValue(*expr.operands[0]);
  Bound right = BindValue(*expr.operands[1]);
  return Compare(expr.text, std::move(left), std::move(right), expr);
}

}  // namespace vorek::sqlite
