#include "widgets/vorek_currency.h"

#include <cstdint>
#include <limits>
#include <optional>

#include "text/cell_text.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/property.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

constexpr int kScale = 4;

// Takes one sign off: "-5", "(5)".
bool TakeSign(std::string& plain) {
  if (plain.size() > 2 && plain.front() == '(' && plain.back() == ')') {
    plain = plain.substr(1, plain.size() - 2);
    return true;
  }
  const bool negative = !plain.empty() && plain.front() == '-';
  if (negative) plain.erase(0, 1);
  return negative;
}

std::string WithoutGroups(std::string plain) {
  for (const char* group : {"/", ",", " ", "٬"}) plain = text::Replace(plain, group, "");
  return text::Replace(plain, "٫", ".");
}

// Ten-thousandths of an amount without sign and groups; nullopt if it is none or too large.
std::optional<FixedPoint> ParseAmount(const std::string& digits) {
  constexpr FixedPoint kMost = std::numeric_limits<FixedPoint>::max();
  FixedPoint amount = 0;
  int decimals = -1;  // behind the point; -1 before it
  bool any = false;
  for (const char c : digits) {
    if (c == '.' && decimals < 0) {
      decimals = 0;
      continue;
    }
    if (c < '0' || c > '9' || decimals == kScale) return std::nullopt;
    if (amount > (kMost - (c - '0')) / 10) return std::nullopt;
    amount = amount * 10 + (c - '0');
    if (decimals >= 0) ++decimals;
    any = true;
  }
  for (int i = decimals < 0 ? 0 : decimals; i < kScale; ++i) {
    if (amount > kMost / 10) return std::nullopt;
    amount *= 10;
  }
  return any ? std::optional<FixedPoint>(amount) : std::nullopt;
}

}  // namespace

std::string VorekCurrency::TakeTyped(const std::string& text) {
  if (TakeAmount(text)) return {};
  return InGuillemets(text) + " مبلغ نيست؛ رقم و حداكثر چهار رقم اعشار، مانند 1/234/567.5";
}

std::string VorekCurrency::Value() const { return value_.empty() ? "0" : value_; }

void VorekCurrency::SetText(const std::string& typed) {
  if (TakeAmount(typed)) return;
  throw Error(ErrorNumber::kTypeMismatch,
              Path() + ": \"" + text::Left(typed, 50) + "\" is no amount");
}

bool VorekCurrency::TakeAmount(const std::string& typed) {
  std::string value;
  std::string shown;
  std::string plain = PlainTyped(typed);
  if (!plain.empty()) {
    const bool negative = TakeSign(plain);
    const auto amount = ParseAmount(WithoutGroups(plain));
    if (!amount) return false;
    text::AppendScaled(negative ? -*amount : *amount, kScale, value);
    std::string scratch = value;
    shown = FormatMoney(scratch);
  }
  value_ = value;
  DropRefusal();
  if (Assign(text_, shown, "text") && on_change) on_change();
  return true;
}

const PropertyTable& VorekCurrency::OwnProperties() const {
  static const PropertyTable table =
      property::Join({property::ReadWrite("text", &VorekCurrency::Text, &VorekCurrency::SetText),
                      property::ReadOnly("Value", &VorekCurrency::Value)},
                     TypedControl::OwnProperties());
  return table;
}

}  // namespace vorek
