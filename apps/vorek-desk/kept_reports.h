#ifndef VOREK_APPS_VOREK_DESK_KEPT_REPORTS_H_
#define VOREK_APPS_VOREK_DESK_KEPT_REPORTS_H_

#include <QList>
#include <QString>

class QSettings;

namespace vorek::desk {

// The reports of a database that its user marked as favourites, and those that were opened last.
class KeptReports {
 public:
  // database is a name that the settings can hold. The settings must outlive this.
  KeptReports(QSettings& settings, QString database)
      : settings_(settings), database_(std::move(database)) {}

  QList<int> Favourites() const { return Read("favourites"); }
  bool IsFavourite(int report) const { return Favourites().contains(report); }
  // Marks the report, or takes the mark away.
  void TurnFavourite(int report);

  // The latest first, at most 10.
  QList<int> Recent() const { return Read("opened"); }
  void NoteOpened(int report);

 private:
  QList<int> Read(const QString& list) const;
  void Write(const QString& list, const QList<int>& reports);
  QString Key(const QString& list) const { return list + '/' + database_; }

  QSettings& settings_;
  QString database_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_KEPT_REPORTS_H_
