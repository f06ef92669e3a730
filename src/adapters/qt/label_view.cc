#include <QEvent>
#include <QLabel>
#include <algorithm>

#include "adapters/qt/colors.h"
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
      Fit();
    } else if (property == "Alignment") {
      Align();
    } else if (property == "ForeColor") {
      Color();
    } else {
      ControlView::Set(property);
      if (property == "Width" || property == "Height") Fit();
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Set("Caption");
    Align();
    Color();
  }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (object == &Widget() && event->type() == QEvent::FontChange && !Retired()) Fit();
    return ControlView::eventFilter(object, event);
  }

 private:
  QLabel& Text() { return static_cast<QLabel&>(Widget()); }
  void Align() {
    const bool centred = label_.Alignment() == Label::kCentre;
    Text().setAlignment((centred ? Qt::AlignHCenter : Qt::AlignLeading) | Qt::AlignTop);
  }
  // In a dark palette a colour that is meant for a light one becomes as light as it was dark.
  void Color() {
    if (label_.ForeColor() < 0) return;
    const QPalette around = Text().parentWidget()->palette();
    QColor color = FromNumber(label_.ForeColor());
    if (IsDark(around)) {
      color = QColor::fromHslF(std::max(color.hslHueF(), 0.F), color.hslSaturationF(),
                               1 - color.lightnessF() / 1.5F);
    }
    QPalette palette = around;
    palette.setColor(QPalette::WindowText, color);
    Text().setPalette(palette);
  }
  // Words wrap where there is room for a second line; what is cut off is told by a tip.
  void Fit() {
    const int line = Text().fontMetrics().lineSpacing();
    const bool wraps = Text().height() >= 2 * line;
    Text().setWordWrap(wraps);
    const QString caption = ToQt(label_.Caption());
    const int width = Text().width();
    constexpr int kRounding = 2;  // pixels that a label may lack by rounding
    const bool cut = !wraps && Text().fontMetrics().horizontalAdvance(caption) > width + kRounding;
    const QString shown =
        cut ? Text().fontMetrics().elidedText(caption, Qt::ElideRight, width) : caption;
    Text().setText(shown);
    if (label_.ToolTipText().empty()) Text().setToolTip(shown == caption ? QString() : caption);
  }

  Label& label_;
};

}  // namespace

ControlView* MakeLabelView(Presenter& presenter, Control& control, QWidget& parent) {
  return new LabelView(presenter, static_cast<Label&>(control), parent);
}

}  // namespace vorek::qt
