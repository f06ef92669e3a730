#ifndef VOREK_APPS_VOREK_DESK_HEAD_BAR_H_
#define VOREK_APPS_VOREK_DESK_HEAD_BAR_H_

#include <QWidget>
#include <functional>
#include <vector>

#include "engine/report_head.h"

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace vorek::desk {

// The line above a report: its title, and a chip for each value that its result was asked for with.
// Chips that have no room are counted in a last one, whose tip tells them.
class HeadBar : public QWidget {
 public:
  explicit HeadBar(QWidget* parent);

  // changes: there is a form to give other values in.
  void Show(const ReportHead& head, bool changes);
  std::function<void()> on_change;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QWidget* MakeChip(const QString& name, const QString& value);
  void Fit();
  void TakeFont();

  QLabel* title_;
  QHBoxLayout* row_ = nullptr;
  std::vector<QWidget*> chips_;
  QStringList words_;  // of each chip
  QLabel* rest_;
  QToolButton* change_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_HEAD_BAR_H_
