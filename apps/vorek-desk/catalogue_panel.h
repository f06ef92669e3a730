#ifndef VOREK_APPS_VOREK_DESK_CATALOGUE_PANEL_H_
#define VOREK_APPS_VOREK_DESK_CATALOGUE_PANEL_H_

#include <QList>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <vector>

#include "catalog/report_row.h"

class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace vorek::desk {

// A text as it is searched: one letter for the Persian and the Arabic form, digits in Latin.
QString SearchForm(QString text);

// The reports of a catalogue in their groups, those without one in groups of a hundred numbers,
// above them the user's favourites; with a search over numbers and titles.
class CataloguePanel : public QWidget {
 public:
  explicit CataloguePanel(QWidget* parent);

  void Show(std::vector<CatalogEntry> catalogue, std::vector<CatalogGroup> groups);
  void ShowFavourites(QList<int> favourites);
  // Marks the report that the window shows; -1 for none.
  void ShowOpen(std::int32_t report);
  // The next key replaces what was searched before.
  void FocusSearch();
  std::function<void(std::int32_t report)> on_open;
  // The user turns the report's star; ShowFavourites answers.
  std::function<void(std::int32_t report)> on_star;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Fill();
  void FillFavourites();
  QTreeWidgetItem* AddGroup(const QString& title);
  void AddReport(QTreeWidgetItem& group, const CatalogEntry& entry);
  QString GroupOf(std::int32_t report) const;
  void ConnectTree();
  void Filter(const QString& words);
  void OpenCurrent();
  void TurnStar(const QTreeWidgetItem* item);

  QLineEdit* search_;
  QTreeWidget* tree_;
  QLabel* nothing_;  // says that the search found none
  std::vector<CatalogEntry> catalogue_;
  std::vector<CatalogGroup> groups_;
  QList<int> favourites_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_CATALOGUE_PANEL_H_
