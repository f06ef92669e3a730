#ifndef VOREK_PLATFORM_NO_WINDOWS_H_
#define VOREK_PLATFORM_NO_WINDOWS_H_

#include "platform/windows.h"

namespace vorek {

// No screen at all: a form closes as soon as it is shown, texts are measured by a fixed pitch.
class NoWindows : public Windows {
 public:
  void ShowModal(Form&) override {}
  void Show(Form&) override {}
  void PopupMenu(Menu&) override {}
  std::int32_t TextWidth(std::string_view text, double size) const override;
  void SetMousePointer(int) override {}
  void Beep() override {}
  int OsMajorVersion() const override { return 0; }
};

}  // namespace vorek

#endif  // VOREK_PLATFORM_NO_WINDOWS_H_
