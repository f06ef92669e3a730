#include "messages/form_error.h"

#include "text/number.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {
namespace {

constexpr int kEnter = 13;
constexpr int kEscape = 27;
constexpr int kX = 88;
constexpr int kCtrl = 2;
constexpr int kAlt = 4;

}  // namespace

FormError::FormError(Windows& windows) : Form(windows, "FormError") {
  SetRightToLeft(true);
  SetCaption("بروز خطا");
  Move(0, 0, 6600, kDesignHeight);
  lblError.SetRightToLeft(true);
  lblError.Move(300, 300, 6000, 1100);
  cmdOk.SetCaption("تاييد");
  cmdOk.Move(4900, 1600, 1400, 420);
  cmdOk.on_click = [this] { Unload(); };
  cmdDetail.Move(300, 1600, 1400, 420);
  cmdDetail.on_click = [this] { ToggleDetail(); };
  txtError.SetMultiLine(true);
  txtError.SetLocked(true);
  txtError.Move(300, 2500, 6000, 2000);
  on_load = [this] { FoldAtLoad(); };
  on_form_key_down = [this](int key_code, int shift) {
    IgnoreErrors([&] { CloseOnKey(key_code, shift); });
  };
}

void FormError::FoldAtLoad() {
  detail_open_ = false;
  cmdDetail.SetCaption("جزييات >>");
  SetHeight(text::ToInt32(kDesignHeight / 2.0));
}

void FormError::ToggleDetail() {
  detail_open_ = !detail_open_;
  SetHeight(detail_open_ ? Height() * 2 : text::ToInt32(Height() / 2.0));
  cmdDetail.SetCaption(detail_open_ ? "جزييات <<" : "جزييات >>");
}

void FormError::CloseOnKey(int key_code, int shift) {
  const bool on_button =
      ActiveControl() != nullptr && text::StartsWithIgnoreCase(ActiveControl()->Name(), "cmd");
  const bool enter = key_code == kEnter && (!on_button || shift == kCtrl);
  if (enter || key_code == kEscape || (key_code == kX && shift == kAlt)) Unload();
}

}  // namespace vorek
