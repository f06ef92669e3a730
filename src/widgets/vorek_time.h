#ifndef VOREK_WIDGETS_VOREK_TIME_H_
#define VOREK_WIDGETS_VOREK_TIME_H_

#include <cstdint>
#include <optional>
#include <string>

#include "widgets/typed_control.h"
#include "widgets/typed_text.h"

namespace vorek {

// An amount of minutes that is entered and shown as hours and minutes: the base of the two below.
class MinutesControl : public TypedControl {
 public:
  using TypedControl::TypedControl;

  // Typing takes hours and minutes (ParseHours), digits of any script; empty text clears.

  // --- State for the presenter ---------------------------------------------------------------

  bool IsNull() const { return !minutes_; }

  // --- Changes by the program: each raises on_change if the value is another ------------------

  void Clear() { Take(std::nullopt); }

 protected:
  std::string TakeTyped(const std::string& text) override;
  std::int32_t Minutes() const { return minutes_.value_or(0); }
  std::string Shown() const;  // "08:30", "" while empty

 private:
  virtual std::int32_t Most() const = 0;  // minutes
  virtual BareNumber Bare() const = 0;
  // Why that text is no value of this kind, in Persian.
  virtual std::string ReasonAgainst(const std::string& text) const = 0;
  void Take(std::optional<std::int32_t> minutes);

  std::optional<std::int32_t> minutes_;
};

// A time of the day: "8:30", "0830", "830", "8".
class VorekTime : public MinutesControl {
 public:
  using MinutesControl::MinutesControl;
  std::string_view Kind() const override { return "VorekTime"; }
  std::int32_t GetTimeValue() const { return Minutes(); }   // since midnight, 0 while empty
  std::string GetTimeFormatted() const { return Shown(); }  // "08:30"

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::int32_t Most() const override { return 24 * 60 - 1; }
  BareNumber Bare() const override { return BareNumber::kTimeOfDay; }
  std::string ReasonAgainst(const std::string& text) const override;
};

// A length of time, of any number of hours up to 99999: "125:30", "125".
class VorekDuration : public MinutesControl {
 public:
  using MinutesControl::MinutesControl;
  std::string_view Kind() const override { return "VorekDuration"; }
  std::int32_t GetDurationValue() const { return Minutes(); }  // 0 while empty
  std::string GetDuration() const { return Shown(); }          // "125:30"

 protected:
  const PropertyTable& OwnProperties() const override;

 private:
  std::int32_t Most() const override { return 99999 * 60 + 59; }
  BareNumber Bare() const override { return BareNumber::kHours; }
  std::string ReasonAgainst(const std::string& text) const override;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_VOREK_TIME_H_
