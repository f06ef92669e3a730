#include "messages/form_confirm.h"

namespace vorek {

FormConfirm::FormConfirm(Windows& windows, std::int32_t& answer)
    : Form(windows, "FormConfirm"), answer_(answer) {
  SetRightToLeft(true);
  Move(0, 0, 6000, 2400);
  lblQuestion.SetRightToLeft(true);
  lblQuestion.Move(300, 300, 5400, 1200);
  cmdYes.SetCaption("بلي");
  cmdYes.Move(4300, 1650, 1400, 420);
  cmdYes.on_click = [this] { Answer(1); };
  cmdNo.SetCaption("خير");
  cmdNo.Move(2800, 1650, 1400, 420);
  cmdNo.on_click = [this] { Answer(2); };
  cmdContinue.SetCaption("انصراف");
  cmdContinue.Move(300, 1650, 1400, 420);
  cmdContinue.on_click = [this] { Answer(0); };
  on_form_key_down = [this](int key_code, int) {
    constexpr int kEscape = 27;
    if (key_code == kEscape) Answer(0);
  };
}

void FormConfirm::Answer(std::int32_t value) {
  answer_ = value;
  Unload();
}

}  // namespace vorek
