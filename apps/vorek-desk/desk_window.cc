#include "desk_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>

#include "connect_dialog.h"
#include "report_tab.h"

namespace vorek::desk {
namespace {

constexpr int kEveryMinute = 60'000;

}  // namespace

DeskWindow::DeskWindow(QSettings& settings)
    : settings_(settings),
      splitter_(new QSplitter(this)),
      catalogue_(new CataloguePanel(splitter_)),
      tabs_(new QTabWidget(splitter_)) {
  setLayoutDirection(Qt::RightToLeft);
  setWindowTitle("گزارشها");
  tabs_->setTabsClosable(true);
  tabs_->setMovable(true);
  tabs_->setDocumentMode(true);
  connect(tabs_, &QTabWidget::tabCloseRequested, this, [this](int index) { CloseTab(index); });
  catalogue_->on_open = [this](std::int32_t report) { OpenReport(report); };
  splitter_->setStretchFactor(0, 0);
  splitter_->setStretchFactor(1, 1);
  splitter_->setSizes({300, 900});
  setCentralWidget(splitter_);
  MakeActions();
  MakeStatusBar();
  resize(1200, 760);
  restoreGeometry(settings_.value("window/geometry").toByteArray());
  splitter_->restoreState(settings_.value("window/splitter").toByteArray());
}

DeskWindow::~DeskWindow() {
  while (tabs_->count() > 0) delete tabs_->widget(0);
}

void DeskWindow::MakeActions() {
  QMenu* const menu = menuBar()->addMenu("پرونده");
  const auto add = [menu](const QString& text, const QKeySequence& key) {
    QAction* const action = menu->addAction(text);
    action->setShortcut(key);
    return action;
  };
  connect(add("اتصال به پايگاه داده...", QKeySequence::Open), &QAction::triggered, this,
          [this] { AskForConnection(); });
  connect(add("بستن گزارش", QKeySequence::Close), &QAction::triggered, this,
          [this] { CloseTab(tabs_->currentIndex()); });
  connect(add("جستجوي گزارش", Qt::CTRL | Qt::Key_L), &QAction::triggered, catalogue_,
          [this] { catalogue_->findChild<QWidget*>("search")->setFocus(); });
  menu->addSeparator();
  connect(add("خروج", QKeySequence::Quit), &QAction::triggered, this, [this] { close(); });
}

void DeskWindow::MakeStatusBar() {
  user_ = new QLabel(this);
  user_->setObjectName("user");
  day_ = new QLabel(TodayInPersian(), this);
  day_->setObjectName("day");
  statusBar()->addWidget(user_);
  statusBar()->addPermanentWidget(day_);
  auto* const clock = new QTimer(this);
  connect(clock, &QTimer::timeout, day_, [this] { day_->setText(TodayInPersian()); });
  clock->start(kEveryMinute);
}

bool DeskWindow::Connect(const Login& login) {
  try {
    auto session = std::make_unique<Session>(login);
    while (tabs_->count() > 0) CloseTab(0);
    session_ = std::move(session);
  } catch (const Error& error) {
    QMessageBox::warning(this, "خطا", QString::fromStdString(error.Description()));
    return false;
  }
  RecentList(settings_).Add(login);
  catalogue_->Show(session_->Catalogue());
  const QString name = QString::fromStdString(session_->UserName());
  user_->setText(name.isEmpty() ? QString("كاربر %1").arg(login.user) : name);
  return true;
}

QString DeskWindow::TabsKey() const { return RecentList::TabsKey(KeptName(session_->Who())); }

void DeskWindow::ReopenTabs() {
  for (const QVariant& report : settings_.value(TabsKey()).toList()) {
    if (!session_->TitleOf(report.toInt()).isEmpty()) OpenReport(report.toInt());
  }
}

ReportTab* DeskWindow::OpenReport(std::int32_t report) {
  for (int i = 0; i < tabs_->count(); ++i) {
    auto* const open = static_cast<ReportTab*>(tabs_->widget(i));
    if (open->ReportNumber() != report) continue;
    tabs_->setCurrentIndex(i);
    return open;
  }
  auto* const tab = new ReportTab(*session_, report, settings_, this);
  const QString title = session_->TitleOf(report);
  const int index = tabs_->addTab(tab, title.isEmpty() ? QString::number(report) : title);
  tabs_->setTabToolTip(index, QString("%1  %2").arg(report).arg(title));
  tabs_->setCurrentIndex(index);
  tab->View();
  return tab;
}

ReportTab* DeskWindow::CurrentTab() const {
  return static_cast<ReportTab*>(tabs_->currentWidget());
}

void DeskWindow::CloseTab(int index) {
  if (index < 0) return;
  auto* const tab = static_cast<ReportTab*>(tabs_->widget(index));
  tab->RememberWidths();
  tabs_->removeTab(index);
  tab->deleteLater();
}

void DeskWindow::AskForConnection() {
  ConnectDialog dialog(RecentList(settings_), this);
  while (dialog.exec() == QDialog::Accepted) {
    if (!Connect(dialog.Given())) continue;
    ReopenTabs();
    return;
  }
}

void DeskWindow::Remember() {
  settings_.setValue("window/geometry", saveGeometry());
  settings_.setValue("window/splitter", splitter_->saveState());
  if (session_ == nullptr) return;
  QVariantList open;
  for (int i = 0; i < tabs_->count(); ++i) {
    auto* const tab = static_cast<ReportTab*>(tabs_->widget(i));
    tab->RememberWidths();
    open << tab->ReportNumber();
  }
  settings_.setValue(TabsKey(), open);
}

void DeskWindow::closeEvent(QCloseEvent* event) {
  Remember();
  event->accept();
}

}  // namespace vorek::desk
