#ifndef VOREK_APPS_VOREK_DESK_DESK_TOOLBAR_H_
#define VOREK_APPS_VOREK_DESK_DESK_TOOLBAR_H_

#include <QWidget>
#include <functional>
#include <vector>

#include "adapters/qt/icon_buttons.h"
#include "report_action.h"

class QAction;
class QHBoxLayout;
class QLabel;
class QMenu;
class QToolButton;

namespace vorek::desk {

// The strip above everything: what can be done with the report on show, the menu of the program at
// its end, and who works with what.
class DeskToolbar : public QWidget {
 public:
  explicit DeskToolbar(QWidget* parent);

  std::function<void(ReportAction)> on_action;
  // The entries of the program; their owner fills it.
  QMenu& ProgramMenu() { return *program_; }
  // Which of the report's buttons can be pressed: `has` answers for each.
  void Offer(const std::function<bool(ReportAction)>& has);
  // Marks the button of what the report is meant for.
  void Recommend(ReportAction action, bool on);
  // While the report on show runs its button cancels.
  void ShowRunning(bool running);
  void TellWho(const QString& text);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  struct Entry {
    ReportAction action;
    QAction* trigger = nullptr;
    QToolButton* button = nullptr;  // null for an entry of a menu
  };
  QToolButton* AddButton(QHBoxLayout& row, const QString& icon, const QString& text,
                         const QKeySequence& key, bool words);
  void Add(QHBoxLayout& row, ReportAction action, const QString& icon, const QString& text,
           const QKeySequence& key, bool words);
  void AddExports(QHBoxLayout& row);
  void AddProgram(QHBoxLayout& row);
  void AddGap(QHBoxLayout& row);

  QMenu* program_;
  QLabel* who_;
  std::vector<Entry> entries_;
  vorek::qt::IconButtons buttons_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_DESK_TOOLBAR_H_
