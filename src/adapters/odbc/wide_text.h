#ifndef VOREK_ADAPTERS_ODBC_WIDE_TEXT_H_
#define VOREK_ADAPTERS_ODBC_WIDE_TEXT_H_

#include <sql.h>
#include <sqltypes.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorek::odbc {

// Between UTF-8 and the UTF-16 of the driver manager. What isn't well formed becomes U+FFFD.
std::vector<SQLWCHAR> ToWide(std::string_view utf8);
void AppendUtf8(const SQLWCHAR* text, std::size_t length, std::string& out);

// The text up to its end in a buffer that a driver filled. The bytes of a driver that knows no
// Unicode come one a unit.
std::string FromDriver(const SQLWCHAR* text, std::size_t length, bool unicode);
template <std::size_t kSize>
std::string FromDriver(const std::array<SQLWCHAR, kSize>& text, bool unicode) {
  const auto end = std::find(text.begin(), text.end(), SQLWCHAR{0});
  return FromDriver(text.data(), static_cast<std::size_t>(end - text.begin()), unicode);
}

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_WIDE_TEXT_H_
