#ifndef VOREK_ADAPTERS_QT_SELECTION_WATCH_H_
#define VOREK_ADAPTERS_QT_SELECTION_WATCH_H_

#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "totals/selection_figures.h"

namespace vorek::qt {

// Keeps the figures of a selection up to date in the moments in which nothing else is done: a large
// selection is read in slices, and begun anew when it or the rows change.
class SelectionWatch : public QObject {
 public:
  // ready is false while a run or a pass is changing the rows: nothing is read then. scan begins a
  // reading, or gives null where there is nothing to read; tell gets what was read.
  SelectionWatch(std::function<bool()> ready, std::function<std::unique_ptr<SelectionScan>()> scan,
                 std::function<void(const SelectionFigures&)> tell);

  // The selection or the rows are others now.
  void Changed();

 private:
  void Read();

  std::function<bool()> ready_;
  std::function<std::unique_ptr<SelectionScan>()> begin_;
  std::function<void(const SelectionFigures&)> tell_;
  std::unique_ptr<SelectionScan> scan_;
  QTimer slice_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_SELECTION_WATCH_H_
