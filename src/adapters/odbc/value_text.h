#ifndef VOREK_ADAPTERS_ODBC_VALUE_TEXT_H_
#define VOREK_ADAPTERS_ODBC_VALUE_TEXT_H_

#include <sql.h>
#include <sqlext.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorek::odbc {

// A decimal's text ("-12.50", "$1,234.50") as a whole number of 10 to the power of -scale units;
// nothing if it doesn't fit: too many digits before or behind the point, or no number at all.
std::optional<std::int64_t> ScaledOf(std::string_view text, int scale);

// A decimal's text without the zeros that its scale puts behind it.
std::string_view WithoutEndingZeros(std::string_view decimal);

// Dates and times as the system keeps them: "2025-03-21 08:30:00", with ".123" behind it only if
// there is a fraction; "2025-03-21"; the clock alone, "08:30:00" or "08:30:00.123".
void AppendTimestamp(const SQL_TIMESTAMP_STRUCT& value, std::string& out);
void AppendDate(const SQL_DATE_STRUCT& value, std::string& out);
void AppendTime(const SQL_TIMESTAMP_STRUCT& value, std::string& out);

// Bytes as hexadecimal digits, without the "0x".
void AppendHex(const unsigned char* bytes, std::size_t count, std::string& out);

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_VALUE_TEXT_H_
