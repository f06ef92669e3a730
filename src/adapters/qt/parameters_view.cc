#include <QApplication>
#include <QMetaObject>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "adapters/qt/view_registry.h"
#include "parameters/vorek_parameters.h"

namespace vorek::qt {
namespace {

// Leaves it to the view below what is scrolled to.
class ParametersArea : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;

 protected:
  // The base would count from the left edge, also where the contents stand at the right one.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call): its base's
  bool focusNextPrevChild(bool next) override { return QWidget::focusNextPrevChild(next); }
};

// The form of parameters, scrolled where its room is smaller than it is. Its cells are counted from
// the right edge, so that what finds no room hangs over at the left.
class ParametersView : public ControlView {
 public:
  ParametersView(Presenter& presenter, VorekParameters& form, QWidget& parent)
      : ControlView(presenter, form, new ParametersArea(&parent)), form_(form) {
    Area().setFrameShape(QFrame::NoFrame);
    Area().setFocusPolicy(Qt::NoFocus);
    Area().setWidget(new QWidget);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* focused) { Reveal(focused); });
  }

  QWidget& Content() const override { return *Area().widget(); }

  void Set(std::string_view property) override {
    if (property == "RightToLeft") {
      Area().setLayoutDirection(Qt::RightToLeft);
    } else {
      ControlView::Set(property);
    }
    if (property == "Width" || property == "Height") FitLater();
  }
  void SetAll() override {
    ControlView::SetAll();
    FitLater();
  }

  void Adjust(const Control& below, std::int32_t& left, std::int32_t& width) override {
    if (&below == &form_.frame) {
      width += overhang_;
    } else if (below.Parent() == &form_ || below.Parent() == &form_.frame) {
      left += overhang_;
    }
    // What stands at the left edge makes room for the bar there.
    if (&below == &form_.cmdCancel || &below == &form_.cmdFold) left += bar_;
    FitLater();
  }

 private:
  QScrollArea& Area() const { return static_cast<QScrollArea&>(Widget()); }

  // Once for all the controls that move together.
  void FitLater() {
    if (std::exchange(fit_pending_, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { Fit(); }, Qt::QueuedConnection);
  }

  void Fit() {
    fit_pending_ = false;
    if (Retired()) return;
    const Scale& scale = Owner().Measure();
    const std::int32_t hang = Overhang();
    const bool scrolls = Scrolls();
    const std::int32_t bar =
        scrolls ? scale.Twips(Area().verticalScrollBar()->sizeHint().width()) : 0;
    const bool moved = std::exchange(overhang_, hang) != hang || bar_ != bar;
    bar_ = bar;
    // The bar below alone is no reason for one at the side.
    Area().setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    Area().setHorizontalScrollBarPolicy(hang > 0 ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    Content().resize(std::max(scale.Pixels(form_.Width() + overhang_), 1),
                     std::max(scale.Pixels(form_.ContentHeight()), 1));
    if (moved) Owner().PlaceBelow(form_);
    Reveal(QApplication::focusWidget());
  }

  bool Scrolls() const { return form_.ContentHeight() > form_.Height(); }

  std::int32_t Overhang() const {
    std::int32_t left = 0;
    for (const Control* control : form_.frame.Children()) {
      if (control->Visible() && !form_.Folded()) left = std::min(left, control->Left());
    }
    return -left;
  }

  // Scrolls to a widget of the form, with its label and with room for a note below it.
  void Reveal(const QWidget* widget) {
    if (Retired() || widget == nullptr || !Content().isAncestorOf(widget)) return;
    const int margin = Owner().Measure().Pixels(kMargin);
    const int high = Scrolls() ? 2 * margin : 0;
    const int label = Owner().Measure().Pixels(form_.LabelWidth());
    const QRect wanted = QRect(widget->mapTo(&Content(), QPoint(0, 0)), widget->size())
                             .adjusted(-margin, -high / 2, label, high);
    const QSize room = Area().viewport()->size();
    // Of what is larger than the room its top and its right edge count.
    const int top =
        std::min(wanted.top(), std::max(-Content().y(), wanted.bottom() + 1 - room.height()));
    const int left =
        std::max(wanted.right() + 1 - room.width(), std::min(-Content().x(), wanted.left()));
    Area().verticalScrollBar()->setValue(top);
    // The bar counts from the right edge.
    Area().horizontalScrollBar()->setValue(Content().width() - room.width() - left);
  }

  static constexpr std::int32_t kMargin = 300;  // twips around what is scrolled to

  VorekParameters& form_;
  std::int32_t overhang_ = 0;  // twips, at the left
  std::int32_t bar_ = 0;       // twips, of the bar that scrolls up and down
  bool fit_pending_ = false;
};

}  // namespace

ControlView* MakeParametersView(Presenter& presenter, Control& control, QWidget& parent) {
  return new ParametersView(presenter, static_cast<VorekParameters&>(control), parent);
}

}  // namespace vorek::qt
