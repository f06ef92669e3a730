#include "adapters/qt/control_view.h"

#include <QEvent>
#include <QKeyEvent>

#include "adapters/qt/key_codes.h"

namespace vorek::qt {
namespace {

bool IsRoot(const Control& control) { return control.Parent() == nullptr; }

}  // namespace

ControlView::ControlView(Presenter& presenter, Control& control, QWidget* widget)
    : presenter_(presenter), control_(control), widget_(widget) {
  widget_->setObjectName(ToQt(control.PathName()));
  widget_->installEventFilter(this);
}

void ControlView::SetAll() {
  Place();
  for (const std::string_view name :
       {"Enabled", "RightToLeft", "ToolTipText", "TabStop", "Visible"}) {
    Set(name);
  }
}

void ControlView::Place() {
  if (IsRoot(control_)) return;
  std::int32_t left = control_.Left();
  std::int32_t width = control_.Width();
  presenter_.ForEachAbove(control_, [&](ControlView& view) { view.Adjust(control_, left, width); });
  widget_->setGeometry(presenter_.Measure().Pixels(left, control_.Top(), width, control_.Height()));
}

void ControlView::Set(std::string_view property) {
  if (property == "Left" || property == "Top" || property == "Width" || property == "Height") {
    Place();
  } else if (property == "Visible") {
    if (!IsRoot(control_)) widget_->setVisible(control_.Visible());
  } else if (property == "Enabled") {
    widget_->setEnabled(control_.Enabled());
  } else if (property == "RightToLeft") {
    widget_->setLayoutDirection(control_.RightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  } else if (property == "ToolTipText") {
    widget_->setToolTip(ToQt(control_.ToolTipText()));
  } else if (property == "ZOrder") {
    widget_->raise();
  } else if (property == "TabIndex") {
    presenter_.OrderTabsLater();
  } else if (property == "TabStop" && !control_.TabStop()) {
    widget_->setFocusPolicy(Qt::ClickFocus);
  }
}

void ControlView::Retire() {
  retired_ = true;
  Forget();
  if (IsRoot(control_)) {
    widget_->removeEventFilter(this);
  } else {
    widget_->hide();
    widget_->deleteLater();
  }
  deleteLater();
}

bool ControlView::EndsTyping(const QKeyEvent& event) {
  const int key = event.key();
  return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab ||
         (key >= Qt::Key_F1 && key <= Qt::Key_F12);
}

bool ControlView::eventFilter(QObject* object, QEvent* event) {
  if (retired_ || object != widget_ || presenter_.Locked()) return false;
  if (event->type() == QEvent::FocusIn) {
    Feed([this] { control_.GotFocus(); });
  } else if (event->type() == QEvent::FocusOut) {
    Commit();
    if (!retired_) Feed([this] { control_.LostFocus(); });
  } else if (event->type() == QEvent::KeyPress && widget_->window()->focusWidget() == widget_) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (EndsTyping(key)) Commit();
    bool taken = false;
    if (!retired_) taken = presenter_.KeyDown(control_, key);
    return taken || retired_ || !widget_->isVisible();
  }
  return false;
}

}  // namespace vorek::qt
