#include "adapters/qt/presenter.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMetaObject>
#include <algorithm>
#include <utility>

#include "adapters/qt/control_view.h"
#include "adapters/qt/key_codes.h"
#include "adapters/qt/view_registry.h"
#include "platform/attempt.h"
#include "widgets/basic_controls.h"
#include "widgets/field_name.h"
#include "widgets/form.h"

namespace vorek::qt {

Presenter::Presenter(Control& root, QWidget& window)
    : root_(&root), window_(window), focus_(root.ActiveControl()) {
  Sync();
  root.SetObserver(this);
}

Presenter::~Presenter() { Leave(); }

void Presenter::Leave() {
  if (root_ != nullptr) root_->SetObserver(nullptr);
  root_ = nullptr;
  focus_ = nullptr;
  for (const auto& [control, view] : std::exchange(views_, {})) view->Retire();
}

ControlView* Presenter::ViewOf(const Control& control) const {
  const auto found = views_.find(&control);
  return found == views_.end() ? nullptr : found->second;
}

void Presenter::Sync() {
  sync_pending_ = false;
  if (root_ == nullptr) return;
  MakeViews(*root_, window_);
  TieLabels();
  OrderTabs();
  TakeFocus();
}

// A child that stands behind its siblings in the list stands before them on the screen, which is
// the order in which Qt stacks new widgets.
void Presenter::MakeViews(Control& control, QWidget& parent) {
  ControlView* view = ViewOf(control);
  if (view == nullptr) {
    view =
        &control == root_ ? MakeRootView(*this, control, parent) : MakeView(*this, control, parent);
    if (view == nullptr) return;
    views_[&control] = view;
    view->SetAll();
  }
  for (Control* child : control.Children()) MakeViews(*child, view->Content());
}

void Presenter::SetAll() {
  scale_ = Scale::OfApplication();
  for (const auto& [control, view] : views_) view->SetAll();
}

void Presenter::ForEachAbove(const Control& control,
                             const std::function<void(ControlView&)>& use) const {
  for (const Control* above = control.Parent(); above != nullptr; above = above->Parent()) {
    if (ControlView* const view = ViewOf(*above)) use(*view);
  }
}

void Presenter::PlaceBelow(Control& control) {
  for (Control* child : control.Children()) {
    if (ControlView* const view = ViewOf(*child)) view->Place();
    PlaceBelow(*child);
  }
}

void Presenter::CommitTyping() {
  const QWidget* const focused = QApplication::focusWidget();
  const auto found = std::find_if(views_.begin(), views_.end(), [&](const auto& entry) {
    return &entry.second->Widget() == focused;
  });
  if (found != views_.end()) found->second->Commit();
}

bool Presenter::HasFocusInside() const {
  const QWidget* const focused = QApplication::focusWidget();
  return focused != nullptr && window_.isAncestorOf(focused);
}

void Presenter::SyncLater() {
  if (std::exchange(sync_pending_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { Sync(); }, Qt::QueuedConnection);
}

void Presenter::Feed(const std::function<void()>& event) {
  if (Locked()) return;
  const BusyScreen::Errand errand(screen_.get());
  // Nothing may go through the toolkit's own frames.
  const auto error = Attempt(event);
  if (error && on_failure) on_failure(ToQt(error->Description()));
}

bool Presenter::KeyDown(Control& control, const QKeyEvent& event) {
  const int code = KeyCode(event);
  const int shift = ShiftState(event.modifiers());
  bool taken = false;
  Feed([&] {
    if (auto* const form = dynamic_cast<Form*>(root_)) {
      form->FormKeyDown(code, shift);
      return;
    }
    if (root_ == nullptr) return;
    root_->KeyDown(code, shift);
    if (&control == root_ || ViewOf(control) == nullptr) return;
    control.KeyDown(code, shift);
    if (ViewOf(control) != nullptr) taken = control.KeyTaken();
  });
  return taken;
}

void Presenter::PropertyChanged(Control& control, std::string_view property) {
  if (ControlView* const view = ViewOf(control)) view->Set(property);
  if (&control == root_ && on_root_changed) on_root_changed(property);
  if (on_changed) on_changed(control, property);
}

// Its kind can't be asked for yet: it is just being made.
void Presenter::ChildAdded(Control&) { SyncLater(); }

void Presenter::ChildRemoved(Control& child) {
  if (focus_ == &child) focus_ = nullptr;
  const auto found = views_.find(&child);
  if (found == views_.end()) return;
  ControlView* const view = found->second;
  views_.erase(found);
  view->Retire();
}

void Presenter::FocusSet(Control& control) {
  focus_ = &control;
  if (ViewOf(control) != nullptr) TakeFocus();
}

// In a window of which another part is on view.
bool Presenter::IsBehind() const { return !window_.isVisible() && window_.window()->isVisible(); }

void Presenter::TakeFocus() {
  if (focus_ == nullptr || IsBehind()) return;
  ControlView* const view = ViewOf(*focus_);
  if (view == nullptr) return;
  focus_ = nullptr;
  view->Widget().setFocus(Qt::OtherFocusReason);
}

void Presenter::RootGone() {
  for (const auto& [control, view] : views_) view->Retire();
  views_.clear();
  root_ = nullptr;
  if (on_root_gone) on_root_gone();
}

void Presenter::OrderTabsLater() {
  if (std::exchange(tabs_pending_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { OrderTabs(); }, Qt::QueuedConnection);
}

namespace {

bool TakesFocus(const QWidget& widget) {
  return widget.focusPolicy() != Qt::NoFocus || widget.focusProxy() != nullptr;
}

bool IsStop(const QWidget& widget) {
  return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr;
}

// What Tab stops at in a control: itself, and the parts of one that hands the focus on.
void AddStops(QWidget& widget, std::vector<QWidget*>& stops) {
  stops.push_back(&widget);
  if (widget.focusProxy() == nullptr) return;
  for (QWidget* const part : widget.findChildren<QWidget*>()) {
    if (IsStop(*part)) stops.push_back(part);
  }
}

// The toolkit would move what hands its focus on together with some of its parts, and lose others.
void OrderStops(const std::vector<QWidget*>& stops) {
  std::vector<std::pair<QWidget*, QWidget*>> proxies;
  for (QWidget* const stop : stops) {
    if (stop->focusProxy() == nullptr) continue;
    proxies.emplace_back(stop, stop->focusProxy());
    stop->setFocusProxy(nullptr);
  }
  for (std::size_t i = 1; i < stops.size(); ++i) QWidget::setTabOrder(stops[i - 1], stops[i]);
  for (const auto& [stop, proxy] : proxies) stop->setFocusProxy(proxy);
}

}  // namespace

// Tab numbers count inside each container, whose controls follow it.
void Presenter::CollectInTabOrder(const Control& container, std::vector<ControlView*>& views) {
  std::vector<Control*> children = container.Children();
  std::stable_sort(children.begin(), children.end(), [](const Control* a, const Control* b) {
    return a->TabIndex() < b->TabIndex();
  });
  for (const Control* child : children) {
    ControlView* const view = ViewOf(*child);
    if (view != nullptr && TakesFocus(view->Widget())) views.push_back(view);
    CollectInTabOrder(*child, views);
  }
}

void Presenter::OrderTabs() {
  tabs_pending_ = false;
  if (root_ == nullptr) return;
  std::vector<ControlView*> views;
  CollectInTabOrder(*root_, views);
  std::vector<QWidget*> stops;
  for (const ControlView* const view : views) AddStops(view->Widget(), stops);
  OrderStops(stops);
}

// A label and a control beside it that carry the same tag belong together.
void Presenter::TieLabels() {
  for (const auto& [control, view] : views_) {
    const Label* const label = TiedLabel(*control);
    const ControlView* const said = label == nullptr ? nullptr : ViewOf(*label);
    if (said == nullptr || dynamic_cast<const Label*>(control) != nullptr) continue;
    static_cast<QLabel&>(said->Widget()).setBuddy(&view->Widget());
    view->Widget().setAccessibleName(ToQt(label->Caption()));
  }
  NameFields();
}

void Presenter::NameFields() {
  for (const auto& [control, view] : views_) {
    QWidget& widget = view->Widget();
    const bool named =
        !widget.accessibleName().isEmpty() || qobject_cast<QAbstractButton*>(&widget) != nullptr;
    if (!named && TakesFocus(widget)) widget.setAccessibleName(ToQt(FieldName(*control)));
  }
}

}  // namespace vorek::qt
