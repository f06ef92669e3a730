#ifndef VOREK_WIDGETS_VOREK_CURRENCY_H_
#define VOREK_WIDGETS_VOREK_CURRENCY_H_

#include <string>

#include "widgets/typed_control.h"

namespace vorek {

// An amount of money: digit groups while it is shown, a bare exact number for a query. Amounts go
// to 922337203685477.5807, with at most four decimals.
class VorekCurrency : public TypedControl {
 public:
  using TypedControl::TypedControl;
  std::string_view Kind() const override { return "VorekCurrency"; }

  // --- State for the presenter ---------------------------------------------------------------

  const std::string& Text() const { return text_; }  // "1/234/567.5", "(500)"; "" while empty
  std::string Value() const;                         // "1234567.5", "-500"; "0" while empty

  // --- Changes by the program ------------------------------------------------------------------

  // Reads digits of any script with or without groups ("/", "," or a blank between), "-" or
  // brackets for a negative amount. Blank text empties. Throws Error(kTypeMismatch) for a text that
  // is no amount, and leaves the widget as it was. Raises on_change if the amount is another.
  void SetText(const std::string& text);

 protected:
  const PropertyTable& OwnProperties() const override;
  std::string TakeTyped(const std::string& text) override;

 private:
  // False for a text that is no amount.
  bool TakeAmount(const std::string& typed);

  std::string text_;
  std::string value_;  // plain; empty while nothing is entered
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_VOREK_CURRENCY_H_
