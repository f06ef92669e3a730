#ifndef VOREK_ADAPTERS_QT_TYPED_EDIT_VIEW_H_
#define VOREK_ADAPTERS_QT_TYPED_EDIT_VIEW_H_

#include <QLineEdit>
#include <functional>

#include "adapters/qt/control_view.h"

namespace vorek::qt {

// A line of text that the control takes when the typing ends (Control::Type). A text that it
// refuses is told beside the line, and the old one comes back.
class TypedEditView : public ControlView {
 public:
  TypedEditView(Presenter& presenter, Control& control, QWidget& parent);

  void Set(std::string_view property) override;
  void SetAll() override;
  void Commit() override;

 protected:
  QLineEdit& Edit() const { return static_cast<QLineEdit&>(Widget()); }
  // What the control says; shown whenever one of its own properties changes.
  virtual QString ShownText() const = 0;
  // The user changed the text to this one; a view may complete it.
  virtual void Typed(const QString&) {}
  void ShowText();
  // A button inside the line that opens what lies behind it; Alt+Down and F4 press it too.
  void AddOpener(const QString& name, const std::function<void()>& open);
  bool eventFilter(QObject* object, QEvent* event) override;
  bool HalfTyped() const { return half_typed_; }
  void DropTyping() { half_typed_ = false; }

 private:
  std::function<void()> open_;
  bool half_typed_ = false;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_TYPED_EDIT_VIEW_H_
