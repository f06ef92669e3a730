#include <array>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "adapters/sqlite/bind.h"
#include "adapters/sqlite/moment.h"
#include "text/utf8.h"

// Values from one type to another, as CAST, CONVERT and an assignment ask for it, or as two types
// that meet do.
namespace vorek::sqlite {
namespace {

std::string KindText(const Type& type) { return QuoteText(TypeName(type)); }

bool FitsWhole(long long value, TypeKind kind) {
  switch (kind) {
    case TypeKind::kTinyInt:
      return value >= 0 && value <= 255;
    case TypeKind::kSmallInt:
      return value >= -32768 && value <= 32767;
    case TypeKind::kInt:
      return value >= -2147483648LL && value <= 2147483647LL;
    default:
      return true;
  }
}

// True for a literal of up to nine digits: an int as it stands.
bool IsShortNumber(const Bound& value) {
  return value.literal == Bound::Literal::kText && !value.value.empty() &&
         value.value.size() <= 9 &&
         value.value.find_first_not_of("0123456789") == std::string::npos;
}

// The kinds that are days and their parts as numbers, too.
bool CountsDays(const Type& type) {
  return type.kind == TypeKind::kDateTime || type.kind == TypeKind::kSmallDateTime;
}

// The length that a text made of the type's values is told to have.
int TextLength(const Type& type) {
  if (type.IsWhole()) return type.kind == TypeKind::kBigInt ? 20 : 11;
  if (type.IsDecimal()) return type.precision + 3;
  if (type.IsDate()) return 27;
  return 30;
}

}  // namespace

void Binder::RefuseConversion(const Bound& value, const Type& to, std::size_t at) const {
  Refuse(at,
         "A conversion from " + TypeName(value.type) + " to " + TypeName(to) + " is not supported");
}

Bound Binder::Convert(Bound value, const Type& to, Mode mode, std::size_t at, int style) {
  if (value.type.IsCondition()) Refuse(at, "A condition stands where a value is expected");
  if (value.literal == Bound::Literal::kNull || to.IsNull()) {
    if (!to.IsNull()) value.type = to;
    return value;
  }
  if (value.type == to && style == 0) return value;
  value = Checked(std::move(value));
  if (to.IsWhole()) return ToWhole(std::move(value), to, mode, at);
  if (to.IsMoney() || to.IsDecimal()) return ToScaled(value, to, mode, at);
  if (to.IsFloat()) return ToFloat(std::move(value), to, mode, at);
  if (to.IsText()) return ToText(std::move(value), to, mode, at, style);
  if (to.IsDate()) return ToDate(std::move(value), to, mode, at, style);
  if (to.IsBinary()) return ToBinary(std::move(value), to, mode, at, style);
  if (to.kind == TypeKind::kGuid && value.type.IsText()) {
    return CallOf(mode == Mode::kTry ? "vk_try_guid" : "vk_guid", {value.sql}, to);
  }
  RefuseConversion(value, to, at);
}

Bound Binder::ToWhole(Bound value, const Type& to, Mode mode, std::size_t at) {
  const Type from = value.type;
  const bool is_try = mode == Mode::kTry;
  if (to.kind == TypeKind::kBit && from.IsNumber()) {
    if (value.literal == Bound::Literal::kNumber) {
      return NumberLiteral(value.value != "0" ? 1 : 0, to);
    }
    Bound bit = MakeBound(Wrap(value, kRelation) + " <> 0", to, kEquality);
    return bit;
  }
  if (from.IsWhole()) {
    if (value.literal == Bound::Literal::kNumber) {
      const long long number = std::strtoll(value.value.c_str(), nullptr, 10);
      if (FitsWhole(number, to.kind)) return NumberLiteral(number, to);
    }
    const bool fits =
        from.kind <= to.kind || (to.kind != TypeKind::kTinyInt && to.kind != TypeKind::kBit &&
                                 MostOf(value) < MostUnits(to));
    if (!fits) {
      if (is_try) return CallOf("vk_try_range", {value.sql, KindText(to)}, to);
      return CallOf("vk_in_" + TypeName(to), {value.sql}, to);
    }
    value.most = MostOf(value);
    value.type = to;
    return value;
  }
  if (from.IsMoney() || from.IsDecimal()) {
    return CallOf(is_try ? "vk_try_whole" : "vk_whole",
                  {value.sql, std::to_string(from.scale), from.IsMoney() ? "1" : "0", KindText(to)},
                  to);
  }
  if (from.IsFloat())
    return CallOf(is_try ? "vk_try_trunc" : "vk_trunc", {value.sql, KindText(to)}, to);
  if (from.IsBinary() && mode == Mode::kCast && to.kind != TypeKind::kBit) {
    return CallOf("vk_int_of_bytes", {value.sql, KindText(to)}, to);
  }
  if (from.IsText()) {
    if (IsShortNumber(value) && to.kind == TypeKind::kInt) {
      return NumberLiteral(std::strtoll(value.value.c_str(), nullptr, 10), to);
    }
    return CallOf(is_try ? "vk_try_int" : "vk_int", {value.sql, KindText(from), KindText(to)}, to);
  }
  if (CountsDays(from) && mode != Mode::kAssign) {
    return CallOf(is_try ? "vk_try_trunc" : "vk_trunc",
                  {"round(vk_days(" + value.sql + "))", KindText(to)}, to);
  }
  RefuseConversion(value, to, at);
}

Bound Binder::ToScaled(const Bound& value, const Type& to, Mode mode, std::size_t at) {
  const Type from = value.type;
  const bool is_try = mode == Mode::kTry;
  const std::string scale = std::to_string(to.scale);
  const std::string digits = std::to_string(to.IsDecimal() ? to.precision : 19);
  if (from.IsText()) {
    return CallOf(is_try ? "vk_try_decimal" : "vk_decimal",
                  {value.sql, KindText(from), scale, digits, KindText(to)}, to);
  }
  if (from.IsFloat()) {
    return CallOf(is_try ? "vk_try_exact" : "vk_exact", {value.sql, scale, digits, KindText(to)},
                  to);
  }
  if (CountsDays(from) && to.IsDecimal()) {
    return CallOf("vk_exact", {"vk_days(" + value.sql + ")", scale, digits, KindText(to)}, to);
  }
  if (!from.IsExact()) RefuseConversion(value, to, at);
  const int step = to.scale - from.scale;
  Bound result = Rescaled(value, step);
  if (result.literal == Bound::Literal::kNumber && MostOf(result) < MostUnits(to)) {
    return NumberLiteral(std::strtoll(result.value.c_str(), nullptr, 10), to);
  }
  result.most = MostOf(result);
  result.literal = Bound::Literal::kNone;
  result.column = result.column && step == 0;
  result.type = to;
  result.nullable = value.nullable;
  if (result.most < MostUnits(to) || (step == 0 && MostUnits(from) <= MostUnits(to))) return result;
  return CallOf(is_try ? "vk_try_fit" : "vk_fit", {result.sql, digits, KindText(to)}, to);
}

Bound Binder::ToFloat(Bound value, const Type& to, Mode mode, std::size_t at) {
  const Type from = value.type;
  const Type wide = Make(TypeKind::kFloat);
  if (to.kind == TypeKind::kReal && from.kind != TypeKind::kReal) {
    return CallOf(mode == Mode::kTry ? "vk_try_real" : "vk_real",
                  {ToFloat(std::move(value), wide, mode, at).sql}, to);
  }
  if (from.IsFloat()) {
    value.type = to;
    return value;
  }
  if (IsWide(value)) return CallOf("vk_to_real", {value.sql, std::to_string(from.scale)}, to);
  if (from.IsExact()) {
    std::string sql = from.scale == 0
                          ? "CAST(" + value.sql + " AS REAL)"
                          : Wrap(value, kMultiplicative) + " / 1e" + std::to_string(from.scale);
    return MakeBound(std::move(sql), to, from.scale == 0 ? kTight : kMultiplicative);
  }
  if (from.IsText()) {
    return CallOf(mode == Mode::kTry ? "vk_try_float" : "vk_float", {value.sql, KindText(from)},
                  to);
  }
  if (CountsDays(from)) return CallOf("vk_days", {value.sql}, to);
  RefuseConversion(value, to, at);
}

Bound Binder::TextToText(Bound value, const Type& to, Mode mode) {
  const Type from = value.type;
  if (to.kind == TypeKind::kChar || to.kind == TypeKind::kNChar) {
    if (from.kind == to.kind && from.length == to.length) return value;
    return CallOf(mode == Mode::kAssign ? "vk_pad_strict" : "vk_pad",
                  {value.sql, std::to_string(to.length)}, to);
  }
  const bool shorter =
      to.length != Type::kMax && (from.length == Type::kMax || from.length > to.length);
  if (!shorter) {
    value.type = to;
    return value;
  }
  const std::string length = std::to_string(to.length);
  if (mode == Mode::kAssign) return CallOf("vk_fit_text", {value.sql, length}, to);
  if (value.literal == Bound::Literal::kText) {
    return TextLiteral(text::Left(value.value, static_cast<std::size_t>(to.length)), to);
  }
  return CallOf("substr", {value.sql, "1", length}, to);
}

Bound Binder::ToText(Bound value, const Type& to, Mode mode, std::size_t at, int style) {
  const Type from = value.type;
  if (from.IsText()) return TextToText(std::move(value), to, mode);
  const std::string how = std::to_string(style == 0 && from.IsDate() ? kOwnStyle : style);
  const Type made =
      MakeText(to.IsNational() ? TypeKind::kNVarChar : TypeKind::kVarChar, TextLength(from));
  Bound text;
  if (from.IsWhole() && to.length != Type::kMax && to.length < made.length) {
    // A whole number that doesn't fit shows as a star.
    text = CallOf("vk_int_text", {value.sql, std::to_string(to.length)},
                  MakeText(made.kind, to.length));
  } else if (from.IsWhole()) {
    text = MakeBound("CAST(" + value.sql + " AS TEXT)", made);
  } else if (from.IsDecimal()) {
    text = CallOf("vk_decimal_text", {value.sql, std::to_string(from.scale)}, made);
  } else if (from.IsMoney()) {
    text = CallOf("vk_money_text", {value.sql, how}, made);
  } else if (from.IsFloat()) {
    text = CallOf("vk_float_text", {value.sql, how}, made);
  } else if (from.IsDate()) {
    text = CallOf("vk_date_text", {value.sql, how, KindText(from)}, made);
  } else if (from.kind == TypeKind::kGuid) {
    text = value;
    text.type = MakeText(made.kind, 36);
    text.column = false;
  } else if (from.IsBinary() && (style == 1 || style == 2)) {
    text = CallOf("vk_hex", {value.sql, how}, MakeText(made.kind, Type::kMax));
  } else {
    RefuseConversion(value, to, at);
  }
  // A number that doesn't fit its text isn't cut.
  const bool number = from.IsNumber() && to.length != Type::kMax && to.length < text.type.length;
  if (number) {
    text = CallOf("vk_number_fit", {text.sql, std::to_string(to.length)}, to);
  }
  return TextToText(std::move(text), to, mode == Mode::kAssign ? mode : Mode::kCast);
}

int Binder::DateStyle(TypeKind kind) const {
  const std::string& format = schema_.CurrentSession().date_format;
  if (format == "ymd") return kYearFirst;
  if (format != "dmy") return 0;
  const bool old = kind == TypeKind::kDateTime || kind == TypeKind::kSmallDateTime;
  return old ? kDayFirst : kDayFirstIsoYear;
}

Bound Binder::ToDate(Bound value, const Type& to, Mode mode, std::size_t at, int style) {
  const Type from = value.type;
  const std::string kind = KindText(Make(to.kind));
  if (from.IsText()) {
    if (style == 0) style = DateStyle(to.kind);
    if (value.literal == Bound::Literal::kText && mode != Mode::kTry) {
      const std::optional<Moment> moment = ParseMoment(value.value, style);
      if (moment && moment->day >= kFirstDateTimeDay && to.kind != TypeKind::kSmallDateTime) {
        Bound folded = TextLiteral(StoredMoment(*moment, TypeName(Make(to.kind))), to);
        folded.literal = Bound::Literal::kNone;
        return folded;
      }
    }
    return CallOf(mode == Mode::kTry ? "vk_try_date" : "vk_date",
                  {value.sql, kind, std::to_string(style)}, to);
  }
  if (from.IsDate()) {
    const bool apart = (from.kind == TypeKind::kTime && to.kind == TypeKind::kDate) ||
                       (from.kind == TypeKind::kDate && to.kind == TypeKind::kTime);
    if (apart) RefuseConversion(value, to, at);
    const bool same = from.kind >= TypeKind::kSmallDateTime && from.kind <= to.kind;
    if (same) {
      value.type = to;
      return value;
    }
    if (from.kind == TypeKind::kDate && to.kind == TypeKind::kDateTime2) {
      return MakeBound(Wrap(value, kConcatenation) + " || ' 00:00:00.000'", to, kConcatenation);
    }
    return CallOf("vk_date_kind", {value.sql, kind}, to);
  }
  if (from.IsBinary() && CountsDays(to)) {
    return CallOf("vk_date_of_bytes", {value.sql, kind}, to);
  }
  if (from.IsNumber() && CountsDays(to)) {
    Bound days = ToFloat(std::move(value), Make(TypeKind::kFloat), mode, at);
    return CallOf("vk_date_of_days", {days.sql, kind}, to);
  }
  RefuseConversion(value, to, at);
}

Bound Binder::ToBinary(Bound value, const Type& to, Mode mode, std::size_t at, int style) {
  const Type from = value.type;
  const std::string length = std::to_string(to.length);
  const bool fixed = to.kind == TypeKind::kBinary;
  if (from.IsWhole() && mode == Mode::kCast) {
    const int size = from.kind == TypeKind::kBigInt     ? 8
                     : from.kind == TypeKind::kInt      ? 4
                     : from.kind == TypeKind::kSmallInt ? 2
                                                        : 1;
    return CallOf("vk_bytes_of_int", {value.sql, std::to_string(size), length, fixed ? "1" : "0"},
                  to);
  }
  if (from.IsText() && (style == 1 || style == 2)) {
    value = CallOf(mode == Mode::kTry ? "vk_try_unhex" : "vk_unhex",
                   {value.sql, std::to_string(style)}, MakeText(TypeKind::kVarBinary, Type::kMax));
  } else if (from.IsText() && !from.IsNational()) {
    value = CallOf("vk_bytes", {value.sql}, MakeText(TypeKind::kVarBinary, Type::kMax));
  } else if (!from.IsBinary()) {
    RefuseConversion(value, to, at);
  }
  const bool same = from.IsBinary() && from.kind == to.kind && from.length == to.length;
  const bool shorter =
      to.length != Type::kMax && (value.type.length == Type::kMax || value.type.length > to.length);
  if (same || (!fixed && !shorter)) {
    value.type = to;
    return value;
  }
  if (shorter && mode == Mode::kAssign)
    value.sql = "vk_fit_text(" + value.sql + ", " + length + ")";
  if (fixed) return CallOf("vk_pad_bytes", {value.sql, length}, to);
  return CallOf("substr", {value.sql, "1", length}, to);
}

}  // namespace vorek::sqlite
