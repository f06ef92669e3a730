#include "adapters/qt/busy_screen.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>
#include <algorithm>

namespace vorek::qt {
namespace {

constexpr int kAskEvery = 15;    // milliseconds
constexpr int kTellEvery = 100;  // milliseconds
constexpr int kShowAfter = 400;  // milliseconds
constexpr int kSlice = 50;       // milliseconds of a pass between two looks at the events

// Input that the windows must not see.
bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
      return true;
    default:
      return false;
  }
}

// The window that gets an event by itself, or before that through the screen's own object for it.
QWidget* WindowOf(QObject* object) {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window == object || (object->isWindowType() && window->windowHandle() == object)) {
      return window;
    }
  }
  return nullptr;
}

// The widget of an event's object: itself, or the one that an action or the like stands in.
const QWidget* WidgetOf(const QObject* object) {
  while (object != nullptr && !object->isWidgetType()) object = object->parent();
  return static_cast<const QWidget*>(object);
}

// Across windows: a dialog stands within the widget that opened it.
bool StandsIn(const QWidget* widget, const QWidget* container) {
  while (widget != nullptr && widget != container) widget = widget->parentWidget();
  return widget != nullptr;
}

}  // namespace

QWidget* WindowInFront() {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* const active = QApplication::activeWindow()) return active;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() != Qt::Popup) return window;
  }
  return nullptr;
}

BusyScreen::Asking::Asking(BusyScreen& screen)
    : screen_(screen),
      errands_(std::exchange(screen.errands_, 0)),
      waited_(std::exchange(screen.waited_, false)) {
  screen_.HidePanel();
}

BusyScreen::Asking::~Asking() {
  screen_.errands_ = errands_;
  screen_.waited_ = waited_;
  screen_.asked_.start();
}

void BusyScreen::AddPlace(Place place) {
  std::erase_if(places_, [](const Place& known) { return known.widget.isNull(); });
  places_.push_back(std::move(place));
}

void BusyScreen::BeginErrand() {
  if (errands_++ == 0) asked_.start();
}

void BusyScreen::EndErrand() {
  if (--errands_ > 0) return;
  HidePanel();
  if (!std::exchange(waited_, false)) return;
  const qint64 elapsed = asked_.elapsed();
  for (const Place& place : std::vector<Place>(places_)) {
    if (!place.widget.isNull() && place.end) place.end(elapsed);
  }
}

void BusyScreen::Await(const Work& work) {
  const Errand errand(this);
  work_ = &work;
  bool answered = false;
  QEventLoop loop;
  QTimer ask;
  connect(&ask, &QTimer::timeout, &loop, [&] {
    Waits({asked_.elapsed(), work.rows(), answered});
    answered = work.done();
    if (answered) loop.quit();
  });
  ask.start(kAskEvery);
  qApp->installEventFilter(this);
  waited_ = true;
  // The program may end meanwhile, which quits every loop: the work has to end before.
  loop.exec();
  while (!work.done()) {
    work.cancel();
    loop.processEvents(QEventLoop::ExcludeUserInputEvents, kAskEvery);
  }
  qApp->removeEventFilter(this);
  work_ = nullptr;
  CloseLate();
}

void BusyScreen::BeginPass() {
  BeginErrand();
  cancelled_ = false;
  slice_.start();
}

bool BusyScreen::PassGoesOn() {
  if (abandoned_) return false;
  if (Active() || slice_.elapsed() < kSlice) return true;
  cancelled_ = false;
  LiveForAMoment();
  slice_.start();
  return !cancelled_;
}

// Another world's wait may stand within the moment: the clock goes on meanwhile.
void BusyScreen::LiveForAMoment() {
  const Work pass = {.done = [] { return false; }, .rows = [] { return 0; }, .cancel = [] {}};
  work_ = &pass;
  waited_ = true;
  Waits({asked_.elapsed()});
  QTimer tick;
  connect(&tick, &QTimer::timeout, &tick, [this] { Waits({asked_.elapsed()}); });
  tick.start(kTellEvery);
  qApp->installEventFilter(this);
  QCoreApplication::processEvents();
  qApp->removeEventFilter(this);
  work_ = nullptr;
}

