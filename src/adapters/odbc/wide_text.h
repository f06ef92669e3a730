#ifndef VOREK_ADAPTERS_ODBC_WIDE_TEXT_H_
#define VOREK_ADAPTERS_ODBC_WIDE_TEXT_H_

#include <sql.h>
#include <sqltypes.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorek::odbc {

// Between UTF-8 and the UTF-16 of the driver manager. What isn't well formed becomes U+FFFD.
std::vector<SQLWCHAR> ToWide(std::string_view utf8);
void AppendUtf8(const SQLWCHAR* text, std::size_t length, std::string& out);

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_WIDE_TEXT_H_
