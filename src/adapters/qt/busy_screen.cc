#include "adapters/qt/busy_screen.h"

#include <QApplication>
#include <QEventLoop>
#include <QFrame>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QWindow>

#include "text/cell_text.h"

namespace vorek::qt {
namespace {

constexpr int kAskEvery = 15;    // milliseconds
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

// "0:07", "12:34", "1:02:03".
QString Elapsed(qint64 milliseconds) {
  const qint64 seconds = milliseconds / 1000;
  const auto two = [](qint64 value) { return QString("%1").arg(value, 2, 10, QChar('0')); };
  const qint64 hours = seconds / 3600;
  const QString minutes = QString::number(seconds / 60 % 60);
  return hours == 0 ? minutes + ":" + two(seconds % 60)
                    : QString("%1:%2:%3").arg(hours).arg(two(seconds / 60 % 60), two(seconds % 60));
}

QString RowsRead(std::size_t rows) {
  return QString::fromStdString(GroupDigits(static_cast<FixedPoint>(rows))) + " سطر خوانده شد";
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

}  // namespace

QWidget* WindowInFront() {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* const active = QApplication::activeWindow()) return active;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() != Qt::Popup) return window;
  }
  return nullptr;
}

void BusyScreen::Await(const Work& work) {
  work_ = &work;
  QEventLoop loop;
  QTimer ask;
  QElapsedTimer since;
  since.start();
  connect(&ask, &QTimer::timeout, &loop, [&] {
    if (work.done()) {
      loop.quit();
      return;
    }
    if (panel_.isNull() && since.elapsed() >= kShowAfter) ShowPanel();
    Tell(since.elapsed());
  });
  ask.start(kAskEvery);
  qApp->installEventFilter(this);
  // The program may end meanwhile, which quits every loop: the work has to end before.
  loop.exec();
  while (!work.done()) {
    work.cancel();
    loop.processEvents(QEventLoop::ExcludeUserInputEvents, kAskEvery);
  }
  qApp->removeEventFilter(this);
  delete panel_.data();
  work_ = nullptr;
  CloseLate();
}

void BusyScreen::BeginPass() {
  cancelled_ = false;
  pass_.start();
  slice_.start();
}

bool BusyScreen::PassGoesOn() {
  if (Active() || slice_.elapsed() < kSlice) return true;
  cancelled_ = false;
  LiveForAMoment();
  slice_.start();
  return !cancelled_;
}

void BusyScreen::LiveForAMoment() {
  const Work pass = {.done = [] { return false; }, .rows = [] { return 0; }, .cancel = [] {}};
  work_ = &pass;
  if (panel_.isNull() && pass_.elapsed() >= kShowAfter) ShowPanel();
  Tell(pass_.elapsed());
  qApp->installEventFilter(this);
  QCoreApplication::processEvents();
  qApp->removeEventFilter(this);
  work_ = nullptr;
}

void BusyScreen::EndPass() {
  delete panel_.data();
  CloseLate();
}

// The run that waited goes on first: its window must not go from under it.
void BusyScreen::CloseLate() {
  QWidget* const window = closing_.data();
  closing_.clear();
  if (window != nullptr) QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
}

void BusyScreen::CancelByUser() {
  cancelled_ = true;
  work_->cancel();
}

void BusyScreen::ShowPanel() {
  QWidget* const window = WindowInFront();
  if (window == nullptr) return;
  auto* const frame = new QFrame(window);
  frame->setObjectName("busyPanel");
  frame->setLayoutDirection(Qt::RightToLeft);
  frame->setFrameShape(QFrame::StyledPanel);
  frame->setAutoFillBackground(true);
  auto* const layout = new QGridLayout(frame);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->setHorizontalSpacing(24);
  const auto add = [&](const QString& name, const QString& longest, int row, int column) {
    auto* const label = new QLabel(frame);
    label->setObjectName(name);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(longest));
    layout->addWidget(label, row, column);
    return label;
  };
  const QString title = "در حال اجراي گزارش";
  add("busyText", title, 0, 0)->setText(title);
  add("busyTime", "0:00:00", 0, 1);
  add("busyRows", RowsRead(99'999'999), 1, 0);
  auto* const cancel = new QPushButton("انصراف", frame);
  cancel->setObjectName("busyCancel");
  connect(cancel, &QPushButton::clicked, this, [this] { CancelByUser(); });
  layout->addWidget(cancel, 1, 1);
  panel_ = frame;
  frame->show();
  frame->raise();
}

void BusyScreen::Tell(qint64 milliseconds) {
  if (panel_.isNull()) return;
  const std::size_t rows = work_->rows();
  panel_->findChild<QLabel*>("busyTime")->setText(Elapsed(milliseconds));
  if (rows > 0) panel_->findChild<QLabel*>("busyRows")->setText(RowsRead(rows));
  panel_->adjustSize();
  panel_->move(panel_->parentWidget()->rect().center() - panel_->rect().center());
}

bool BusyScreen::IsOfPanel(const QObject* object) const {
  const auto* const widget = qobject_cast<const QWidget*>(object);
  return widget != nullptr && !panel_.isNull() &&
         (widget == panel_ || panel_->isAncestorOf(widget));
}

bool BusyScreen::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::Close) {
    closing_ = WindowOf(object);
    event->ignore();
    CancelByUser();
    return true;
  }
  if (!IsInput(event->type())) return false;
  if (event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    CancelByUser();
    return true;
  }
  // A window hands what it gets on to its widgets, where it is looked at again.
  return object->isWidgetType() && !IsOfPanel(object);
}

}  // namespace vorek::qt
