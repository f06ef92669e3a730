#include "widgets/vorek_time.h"

#include "text/cell_text.h"
#include "widgets/property.h"
#include "widgets/typed_text.h"

namespace vorek {

std::string MinutesControl::TakeTyped(const std::string& text) {
  if (PlainTyped(text).empty()) {
    Clear();
    return {};
  }
  const auto minutes = ParseHours(text, Bare(), Most());
  if (!minutes) return ReasonAgainst(text);
  Take(minutes);
  return {};
}

std::string VorekTime::ReasonAgainst(const std::string& text) const {
  return InGuillemets(text) + " ساعت نيست؛ از 0:00 تا 23:59 بنويسيد، مانند 8:30";
}

std::string VorekDuration::ReasonAgainst(const std::string& text) const {
  return InGuillemets(text) + " مدت نيست؛ ساعت:دقيقه بنويسيد، مانند 125:30";
}

std::string MinutesControl::Shown() const { return minutes_ ? MinutesToTime(*minutes_) : ""; }

void MinutesControl::Take(std::optional<std::int32_t> minutes) {
  DropRefusal();
  if (Assign(minutes_, minutes, "Value") && on_change) on_change();
}

const PropertyTable& VorekTime::OwnProperties() const {
  using property::ReadOnly;
  static const PropertyTable table =
      property::Join({ReadOnly("GetTimeValue", &VorekTime::GetTimeValue),
                      ReadOnly("GetTimeFormatted", &VorekTime::GetTimeFormatted),
                      ReadOnly("IsNull", &VorekTime::IsNull)},
                     TypedControl::OwnProperties());
  return table;
}

const PropertyTable& VorekDuration::OwnProperties() const {
  using property::ReadOnly;
  static const PropertyTable table =
      property::Join({ReadOnly("GetDurationValue", &VorekDuration::GetDurationValue),
                      ReadOnly("GetDuration", &VorekDuration::GetDuration),
                      ReadOnly("IsNull", &VorekDuration::IsNull)},
                     TypedControl::OwnProperties());
  return table;
}

}  // namespace vorek
