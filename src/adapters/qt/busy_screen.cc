#include "adapters/qt/busy_screen.h"

#include <QApplication>
#include <QEventLoop>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace vorek::qt {
namespace {

constexpr int kAskEvery = 15;    // milliseconds
constexpr int kShowAfter = 400;  // milliseconds

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

QWidget* WindowInFront() {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* const active = QApplication::activeWindow()) return active;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowType() != Qt::Popup) return window;
  }
  return nullptr;
}

}  // namespace

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
    TellRows();
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
}

void BusyScreen::ShowPanel() {
  QWidget* const window = WindowInFront();
  if (window == nullptr) return;
  auto* const frame = new QFrame(window);
  frame->setObjectName("busyPanel");
  frame->setLayoutDirection(Qt::RightToLeft);
  frame->setFrameShape(QFrame::StyledPanel);
  frame->setAutoFillBackground(true);
  auto* const layout = new QHBoxLayout(frame);
  auto* const label = new QLabel("در حال اجراي گزارش", frame);
  label->setObjectName("busyText");
  label->setMinimumWidth(label->fontMetrics().averageCharWidth() * 34);
  layout->addWidget(label);
  auto* const cancel = new QPushButton("انصراف", frame);
  cancel->setObjectName("busyCancel");
  connect(cancel, &QPushButton::clicked, this, [this] { work_->cancel(); });
  layout->addWidget(cancel);
  frame->adjustSize();
  frame->move(window->rect().center() - frame->rect().center());
  frame->show();
  frame->raise();
  panel_ = frame;
}

void BusyScreen::TellRows() {
  const std::size_t rows = work_->rows();
  if (panel_.isNull() || rows == 0) return;
  auto* const label = panel_->findChild<QLabel*>("busyText");
  label->setText(QString("در حال اجراي گزارش: %1 سطر خوانده شد").arg(rows));
}

bool BusyScreen::IsOfPanel(const QObject* object) const {
  const auto* const widget = qobject_cast<const QWidget*>(object);
  return widget != nullptr && !panel_.isNull() &&
         (widget == panel_ || panel_->isAncestorOf(widget));
}

bool BusyScreen::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::Close) {
    event->ignore();
    work_->cancel();
    return true;
  }
  if (!IsInput(event->type())) return false;
  if (event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    work_->cancel();
    return true;
  }
  // A window hands what it gets on to its widgets, where it is looked at again.
  return object->isWidgetType() && !IsOfPanel(object);
}

}  // namespace vorek::qt
