#include "widgets/vorek_date.h"

#include <vector>

#include "text/utf8.h"
#include "vorek/error.h"
#include "widgets/property.h"
#include "widgets/typed_date.h"
#include "widgets/typed_text.h"

namespace vorek {
namespace {

// The word of a text that stands for today, or the sign at its end for another day.
bool IsToday(const std::string& plain) {
  return plain == "t" || plain == "T" || plain == "ا" || plain == "امروز";
}

// 1 or -1 for a sign at the end of a text that needs no separator there, else 0.
int DaysOfSign(const std::string& plain) {
  if (plain.empty() || (plain.back() != '+' && plain.back() != '-')) return 0;
  const std::string before = plain.substr(0, plain.size() - 1);
  if (!before.empty() && !IsWholeDate(before)) return 0;
  return plain.back() == '+' ? 1 : -1;
}

// The day behind or before a Persian date; nullopt at the ends of the calendar.
std::optional<text::CalendarDate> Neighbour(text::CalendarDate date, int days) {
  date.day += days;
  if (date.day < 1) {
    if (--date.month < 1) date = {date.year - 1, 12, 0};
    if (date.year < 1) return std::nullopt;
    date.day = text::PersianMonthLength(date.year, date.month);
  } else if (date.day > text::PersianMonthLength(date.year, date.month)) {
    date = date.month == 12 ? text::CalendarDate{date.year + 1, 1, 1}
                            : text::CalendarDate{date.year, date.month + 1, 1};
  }
  return text::IsPersianDate(date) ? std::optional(date) : std::nullopt;
}

}  // namespace

bool VorekDate::EndsByItself(const std::string& text) {
  const std::string plain = PlainTyped(text);
  return DaysOfSign(plain) != 0 || (IsToday(plain) && plain != "امروز");
}

std::string VorekDate::TakeTyped(const std::string& text) {
  const std::string plain = PlainTyped(text);
  if (plain.empty()) {
    Clear();
    return {};
  }
  if (IsToday(plain)) {
    Take(today_);
    return {};
  }
  if (const int days = DaysOfSign(plain)) return TakeStep(plain.substr(0, plain.size() - 1), days);
  const TypedDate typed = ParseTypedDate(text, text::ToPersian(today_));
  if (typed.date) Take(text::ToGregorian(*typed.date));
  return typed.refusal;
}

// A sign alone goes from the date that is held, or from today.
std::string VorekDate::TakeStep(const std::string& base, int days) {
  TypedDate from{text::ToPersian(date_.value_or(today_)), {}};
  if (!base.empty()) from = ParseTypedDate(base, text::ToPersian(today_));
  if (!from.date) return from.refusal;
  const auto to = Neighbour(*from.date, days);
  if (!to) return "تقويم روز ديگري ندارد";
  Take(text::ToGregorian(*to));
  return {};
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
    throw Error(ErrorNumber::kTypeMismatch,
                Path() + ": \"" + text::Left(text, 50) + "\" is no Persian date");
  }
  Take(text::ToGregorian(*date));
}

void VorekDate::Clear() { Take(std::nullopt); }

void VorekDate::Take(std::optional<text::CalendarDate> gregorian) {
  DropRefusal();
  if (Assign(date_, gregorian, "FarsiDate") && on_change) on_change();
}

const PropertyTable& VorekDate::OwnProperties() const {
  using property::ReadOnly;
  static const PropertyTable own = {
      {"FarsiDate",
       [](Control& c, const std::vector<std::string>&) {
         return static_cast<VorekDate&>(c).FarsiDate();
       },
       [](Control& c, const std::vector<std::string>&, const std::string& value) {
         static_cast<VorekDate&>(c).SetFarsiDate(value);
       }},
      ReadOnly("EnglishDate", &VorekDate::EnglishDate),
      ReadOnly("IsNull", &VorekDate::IsNull)};
  static const PropertyTable table = property::Join(own, TypedControl::OwnProperties());
  return table;
}

}  // namespace vorek
