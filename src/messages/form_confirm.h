#ifndef VOREK_MESSAGES_FORM_CONFIRM_H_
#define VOREK_MESSAGES_FORM_CONFIRM_H_

#include <cstdint>
#include <string>

#include "widgets/form.h"

namespace vorek {

// A question: yes, no, or closed without an answer. The buttons leave 1, 2 or 0 in the answer,
// Escape as cmdContinue.
class FormConfirm : public Form {
 public:
  FormConfirm(Windows& windows, std::int32_t& answer);
  std::string MainText() const override { return lblQuestion.Caption(); }

  Label lblQuestion{this, "lblQuestion"};
  Button cmdYes{this, "cmdYes"};
  Button cmdNo{this, "cmdNo"};
  Button cmdContinue{this, "cmdContinue"};

 private:
  void Answer(std::int32_t value);

  std::int32_t& answer_;
};

}  // namespace vorek

#endif  // VOREK_MESSAGES_FORM_CONFIRM_H_
