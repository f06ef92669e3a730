#include <QProgressBar>

#include "adapters/qt/view_registry.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

class ProgressView : public ControlView {
 public:
  ProgressView(Presenter& presenter, VorekProgressBar& bar, QWidget& parent)
      : ControlView(presenter, bar, new QProgressBar(&parent)), bar_(bar) {
    Bar().setTextVisible(false);
  }

  void Set(std::string_view property) override {
    if (property == "RightToLeft") {
      Bar().setLayoutDirection(Qt::RightToLeft);  // as all of the screen
    } else if (property == "Value") {
      Bar().setValue(bar_.Value());
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Set("RightToLeft");
    Set("Value");
  }

 private:
  QProgressBar& Bar() { return static_cast<QProgressBar&>(Widget()); }

  VorekProgressBar& bar_;
};

}  // namespace

ControlView* MakeProgressView(Presenter& presenter, Control& control, QWidget& parent) {
  return new ProgressView(presenter, static_cast<VorekProgressBar&>(control), parent);
}

}  // namespace vorek::qt
