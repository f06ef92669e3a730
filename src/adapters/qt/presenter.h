#ifndef VOREK_ADAPTERS_QT_PRESENTER_H_
#define VOREK_ADAPTERS_QT_PRESENTER_H_

#include <QKeyEvent>
#include <QObject>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "adapters/qt/busy_screen.h"
#include "adapters/qt/scale.h"
#include "vorek/error.h"
#include "widgets/control.h"

namespace vorek::qt {

class ControlView;

// Shows a tree of controls in a widget: hears of every change as the root's observer, and has a
// view for each control. No rule of a control lives here.
class Presenter : public QObject, public ControlObserver {
 public:
  // window stands for the root. Both must outlive the presenter, save for a root that says that it
  // goes.
  Presenter(Control& root, QWidget& window);
  ~Presenter() override;

  // Lets the root go, whose views end: nothing of it is shown or fed any more.
  void Leave();
  // The screen of the control's world.
  void SetScreen(std::shared_ptr<BusyScreen> screen) { screen_ = std::move(screen); }
  bool Locked() const { return screen_ != nullptr && screen_->Active(); }
  // Makes the views of controls that came since; a new control is shown when the event loop is
  // back, or by this.
  void Sync();
  // Sets every view anew, after a change of font, palette or screen.
  void SetAll();
  // Null for a control that has no view (yet).
  ControlView* ViewOf(const Control& control) const;
  const Scale& Measure() const { return scale_; }
  void OrderTabsLater();
  // Calls use(view) for the view of each control that this one stands in, the nearest first.
  void ForEachAbove(const Control& control, const std::function<void(ControlView&)>& use) const;
  // Places the widgets of all controls below that one anew.
  void PlaceBelow(Control& control);
  // Hands what is half typed in the field with the focus to its control.
  void CommitTyping();
  // The focus that was set while the window was behind another tab.
  void TakeFocusLate() { TakeFocus(); }
  // A widget of this tree has the focus.
  bool HasFocusInside() const;

  // Runs what the user does in the system. An error that nobody caught there goes to on_failure.
  // While the screen waits within something of the world, nothing is fed.
  void Feed(const std::function<void()>& event);
  // A key down on a control: the root hears of it first.
  // True if the control wants nothing more done with the key.
  bool KeyDown(Control& control, const QKeyEvent& event);

  std::function<void(const QString& description)> on_failure;
  // A property of the root itself changed; the view of the window follows it.
  std::function<void(std::string_view property)> on_root_changed;
  std::function<void()> on_root_gone;
  // A property of any control of the tree changed.
  std::function<void(const Control& control, std::string_view property)> on_changed;

  // --- ControlObserver -------------------------------------------------------------------------

  void PropertyChanged(Control& control, std::string_view property) override;
  void ChildAdded(Control& child) override;
  void ChildRemoved(Control& child) override;
  void FocusSet(Control& control) override;
  void RootGone() override;

 private:
  void SyncLater();
  void MakeViews(Control& control, QWidget& parent);
  void TakeFocus();
  bool IsBehind() const;
  void OrderTabs();
  void CollectInTabOrder(const Control& container, std::vector<ControlView*>& views);
  void TieLabels();
  void NameFields();

  Control* root_;
  QWidget& window_;
  std::shared_ptr<BusyScreen> screen_;
  Scale scale_ = Scale::OfApplication();
  std::unordered_map<const Control*, ControlView*> views_;
  const Control* focus_;  // the control that shall get the focus; null for none
  bool sync_pending_ = false;
  bool tabs_pending_ = false;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_PRESENTER_H_
