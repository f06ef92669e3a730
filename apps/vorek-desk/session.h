#ifndef VOREK_APPS_VOREK_DESK_SESSION_H_
#define VOREK_APPS_VOREK_DESK_SESSION_H_

#include <QString>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "catalog/report_row.h"
#include "vorek/qt.h"
#include "vorek/world.h"

namespace vorek::desk {

// Who works with which database.
struct Login {
  QString db;  // a connection string, or the file of an embedded database
  int user = -1;
  int position = -1;
  int employee = -1;
  int period = -1;
  QString password = {};  // for a string that holds none; never kept
};

// The connection string of a login.
std::string ConnectionOf(const Login& login);
// The database of a login as it is kept: a file by its absolute path, a string without passwords.
QString KeptName(const Login& login);

// A database that is open for one user.
class Session {
 public:
  // Connects. Throws Error with the provider's reason.
  explicit Session(Login login);

  const Login& Who() const { return login_; }
  const std::vector<CatalogEntry>& Catalogue() const { return catalogue_; }
  const std::vector<CatalogGroup>& Groups() const { return groups_; }
  // Empty for a report that isn't in the catalogue.
  QString TitleOf(std::int32_t report) const;
  const std::string& UserName() const { return user_name_; }
  // The database, the user and the period, as a title tells them; no password.
  QString InWords() const;
  // What the world of a report is made with: its tab alone is locked while it runs.
  static WorldOptions Services(Locks locks = Locks::kOwnWidgets);

 private:
  Login login_;
  std::unique_ptr<World> world_;
  std::vector<CatalogEntry> catalogue_;
  std::vector<CatalogGroup> groups_;
  std::string user_name_;
  std::string period_name_;
};

// "سه شنبه 3 آذر 1404", by the machine's clock.
QString TodayInPersian();

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_SESSION_H_
