#include "adapters/qt/form_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "adapters/qt/control_view.h"

namespace vorek::qt {

FormWindow::FormWindow(Form& form, QWidget* over)
    : QWidget(over, form.Bare() ? Qt::Dialog | Qt::FramelessWindowHint : Qt::Dialog),
      form_(&form),
      fixed_(!form.on_resize) {
  setLayoutDirection(Qt::RightToLeft);
  presenter_ = std::make_unique<Presenter>(form, *this);
  presenter_->on_root_changed = [this](std::string_view property) { Follow(property); };
  presenter_->on_failure = [this](const QString& text) {
    if (on_failure) on_failure(text);
  };
  presenter_->on_root_gone = [this] {
    form_ = nullptr;
    Ended();
  };
  Follow("Caption");
  TakeSize();
}

void FormWindow::Open() {
  Centre();
  show();
  // How wide the frame is only a window on the screen knows.
  TakeSize();
  Centre();
  activateWindow();
  raise();
  StartTimers();
}

void FormWindow::StartTimers() {
  if (std::exchange(timed_, true)) return;
  for (Control* const child : form_->Children()) {
    if (auto* const timer = dynamic_cast<Timer*>(child)) Run(*timer);
  }
}

void FormWindow::Run(Timer& timer) {
  auto* const clock = new QTimer(this);
  connect(clock, &QTimer::timeout, this, [this, clock, &timer] {
    if (form_ != nullptr && timer.Enabled()) {
      presenter_->Feed([&] { timer.Elapse(); });
    } else {
      clock->stop();
    }
  });
  clock->start(timer.Interval());
}

// A bare form where it says, any other in the middle of what it stands before.
void FormWindow::Centre() {
  QRect place = frameGeometry();
  if (form_->Bare()) {
    const Scale& scale = presenter_->Measure();
    place.moveTopLeft({scale.Pixels(form_->Left()), scale.Pixels(form_->Top())});
  } else {
    const QWidget* const over = parentWidget();
    place.moveCenter(
        (over != nullptr ? over->window()->frameGeometry() : screen()->availableGeometry())
            .center());
  }
  KeepOnScreen(place);
}

void FormWindow::KeepOnScreen(QRect place) {
  const QRect room = screen()->availableGeometry();
  place.moveRight(std::min(place.right(), room.right()));
  place.moveBottom(std::min(place.bottom(), room.bottom()));
  move(std::max(place.left(), room.left()), std::max(place.top(), room.top()));
}

void FormWindow::Follow(std::string_view property) {
  if (property == "Caption") setWindowTitle(ToQt(form_->Caption()));
  if (property == "Width" || property == "Height") TakeSize();
  if (property == "Visible" && !form_->Visible()) Ended();
}

void FormWindow::Ended() {
  hide();
  if (on_hidden) on_hidden();
}

void FormWindow::TakeSize() {
  const bool was_sizing = std::exchange(sizing_, true);
  const Scale& scale = presenter_->Measure();
  const QSize wanted(scale.Pixels(form_->Width()), scale.Pixels(form_->Height()));
  if (fixed_) {
    setFixedSize(wanted);
  } else {
    // What the screen has no room for the form may scroll to.
    const QSize frame = frameGeometry().size() - size();
    resize(wanted.boundedTo(screen()->availableGeometry().size() - frame));
    if (size() != wanted) TellSize();
  }
  sizing_ = was_sizing;
}

void FormWindow::TellSize() {
  constexpr int kAgain = 50;  // milliseconds
  if (form_ == nullptr) return;
  if (presenter_->Locked()) {
    if (!std::exchange(size_due_, true)) QTimer::singleShot(kAgain, this, [this] { TellLate(); });
    return;
  }
  const Scale& scale = presenter_->Measure();
  presenter_->Feed([&] {
    form_->Move(form_->Left(), form_->Top(), scale.Twips(width()), scale.Twips(height()));
  });
}

void FormWindow::TellLate() {
  size_due_ = false;
  const bool was_sizing = std::exchange(sizing_, true);
  TellSize();
  sizing_ = was_sizing;
}

void FormWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (form_ == nullptr || std::exchange(sizing_, true)) return;
  if (!fixed_) TellSize();
  sizing_ = false;
}

// The presenter may be in the midst of feeding an event.
void FormWindow::Release() {
  presenter_->Leave();
  presenter_.release()->deleteLater();
  form_ = nullptr;
}

void FormWindow::closeEvent(QCloseEvent* event) {
  if (form_ == nullptr) return;
  if (form_->Shown()) presenter_->Feed([this] { form_->CloseBox(); });
  if (form_ != nullptr && form_->Shown()) event->ignore();
}

// A key that no control of the form has the focus for.
void FormWindow::keyPressEvent(QKeyEvent* event) {
  if (form_ == nullptr) return;
  if (focusWidget() == nullptr || focusWidget() == this) presenter_->KeyDown(*form_, *event);
}

// The control that the form made the active one, else the first one, gets the focus.
void FormWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (presenter_ != nullptr) presenter_->Sync();
  if (focusWidget() == nullptr) focusNextChild();
}

bool FormWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && form_ != nullptr && form_->Shown()) {
    presenter_->Feed([this] { form_->Activate(); });
  }
  if (event->type() == QEvent::ApplicationFontChange && form_ != nullptr) {
    presenter_->SetAll();
    TakeSize();
  }
  return QWidget::event(event);
}

}  // namespace vorek::qt
