#ifndef VOREK_ADAPTERS_QT_QT_WINDOWS_H_
#define VOREK_ADAPTERS_QT_QT_WINDOWS_H_

#include <memory>
#include <unordered_map>

#include "adapters/qt/busy_screen.h"
#include "adapters/qt/form_window.h"
#include "vorek/windows.h"

namespace vorek::qt {

// The screen by Qt. REQUIRES a QApplication, used from its thread.
class QtWindows : public Windows {
 public:
  QtWindows() : busy_(std::make_shared<BusyScreen>()) {}
  ~QtWindows() override;

  void ShowModal(Form& form) override;
  void Show(Form& form) override;
  void PopupMenu(Menu& menu) override;
  std::int32_t TextWidth(std::string_view text, double size) const override;
  void SetMousePointer(int shape) override;
  bool TellCancelled(std::string_view line) override;
  void BeginPass() override { busy_->BeginPass(); }
  bool PassGoesOn() override { return busy_->PassGoesOn(); }
  void EndPass() override { busy_->EndPass(); }
  void Beep(std::int32_t frequency, std::int32_t duration) override;
  ScreenPoint ClientToScreen(const Control& control) const override;
  double TwipsPerPixel() const override;
  ScreenSize Size() const override;
  void LoadKeyboardLayout(std::string_view name) override;
  int OsMajorVersion() const override;

  const std::shared_ptr<BusyScreen>& Busy() const { return busy_; }

 private:
  void AddPlace(FormWindow& window);
  void Drop(const Form& form);

  std::shared_ptr<BusyScreen> busy_;
  std::unordered_map<const Form*, FormWindow*> modeless_;
  bool hourglass_ = false;
};

// Tells an error that nothing in the system caught.
void ShowFailure(QWidget* over, const QString& description);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_QT_WINDOWS_H_
