#include "desk_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QSettings>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextStream>
#include <QTimer>

#include "adapters/qt/qt_windows.h"
#include "connect_dialog.h"
#include "report_tab.h"

namespace vorek::desk {
namespace {

constexpr int kEveryMinute = 60'000;

}  // namespace

DeskWindow::DeskWindow(QSettings& settings, QString forms_folder)
    : settings_(settings),
      forms_folder_(std::move(forms_folder)),
      splitter_(new QSplitter(this)),
      catalogue_(new CataloguePanel(splitter_)),
      tabs_(new QTabWidget(splitter_)) {
  setLayoutDirection(Qt::RightToLeft);
  setWindowTitle("گزارشها");
  tabs_->setTabsClosable(true);
  tabs_->setMovable(true);
  tabs_->setDocumentMode(true);
  connect(tabs_, &QTabWidget::tabCloseRequested, this, [this](int index) { CloseTab(index); });
  connect(tabs_, &QTabWidget::currentChanged, this, [this] { StartShownTab(); });
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
  const QSignalBlocker quiet(tabs_);
  while (tabs_->count() > 0) delete tabs_->widget(0);
}

void DeskWindow::MakeActions() {
  QMenu* const menu = menuBar()->addMenu("پرونده");
  const auto add = [menu](const QString& text, const QKeySequence& key) {
    QAction* const action = menu->addAction(text);
    action->setShortcut(key);
    return action;
  };
  connect(add("اتصال به پايگاه داده...", Qt::CTRL | Qt::Key_O), &QAction::triggered, this,
          [this] { AskForConnection(); });
  connect(add("بستن گزارش", Qt::CTRL | Qt::Key_W), &QAction::triggered, this,
          [this] { CloseTab(tabs_->currentIndex()); });
  connect(add("جستجوي گزارش", Qt::CTRL | Qt::Key_L), &QAction::triggered, catalogue_,
          [this] { catalogue_->FocusSearch(); });
  menu->addSeparator();
  connect(add("خروج", Qt::CTRL | Qt::Key_Q), &QAction::triggered, this, [this] { close(); });
}

void DeskWindow::MakeStatusBar() {
  user_ = new QLabel(this);
  user_->setObjectName("user");
  day_ = new QLabel(TodayInPersian(), this);
  day_->setObjectName("day");
  for (QLabel* const label : {user_, day_}) label->setContentsMargins(8, 0, 8, 0);
  statusBar()->addWidget(user_);
  statusBar()->addPermanentWidget(day_);
  auto* const clock = new QTimer(this);
  connect(clock, &QTimer::timeout, day_, [this] { day_->setText(TodayInPersian()); });
  clock->start(kEveryMinute);
}

bool DeskWindow::Connect(const Login& login) {
  try {
    auto session = std::make_unique<Session>(login);
    Remember();
    CloseAllTabs();
    session_ = std::move(session);
  } catch (const Error& error) {
    vorek::qt::ShowFailure(this, QString::fromStdString(error.Description()));
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
  const std::int32_t shown = settings_.value(TabsKey() + "-shown").toInt();
  {
    const QSignalBlocker quiet(tabs_);
    for (const QVariant& report : settings_.value(TabsKey()).toList()) {
      if (session_->TitleOf(report.toInt()).isEmpty()) continue;
      ReportTab* const tab = AddTab(report.toInt());
      if (tab->ReportNumber() == shown) tabs_->setCurrentWidget(tab);
    }
  }
  StartShownTab();
}

ReportTab* DeskWindow::AddTab(std::int32_t report) {
  auto* const tab = new ReportTab(
      *session_, report, settings_, forms_folder_.toStdString(),
      [this](const QString& text) { TellLine(text); }, this);
  tab->on_come_to_front = [this, tab] { tabs_->setCurrentWidget(tab); };
  const QString title = session_->TitleOf(report);
  tabs_->addTab(tab, title.isEmpty() ? QString::number(report) : title);
  return tab;
}

// A restored tab whose report the user may not see any more goes again.
void DeskWindow::StartShownTab() {
  ReportTab* const tab = CurrentTab();
  if (tab == nullptr) return;
  tab->Start();
  if (tab->Loaded()) return;
  QMetaObject::invokeMethod(
      tab, [this, tab] { CloseTab(tabs_->indexOf(tab)); }, Qt::QueuedConnection);
}

ReportTab* DeskWindow::OpenReport(std::int32_t report) {
  for (int i = 0; i < tabs_->count(); ++i) {
    if (TabAt(i)->ReportNumber() != report) continue;
    tabs_->setCurrentIndex(i);
    return TabAt(i);
  }
  ReportTab* const tab = AddTab(report);
  {
    const QSignalBlocker quiet(tabs_);
    tabs_->setCurrentWidget(tab);
  }
  tab->Start();
  if (tab->Loaded()) return tab;
  CloseTab(tabs_->indexOf(tab));
  return nullptr;
}

// What concerns the one who set the program up stands in its line, and where a log would take it.
void DeskWindow::TellLine(const QString& text) {
  constexpr int kShown = 15'000;  // milliseconds
  statusBar()->showMessage(text, kShown);
  QTextStream(stderr) << "vorek-desk: " << text << '\n';
}

ReportTab* DeskWindow::TabAt(int index) const {
  return static_cast<ReportTab*>(tabs_->widget(index));
}

ReportTab* DeskWindow::CurrentTab() const {
  return static_cast<ReportTab*>(tabs_->currentWidget());
}

void DeskWindow::CloseTab(int index) {
  if (index < 0) return;
  ReportTab* const tab = TabAt(index);
  tab->RememberWidths();
  tabs_->removeTab(index);
  tab->deleteLater();
}

void DeskWindow::CloseAllTabs() {
  const QSignalBlocker quiet(tabs_);
  while (tabs_->count() > 0) CloseTab(0);
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
    TabAt(i)->RememberWidths();
    if (TabAt(i)->Returns()) open << TabAt(i)->ReportNumber();
  }
  settings_.setValue(TabsKey(), open);
  const ReportTab* const shown = CurrentTab();
  settings_.setValue(TabsKey() + "-shown", shown == nullptr ? -1 : shown->ReportNumber());
}

void DeskWindow::closeEvent(QCloseEvent* event) {
  Remember();
  event->accept();
}

}  // namespace vorek::desk
