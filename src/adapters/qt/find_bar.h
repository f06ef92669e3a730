#ifndef VOREK_ADAPTERS_QT_FIND_BAR_H_
#define VOREK_ADAPTERS_QT_FIND_BAR_H_

#include <QFrame>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "adapters/qt/grid_area.h"
#include "adapters/qt/icon_buttons.h"
#include "grid/grid_finder.h"

class QLabel;
class QLineEdit;

namespace vorek::qt {

// The box over a grid that looks for a text in all of its columns: marks what is found while it is
// typed, counts it, and steps through it. It stands over the grid's left corner.
class FindBar : public QFrame {
 public:
  // area gives the grid on view, null for none.
  FindBar(QWidget* parent, std::function<GridArea*()> area);

  // Opens the box, or selects its text if it is open.
  void Open();
  // The rows are others now: what is looked for is looked for anew.
  void RowsChanged();

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  template <typename Work>
  void AddButton(const char* icon, const QString& text, const QKeySequence& key, const Work& work);
  void Place();
  void Close();
  void Begin();
  void Look();
  void Step(bool forward);
  bool IsRead(const GridFinder::Hit& hit, const GridFinder::Hit& from, bool forward) const;
  void Tell();

  std::function<GridArea*()> area_;
  QLineEdit* text_;
  QLabel* count_;
  IconButtons buttons_;
  std::unique_ptr<GridFinder> finder_;
  GridArea* marked_ = nullptr;  // the area whose cells are marked
  bool done_ = false;           // all rows have been looked through
  std::optional<bool> wanted_;  // a step forward, or back, to what hasn't been found yet
  QTimer slice_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_FIND_BAR_H_
