#ifndef VOREK_ADAPTERS_QT_BUSY_SCREEN_H_
#define VOREK_ADAPTERS_QT_BUSY_SCREEN_H_

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <cstddef>
#include <functional>
#include <utility>

namespace vorek::qt {

// Keeps windows alive while a statement runs elsewhere or a long pass here: they paint, but take no
// input save for Escape, a cancel button and the close box, which all cancel. A window whose close
// box was pressed closes when the statement has ended.
class BusyScreen : public QObject {
 public:
  struct Work {
    std::function<bool()> done;         // asked every few milliseconds
    std::function<std::size_t()> rows;  // read so far
    std::function<void()> cancel;       // may be called more than once
  };

  // Returns when the work is done. REQUIRES: !Active().
  void Await(const Work& work);
  bool Active() const { return work_ != nullptr; }

  // The same for work on this thread that lets the windows live by asking PassGoesOn every few
  // milliseconds: false if the user wants to cancel. Between the questions all is as ever, so that
  // such work may show a form or run a statement.
  void BeginPass();
  bool PassGoesOn();
  void EndPass();

  // A statement begins, whether or not it will be waited for here.
  void Begin() { cancelled_ = false; }
  // True if the user cancelled the last statement; false when asked again.
  bool TakeCancelled() { return std::exchange(cancelled_, false); }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void ShowPanel();
  void Tell(qint64 milliseconds);
  void CancelByUser();
  void CloseLate();
  void LiveForAMoment();
  bool IsOfPanel(const QObject* object) const;

  const Work* work_ = nullptr;
  bool cancelled_ = false;  // by the user
  QElapsedTimer pass_;      // since a pass began
  QElapsedTimer slice_;     // since it was last interrupted
  QPointer<QWidget> panel_;
  QPointer<QWidget> closing_;  // whose close box was pressed meanwhile
};

// The window that the user looks at; null if there is none.
QWidget* WindowInFront();

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_BUSY_SCREEN_H_
