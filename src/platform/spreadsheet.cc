#include "vorek/spreadsheet.h"

#include <algorithm>

namespace vorek {
namespace {

bool AreDigits(std::string_view text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

bool IsSheetNumber(std::string_view text) {
  constexpr std::size_t kMostDigits = 15;
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const std::size_t point = text.find('.');
  const bool decimals = point != std::string_view::npos;
  const std::string_view whole = text.substr(0, point);
  const std::string_view rest = decimals ? text.substr(point + 1) : std::string_view();
  if (!AreDigits(whole) || (decimals && !AreDigits(rest))) return false;
  if (whole.size() > 1 && whole.front() == '0') return false;
  if (negative && text.find_first_not_of("0.") == std::string_view::npos) return false;
  return whole.size() + rest.size() <= kMostDigits;
}

}  // namespace vorek
