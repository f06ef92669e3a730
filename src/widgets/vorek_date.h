#ifndef VOREK_WIDGETS_VOREK_DATE_H_
#define VOREK_WIDGETS_VOREK_DATE_H_

#include <optional>
#include <string>

#include "text/persian_date.h"
#include "widgets/control.h"

namespace vorek {

// A date, entered and shown in the Persian calendar and kept in the Gregorian one.
class VorekDate : public Control {
 public:
  using Control::Control;
  std::string_view Kind() const override { return "VorekDate"; }

  // --- Events from the presenter -------------------------------------------------------------

  // Two-digit years lie from 1350 to 1449, a missing year or month is today's; a text that is no
  // date raises Error(kTypeMismatch) and leaves the widget as it was.
  void Type(const std::string& text) override;

  // --- State for the presenter ---------------------------------------------------------------

  bool IsNull() const { return !date_; }
  std::string FarsiDate() const;    // "1404/09/03", "" while empty
  std::string EnglishDate() const;  // "20251124", which SQL reads the same in every language; ""
  const std::optional<text::CalendarDate>& Value() const { return date_; }  // Gregorian

  // --- Changes by the program: each raises on_change if the date is another -------------------

  // Throws Error(kInvalidCall) for a date that doesn't exist.
  void SetValue(const text::CalendarDate& gregorian);
  // Empty text clears. Throws Error(kTypeMismatch) for a text that is no date of the calendar.
  void SetFarsiDate(const std::string& text);
  void Clear();
  // What a typed date is completed from, Gregorian.
  void SetToday(const text::CalendarDate& today) { today_ = today; }

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  void Take(std::optional<text::CalendarDate> gregorian);

  std::optional<text::CalendarDate> date_;
  text::CalendarDate today_{2000, 1, 1};
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_VOREK_DATE_H_
