#ifndef VOREK_ADAPTERS_QT_BUSY_PANEL_H_
#define VOREK_ADAPTERS_QT_BUSY_PANEL_H_

#include <QFrame>
#include <QString>
#include <cstddef>
#include <functional>

class QLabel;

namespace vorek::qt {

// How far what a user has asked for has come.
struct RunProgress {
  qint64 milliseconds = 0;  // since he asked
  std::size_t rows = 0;     // read so far
  // The answer is there, and stands behind something that was asked for later.
  bool answered = false;
};

// "0:07", "12:34", "1:02:03".
QString TimeInWords(qint64 milliseconds);
// What a line tells of it.
QString ProgressInWords(const RunProgress& progress);

// The panel in the middle of what runs: the time that has gone by, the rows that were read, and a
// button that cancels.
class BusyPanel : public QFrame {
 public:
  BusyPanel(QWidget* over, std::function<void()> cancel);

  void Tell(const RunProgress& progress);

 private:
  QLabel* AddLabel(const QString& name, const QString& longest, int row, int column);

  QLabel* text_;
  QLabel* time_;
  QLabel* rows_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_BUSY_PANEL_H_
