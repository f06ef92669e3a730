#include "connect_dialog.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSettings>

#include "adapters/qt/qt_file_dialogs.h"

namespace vorek::desk {
namespace {

constexpr int kMostRecent = 10;
constexpr int kLargest = 2147483647;

QString LoginKey(const QString& db) { return "logins/" + RecentList::KeyOf(db); }

QSpinBox* MakeNumber(QDialog* dialog, int largest) {
  auto* const box = new QSpinBox(dialog);
  box->setRange(-1, largest);
  box->setValue(-1);
  return box;
}

}  // namespace

QString RecentList::KeyOf(const QString& db) {
  return QString::fromLatin1(db.toUtf8().toBase64(QByteArray::Base64UrlEncoding));
}

QStringList RecentList::All() const { return settings_.value("recent").toStringList(); }

void RecentList::Add(const Login& login) {
  const QString db = KeptName(login);
  if (db.isEmpty()) return;
  QStringList all = All();
  all.removeAll(db);
  all.prepend(db);
  while (all.size() > kMostRecent) Forget(all.takeLast());
  settings_.setValue("recent", all);
  settings_.setValue(LoginKey(db),
                     QVariantList{login.user, login.position, login.employee, login.period});
}

void RecentList::Forget(const QString& db) {
  settings_.remove(LoginKey(db));
  settings_.remove(TabsKey(db));
  settings_.remove(TabsKey(db) + "-shown");
  settings_.remove("favourites/" + KeyOf(db));
  settings_.remove("opened/" + KeyOf(db));
}

QString RecentList::TabsKey(const QString& db) { return "tabs/" + KeyOf(db); }

Login RecentList::LoginOf(const QString& db) const {
  const QVariantList numbers = settings_.value(LoginKey(db)).toList();
  Login login{.db = db};
  if (numbers.size() != 4) return login;
  login.user = numbers[0].toInt();
  login.position = numbers[1].toInt();
  login.employee = numbers[2].toInt();
  login.period = numbers[3].toInt();
  return login;
}

ConnectDialog::ConnectDialog(const RecentList& recent, QWidget* parent)
    : QDialog(parent),
      db_(new QComboBox(this)),
      password_(new QLineEdit(this)),
      user_(MakeNumber(this, 32767)),
      position_(MakeNumber(this, 32767)),
      employee_(MakeNumber(this, 32767)),
      period_(MakeNumber(this, kLargest)) {
  setWindowTitle("اتصال به پايگاه داده");
  setLayoutDirection(Qt::RightToLeft);
  db_->setEditable(true);
  db_->setLayoutDirection(Qt::LeftToRight);
  db_->setMinimumContentsLength(48);
  db_->addItems(recent.All());
  password_->setObjectName("password");
  password_->setEchoMode(QLineEdit::Password);
  password_->setLayoutDirection(Qt::LeftToRight);
  password_->setPlaceholderText("نگهداري نمي شود");
  auto* const browse = new QPushButton("انتخاب فايل...", this);
  browse->setAutoDefault(false);
  auto* const buttons = new QDialogButtonBox(this);
  buttons->addButton("تاييد", QDialogButtonBox::AcceptRole);
  buttons->addButton("انصراف", QDialogButtonBox::RejectRole);
  auto* const layout = new QFormLayout(this);
  auto* const row = new QHBoxLayout;
  row->addWidget(db_, 1);
  row->addWidget(browse);
  layout->addRow("فايل يا رشته اتصال", row);
  layout->addRow("گذرواژه", password_);
  layout->addRow("شماره كاربر", user_);
  layout->addRow("شماره پست", position_);
  layout->addRow("شماره كارمند", employee_);
  layout->addRow("دوره مالي", period_);
  layout->addRow(buttons);
  connect(browse, &QPushButton::clicked, this, [this] { Browse(); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  const auto take = [this, recent](const QString& db) {
    const Login login = recent.LoginOf(db);
    user_->setValue(login.user);
    position_->setValue(login.position);
    employee_->setValue(login.employee);
    period_->setValue(login.period);
  };
  connect(db_, &QComboBox::textActivated, this, take);
  if (db_->count() > 0) take(db_->currentText());
}

Login ConnectDialog::Given() const {
  return {db_->currentText(), user_->value(),   position_->value(),
          employee_->value(), period_->value(), password_->text()};
}

void ConnectDialog::Browse() {
  FileDialogRequest request;
  request.title = "انتخاب فايل";
  request.file_name =
      QFileInfo(db_->currentText()).isFile() ? db_->currentText().toStdString() : "";
  if (vorek::qt::QtFileDialogs().Open(request)) {
    db_->setCurrentText(QString::fromStdString(request.file_name));
  }
}

}  // namespace vorek::desk
