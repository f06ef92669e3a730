#ifndef VOREK_TESTS_QT_QT_ENVIRONMENT_H_
#define VOREK_TESTS_QT_QT_ENVIRONMENT_H_

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace vorek::qt {

// Runs `act` as soon as `ready` gives a widget, also inside a nested event loop.
template <typename Ready, typename Act>
void When(Ready ready, Act act) {
  constexpr int kAskEvery = 5;  // milliseconds
  auto* const ask = new QTimer(qApp);
  QObject::connect(ask, &QTimer::timeout, ask, [=] {
    auto* const widget = ready();
    if (widget == nullptr) return;
    ask->stop();
    ask->deleteLater();
    act(widget);
  });
  ask->start(kAskEvery);
}

// Types letters of any script.
inline void TypeText(QWidget* widget, const QString& text) {
  for (const QChar letter : text) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, 0, Qt::NoModifier, QString(letter));
      QApplication::sendEvent(widget, &event);
    }
  }
}

// A picture for a person to look at: out/NAME.png.
inline void SavePicture(QWidget& widget, const QString& name) {
  QDir().mkpath("out");
  widget.grab().save("out/" + name + ".png");
}

// The modal window in front, once it is on the screen and takes keys; null before.
inline QWidget* ModalWindow() {
  QWidget* const window = QApplication::activeModalWidget();
  return window != nullptr && window->isActiveWindow() ? window : nullptr;
}

}  // namespace vorek::qt

#endif  // VOREK_TESTS_QT_QT_ENVIRONMENT_H_
