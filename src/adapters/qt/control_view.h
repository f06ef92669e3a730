#ifndef VOREK_ADAPTERS_QT_CONTROL_VIEW_H_
#define VOREK_ADAPTERS_QT_CONTROL_VIEW_H_

#include <QObject>
#include <QString>
#include <QWidget>
#include <string_view>

#include "adapters/qt/presenter.h"
#include "widgets/control.h"

namespace vorek::qt {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Shows one control by a widget: sets what the control says, feeds what the user does. Each kind of
// control has a view of its own, which view_registry.cc lists.
class ControlView : public QObject {
 public:
  // Takes the widget over; it goes with the view, unless it is that of a root.
  ControlView(Presenter& presenter, Control& control, QWidget* widget);

  Control& Shown() const { return control_; }
  QWidget& Widget() const { return *widget_; }

  // Sets the widget by the property of that name; those that all controls share are set here.
  virtual void Set(std::string_view property);
  // Sets all of it, once the view is made.
  virtual void SetAll();
  // Where the widgets of the control's children belong.
  virtual QWidget& Content() const { return *widget_; }
  // Changes in twips where a control below this one is shown.
  virtual void Adjust(const Control&, std::int32_t&, std::int32_t&) {}
  // Puts the widget where the control stands.
  void Place();
  // Hands what is half typed to the control, when the focus leaves or a key ends the typing.
  virtual void Commit() {}

  // The control is gone: the widget hides and goes with the view when the event loop is back.
  void Retire();
  bool Retired() const { return retired_; }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  // Enter, Tab and the function keys.
  static bool EndsTyping(const QKeyEvent& event);
  // The control is going: a widget that reads it by itself must stop.
  virtual void Forget() {}
  Presenter& Owner() const { return presenter_; }
  // Feeds an event of the user, unless the control is gone.
  template <typename Event>
  void Feed(const Event& event) {
    if (!retired_) presenter_.Feed(event);
  }

 private:
  Presenter& presenter_;
  Control& control_;
  QWidget* widget_;
  bool retired_ = false;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_CONTROL_VIEW_H_
