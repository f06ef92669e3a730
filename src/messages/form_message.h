#ifndef VOREK_MESSAGES_FORM_MESSAGE_H_
#define VOREK_MESSAGES_FORM_MESSAGE_H_

#include <string>

#include "widgets/form.h"

namespace vorek {

// A fact with one button; Escape closes it too.
class FormMessage : public Form {
 public:
  explicit FormMessage(Windows& windows);
  std::string MainText() const override { return lblMessage.Caption(); }

  Label lblMessage{this, "lblMessage"};
  Button cmdContinue{this, "cmdContinue"};
};

}  // namespace vorek

#endif  // VOREK_MESSAGES_FORM_MESSAGE_H_
