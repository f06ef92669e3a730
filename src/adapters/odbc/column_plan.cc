#include "adapters/odbc/column_plan.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "adapters/odbc/wide_text.h"
#include "text/utf8.h"
#include "vorek/field_type.h"

namespace vorek::odbc {
namespace {

// SQL Server's own types, as its drivers number them.
constexpr SQLSMALLINT kSqlServerVariant = -150;
constexpr SQLSMALLINT kSqlServerXml = -152;
constexpr SQLSMALLINT kSqlServerTime = -154;

// The longest text or bytes of a column that is bound; the largest nvarchar(n) and varchar(n) of
// SQL Server fit, and what other drivers say of texts without a bound.
constexpr SQLULEN kLongestBound = 8192;

constexpr int kMostDigits = 18;  // of a whole number of 64 bits
constexpr int kMoneyScale = 4;

std::string TextAttribute(SQLHANDLE statement, SQLUSMALLINT column, SQLUSMALLINT attribute,
                          bool unicode) {
  std::array<SQLWCHAR, 512> text{};
  SQLSMALLINT bytes = 0;
  const SQLRETURN code = SQLColAttributeW(statement, column, attribute, text.data(),
                                          static_cast<SQLSMALLINT>(sizeof text), &bytes, nullptr);
  return SQL_SUCCEEDED(code) ? FromDriver(text, unicode) : std::string();
}

bool IsMoney(const ColumnDescription& column) {
  return text::EqualsIgnoreCase(column.type_name, "money") ||
         text::EqualsIgnoreCase(column.type_name, "smallmoney");
}

ColumnPlan Whole(int ado_type) {
  return {ado_type, ResultColumn::Storage::kScaled, 0, SQL_C_SBIGINT, sizeof(SQLBIGINT), false};
}

ColumnPlan Floating(int ado_type) {
  return {ado_type, ResultColumn::Storage::kDouble, 0, SQL_C_DOUBLE, sizeof(double), false};
}

// Decimals come as texts, since every other way passes through binary floating point or is read
// differently by different drivers.
ColumnPlan Exact(int ado_type, int scale) {
  constexpr std::size_t kLongestDecimal = 64;
  return {ado_type,
          ResultColumn::Storage::kScaled,
          std::clamp(scale, 0, kMostDigits),
          SQL_C_CHAR,
          kLongestDecimal,
          false};
}

ColumnPlan Text(int ado_type, SQLULEN size, bool unicode) {
  ColumnPlan plan;
  plan.ado_type = ado_type;
  plan.c_type = unicode ? SQL_C_WCHAR : SQL_C_CHAR;
  plan.is_long = size == 0 || size > kLongestBound;
  // A character may take two units or four bytes; the end takes one.
  if (!plan.is_long) plan.width = unicode ? (2 * size + 1) * sizeof(SQLWCHAR) : 4 * size + 1;
  return plan;
}

ColumnPlan Bytes(int ado_type, SQLULEN size) {
  ColumnPlan plan;
  plan.ado_type = ado_type;
  plan.c_type = SQL_C_BINARY;
  plan.is_long = size == 0 || size > kLongestBound;
  plan.width = plan.is_long ? 0 : size;
  return plan;
}

ColumnPlan Moment(int ado_type, SQLSMALLINT c_type, std::size_t width) {
  return {ado_type, ResultColumn::Storage::kText, 0, c_type, width, false};
}

}  // namespace

std::vector<ColumnDescription> DescribeColumns(SQLHANDLE statement, SQLSMALLINT count,
                                               bool unicode) {
  std::vector<ColumnDescription> columns;
  for (SQLSMALLINT i = 1; i <= count; ++i) {
    ColumnDescription column;
    const auto number = static_cast<SQLUSMALLINT>(i);
    SQLSMALLINT length = 0;
    SQLSMALLINT nullable = 0;
    SQLDescribeColW(statement, number, nullptr, 0, &length, &column.type, &column.size,
                    &column.scale, &nullable);
    column.name = TextAttribute(statement, number, SQL_DESC_LABEL, unicode);
    column.type_name = TextAttribute(statement, number, SQL_DESC_TYPE_NAME, unicode);
    columns.push_back(std::move(column));
  }
  return columns;
}

bool IsExact(const ColumnPlan& plan) {
  return plan.c_type == SQL_C_CHAR && plan.storage == ResultColumn::Storage::kScaled;
}

bool IsVariable(const ColumnPlan& plan) {
  return plan.c_type == SQL_C_WCHAR || plan.c_type == SQL_C_BINARY ||
         (plan.c_type == SQL_C_CHAR && plan.storage == ResultColumn::Storage::kText);
}

ColumnPlan PlanColumn(const ColumnDescription& column, bool unicode) {
  if (IsMoney(column)) return Exact(kCurrency, kMoneyScale);
  switch (column.type) {
    case SQL_BIT:
      return Whole(kBoolean);
    case SQL_TINYINT:
      return Whole(kUnsignedTinyInt);
    case SQL_SMALLINT:
      return Whole(kSmallInt);
    case SQL_INTEGER:
      return Whole(kInteger);
    case SQL_BIGINT:
      return Whole(kBigInt);
    case SQL_REAL:
      return {kSingle, ResultColumn::Storage::kDouble, 0, SQL_C_FLOAT, sizeof(float), false};
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return Floating(kDouble);
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return Exact(kNumeric, column.scale);
    case SQL_TYPE_DATE:
      return Moment(kDBDate, SQL_C_TYPE_DATE, sizeof(SQL_DATE_STRUCT));
    case SQL_TYPE_TIME:
    case kSqlServerTime:
      // ODBC's own structure of a time has no fractions.
      return Moment(kDBTime, SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT));
    case SQL_TYPE_TIMESTAMP:
      return Moment(kDBTimeStamp, SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT));
    case SQL_GUID:
      return Text(kGuid, std::max<SQLULEN>(column.size, 38), unicode);
    case SQL_BINARY:
      return Bytes(kBinary, column.size);
    case SQL_VARBINARY:
      return Bytes(column.size == 0 ? kLongVarBinary : kVarBinary, column.size);
    case SQL_LONGVARBINARY:
      return Bytes(kLongVarBinary, column.size);
    case SQL_CHAR:
      return Text(kChar, column.size, unicode);
    case SQL_VARCHAR:
      return Text(column.size == 0 ? kLongVarChar : kVarChar, column.size, unicode);
    case SQL_LONGVARCHAR:
      return Text(kLongVarChar, column.size, unicode);
    case SQL_WCHAR:
      return Text(kWChar, column.size, unicode);
    case SQL_WLONGVARCHAR:
    case kSqlServerXml:
      return Text(kLongVarWChar, column.size, unicode);
    case SQL_WVARCHAR:
      return Text(column.size == 0 ? kLongVarWChar : kVarWChar, column.size, unicode);
    case kSqlServerVariant:
    default:
      return Text(kVarWChar, column.size, unicode);
  }
}

}  // namespace vorek::odbc
