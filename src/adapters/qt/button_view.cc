#include <QEvent>
#include <QKeyEvent>
#include <QPushButton>

#include "adapters/qt/view_registry.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

class ButtonView : public ControlView {
 public:
  ButtonView(Presenter& presenter, Button& button, QWidget& parent)
      : ControlView(presenter, button, new QPushButton(&parent)), button_(button) {
    connect(&Push(), &QPushButton::clicked, this, [this] {
      Owner().CommitTyping();
      Feed([this] { button_.Click(); });
    });
  }

  void Set(std::string_view property) override {
    if (property == "Caption") {
      Push().setText(ToQt(button_.Caption()));
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Set("Caption");
  }

 protected:
  // The control hears Enter and blank and presses itself; a key that is held presses once.
  bool eventFilter(QObject* object, QEvent* event) override {
    const bool key_event = object == &Widget() && (event->type() == QEvent::KeyPress ||
                                                   event->type() == QEvent::KeyRelease);
    if (!key_event) return ControlView::eventFilter(object, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    const bool presses =
        key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Space;
    if (presses && (key.isAutoRepeat() || event->type() == QEvent::KeyRelease)) return true;
    return ControlView::eventFilter(object, event) || presses;
  }

 private:
  QPushButton& Push() { return static_cast<QPushButton&>(Widget()); }

  Button& button_;
};

}  // namespace

ControlView* MakeButtonView(Presenter& presenter, Control& control, QWidget& parent) {
  return new ButtonView(presenter, static_cast<Button&>(control), parent);
}

}  // namespace vorek::qt
