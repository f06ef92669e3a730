#ifndef VOREK_ADAPTERS_QT_FORM_WINDOW_H_
#define VOREK_ADAPTERS_QT_FORM_WINDOW_H_

#include <QWidget>
#include <functional>
#include <memory>

#include "adapters/qt/presenter.h"
#include "widgets/form.h"

namespace vorek::qt {

// The window of a form: as large as the form says, and the form as large as the user makes it.
class FormWindow : public QWidget {
 public:
  // over is the window that it stands before; null for none.
  FormWindow(Form& form, QWidget* over);

  void SetScreen(std::shared_ptr<BusyScreen> screen) { presenter_->SetScreen(std::move(screen)); }
  // Shows the window in the middle of the one that it stands before, a bare one where it says.
  void Open();
  // Lets the form go: from here on it may be shown elsewhere, or be gone.
  void Release();
  // The form isn't shown any more, or is gone.
  std::function<void()> on_hidden;
  // For failures that nobody caught in the form.
  std::function<void(const QString&)> on_failure;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Follow(std::string_view property);
  void TakeSize();
  void TellSize();
  void TellLate();
  void Centre();
  void KeepOnScreen(QRect place);
  void Ended();
  void StartTimers();
  void Run(Timer& timer);

  Form* form_;
  bool fixed_;  // the form has no use for another size
  bool sizing_ = false;
  bool size_due_ = false;  // a size to be told when the screen waits no more
  bool timed_ = false;     // the form's timers run
  std::unique_ptr<Presenter> presenter_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_FORM_WINDOW_H_
