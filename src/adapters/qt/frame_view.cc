#include <QGroupBox>

#include "adapters/qt/view_registry.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

// A control that holds others: a box with its caption around them, or nothing to be seen.
QWidget* MakeFrame(const CaptionControl* frame, QWidget& parent) {
  if (frame == nullptr || frame->Caption().empty()) return new QWidget(&parent);
  return new QGroupBox(ToQt(frame->Caption()), &parent);
}

class FrameView : public ControlView {
 public:
  FrameView(Presenter& presenter, Control& control, QWidget& parent)
      : ControlView(presenter, control,
                    MakeFrame(dynamic_cast<CaptionControl*>(&control), parent)) {}

  void Set(std::string_view property) override {
    auto* const box = qobject_cast<QGroupBox*>(&Widget());
    if (property == "Caption" && box != nullptr) {
      box->setTitle(ToQt(static_cast<CaptionControl&>(Shown()).Caption()));
    } else {
      ControlView::Set(property);
    }
  }
};

}  // namespace

ControlView* MakeFrameView(Presenter& presenter, Control& control, QWidget& parent) {
  return new FrameView(presenter, control, parent);
}

}  // namespace vorek::qt
