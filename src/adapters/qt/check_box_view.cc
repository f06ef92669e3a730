#include <QCheckBox>
#include <QSignalBlocker>

#include "adapters/qt/view_registry.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

class CheckBoxView : public ControlView {
 public:
  CheckBoxView(Presenter& presenter, CheckBox& box, QWidget& parent)
      : ControlView(presenter, box, new QCheckBox(&parent)), box_(box) {
    connect(&Check(), &QCheckBox::clicked, this, [this] {
      Feed([this] { box_.Click(); });
      if (!Retired()) Set("Value");
    });
  }

  void Set(std::string_view property) override {
    if (property == "Value") {
      const QSignalBlocker quiet(&Check());
      Check().setChecked(box_.Value() != 0);
    } else if (property == "Caption") {
      Check().setText(ToQt(box_.Caption()));
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Set("Caption");
    Set("Value");
  }

 private:
  QCheckBox& Check() { return static_cast<QCheckBox&>(Widget()); }

  CheckBox& box_;
};

}  // namespace

ControlView* MakeCheckBoxView(Presenter& presenter, Control& control, QWidget& parent) {
  return new CheckBoxView(presenter, static_cast<CheckBox&>(control), parent);
}

}  // namespace vorek::qt
