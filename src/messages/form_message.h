#ifndef VOREK_MESSAGES_FORM_MESSAGE_H_
#define VOREK_MESSAGES_FORM_MESSAGE_H_

#include <string>

#include "widgets/basic_controls.h"
#include "widgets/form.h"

namespace vorek {

// A fact with one button; Escape closes it too.
class FormMessage : public Form {
 public:
  explicit FormMessage(Windows& windows);
  std::string MainText() const override { return lblMessage.Caption(); }

  // Offers to leave the message out from now on; not offered when the form is made.
  void OfferSilence(bool offer);

  Label lblMessage{this, "lblMessage"};
  CheckBox chkSilent{this, "chkSilent"};
  Button cmdContinue{this, "cmdContinue"};
};

}  // namespace vorek

#endif  // VOREK_MESSAGES_FORM_MESSAGE_H_
