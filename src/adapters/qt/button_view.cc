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
    connect(&Push(), &QPushButton::clicked, this, [this] { Feed([this] { button_.Click(); }); });
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
  // Enter presses the button that has the focus.
  bool eventFilter(QObject* object, QEvent* event) override {
    if (ControlView::eventFilter(object, event)) return true;
    if (object != &Widget() || event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if ((key != Qt::Key_Return && key != Qt::Key_Enter)) return false;
    Push().click();
    return true;
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
