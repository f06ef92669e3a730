#include "eval/number_text.h"

#include <cmath>

#include "text/number.h"

namespace vorek {
namespace {

// From here on a double has no room for a seventh decimal place.
constexpr double kNoSeventhPlace = 9007199254740992.0 / 1e6;

// The largest number below 1E+15 that doesn't become 1E+15 at 15 digits.
constexpr double kPlainLimit = 999999999999999.5;

}  // namespace

std::string NumberText(const WorkingValue& value) {
  return value.has_value() ? text::PlainNumber(*value) : std::string();
}

double TextNumber(std::string_view text) { return text::NumericPrefix(text); }

bool HasExponentForm(double value) { return std::fabs(value) >= kPlainLimit; }

double RoundToSix(double value) {
  if (std::fabs(value) >= kNoSeventhPlace) return value;
  return text::RoundHalfEven(value * 1e6) / 1e6;
}

}  // namespace vorek
