#ifndef VOREK_ADAPTERS_QT_LIST_PANEL_H_
#define VOREK_ADAPTERS_QT_LIST_PANEL_H_

#include <QKeyEvent>
#include <QTimer>
#include <QWidget>
#include <functional>

#include "widgets/list_control.h"

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace vorek {
class VorekMultiSelect;
class VorekSelector;
}  // namespace vorek

namespace vorek::qt {

// The rows of a list control with a search box over them: a tree where the control's view has one,
// check boxes and buttons for all and none where many may be chosen. Rows are those that the
// control holds; what isn't held is found by searching.
class ListPanel : public QWidget {
 public:
  using Feed = std::function<void(const std::function<void()>&)>;
  // Forget has to be called before the list goes.
  ListPanel(ListControl& list, Feed feed, QWidget* parent);

  void Forget() { list_ = nullptr; }
  // Asks the control for its first rows.
  void Fill();
  // Shows the rows that the control holds for a text that isn't clear.
  void Offer(const QString& typed);
  // Shows the rows that the control holds, or only which of them are chosen.
  void ShowRows();
  void ShowChoice();
  // A row was chosen in a control of one choice. A panel without it stays open: it takes Enter for
  // itself only while something is searched for.
  std::function<void()> on_chosen;
  // A key that the panel has no use for.
  std::function<void(const QKeyEvent&)> on_key;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void MakeButtons();
  void Search();
  bool FillTree();
  void Expand(QTreeWidgetItem& item);
  void AddRows(QTreeWidgetItem* below, std::int32_t parent_id);
  void Activate(QTreeWidgetItem& item);
  void MakeCurrent();
  void TakeCurrent();
  bool TakesEnter() const;
  bool TakeKey(QObject* object, QKeyEvent& key);
  void Choose(const QTreeWidgetItem& item);

  ListControl* list_;
  VorekMultiSelect* many_;   // the same control, or null
  VorekSelector* selector_;  // the same control, or null
  Feed feed_;
  QLineEdit* search_;
  QTreeWidget* rows_;
  QTimer pause_;  // between the last letter and the search
  bool tree_ = false;
  bool filling_ = false;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_LIST_PANEL_H_
