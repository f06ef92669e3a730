#include "adapters/sqlite/type.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "text/utf8.h"
#include "vorek/field_type.h"

namespace vorek::sqlite {
namespace {

struct TypeRow {
  std::string_view name;
  TypeKind kind;
  int ado;
};

// The first row of a kind has the name that the kind is told by.
constexpr std::array<TypeRow, 38> kTypes = {{
    {"int", TypeKind::kInt, kInteger},
    {"integer", TypeKind::kInt, kInteger},
    {"bigint", TypeKind::kBigInt, kBigInt},
    {"smallint", TypeKind::kSmallInt, kSmallInt},
    {"tinyint", TypeKind::kTinyInt, kUnsignedTinyInt},
    {"bit", TypeKind::kBit, kBoolean},
    {"money", TypeKind::kMoney, kCurrency},
    {"smallmoney", TypeKind::kSmallMoney, kCurrency},
    {"decimal", TypeKind::kDecimal, kNumeric},
    {"numeric", TypeKind::kDecimal, kNumeric},
    {"dec", TypeKind::kDecimal, kNumeric},
    {"float", TypeKind::kFloat, kDouble},
    {"double precision", TypeKind::kFloat, kDouble},
    {"real", TypeKind::kReal, kSingle},
    {"datetime", TypeKind::kDateTime, kDBTimeStamp},
    {"smalldatetime", TypeKind::kSmallDateTime, kDBTimeStamp},
    {"datetime2", TypeKind::kDateTime2, kDBTimeStamp},
    {"date", TypeKind::kDate, kDBDate},
    {"time", TypeKind::kTime, kDBTime},
    {"char", TypeKind::kChar, kChar},
    {"character", TypeKind::kChar, kChar},
    {"varchar", TypeKind::kVarChar, kVarChar},
    {"char varying", TypeKind::kVarChar, kVarChar},
    {"text", TypeKind::kText, kLongVarChar},
    {"nchar", TypeKind::kNChar, kWChar},
    {"nvarchar", TypeKind::kNVarChar, kVarWChar},
    {"sysname", TypeKind::kNVarChar, kVarWChar},
    {"ntext", TypeKind::kNText, kLongVarWChar},
    {"binary", TypeKind::kBinary, kBinary},
    {"varbinary", TypeKind::kVarBinary, kVarBinary},
    {"image", TypeKind::kImage, kLongVarBinary},
    {"timestamp", TypeKind::kBinary, kBinary},
    {"rowversion", TypeKind::kBinary, kBinary},
    {"uniqueidentifier", TypeKind::kGuid, kGuid},
    {"NULL", TypeKind::kNull, kInteger},
    {"condition", TypeKind::kCondition, kBoolean},
    {"blob", TypeKind::kImage, kLongVarBinary},
    {"clob", TypeKind::kNText, kLongVarWChar},
}};

const TypeRow& RowOf(TypeKind kind) {
  return *std::find_if(kTypes.begin(), kTypes.end(),
                       [kind](const TypeRow& row) { return row.kind == kind; });
}

const TypeRow* RowNamed(std::string_view name) {
  const auto* row = std::find_if(kTypes.begin(), kTypes.end(), [name](const TypeRow& candidate) {
    return text::EqualsIgnoreCase(candidate.name, name);
  });
  return row == kTypes.end() ? nullptr : row;
}

// "name(first,second)" taken apart; "max" is -1.
struct Declared {
  std::string name;
  int first = 0;
  int second = 0;
};

Declared TakeApart(std::string_view declaration) {
  Declared result;
  const std::size_t open = declaration.find('(');
  result.name = text::Trim(declaration.substr(0, open));
  if (open == std::string_view::npos) return result;
  const std::string_view rest = declaration.substr(open + 1);
  if (text::StartsWithIgnoreCase(rest, "max")) {
    result.first = Type::kMax;
    return result;
  }
  const auto number = [](std::string_view s) {
    int value = 0;
    s.remove_prefix(std::min(s.find_first_not_of(' '), s.size()));
    std::from_chars(s.data(), s.data() + s.size(), value);
    return std::clamp(value, 0, 1 << 20);
  };
  result.first = number(rest);
  const std::size_t comma = rest.find(',');
  if (comma != std::string_view::npos) result.second = number(rest.substr(comma + 1));
  return result;
}

constexpr std::string_view kScaledMark = "_int";  // gives the column SQLite's INTEGER affinity

Type CommonText(const Type& a, const Type& b) {
  const Type& high = a.kind >= b.kind ? a : b;
  const Type& low = a.kind >= b.kind ? b : a;
  Type result = high;
  if (!low.IsText()) return result;
  result.length = high.length == Type::kMax || low.length == Type::kMax
                      ? Type::kMax
                      : std::max(high.length, low.length);
  const bool varies = high.kind != low.kind || high.length != low.length;
  if (varies && result.kind == TypeKind::kChar) result.kind = TypeKind::kVarChar;
  if (varies && result.kind == TypeKind::kNChar) result.kind = TypeKind::kNVarChar;
  return result;
}

}  // namespace

Type Make(TypeKind kind) {
  Type type;
  type.kind = kind;
  if (type.IsMoney()) type.scale = 4;
  if (kind == TypeKind::kText || kind == TypeKind::kNText || kind == TypeKind::kImage) {
    type.length = Type::kMax;
  }
  return type;
}

Type MakeText(TypeKind kind, int length) {
  Type type = Make(kind);
  type.length = length > 8000 ? Type::kMax : length;
  return type;
}

Type MakeDecimal(int precision, int scale) {
  Type type = Make(TypeKind::kDecimal);
  type.precision = std::clamp(precision, 1, 38);
  type.scale = std::clamp(scale, 0, type.precision);
  return type;
}

std::string TypeName(const Type& type) {
  std::string name(RowOf(type.kind).name);
  if (type.IsDecimal()) {
    return name + "(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
  }
  const bool sized = type.IsText() || type.IsBinary();
  if (!sized || type.length == 0 || type.kind == TypeKind::kText || type.kind == TypeKind::kNText ||
      type.kind == TypeKind::kImage) {
    return name;
  }
  return name + "(" + (type.length == Type::kMax ? "max" : std::to_string(type.length)) + ")";
}

Type TypeFromName(std::string_view name, int first, int second) {
  const TypeRow* row = RowNamed(name);
  if (row == nullptr || row->kind == TypeKind::kNull || row->kind == TypeKind::kCondition) {
    return {};
  }
  if (row->kind == TypeKind::kDecimal) return MakeDecimal(first == 0 ? 18 : first, second);
  Type type = Make(row->kind);
  if (type.kind == TypeKind::kFloat && first >= 1 && first <= 24) return Make(TypeKind::kReal);
  if (text::EqualsIgnoreCase(name, "sysname")) first = 128;
  if (text::EqualsIgnoreCase(name, "timestamp") || text::EqualsIgnoreCase(name, "rowversion")) {
    first = 8;
  }
  if (type.length == 0 && (type.IsText() || type.IsBinary())) type.length = first;
  return type;
}

Type TypeFromDeclaration(std::string_view declaration) {
  Declared declared = TakeApart(declaration);
  const bool ours = text::EndsWithIgnoreCase(declared.name, kScaledMark);
  if (ours) declared.name.resize(declared.name.size() - kScaledMark.size());
  Type type = TypeFromName(declared.name, declared.first, declared.second);
  if (type.IsMoney() || type.IsDecimal()) return ours ? type : Make(TypeKind::kFloat);
  if (text::EqualsIgnoreCase(declared.name, "INTEGER")) return Make(TypeKind::kBigInt);
  if (type.kind == TypeKind::kText) return Make(TypeKind::kNText);
  if (!type.IsNull()) {
    const bool sized = declared.first != 0;
    if ((type.IsText() || type.IsBinary()) && !sized) type.length = Type::kMax;
    return type;
  }
  if (text::ContainsIgnoreCase(declared.name, "int")) return Make(TypeKind::kBigInt);
  if (text::ContainsIgnoreCase(declared.name, "doub")) return Make(TypeKind::kFloat);
  return MakeText(TypeKind::kNVarChar, Type::kMax);
}

std::string Declaration(const Type& type) {
  std::string name = TypeName(type);
  // SQLite takes numbers alone between the brackets; a text without any is one without a bound.
  if (type.length == Type::kMax) name.resize(std::min(name.find('('), name.size()));
  if (type.IsMoney() || type.IsDecimal()) {
    const std::size_t open = std::min(name.find('('), name.size());
    name.insert(open, kScaledMark);
  }
  // SQLite takes numbers only; no length stands for all lengths.
  if (type.length == Type::kMax) name = name.substr(0, name.find('('));
  if (type.IsText()) name += " COLLATE VOREK";
  return name;
}

int AdoType(const Type& type) {
  if (type.length == Type::kMax) {
    if (type.kind == TypeKind::kNVarChar) return kLongVarWChar;
    if (type.kind == TypeKind::kVarChar) return kLongVarChar;
    if (type.kind == TypeKind::kVarBinary) return kLongVarBinary;
  }
  return RowOf(type.kind).ado;
}

ResultColumn::Storage StorageOf(const Type& type) {
  if (type.IsFloat()) return ResultColumn::Storage::kDouble;
  constexpr int kMostScale = 18;  // of the numbers that a result keeps as such
  if (type.scale > kMostScale) return ResultColumn::Storage::kText;
  if (type.IsExact() || type.IsNull()) return ResultColumn::Storage::kScaled;
  return ResultColumn::Storage::kText;
}

Type AsDecimal(const Type& type) {
  switch (type.kind) {
    case TypeKind::kBit:
      return MakeDecimal(1, 0);
    case TypeKind::kTinyInt:
      return MakeDecimal(3, 0);
    case TypeKind::kSmallInt:
      return MakeDecimal(5, 0);
    case TypeKind::kInt:
      return MakeDecimal(10, 0);
    case TypeKind::kBigInt:
      return MakeDecimal(19, 0);
    case TypeKind::kSmallMoney:
      return MakeDecimal(10, 4);
    case TypeKind::kMoney:
      return MakeDecimal(19, 4);
    case TypeKind::kDecimal:
      return type;
    default:
      return MakeDecimal(38, 6);
  }
}

Type CommonType(const Type& a, const Type& b) {
  if (a.IsNull()) return b;
  if (b.IsNull()) return a;
  const Type& high = a.kind >= b.kind ? a : b;
  const Type& low = a.kind >= b.kind ? b : a;
  if (high.IsText()) return CommonText(a, b);
  if (high.IsBinary()) {
    Type result = high;
    result.length = a.length == Type::kMax || b.length == Type::kMax ? Type::kMax
                                                                     : std::max(a.length, b.length);
    return result;
  }
  if (!high.IsDecimal() || !low.IsExact()) return high;
  const Type da = AsDecimal(a);
  const Type db = AsDecimal(b);
  const int scale = std::max(da.scale, db.scale);
  const int whole = std::max(da.precision - da.scale, db.precision - db.scale);
  return MakeDecimal(whole + scale, scale);
}

double MostUnits(const Type& type) {
  switch (type.kind) {
    case TypeKind::kBit:
      return 1;
    case TypeKind::kTinyInt:
      return 255;
    case TypeKind::kSmallInt:
      return 32768;
    case TypeKind::kInt:
    case TypeKind::kSmallMoney:
      return 2147483648.0;
    case TypeKind::kDecimal:
      return std::pow(10.0, type.precision);
    default:
      return 0x1p63;
  }
}

}  // namespace vorek::sqlite
