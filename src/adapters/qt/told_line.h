#ifndef VOREK_ADAPTERS_QT_TOLD_LINE_H_
#define VOREK_ADAPTERS_QT_TOLD_LINE_H_

#include <QFrame>

namespace vorek::qt {

// A line at the foot of a window, or of a part of it, that tells what has come to pass. It asks
// nothing and goes with the next key or click in its window.
class ToldLine : public QFrame {
 public:
  // Null for no window: nothing is told.
  static void Show(const QString& text, QWidget* over);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  ToldLine(const QString& text, QWidget* over);
  void Place();
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_TOLD_LINE_H_
