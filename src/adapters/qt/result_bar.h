#ifndef VOREK_ADAPTERS_QT_RESULT_BAR_H_
#define VOREK_ADAPTERS_QT_RESULT_BAR_H_

#include <QWidget>
#include <functional>

#include "drill/result_line.h"
#include "totals/selection_figures.h"

class QLabel;
class QToolButton;

namespace vorek::qt {

// The line under a report: the rows that it shows, the figures of the selection, and the filter in
// force with a button that takes it away. A filter that has no room is cut; its tip tells it whole.
class ResultBar : public QWidget {
 public:
  ResultBar(QWidget* parent, std::function<void()> take_filter_away);

  void Show(const ResultLine& line);
  // Those of a selection of one cell are none.
  void ShowFigures(const SelectionFigures& figures);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void FitFilter();

  QLabel* counts_;
  QLabel* figures_;
  QLabel* filter_;
  QToolButton* take_away_;
  QString filter_text_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_RESULT_BAR_H_
