#include <algorithm>
#include <cstdlib>
#include <utility>

#include "adapters/sqlite/bind.h"

// Operators: what they give depends on the types of both sides.
namespace vorek::sqlite {
namespace {

constexpr int kKeptScale = 12;  // decimal places of a wide product or quotient

bool IsNonZeroLiteral(const Bound& value) {
  return value.literal == Bound::Literal::kNumber && value.value != "0";
}

// The decimal that an operation gives, held to 38 digits as the dialect does it, and to fewer
// places where the units wouldn't go into 63 bits.
Type Held(int precision, int scale) {
  if (precision > 38) {
    const int whole = precision - scale;
    scale = std::max(38 - whole, std::min(scale, 6));
    precision = 38;
  }
  if (precision > 18) scale = std::min(scale, kKeptScale);
  return MakeDecimal(precision, scale);
}

Type Widest(const Bound& a, const Bound& b) {
  Type type = CommonType(a.type, b.type);
  if (type.kind == TypeKind::kBit) type = Make(TypeKind::kInt);
  return type;
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

}  // namespace

Bound Binder::BindBinary(const Expr& expr) {
  Bound left = BindValue(*expr.operands[0]);
  Bound right = BindValue(*expr.operands[1]);
  return Arithmetic(expr, expr.text, std::move(left), std::move(right));
}

void Binder::RefuseOperands(const Expr& expr, const Bound& a, const Bound& b) const {
  Refuse(expr.at, "The data types " + TypeName(a.type) + " and " + TypeName(b.type) +
                      " are incompatible in the operator '" + expr.text + "'");
}

Bound Binder::Arithmetic(const Expr& expr, const std::string& op, Bound a, Bound b) {
  const bool both_text = (a.type.IsText() || a.type.IsNull()) &&
                         (b.type.IsText() || b.type.IsNull()) &&
                         (a.type.IsText() || b.type.IsText());
  if (op == "+" && both_text) return Concatenate(std::move(a), std::move(b));
  if (a.type.IsDate() || b.type.IsDate()) {
    return DateArithmetic(expr, op, std::move(a), std::move(b));
  }
  if (a.type.IsNull() && b.type.IsNull()) a.type = b.type = Make(TypeKind::kInt);
  const Type common = Widest(a, b);
  if (!common.IsNumber()) RefuseOperands(expr, a, b);
  // A text takes the type of the number beside it.
  if (a.type.IsText() || a.type.IsNull()) a = Convert(a, common, Mode::kImplicit, expr.at);
  if (b.type.IsText() || b.type.IsNull()) b = Convert(b, common, Mode::kImplicit, expr.at);
  if (!a.type.IsNumber() || !b.type.IsNumber()) RefuseOperands(expr, a, b);
  if (op == "&" || op == "|" || op == "^") {
    if (!common.IsWhole()) RefuseOperands(expr, a, b);
    if (op == "^") return CallOf("vk_xor", {a.sql, b.sql}, common);
    return MakeBound(Wrap(a, kBitwise) + " " + op + " " + Wrap(b, kBitwise + 1), common, kBitwise);
  }
  if (common.IsFloat()) {
    a = Convert(std::move(a), common, Mode::kImplicit, expr.at);
    b = Convert(std::move(b), common, Mode::kImplicit, expr.at);
  }
  if (op == "*") return Multiply(std::move(a), std::move(b), common);
  if (op == "/") return Divide(std::move(a), std::move(b), common);
  if (op == "%") return Modulo(std::move(a), std::move(b), common);
  return AddOrSubtract(op, std::move(a), std::move(b), common);
}

Bound Binder::Concatenate(Bound a, Bound b) {
  Type type = CommonType(a.type, b.type);
  if (a.type.IsText() && b.type.IsText()) {
    const bool unlimited = a.type.length == Type::kMax || b.type.length == Type::kMax;
    const int most = type.IsNational() ? 4000 : 8000;
    const int length = unlimited ? Type::kMax : std::min(a.type.length + b.type.length, most);
    type = MakeText(type.IsNational() ? TypeKind::kNVarChar : TypeKind::kVarChar, length);
  }
  Bound result = MakeBound(Wrap(a, kConcatenation) + " || " + Wrap(b, kConcatenation + 1), type,
                           kConcatenation);
  result.nullable = a.nullable || b.nullable;
  return result;
}

void Binder::AlignScales(Bound& a, Bound& b) {
  const auto scale_up = [](Bound& value, int scale) {
    const int step = scale - value.type.scale;
    if (step <= 0 || value.literal == Bound::Literal::kNull) return;
    if (value.literal == Bound::Literal::kNumber &&
        value.value.size() + static_cast<std::size_t>(step) < 18) {
      const long long units = std::strtoll(value.value.c_str(), nullptr, 10);
      value = NumberLiteral(units * PowerOfTen(step), MakeDecimal(18, scale));
      return;
    }
    const bool nullable = value.nullable;
    value = MakeBound(Wrap(value, kMultiplicative) + " * " + std::to_string(PowerOfTen(step)),
                      MakeDecimal(38, scale), kMultiplicative);
    value.nullable = nullable;
  };
  const int scale = std::max(a.type.scale, b.type.scale);
  scale_up(a, scale);
  scale_up(b, scale);
}

Bound Binder::AddOrSubtract(const std::string& op, Bound a, Bound b, const Type& common) {
  Type type = common;
  if (common.IsDecimal()) {
    const Type da = DigitsOf(a);
    const Type db = DigitsOf(b);
    const int scale = std::max(da.scale, db.scale);
    const int whole = std::max(da.precision - da.scale, db.precision - db.scale);
    type = MakeDecimal(whole + scale + 1, scale);
  }
  if (common.IsExact()) AlignScales(a, b);
  Bound result =
      MakeBound(Wrap(a, kAdditive) + " " + op + " " + Wrap(b, kAdditive + 1), type, kAdditive);
  result.nullable = a.nullable || b.nullable;
  return result;
}

Bound Binder::Multiply(Bound a, Bound b, const Type& common) {
  const std::string product = Wrap(a, kMultiplicative) + " * " + Wrap(b, kMultiplicative + 1);
  if (common.IsFloat() || common.IsWhole()) return MakeBound(product, common, kMultiplicative);
  if (common.IsMoney()) {
    if (a.type.scale + b.type.scale == 4) return MakeBound(product, common, kMultiplicative);
    return CallOf("vk_times", {a.sql, b.sql, "4"}, common);
  }
  const Type da = DigitsOf(a);
  const Type db = DigitsOf(b);
  const Type type = Held(da.precision + db.precision + 1, da.scale + db.scale);
  const int down = da.scale + db.scale - type.scale;
  if (down == 0) return MakeBound(product, type, kMultiplicative);
  return CallOf("vk_times", {a.sql, b.sql, std::to_string(down)}, type);
}

Bound Binder::Divide(Bound a, Bound b, const Type& common) {
  if (common.IsFloat()) {
    if (IsNonZeroLiteral(b)) {
      return MakeBound(Wrap(a, kMultiplicative) + " / " + Wrap(b, kMultiplicative + 1), common,
                       kMultiplicative);
    }
    return CallOf("vk_divide", {a.sql, b.sql}, common);
  }
  if (common.IsWhole() || (common.IsMoney() && b.type.scale == 0)) {
    if (IsNonZeroLiteral(b)) {
      return MakeBound(Wrap(a, kMultiplicative) + " / " + Wrap(b, kMultiplicative + 1), common,
                       kMultiplicative);
    }
    return CallOf("vk_quotient", {a.sql, b.sql, "0"}, common);
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
  return CallOf("vk_quotient", {a.sql, b.sql, std::to_string(step)}, type);
}

Bound Binder::Modulo(Bound a, Bound b, const Type& common) {
  if (common.IsFloat()) return CallOf("vk_remainder", {a.sql, b.sql}, common);
  Type type = common;
  if (common.IsDecimal()) {
    const Type da = DigitsOf(a);
    const Type db = DigitsOf(b);
    const int scale = std::max(da.scale, db.scale);
    type = MakeDecimal(std::min(da.precision - da.scale, db.precision - db.scale) + scale, scale);
  }
  AlignScales(a, b);
  if (IsNonZeroLiteral(b)) {
    return MakeBound(Wrap(a, kMultiplicative) + " % " + Wrap(b, kMultiplicative + 1), type,
                     kMultiplicative);
  }
  return CallOf("vk_remainder", {a.sql, b.sql}, type);
}

Bound Binder::DateArithmetic(const Expr& expr, const std::string& op, Bound a, Bound b) {
  const Type common = CommonType(a.type, b.type);
  const bool moment = common.kind == TypeKind::kDateTime || common.kind == TypeKind::kSmallDateTime;
  if (!moment || (op != "+" && op != "-")) RefuseOperands(expr, a, b);
  const Type days = Make(TypeKind::kFloat);
  a = Convert(std::move(a), a.type.IsNumber() ? days : common, Mode::kImplicit, expr.at);
  b = Convert(std::move(b), b.type.IsNumber() ? days : common, Mode::kImplicit, expr.at);
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
    if (a.column && !a.collated) {
      a = Collated(std::move(a));
    } else if (!a.collated && !b.collated) {
      a = Collated(std::move(a));
    }
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
