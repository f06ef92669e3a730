#ifndef VOREK_WIDGETS_TYPED_DATE_H_
#define VOREK_WIDGETS_TYPED_DATE_H_

#include <optional>
#include <string>
#include <string_view>

#include "text/persian_date.h"

// A Persian date as people type it.
namespace vorek {

// What a text says: a date, or in Persian why it says none.
struct TypedDate {
  std::optional<text::CalendarDate> date;
  std::string refusal;
};

// Reads "1404/06/01", "04/6/1", "6/1" and "1", parted by "/", "-", "." or blanks, and "14040601"
// and "040601", in digits of three scripts. Year and month that are left out are those of `today`,
// a Persian date; years of one or two digits lie from 1350 to 1449, others from 1200 to 1499.
TypedDate ParseTypedDate(std::string_view typed, const text::CalendarDate& today);

// True for a text that already has a year, a month and a day, so that a sign behind it is no
// separator.
bool IsWholeDate(std::string_view typed);

}  // namespace vorek

#endif  // VOREK_WIDGETS_TYPED_DATE_H_
