#ifndef VOREK_ADAPTERS_QT_BUSY_SCREEN_H_
#define VOREK_ADAPTERS_QT_BUSY_SCREEN_H_

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <cstddef>
#include <functional>

namespace vorek::qt {

// Keeps windows alive while a statement runs elsewhere: they paint, but take no input save for
// Escape, a cancel button and the close box, which all cancel.
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

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void ShowPanel();
  void TellRows();
  bool IsOfPanel(const QObject* object) const;

  const Work* work_ = nullptr;
  QPointer<QWidget> panel_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_BUSY_SCREEN_H_
