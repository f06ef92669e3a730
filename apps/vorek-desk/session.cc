#include "session.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "adapters/system/database_option.h"
#include "attachment_dialog.h"
#include "desk_documents.h"
#include "engine/shared_helpers.h"
#include "engine/world_state.h"
#include "platform/connection_secrets.h"
#include "text/persian_date.h"
#include "text/utf8.h"
#include "vorek/connection_string.h"
#include "vorek/qt.h"
#ifdef VOREK_WITH_ACCESS
#include "vorek/access.h"
#endif
#include "vorek/sqlite.h"
#include "vorek/system.h"
#include "vorek/xml.h"
#ifdef VOREK_WITH_XLSX
#include "vorek/xlsx.h"
#endif
#ifdef VOREK_WITH_ODBC
#include "vorek/odbc.h"
#endif

namespace vorek::desk {
namespace {

// A string for the embedded database with its file by the absolute path; others as they are.
std::string WithAbsolutePath(const std::string& text) {
  std::vector<ConnectionPiece> pieces = ParseConnectionString(text);
  if (!text::EqualsIgnoreCase(ConnectionValue(pieces, {"Provider"}), "VorekSQLite")) return text;
  for (ConnectionPiece& piece : pieces) {
    if (!text::EqualsIgnoreCase(piece.key, "Data Source")) continue;
    piece.value = QFileInfo(QString::fromStdString(piece.value)).absoluteFilePath().toStdString();
  }
  return FormatConnectionString(pieces);
}

// Empty without a period, and in a database that names none.
std::string PeriodName(Recordset& slot, int period) {
  std::string name;
  if (period < 0) return name;
  IgnoreErrors([&] {
    OpenSlot(slot, "Select Name from vwAccountPeriodMajor Where ID=" + std::to_string(period));
    if (!slot.AtEnd()) name = TextOf(slot, "Name");
  });
  slot.Close();
  return name;
}

}  // namespace

std::string ConnectionOf(const Login& login) {
  return WithPassword(ConnectionStringOf(login.db.trimmed().toStdString()),
                      login.password.toStdString());
}

QString KeptName(const Login& login) {
  const QString db = login.db.trimmed();
  if (!IsConnectionString(db.toStdString())) return QFileInfo(db).absoluteFilePath();
  return QString::fromStdString(WithAbsolutePath(WithoutPasswords(db.toStdString())));
}

Session::Session(Login login)
    : login_(std::move(login)), world_(std::make_unique<World>(Services(Locks::kProgram))) {
  Process& process = world_->State().process;
  process.data.Rebind(ConnectionOf(login_));
  catalogue_ = ReadCatalog(process.dten().rssqlGeneral1);
  groups_ = ReadCatalogGroups(process.dten().rssqlGeneral1);
  process.main.GlobalUserID = login_.user;
  process.main.GlobalPositionID = login_.position;
  process.main.GlobalEmployeeID = login_.employee;
  LoadUserInfo(process);
  user_name_ = process.main.UserFullName;
  period_name_ = PeriodName(process.dten().rssqlGeneral1, login_.period);
}

QString Session::InWords() const {
  QStringList parts;
  const std::vector<ConnectionPiece> pieces = ParseConnectionString(ConnectionOf(login_));
  const std::string catalog = ConnectionValue(pieces, {"Initial Catalog", "Database"});
  const std::string source = ConnectionValue(pieces, {"Data Source", "Server"});
  parts << (catalog.empty() ? QFileInfo(QString::fromStdString(source)).completeBaseName()
                            : QString::fromStdString(catalog));
  if (!period_name_.empty()) parts << QString::fromStdString(period_name_);
  parts << (user_name_.empty() ? QString("كاربر %1").arg(login_.user)
                               : QString::fromStdString(user_name_));
  return parts.join(" · ");
}

WorldOptions Session::Services(Locks locks) {
  WorldOptions options;
  options.providers = {SqliteProvider()};
#ifdef VOREK_WITH_ODBC
  options.providers.push_back(OdbcProvider());
#endif
#ifdef VOREK_WITH_XLSX
  options.spreadsheet = XlsxSpreadsheet();
#endif
  options.attachments = std::make_shared<DeskAttachments>(options.providers);
  options.documents = std::make_shared<DeskDocuments>(MachineDocuments());
  AddQtServices(options, locks);
  AddSystemServices(options);
#ifdef VOREK_WITH_ACCESS
  options.access_file = JetAccessFiles(options.files);
#endif
  options.print_jobs = PrintsThroughTemplates(options, PugiXmlReader(), PrintPreviews());
  return options;
}

QString Session::TitleOf(std::int32_t report) const {
  const auto found =
      std::find_if(catalogue_.begin(), catalogue_.end(),
                   [report](const CatalogEntry& entry) { return entry.id == report; });
  return found == catalogue_.end() ? QString() : QString::fromStdString(found->title);
}

QString TodayInPersian() {
  static constexpr const char* kDays[] = {"شنبه",     "يكشنبه",  "دوشنبه", "سه شنبه",
                                          "چهارشنبه", "پنجشنبه", "جمعه"};
  static constexpr const char* kMonths[] = {"فروردين", "ارديبهشت", "خرداد", "تير",
                                            "مرداد",   "شهريور",   "مهر",   "آبان",
                                            "آذر",     "دي",       "بهمن",  "اسفند"};
  const DateTime now = MachineClock()->Now();
  const text::CalendarDate today{now.year, now.month, now.day};
  const text::CalendarDate persian = text::ToPersian(today);
  return QString("%1 %2 %3 %4")
      .arg(kDays[text::PersianWeekday(today)])
      .arg(persian.day)
      .arg(kMonths[persian.month - 1])
      .arg(persian.year);
}

}  // namespace vorek::desk
