#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/exact.h"
#include "text/utf8.h"

// Numbers, texts and bytes that a statement names.
namespace vorek::sqlite {

Bound NumberLiteral(long long units, const Type& type) {
  Bound bound = MakeBound(std::to_string(units), type, units < 0 ? kPrefix : kTight);
  bound.literal = Bound::Literal::kNumber;
  bound.value = bound.sql;
  bound.nullable = false;
  return bound;
}

Bound TextLiteral(const std::string& text, const Type& type) {
  Bound bound = MakeBound(QuoteText(text), type);
  if (text.find('\0') != std::string::npos) {
    // SQLite ends a statement's text at a NUL character.
    std::string hex = "CAST(x'";
    for (const char c : text) {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      hex += kDigits[static_cast<unsigned char>(c) >> 4U];
      hex += kDigits[static_cast<unsigned char>(c) & 15U];
    }
    bound.sql = hex + "' AS TEXT)";
  }
  bound.literal = Bound::Literal::kText;
  bound.value = text;
  bound.nullable = false;
  return bound;
}

Bound Binder::BindLiteral(const Expr& expr) {
  if (expr.kind == ExprKind::kNull) {
    Bound bound = MakeBound("NULL", Type{});
    bound.literal = Bound::Literal::kNull;
    return bound;
  }
  if (expr.kind == ExprKind::kText) {
    const int length = std::max(1, static_cast<int>(text::Length(expr.text)));
    return TextLiteral(expr.text,
                       MakeText(expr.national ? TypeKind::kNVarChar : TypeKind::kVarChar, length));
  }
  if (expr.kind == ExprKind::kBytes) {
    std::string digits = expr.text.substr(2);
    if (digits.size() % 2 != 0) digits.insert(0, "0");
    return MakeBound(
        "x'" + digits + "'",
        MakeText(TypeKind::kVarBinary, std::max(1, static_cast<int>(digits.size() / 2))));
  }
  return BindNumber(expr);
}

Bound Binder::BindNumber(const Expr& expr, bool negative) {
  std::string digits = (negative ? "-" : "") + expr.text;
  if (digits.find_first_of("eE") != std::string::npos) {
    const double value = std::strtod(digits.c_str(), nullptr);
    if (!(std::abs(value) < 1e308)) Refuse(expr.at, "The number " + digits + " is out of range");
    Bound bound = MakeBound(digits, Make(TypeKind::kFloat), negative ? kPrefix : kTight);
    bound.nullable = false;
    return bound;
  }
  const std::size_t point = digits.find('.');
  const int scale = point == std::string::npos ? 0 : static_cast<int>(digits.size() - point - 1);
  const bool money = expr.kind == ExprKind::kMoney;
  if (money && scale > 4) {
    Refuse(expr.at, "The number " + expr.text + " has more than four places");
  }
  const DecimalText number = ReadDecimal(digits, money ? 4 : scale);
  const bool fits = number.fits && scale <= kMostDigits &&
                    (!money || (number.units >= INT64_MIN && number.units <= INT64_MAX));
  if (!fits) Refuse(expr.at, "The number " + expr.text + " is out of range");
  const auto size =
      static_cast<int>(WideText(number.units < 0 ? -number.units : number.units, 0).size());
  Type type = MakeDecimal(std::max({size, scale, 1}), scale);
  if (money) type = Make(TypeKind::kMoney);
  // A whole number beyond int is a decimal without places.
  const bool is_int =
      point == std::string::npos && number.units >= INT32_MIN && number.units <= INT32_MAX;
  if (!money && is_int) type = Make(TypeKind::kInt);
  if (number.units > INT64_MIN && number.units <= INT64_MAX) {
    return NumberLiteral(static_cast<long long>(number.units), type);
  }
  Bound bound = MakeBound(WideSql(number.units), type, kPrefix);
  bound.nullable = false;
  return bound;
}

}  // namespace vorek::sqlite
