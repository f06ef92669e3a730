#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "adapters/qt/view_registry.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

// A text of one line or of many; every change of it is told at once.
template <typename Edit>
class TextView : public ControlView {
 public:
  TextView(Presenter& presenter, TextBox& box, QWidget& parent)
      : ControlView(presenter, box, new Edit(&parent)), box_(box) {
    connect(&Editor(), &Edit::textChanged, this, [this] {
      const std::string text = Text().toStdString();
      Feed([&] { box_.Type(text); });
      if (!Retired()) ShowText();
    });
  }

  void Set(std::string_view property) override {
    if (property == "Text") {
      ShowText();
    } else if (property == "SelLength") {
      if (box_.SelLength() > 0) Editor().selectAll();
    } else if (property == "Locked") {
      Editor().setReadOnly(box_.Locked());
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Set("Text");
    Set("Locked");
  }

 private:
  Edit& Editor() { return static_cast<Edit&>(Widget()); }
  QString Text() {
    if constexpr (std::is_same_v<Edit, QLineEdit>) {
      return Editor().text();
    } else {
      return Editor().toPlainText();
    }
  }
  // Leaves the cursor where it is unless the text is another one.
  void ShowText() {
    const QString text = ToQt(box_.Text());
    if (text == Text()) return;
    const QSignalBlocker quiet(&Editor());
    if constexpr (std::is_same_v<Edit, QLineEdit>) {
      Editor().setText(text);
    } else {
      Editor().setPlainText(text);
    }
  }

  TextBox& box_;
};

}  // namespace

ControlView* MakeTextBoxView(Presenter& presenter, Control& control, QWidget& parent) {
  auto& box = static_cast<TextBox&>(control);
  if (!box.MultiLine()) return new TextView<QLineEdit>(presenter, box, parent);
  auto* const view = new TextView<QPlainTextEdit>(presenter, box, parent);
  static_cast<QPlainTextEdit&>(view->Widget()).setTabChangesFocus(true);
  return view;
}

}  // namespace vorek::qt