void BusyScreen::EndPass() {
  EndErrand();
  CloseLate();
}

// The run that waited goes on first: its window must not go from under it.
void BusyScreen::CloseLate() {
  QWidget* const window = closing_.data();
  closing_.clear();
  if (window != nullptr) QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
}

void BusyScreen::Cancel() {
  if (!Active()) return;
  cancelled_ = true;
  work_->cancel();
}

void BusyScreen::Abandon() {
  abandoned_ = true;
  Cancel();
}

void BusyScreen::Waits(const RunProgress& progress) {
  if (progress.milliseconds < kShowAfter) return;
  if (panel_.isNull()) {
    QWidget* const front = Front();
    if (front != nullptr) panel_ = new BusyPanel(front, [this] { Cancel(); });
  }
  if (!panel_.isNull()) panel_->Tell(progress);
  if (told_.isValid() && told_.elapsed() < kTellEvery) return;
  told_.start();
  for (const Place& place : places_) {
    if (!place.widget.isNull() && place.tell) place.tell(progress);
  }
}

void BusyScreen::HidePanel() { delete panel_.data(); }

QWidget* BusyScreen::Front() const {
  QWidget* const window = WindowInFront();
  if (locks_all_ || (window != nullptr && IsOwn(window))) return window;
  QWidget* front = nullptr;
  for (const Place& place : places_) {
    if (place.widget.isNull()) continue;
    if (place.widget->isVisible()) return place.widget;
    if (front == nullptr) front = place.widget;
  }
  return front;
}

void BusyScreen::ComeToFront() {
  const auto seen = [](const Place& place) {
    return !place.widget.isNull() && place.widget->isVisible();
  };
  if (std::any_of(places_.begin(), places_.end(), seen)) return;
  for (const Place& place : places_) {
    if (!place.widget.isNull() && place.come_to_front) return place.come_to_front();
  }
}

void BusyScreen::SetCursor(bool waiting) {
  if (locks_all_ && waiting) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  if (locks_all_ && !waiting) QGuiApplication::restoreOverrideCursor();
  if (locks_all_) return;
  for (const Place& place : places_) {
    if (place.widget.isNull()) continue;
    if (waiting) {
      place.widget->setCursor(Qt::WaitCursor);
    } else {
      place.widget->unsetCursor();
    }
  }
}

bool BusyScreen::IsOfPanel(const QObject* object) const {
  const auto* const widget = qobject_cast<const QWidget*>(object);
  return widget != nullptr && !panel_.isNull() && StandsIn(widget, panel_);
}

bool BusyScreen::IsOwn(const QObject* object) const {
  const QWidget* const widget = WidgetOf(object);
  return std::any_of(places_.begin(), places_.end(), [widget](const Place& place) {
    return !place.widget.isNull() && StandsIn(widget, place.widget);
  });
}

// A window that would take a place of the world with it.
bool BusyScreen::IsAround(const QWidget* window) const {
  return std::any_of(places_.begin(), places_.end(), [window](const Place& place) {
    return !place.widget.isNull() && StandsIn(place.widget, window);
  });
}

bool BusyScreen::CancelByClosing(QObject* object, QEvent& event) {
  QWidget* const window = WindowOf(object);
  if (!locks_all_ && (window == nullptr || !IsAround(window))) return false;
  closing_ = window;
  event.ignore();
  Cancel();
  return true;
}

bool BusyScreen::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::Close) return CancelByClosing(object, *event);
  if (!IsInput(event->type()) || (!locks_all_ && !IsOwn(object))) return false;
  if (event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    Cancel();
    return true;
  }
  // A window hands what it gets on to its widgets, where it is looked at again.
  return !object->isWindowType() && !IsOfPanel(object);
}

}  // namespace vorek::qt
