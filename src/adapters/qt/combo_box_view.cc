#include <QComboBox>
#include <QSignalBlocker>

#include "adapters/qt/view_registry.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

class ComboBoxView : public ControlView {
 public:
  ComboBoxView(Presenter& presenter, ComboBox& box, QWidget& parent)
      : ControlView(presenter, box, new QComboBox(&parent)), box_(box) {
    connect(&Combo(), &QComboBox::activated, this, [this](int index) {
      Feed([&] { box_.Choose(index); });
      if (!Retired()) Set("ListIndex");
    });
  }

  void Set(std::string_view property) override {
    if (property == "RightToLeft") {
      Combo().setLayoutDirection(Qt::RightToLeft);  // as all of the screen
    } else if (property == "List") {
      FillList();
    } else if (property == "ListIndex") {
      const QSignalBlocker quiet(&Combo());
      Combo().setCurrentIndex(box_.ListIndex());
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Set("RightToLeft");
    FillList();
  }

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
  }

  ComboBox& box_;
};

}  // namespace

ControlView* MakeComboBoxView(Presenter& presenter, Control& control, QWidget& parent) {
  return new ComboBoxView(presenter, static_cast<ComboBox&>(control), parent);
}

}  // namespace vorek::qt
