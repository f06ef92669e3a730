#ifndef VOREK_ADAPTERS_QT_TOLD_LINE_H_
#define VOREK_ADAPTERS_QT_TOLD_LINE_H_

#include <QFrame>

namespace vorek::qt {

// A line at the foot of the window in front that tells what has come to pass. It asks nothing and
// goes with the next key or click in its window.
class ToldLine : public QFrame {
 public:
  static void Show(const QString& text);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  ToldLine(const QString& text, QWidget* window);
  void Place();
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_TOLD_LINE_H_
