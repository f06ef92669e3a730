#ifndef VOREK_TESTS_ODBC_TDS_MOMENT_TEXT_H_
#define VOREK_TESTS_ODBC_TDS_MOMENT_TEXT_H_

#include <cstdint>
#include <string_view>

namespace vorek::tds {

struct Moment {
  std::int64_t days = 0;  // since 0001-01-01
  std::uint64_t milliseconds = 0;
};

// Reads "yyyy-mm-dd", with " hh:mm:ss" and ".fff" behind it or not.
Moment MomentOf(std::string_view text);

std::int32_t DaysSince1900(const Moment& moment);
// Of 1/300 second each.
std::uint32_t Ticks(const Moment& moment);

// True for what a datetime holds: from 1753 on, in milliseconds that end in 0, 3 or 7.
bool FitsDateTime(std::string_view text);

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_MOMENT_TEXT_H_
