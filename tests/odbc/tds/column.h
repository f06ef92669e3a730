#ifndef VOREK_TESTS_ODBC_TDS_COLUMN_H_
#define VOREK_TESTS_ODBC_TDS_COLUMN_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/tds/bytes.h"

namespace vorek::tds {

// How a column's values travel.
enum class Kind : std::uint8_t {
  kGuid = 0x24,
  kInt = 0x26,
  kDate = 0x28,
  kTime = 0x29,
  kDateTime2 = 0x2A,
  kBit = 0x68,
  kDecimal = 0x6C,
  kFloat = 0x6D,
  kMoney = 0x6E,
  kDateTime = 0x6F,
  kVarBinary = 0xA5,
  kVarChar = 0xA7,
  kChar = 0xAF,
  kNVarChar = 0xE7,
  kNChar = 0xEF,
};

struct Column {
  static constexpr std::size_t kMax = 0xFFFF;  // the size of nvarchar(max) and its kin

  std::string name;
  Kind kind = Kind::kInt;
  std::size_t size = 4;  // bytes, where the kind has several sizes; kMax without a bound
  int precision = 18;    // of a decimal
  int scale = 0;         // of a decimal, a time, a datetime2

  bool IsText() const;
  bool IsUnicode() const { return kind == Kind::kNVarChar || kind == Kind::kNChar; }
};

// What stands in front of the rows.
std::string ColumnsToken(const std::vector<Column>& columns);

// A row, value by value, in either of the two forms: the compact one has a bit for each NULL.
class Row {
 public:
  explicit Row(const std::vector<Column>& columns, bool compact = false);

  Row& Null();
  // A whole number, or a bit.
  Row& Whole(std::int64_t value);
  Row& Real(double value);
  // Ten thousandths.
  Row& Money(std::int64_t value);
  // "-12.50", with no more digits than the column has.
  Row& Decimal(std::string_view text);
  // UTF-8; a column that isn't of Unicode gets its code page.
  Row& Text(std::string_view utf8);
  Row& Binary(std::string_view bytes);
  // Days since 1900-01-01 and ticks, 300 a second; of smalldatetime minutes.
  Row& DateTime(std::int32_t days, std::uint32_t ticks);
  // Days since 0001-01-01, and 10^-scale seconds.
  Row& Date(std::int64_t days);
  Row& Time(std::uint64_t units);
  Row& DateTime2(std::int64_t days, std::uint64_t units);
  Row& Guid(std::string_view sixteen_bytes);

  // The whole token; the row begins anew.
  const std::string& Token();
  void Begin();

 private:
  const Column& Next();
  void Variable(const Column& column, std::string_view bytes);

  const std::vector<Column>& columns_;
  bool compact_;
  std::size_t at_ = 0;
  Bytes values_;
  std::string nulls_;
  std::string token_;
};

// Bytes that a time takes at a scale.
std::size_t TimeSize(int scale);

// In the code page of Arabic letters; throws ProtocolError for what it doesn't have.
std::string ToCodePage(std::string_view utf8);
bool FitsCodePage(std::string_view utf8);

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_COLUMN_H_
