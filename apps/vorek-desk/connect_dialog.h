#ifndef VOREK_APPS_VOREK_DESK_CONNECT_DIALOG_H_
#define VOREK_APPS_VOREK_DESK_CONNECT_DIALOG_H_

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QSpinBox>

#include "session.h"

class QSettings;

namespace vorek::desk {

// The connections that were used, the last one first; passwords aren't kept.
class RecentList {
 public:
  explicit RecentList(QSettings& settings) : settings_(settings) {}
  QStringList All() const;
  void Add(const Login& login);
  // The user's numbers that were last given for a connection.
  Login LoginOf(const QString& db) const;
  // Where the open reports of a connection are kept.
  static QString TabsKey(const QString& db);
  // A connection as the name of a setting.
  static QString KeyOf(const QString& db);

 private:
  void Forget(const QString& db);

  QSettings& settings_;
};

// Asks for a database and for the user's numbers.
class ConnectDialog : public QDialog {
 public:
  ConnectDialog(const RecentList& recent, QWidget* parent);
  Login Given() const;

 private:
  void Browse();

  QComboBox* db_;
  QLineEdit* password_;
  QSpinBox* user_;
  QSpinBox* position_;
  QSpinBox* employee_;
  QSpinBox* period_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_CONNECT_DIALOG_H_
