#include "messages/form_message.h"

namespace vorek {

FormMessage::FormMessage(Windows& windows) : Form(windows, "FormMessage") {
  SetRightToLeft(true);
  Move(0, 0, 6000, 2400);
  lblMessage.SetRightToLeft(true);
  lblMessage.Move(300, 300, 5400, 1200);
  chkSilent.SetRightToLeft(true);
  chkSilent.SetCaption("اين پيام در اين اجرا ديگر نيايد");
  chkSilent.Move(1900, 1650, 3800, 420);
  chkSilent.SetVisible(false);
  cmdContinue.SetCaption("ادامه");
  cmdContinue.Move(300, 1650, 1400, 420);
  cmdContinue.on_click = [this] { Unload(); };
  on_load = [this] { cmdContinue.SetFocus(); };
  on_form_key_down = [this](int key_code, int) {
    constexpr int kEscape = 27;
    if (key_code == kEscape) Unload();
  };
}

void FormMessage::OfferSilence(bool offer) {
  chkSilent.SetValue(0);
  chkSilent.SetVisible(offer);
}

}  // namespace vorek
