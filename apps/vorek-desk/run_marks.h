#ifndef VOREK_APPS_VOREK_DESK_RUN_MARKS_H_
#define VOREK_APPS_VOREK_DESK_RUN_MARKS_H_

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>

class QColor;
class QLabel;
class QStatusBar;
class QTabWidget;
class QToolButton;

namespace vorek::desk {

// What a window tells of reports that run in its tabs: a mark and the time in the tab, a line below
// for the one on show, and a notice that stays until it is answered when a long run has ended in a
// tab that isn't shown.
class RunMarks : public QObject {
 public:
  // A run of at least so many milliseconds is a long one.
  RunMarks(QTabWidget& tabs, QStatusBar& line, qint64 long_run);

  // The tab's report has run for so long; what is told of it in words.
  void GoesOn(QWidget& tab, const QString& title, const QString& words, const QString& time);
  void Ended(QWidget& tab, const QString& title, qint64 milliseconds);
  // Another tab is on show.
  void Shown();
  // Shows the tab of the notice.
  void Follow();

 private:
  void Mark(QWidget& tab, const QString& text, const QColor& color);
  void Notice(QWidget& tab, const QString& text);

  QTabWidget& tabs_;
  qint64 long_run_;
  QLabel* line_;
  QToolButton* notice_;
  QPointer<QWidget> ended_;  // the tab of the notice
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_RUN_MARKS_H_
