#include "kept_reports.h"

#include <QSettings>
#include <QVariant>

namespace vorek::desk {

void KeptReports::TurnFavourite(int report) {
  QList<int> reports = Favourites();
  if (!reports.removeOne(report)) reports << report;
  Write("favourites", reports);
}

void KeptReports::NoteOpened(int report) {
  constexpr int kMost = 10;
  QList<int> reports = Recent();
  reports.removeAll(report);
  reports.prepend(report);
  Write("opened", reports.mid(0, kMost));
}

QList<int> KeptReports::Read(const QString& list) const {
  QList<int> reports;
  for (const QVariant& report : settings_.value(Key(list)).toList()) reports << report.toInt();
  return reports;
}

void KeptReports::Write(const QString& list, const QList<int>& reports) {
  QVariantList kept;
  for (const int report : reports) kept << report;
  settings_.setValue(Key(list), kept);
}

}  // namespace vorek::desk
