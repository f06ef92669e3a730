#include "widgets/vorek_date.h"

#include <vector>

#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/property.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

// Completes what was typed, "5", "2/5" or "4/2/5", with the parts of today's date.
std::optional<text::CalendarDate> Complete(const std::string& typed,
                                           const text::CalendarDate& today) {
  std::string text = PlainTyped(typed);
  std::size_t separators = 0;
  for (const char c : text) separators += c == '/' || c == '-' ? 1 : 0;
  if (separators == 0) text = std::to_string(today.month) + "/" + text;
  if (separators < 2) text = std::to_string(today.year) + "/" + text;
  std::optional<text::CalendarDate> date = text::ParseDate(text);
  if (date && date->year < 100) date->year += date->year < 50 ? 1400 : 1300;
  return date && text::IsPersianDate(*date) ? date : std::nullopt;
}

[[noreturn]] void RefuseDate(const Control& control, const std::string& text) {
  throw Error(ErrorNumber::kTypeMismatch,
              control.Path() + ": \"" + text::Left(text, 50) + "\" is no Persian date");
}

}  // namespace

void VorekDate::Type(const std::string& text) {
  if (!Enabled()) return;
  if (PlainTyped(text).empty()) {
    Clear();
    return;
  }
  const auto date = Complete(text, text::ToPersian(today_));
  if (!date) {
    RefuseDate(*this, text);
  }
  Take(text::ToGregorian(*date));
}

std::string VorekDate::FarsiDate() const {
  return date_ ? text::DateText(text::ToPersian(*date_)) : "";
}

std::string VorekDate::EnglishDate() const {
  return date_ ? text::Replace(text::DateText(*date_), "/", "") : "";
}

void VorekDate::SetValue(const text::CalendarDate& gregorian) {
  text::ToPersian(gregorian);
  Take(gregorian);
}

void VorekDate::SetFarsiDate(const std::string& text) {
  if (text::TrimView(text).empty()) {
    Clear();
    return;
  }
  const auto date = text::ParseDate(text);
  if (!date || !text::IsPersianDate(*date)) {
    RefuseDate(*this, text);
  }
  Take(text::ToGregorian(*date));
}

void VorekDate::Clear() { Take(std::nullopt); }

void VorekDate::Take(std::optional<text::CalendarDate> gregorian) {
  if (Assign(date_, gregorian, "FarsiDate") && on_change) on_change();
}

const PropertyTable& VorekDate::OwnProperties() const {
  using property::ReadOnly;
  static const PropertyTable table = {
      {"FarsiDate",
       [](Control& c, const std::vector<std::string>&) {
         return static_cast<VorekDate&>(c).FarsiDate();
       },
       [](Control& c, const std::vector<std::string>&, const std::string& value) {
         static_cast<VorekDate&>(c).SetFarsiDate(value);
       }},
      ReadOnly("EnglishDate", &VorekDate::EnglishDate),
      ReadOnly("IsNull", &VorekDate::IsNull)};
  return table;
}

}  // namespace vorek
