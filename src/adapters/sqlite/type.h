#ifndef VOREK_ADAPTERS_SQLITE_TYPE_H_
#define VOREK_ADAPTERS_SQLITE_TYPE_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "vorek/result_set.h"

// The types of the dialect, how they combine, and how SQLite keeps them:
//   whole numbers, bit       an integer
//   money, decimal(p,s)      an integer of 10^-scale units; a decimal beyond 63 bits as exact.h
//                            tells
//   real, float              a real number
//   dates                    a text: "yyyy-mm-dd", "hh:mm:ss.fff", "yyyy-mm-dd hh:mm:ss.fff"
//   texts                    a text; binary: a blob; uniqueidentifier: a text in capitals
namespace vorek::sqlite {

// In the order of precedence: where two types meet, the later one is the type of both.
enum class TypeKind : std::uint8_t {
  kNull,  // the word NULL, which takes any type
  kBinary,
  kVarBinary,
  kImage,
  kChar,
  kVarChar,
  kText,
  kNChar,
  kNVarChar,
  kNText,
  kGuid,
  kBit,
  kTinyInt,
  kSmallInt,
  kInt,
  kBigInt,
  kSmallMoney,
  kMoney,
  kDecimal,
  kReal,
  kFloat,
  kTime,
  kDate,
  kSmallDateTime,
  kDateTime,
  kDateTime2,
  kCondition,  // true, false or unknown: what WHERE takes; no value
};

struct Type {
  static constexpr int kMax = -1;  // the length of nvarchar(max)

  TypeKind kind = TypeKind::kNull;
  int precision = 0;  // of decimals
  int scale = 0;      // decimal places of decimals, 4 of money
  int length = 0;     // of texts and binaries: characters or bytes, kMax without a limit

  bool IsText() const { return kind >= TypeKind::kChar && kind <= TypeKind::kNText; }
  bool IsBinary() const { return kind >= TypeKind::kBinary && kind <= TypeKind::kImage; }
  bool IsWhole() const { return kind >= TypeKind::kBit && kind <= TypeKind::kBigInt; }
  bool IsMoney() const { return kind == TypeKind::kMoney || kind == TypeKind::kSmallMoney; }
  bool IsDecimal() const { return kind == TypeKind::kDecimal; }
  bool IsFloat() const { return kind == TypeKind::kFloat || kind == TypeKind::kReal; }
  bool IsNumber() const { return kind >= TypeKind::kBit && kind <= TypeKind::kFloat; }
  bool IsExact() const { return IsWhole() || IsMoney() || IsDecimal(); }
  bool IsDate() const { return kind >= TypeKind::kTime && kind <= TypeKind::kDateTime2; }
  bool IsNational() const { return kind >= TypeKind::kNChar && kind <= TypeKind::kNText; }
  bool IsNull() const { return kind == TypeKind::kNull; }
  bool IsCondition() const { return kind == TypeKind::kCondition; }
  bool operator==(const Type&) const = default;
};

Type Make(TypeKind kind);
Type MakeText(TypeKind kind, int length);
// Held to what the dialect allows.
Type MakeDecimal(int precision, int scale);

// The type in the dialect's words, "decimal(18,2)".
std::string TypeName(const Type& type);

// A type from its name and the numbers in its brackets (-1 for "max", 0 if there is none, which
// leaves the length of a text at 0). Kind
// kNull for a name that isn't a type.
Type TypeFromName(std::string_view name, int first, int second);

// The type of a column that SQLite declares so; files that other programs made included, whose
// decimals are real numbers. Kind kNVarChar if there is no telling.
Type TypeFromDeclaration(std::string_view declaration);

// The words by which SQLite declares a column of the type: the affinity that keeps its values and
// the collation of texts.
std::string Declaration(const Type& type);

// One of ADO's FieldType numbers, and the storage of a result's column.
int AdoType(const Type& type);
ResultColumn::Storage StorageOf(const Type& type);

// The characters that a text without "max" has at most.
constexpr int LongestText(bool national) { return national ? 4000 : 8000; }

// The type that both values take where they meet (CASE, UNION, a comparison).
Type CommonType(const Type& a, const Type& b);
// A number's digits as a decimal: int is (10,0), money (19,4).
Type AsDecimal(const Type& type);

// No value of an exact type has more units than this, whatever its sign.
double MostUnits(const Type& type);
// Integers of SQLite go up to here: what is surely below is computed by its own operators.
inline constexpr double kMostInteger = 9.2e18;

}  // namespace vorek::sqlite

#endif  // VOREK_ADAPTERS_SQLITE_TYPE_H_
