#include <QLabel>

#include "adapters/qt/view_registry.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

class LabelView : public ControlView {
 public:
  LabelView(Presenter& presenter, Label& label, QWidget& parent)
      : ControlView(presenter, label, new QLabel(&parent)), label_(label) {
    Text().setWordWrap(true);
    Text().setTextFormat(Qt::PlainText);
    Text().setTextInteractionFlags(Qt::NoTextInteraction);
  }

  void Set(std::string_view property) override {
    if (property == "Caption") {
      Text().setText(ToQt(label_.Caption()));
    } else if (property == "Alignment") {
      Align();
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Set("Caption");
    Align();
  }

 private:
  QLabel& Text() { return static_cast<QLabel&>(Widget()); }
  void Align() {
    const bool centred = label_.Alignment() == Label::kCentre;
    Text().setAlignment((centred ? Qt::AlignHCenter : Qt::AlignLeading) | Qt::AlignTop);
  }

  Label& label_;
};

}  // namespace

ControlView* MakeLabelView(Presenter& presenter, Control& control, QWidget& parent) {
  return new LabelView(presenter, static_cast<Label&>(control), parent);
}

}  // namespace vorek::qt
