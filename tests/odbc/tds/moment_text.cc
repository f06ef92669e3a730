#include "odbc/tds/moment_text.h"

#include <chrono>
#include <string>

namespace vorek::tds {
namespace {

unsigned NumberAt(std::string_view text, std::size_t at, std::size_t digits) {
  return at >= text.size()
             ? 0
             : static_cast<unsigned>(std::stoul(std::string(text.substr(at, digits))));
}

std::int64_t DayNumber(int year, unsigned month, unsigned day) {
  using std::chrono::sys_days;
  const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{month},
                                         std::chrono::day{day}};
  const std::chrono::year_month_day first{std::chrono::year{1}, std::chrono::month{1},
                                          std::chrono::day{1}};
  return (sys_days(date) - sys_days(first)).count();
}

}  // namespace

Moment MomentOf(std::string_view text) {
  Moment moment;
  moment.days =
      DayNumber(static_cast<int>(NumberAt(text, 0, 4)), NumberAt(text, 5, 2), NumberAt(text, 8, 2));
  const std::uint64_t seconds = NumberAt(text, 11, 2) * std::uint64_t{3600} +
                                NumberAt(text, 14, 2) * std::uint64_t{60} + NumberAt(text, 17, 2);
  moment.milliseconds = seconds * 1000 + NumberAt(text, 20, 3);
  return moment;
}

std::int32_t DaysSince1900(const Moment& moment) {
  return static_cast<std::int32_t>(moment.days - DayNumber(1900, 1, 1));
}

std::uint32_t Ticks(const Moment& moment) {
  return static_cast<std::uint32_t>((moment.milliseconds * 3 + 5) / 10);
}

bool FitsDateTime(std::string_view text) {
  const Moment moment = MomentOf(text);
  const std::uint64_t last = moment.milliseconds % 10;
  return moment.days >= DayNumber(1753, 1, 1) && (last == 0 || last == 3 || last == 7);
}

}  // namespace vorek::tds
