#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>

#include "adapters/qt/view_registry.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

// The lines, searched by the letters that are typed as the control compares them.
class ComboLines : public QListView {
 public:
  explicit ComboLines(ComboBox& box) : box_(&box) {}
  void Forget() { box_ = nullptr; }

  void keyboardSearch(const QString& typed) override {
    if (box_ == nullptr) return;
    const bool goes_on =
        pause_.isValid() && pause_.elapsed() < QApplication::keyboardInputInterval();
    pause_.start();
    head_ = goes_on ? head_ + typed : typed;
    const int from = currentIndex().row() + (goes_on ? 0 : 1);
    const int line = box_->FindLine(head_.toStdString(), from);
    if (line >= 0) setCurrentIndex(model()->index(line, 0));
  }

 private:
  ComboBox* box_;
  QElapsedTimer pause_;  // since the last letter
  QString head_;
};

class ComboBoxView : public ControlView {
 public:
  ComboBoxView(Presenter& presenter, ComboBox& box, QWidget& parent)
      : ControlView(presenter, box, new QComboBox(&parent)),
        box_(box),
        lines_(new ComboLines(box)) {
    Combo().setView(lines_);
    connect(&Combo(), &QComboBox::activated, this, [this](int index) {
      Feed([&] { box_.Choose(index); });
      if (!Retired()) Set("ListIndex");
    });
    if (!box.Editable()) return;
    Combo().setEditable(true);
    Combo().setInsertPolicy(QComboBox::NoInsert);
    Combo().setCompleter(nullptr);
    connect(Combo().lineEdit(), &QLineEdit::textEdited, this,
            [this](const QString& text) { Feed([&] { box_.Type(text.toStdString()); }); });
  }

  void Set(std::string_view property) override {
    if (property == "RightToLeft") {
      Combo().setLayoutDirection(Qt::RightToLeft);  // as all of the screen
    } else if (property == "List") {
      FillList();
    } else if (property == "Refusal") {
      Combo().setAccessibleDescription(ToQt(box_.Refusal()));
    } else if (property == "ListIndex") {
      const QSignalBlocker quiet(&Combo());
      Combo().setCurrentIndex(box_.ListIndex());
      ShowText();
    } else if (property == "Text") {
      ShowText();
    } else if (property == "SelectAll") {
      if (Combo().isEditable()) Combo().lineEdit()->selectAll();
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Set("RightToLeft");
    FillList();
  }

 protected:
  void Forget() override { lines_->Forget(); }

 private:
  QComboBox& Combo() { return static_cast<QComboBox&>(Widget()); }

  // Lines are mostly added at the end, one by one.
  void FillList() {
    const QSignalBlocker quiet(&Combo());
    const std::vector<ComboBox::Item>& items = box_.Items();
    const int shown = Combo().count();
    const bool added = shown == box_.ListCount() - 1 && shown > 0;
    if (!added) Combo().clear();
    for (int i = added ? shown : 0; i < box_.ListCount(); ++i) {
      Combo().addItem(ToQt(items[static_cast<std::size_t>(i)].text));
    }
    Combo().setCurrentIndex(box_.ListIndex());
    ShowText();
  }

  // Of an editable one, whose text may be none of the lines.
  void ShowText() {
    if (!Combo().isEditable() || Combo().currentText() == ToQt(box_.Text())) return;
    const QSignalBlocker quiet(&Combo());
    Combo().setEditText(ToQt(box_.Text()));
  }

  ComboBox& box_;
  ComboLines* lines_;
};

}  // namespace

ControlView* MakeComboBoxView(Presenter& presenter, Control& control, QWidget& parent) {
  return new ComboBoxView(presenter, static_cast<ComboBox&>(control), parent);
}

}  // namespace vorek::qt
