#ifndef VOREK_ADAPTERS_QT_BUSY_SCREEN_H_
#define VOREK_ADAPTERS_QT_BUSY_SCREEN_H_

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "adapters/qt/busy_panel.h"

namespace vorek::qt {

// Keeps windows alive while a statement of one world runs elsewhere or a long pass of it here. They
// paint; those that are locked take no input save for Escape, a cancel button and the close box,
// which all cancel. A window whose close box was pressed closes when the statement has ended.
//
// A wait is a loop of events within the caller: where windows of other worlds stay open to input, a
// later wait may stand within an earlier one, which goes on when the later one has ended.
class BusyScreen : public QObject {
 public:
  struct Work {
    std::function<bool()> done;         // asked every few milliseconds
    std::function<std::size_t()> rows;  // read so far
    std::function<void()> cancel;       // may be called more than once
  };

  // A place in which the world is shown.
  struct Place {
    QPointer<QWidget> widget;
    std::function<void(const RunProgress&)> tell;  // several times a second, while something runs
    std::function<void(qint64 milliseconds)> end;  // what was told of has ended
    std::function<void()> come_to_front;           // for a form that has something to ask
  };

  // What the user has asked for, from his key to its end; the outermost counts.
  class Errand {
   public:
    explicit Errand(BusyScreen* screen) : screen_(screen) {
      if (screen_ != nullptr) screen_->BeginErrand();
    }
    ~Errand() {
      if (screen_ != nullptr) screen_->EndErrand();
    }
    Errand(const Errand&) = delete;
    Errand& operator=(const Errand&) = delete;

   private:
    QPointer<BusyScreen> screen_;
  };

  // While the user is asked something: his time isn't the run's.
  class Asking {
   public:
    explicit Asking(BusyScreen& screen);
    ~Asking();
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

   private:
    BusyScreen& screen_;
    int errands_;
    bool waited_;
  };

  // Only the world's own places are locked while it works; all windows of the program at first.
  void LockOwnPlacesOnly() { locks_all_ = false; }
  // The widget is one of the world, with all that stands in it and all windows that it opens.
  void AddPlace(Place place);

  // Returns when the work is done. REQUIRES: !Active().
  void Await(const Work& work);
  // Events are being handled within something of the world that is under way.
  bool Active() const { return work_ != nullptr; }
  // An errand has let the windows live and hasn't ended: its callers are still to be returned to.
  bool Running() const { return waited_; }
  // As the user's Escape.
  void Cancel();
  // Cancels whatever the world still does: it is going to be closed.
  void Abandon();
  bool Abandoned() const { return abandoned_; }

  // The same for work on this thread that lets the windows live by asking PassGoesOn every few
  // milliseconds: false if the user wants to cancel. Between the questions all is as ever, so that
  // such work may show a form or run a statement.
  void BeginPass();
  bool PassGoesOn();
  void EndPass();

  // A statement begins, whether or not it will be waited for here.
  void Begin() { cancelled_ = false; }
  bool Cancelled() const { return cancelled_; }
  // True if the user cancelled the last statement; false when asked again.
  bool TakeCancelled() { return std::exchange(cancelled_, false); }

  // What is told of the world belongs before this; null if it is nowhere to be seen.
  QWidget* Front() const;
  // The tab or window of the world is wanted, since something is going to be asked.
  void ComeToFront();
  // The pointer over what is locked.
  void SetCursor(bool waiting);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void BeginErrand();
  void EndErrand();
  void Waits(const RunProgress& progress);
  void HidePanel();
  void CloseLate();
  void LiveForAMoment();
  bool IsOfPanel(const QObject* object) const;
  bool IsOwn(const QObject* object) const;
  bool IsAround(const QWidget* window) const;
  bool CancelByClosing(QObject* object, QEvent& event);

  bool locks_all_ = true;
  std::vector<Place> places_;
  const Work* work_ = nullptr;
  bool cancelled_ = false;  // by the user
  bool abandoned_ = false;
  int errands_ = 0;
  bool waited_ = false;
  QElapsedTimer asked_;  // since the errand began
  QElapsedTimer told_;   // since the places were told
  QElapsedTimer slice_;  // since a pass was last interrupted
  QPointer<BusyPanel> panel_;
  QPointer<QWidget> closing_;  // whose close box was pressed meanwhile
};

// The window that the user looks at; null if there is none.
QWidget* WindowInFront();

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_BUSY_SCREEN_H_
