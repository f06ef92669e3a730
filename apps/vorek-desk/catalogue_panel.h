#ifndef VOREK_APPS_VOREK_DESK_CATALOGUE_PANEL_H_
#define VOREK_APPS_VOREK_DESK_CATALOGUE_PANEL_H_

#include <QWidget>
#include <cstdint>
#include <functional>
#include <vector>

#include "catalog/report_row.h"

class QLabel;
class QLineEdit;
class QTreeWidget;

namespace vorek::desk {

// A text as it is searched: one letter for the Persian and the Arabic form, digits in Latin.
QString SearchForm(QString text);

// The reports of a catalogue in groups of a hundred numbers, with a search over numbers and titles.
class CataloguePanel : public QWidget {
 public:
  explicit CataloguePanel(QWidget* parent);

  void Show(const std::vector<CatalogEntry>& catalogue);
  // The next key replaces what was searched before.
  void FocusSearch();
  std::function<void(std::int32_t report)> on_open;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void Filter(const QString& words);
  void OpenCurrent();

  QLineEdit* search_;
  QTreeWidget* tree_;
  QLabel* nothing_;  // says that the search found none
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_CATALOGUE_PANEL_H_
