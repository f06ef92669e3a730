#ifndef VOREK_NO_WINDOWS_H_
#define VOREK_NO_WINDOWS_H_

#include "vorek/windows.h"

namespace vorek {

// No screen at all: a form closes as soon as it is shown, texts are measured by a fixed pitch.
class NoWindows : public Windows {
 public:
  void ShowModal(Form&) override {}
  void Show(Form&) override {}
  void PopupMenu(Menu&) override {}
  std::int32_t TextWidth(std::string_view text, double size) const override;
  void SetMousePointer(int) override {}
  void Beep(std::int32_t, std::int32_t) override {}
  ScreenPoint ClientToScreen(const Control&) const override { return {}; }
  double TwipsPerPixel() const override { return 15; }
  ScreenSize Size() const override { return {19200, 11520}; }  // 1280 by 768 pixels
  void LoadKeyboardLayout(std::string_view) override {}
  int OsMajorVersion() const override { return 0; }
};

}  // namespace vorek

#endif  // VOREK_NO_WINDOWS_H_
