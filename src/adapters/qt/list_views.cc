#include <QFrame>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

#include "adapters/qt/list_panel.h"
#include "adapters/qt/popup_place.h"
#include "adapters/qt/typed_edit_view.h"
#include "adapters/qt/view_registry.h"
#include "widgets/choice_text.h"
#include "widgets/vorek_multi_select.h"
#include "widgets/vorek_selector.h"

// Lists: a line with a pop-up list behind a button, or the list itself where there is room for it.
namespace vorek::qt {
namespace {

class ListFieldView : public TypedEditView {
 public:
  ListFieldView(Presenter& presenter, ListControl& list, QWidget& parent)
      : TypedEditView(presenter, list, parent), list_(list) {
    AddOpener("فهرست", QLineEdit::TrailingPosition, [this] { Open(); });
    Edit().setReadOnly(dynamic_cast<VorekMultiSelect*>(&list) != nullptr);
  }

 protected:
  QString ShownText() const override { return ToQt(ChoiceText(list_)); }
  void Forget() override { delete popup_.data(); }
  // The rows that hold the text are offered once the event that ended the typing is over.
  void Refused() override {
    if (!list_.OffersRows()) return;
    QTimer::singleShot(0, this, [this] {
      if (!Retired() && list_.OffersRows() && Edit().isVisible()) {
        OpenOn([this](ListPanel& panel) { panel.Offer(ToQt(list_.RefusedText())); });
      }
    });
  }

 private:
  void Open() {
    OpenOn([](ListPanel& panel) { panel.Fill(); });
  }

  void OpenOn(const std::function<void(ListPanel&)>& fill) {
    if (popup_ != nullptr) return;
    DropTyping();
    Edit().setFocus(Qt::OtherFocusReason);  // where it comes back to
    auto* const popup = new QFrame(&Edit(), Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setFrameShape(QFrame::StyledPanel);
    popup->setLayoutDirection(Qt::RightToLeft);
    auto* const panel = new ListPanel(
        list_, [this](const std::function<void()>& event) { Feed(event); }, popup);
    auto* const layout = new QVBoxLayout(popup);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(panel);
    panel->on_chosen = [popup] { popup->close(); };
    const int letter = Edit().fontMetrics().averageCharWidth();
    PlacePopup(*popup, Edit(), {std::max(Edit().width(), letter * 44), letter * 44});
    popup_ = popup;
    fill(*panel);
    popup->show();
    panel->setFocus();
  }

  ListControl& list_;
  QPointer<QWidget> popup_;
};

class ListPanelView : public ControlView {
 public:
  ListPanelView(Presenter& presenter, ListControl& list, QWidget& parent)
      : ControlView(
            presenter, list,
            new ListPanel(
                list, [this](const std::function<void()>& event) { Feed(event); }, &parent)) {
    Panel().on_key = [this, &list](const QKeyEvent& key) {
      if (!Retired()) Owner().KeyDown(list, key);
    };
  }

  void Set(std::string_view property) override {
    if (property == "List") {
      Panel().ShowRows();
    } else if (property == "SelectedIDs") {
      Panel().ShowChoice();
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Panel().ShowRows();
  }

 protected:
  void Forget() override { Panel().Forget(); }

 private:
  ListPanel& Panel() const { return static_cast<ListPanel&>(Widget()); }
};

}  // namespace

ControlView* MakeListView(Presenter& presenter, Control& control, QWidget& parent) {
  constexpr int kLeastLines = 5;
  auto& list = static_cast<ListControl&>(control);
  const int lines = presenter.Measure().Pixels(control.Height()) / parent.fontMetrics().height();
  const bool opens = control.Kind() == "VorekSelector" || control.Kind() == "VorekEntityPicker";
  if (opens || lines < kLeastLines) return new ListFieldView(presenter, list, parent);
  return new ListPanelView(presenter, list, parent);
}

}  // namespace vorek::qt
