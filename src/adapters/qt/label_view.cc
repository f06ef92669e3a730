#include <QLabel>

#include "adapters/qt/view_registry.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

class LabelView : public ControlView {
 public:
  LabelView(Presenter& presenter, Label& label, QWidget& parent)
      : ControlView(presenter, label, new QLabel(&parent)), label_(label) {
    Text().setTextFormat(Qt::PlainText);
    Text().setTextInteractionFlags(Qt::NoTextInteraction);
  }

  void Set(std::string_view property) override {
    if (property == "Caption") {
      Text().setText(ToQt(label_.Caption()));
      Fit();
    } else if (property == "Alignment") {
      Align();
    } else {
      ControlView::Set(property);
      if (property == "Width" || property == "Height") Fit();
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
  // Words wrap where there is room for a second line; what is cut off is told by a tip.
  void Fit() {
    const int line = Text().fontMetrics().lineSpacing();
    const bool wraps = Text().height() >= 2 * line;
    Text().setWordWrap(wraps);
    if (!label_.ToolTipText().empty()) return;
    const bool cut =
        !wraps && Text().fontMetrics().horizontalAdvance(Text().text()) > Text().width();
    Text().setToolTip(cut ? Text().text() : QString());
  }

  Label& label_;
};

}  // namespace

ControlView* MakeLabelView(Presenter& presenter, Control& control, QWidget& parent) {
  return new LabelView(presenter, static_cast<Label&>(control), parent);
}

}  // namespace vorek::qt
