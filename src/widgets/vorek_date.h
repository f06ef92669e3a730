#ifndef VOREK_WIDGETS_VOREK_DATE_H_
#define VOREK_WIDGETS_VOREK_DATE_H_

#include <optional>
#include <string>

#include "text/persian_date.h"
#include "widgets/typed_control.h"

namespace vorek {

// A date, entered and shown in the Persian calendar and kept in the Gregorian one.
class VorekDate : public TypedControl {
 public:
  using TypedControl::TypedControl;
  std::string_view Kind() const override { return "VorekDate"; }

  // --- Events from the presenter -------------------------------------------------------------

  // Typing takes a date (ParseTypedDate), "t" or "ا" for today, and "+" or "-", alone or behind a
  // whole date, for the next or the former day.

  // True for a text that says all it can, so that a presenter may hand it over at once: a letter
  // for today, a sign for another day.
  static bool EndsByItself(const std::string& text);

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
  const text::CalendarDate& Today() const { return today_; }

 protected:
  const PropertyTable& OwnProperties() const override;
  std::string TakeTyped(const std::string& text) override;

 private:
  std::string TakeStep(const std::string& base, int days);
  void Take(std::optional<text::CalendarDate> gregorian);

  std::optional<text::CalendarDate> date_;
  text::CalendarDate today_{2000, 1, 1};
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_VOREK_DATE_H_
