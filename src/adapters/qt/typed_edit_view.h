#ifndef VOREK_ADAPTERS_QT_TYPED_EDIT_VIEW_H_
#define VOREK_ADAPTERS_QT_TYPED_EDIT_VIEW_H_

#include <QLineEdit>
#include <functional>

#include "adapters/qt/control_view.h"
#include "widgets/typed_control.h"

namespace vorek::qt {

// A line of text that the control takes when the typing ends (Control::Type). A text that it
// doesn't take stays, is marked, and keeps the focus: the control's owner tells the reason below
// the line.
class TypedEditView : public ControlView {
 public:
  TypedEditView(Presenter& presenter, TypedControl& control, QWidget& parent);

  void Set(std::string_view property) override;
  void SetAll() override;
  void Commit() override;

 protected:
  QLineEdit& Edit() const { return static_cast<QLineEdit&>(Widget()); }
  // What the control says; shown whenever one of its own properties changes.
  virtual QString ShownText() const = 0;
  // The user changed the text to this one; a view may complete it.
  virtual void Typed(const QString&) {}
  // The text that was handed over isn't taken.
  virtual void Refused() {}
  void ShowText();
  // A button inside the line that opens what lies behind it; Alt+Down and F4 press it too. It
  // belongs at the left end: the trailing one of a line from right to left.
  void AddOpener(const QString& name, QLineEdit::ActionPosition left_end,
                 const std::function<void()>& open);
  bool eventFilter(QObject* object, QEvent* event) override;
  bool HalfTyped() const { return half_typed_; }
  void DropTyping() { half_typed_ = false; }

 private:
  TypedControl& Typing() const;
  void Mark();
  void KeepFocus(const QFocusEvent& event);

  std::function<void()> open_;
  bool half_typed_ = false;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_TYPED_EDIT_VIEW_H_
