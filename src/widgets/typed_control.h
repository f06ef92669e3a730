#ifndef VOREK_WIDGETS_TYPED_CONTROL_H_
#define VOREK_WIDGETS_TYPED_CONTROL_H_

#include <functional>
#include <string>

#include "widgets/control.h"

namespace vorek {

// A control that a person types a value into. A text that is no value of it isn't taken: the
// control holds the text back with the reason, and keeps the value that it had. Who reads the value
// asks for a refusal first. Any value that is taken or assigned ends the refusal.
class TypedControl : public Control {
 public:
  using Control::Control;

  // --- Events from the presenter -------------------------------------------------------------

  // Takes the text or holds it back; nothing while the control is disabled.
  void Type(const std::string& text) override;

  // --- State for the presenter ---------------------------------------------------------------

  // Why the text that was typed last isn't taken, in Persian; "" while nothing is held back.
  const std::string& Refusal() const { return refusal_; }
  const std::string& RefusedText() const { return refused_text_; }
  bool Refuses() const { return !refusal_.empty(); }

  // --- Changes by the program ------------------------------------------------------------------

  // Forgets the text that was held back: the control shows its value again.
  void DropRefusal();

  // --- Callbacks to the owner ------------------------------------------------------------------

  std::function<void()> on_refusal;  // a refusal began, ended, or has another reason

 protected:
  const PropertyTable& OwnProperties() const override;
  // Takes the text as the value. Returns "", or in Persian why it can't be taken.
  virtual std::string TakeTyped(const std::string& text) = 0;

 private:
  void Refuse(std::string text, std::string reason);

  std::string refused_text_;
  std::string refusal_;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_TYPED_CONTROL_H_
