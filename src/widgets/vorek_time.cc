#include "widgets/vorek_time.h"

#include "text/cell_text.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/property.h"
#include "widgets/typed_text.h"

namespace vorek {

void MinutesControl::Type(const std::string& text) {
  if (!Enabled()) return;
  if (PlainTyped(text).empty()) {
    Clear();
    return;
  }
  const auto minutes = ParseHours(text, Most());
  if (!minutes) {
    throw Error(ErrorNumber::kTypeMismatch,
                Path() + ": \"" + text::Left(text, 50) + "\" is no text of hours and minutes");
  }
  Take(minutes);
}

std::string MinutesControl::Shown() const { return minutes_ ? MinutesToTime(*minutes_) : ""; }

void MinutesControl::Take(std::optional<std::int32_t> minutes) {
  if (Assign(minutes_, minutes, "Value") && on_change) on_change();
}

const PropertyTable& VorekTime::OwnProperties() const {
  using property::ReadOnly;
  static const PropertyTable table = {ReadOnly("GetTimeValue", &VorekTime::GetTimeValue),
                                      ReadOnly("GetTimeFormatted", &VorekTime::GetTimeFormatted),
                                      ReadOnly("IsNull", &VorekTime::IsNull)};
  return table;
}

const PropertyTable& VorekDuration::OwnProperties() const {
  using property::ReadOnly;
  static const PropertyTable table = {
      ReadOnly("GetDurationValue", &VorekDuration::GetDurationValue),
      ReadOnly("GetDuration", &VorekDuration::GetDuration),
      ReadOnly("IsNull", &VorekDuration::IsNull)};
  return table;
}

}  // namespace vorek
