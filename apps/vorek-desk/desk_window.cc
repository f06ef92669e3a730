#include "desk_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenu>
#include <QSettings>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextStream>
#include <QTimer>

#include "adapters/qt/qt_windows.h"
#include "connect_dialog.h"
#include "desk_style.h"
#include "desk_toolbar.h"
#include "kept_reports.h"
#include "key_sheet.h"
#include "report_tab.h"
#include "run_marks.h"
#include "start_page.h"

namespace vorek::desk {
namespace {

constexpr int kEveryMinute = 60'000;

}  // namespace

DeskWindow::DeskWindow(QSettings& settings, QString forms_folder)
    : settings_(settings),
      forms_folder_(std::move(forms_folder)),
      toolbar_(new DeskToolbar(this)),
      splitter_(new QSplitter(this)),
      catalogue_(new CataloguePanel(splitter_)),
      sheets_(new QStackedWidget(splitter_)),
      start_(new StartPage(sheets_)),
      tabs_(new QTabWidget(sheets_)) {
  setLayoutDirection(Qt::RightToLeft);
  setMenuWidget(toolbar_);
  tabs_->setObjectName("reports");
  tabs_->setTabsClosable(true);
  tabs_->setMovable(true);
  tabs_->setDocumentMode(true);
  sheets_->addWidget(start_);
  sheets_->addWidget(tabs_);
  splitter_->setHandleWidth(1);
  splitter_->setStretchFactor(0, 0);
  splitter_->setStretchFactor(1, 1);
  splitter_->setSizes({280, 920});
  setCentralWidget(splitter_);
  MakeProgramMenu();
  MakeStatusBar();
  ConnectParts();
  TabChanged();
  resize(1280, 800);
  restoreGeometry(settings_.value("window/geometry").toByteArray());
  splitter_->restoreState(settings_.value("window/splitter").toByteArray());
}

void DeskWindow::ConnectParts() {
  connect(tabs_, &QTabWidget::tabCloseRequested, this, [this](int index) { CloseTab(index); });
  connect(tabs_, &QTabWidget::currentChanged, this, [this] { ShowTab(); });
  catalogue_->on_open = [this](std::int32_t report) {
    Later([this, report] { OpenReport(report); });
  };
  start_->on_open = catalogue_->on_open;
  catalogue_->on_star = [this](std::int32_t report) {
    Kept().TurnFavourite(report);
    ShowKept();
  };
  toolbar_->on_action = [this](ReportAction action) {
    if (CurrentTab() != nullptr) CurrentTab()->Do(action);
  };
}

// Not in the midst of a list's or a bar's own event: a run may wait there, and the user change
// meanwhile what the event is about.
void DeskWindow::Later(const std::function<void()>& work) {
  QMetaObject::invokeMethod(this, work, Qt::QueuedConnection);
}

DeskWindow::~DeskWindow() {
  const QSignalBlocker quiet(tabs_);
  while (tabs_->count() > 0) delete tabs_->widget(0);
}

QAction* DeskWindow::AddEntry(const QString& text, const QKeySequence& key) {
  QAction* const action = toolbar_->ProgramMenu().addAction(text);
  action->setShortcut(key);
  addAction(action);
  return action;
}

void DeskWindow::MakeProgramMenu() {
  connect(AddEntry("اتصال به پايگاه داده...", Qt::CTRL | Qt::Key_O), &QAction::triggered, this,
          [this] { AskForConnection(); });
  connect(AddEntry("جستجوي گزارش", Qt::CTRL | Qt::Key_L), &QAction::triggered, catalogue_,
          [this] { catalogue_->FocusSearch(); });
  MakeReportEntries();
  MakeViewEntries();
  toolbar_->ProgramMenu().addSeparator();
  connect(AddEntry("خروج", Qt::CTRL | Qt::Key_Q), &QAction::triggered, this, [this] { close(); });
}

void DeskWindow::MakeReportEntries() {
  connect(AddEntry("همين گزارش در زبانه ديگر", Qt::CTRL | Qt::Key_N), &QAction::triggered, this,
          [this] {
            if (CurrentTab() == nullptr) return;
            Later([this, report = CurrentTab()->ReportNumber()] { OpenAgain(report); });
          });
  connect(AddEntry("همين گزارش در پنجره ديگر", Qt::CTRL | Qt::SHIFT | Qt::Key_N),
          &QAction::triggered, this, [this] {
            if (CurrentTab() != nullptr) OpenBeside(CurrentTab()->ReportNumber());
          });
  connect(AddEntry("گزارشي كه آماده شد", Qt::CTRL | Qt::Key_J), &QAction::triggered, this,
          [this] { marks_->Follow(); });
  connect(AddEntry("بستن گزارش", Qt::CTRL | Qt::Key_W), &QAction::triggered, this,
          [this] { CloseTab(tabs_->currentIndex()); });
}

void DeskWindow::MakeViewEntries() {
  QMenu& menu = toolbar_->ProgramMenu();
  menu.addSeparator();
  QMenu* const density = menu.addMenu("فاصله سطرها");
  AddDensity(*density, "فشرده", 2);
  AddDensity(*density, "معمولي", ReportTab::kUsualPadding);
  AddDensity(*density, "باز", 12);
  connect(menu.addAction("رنگ روشن"), &QAction::triggered, this, [] { ApplyTheme("light"); });
  connect(menu.addAction("رنگ تيره"), &QAction::triggered, this, [] { ApplyTheme("dark"); });
  connect(AddEntry("كليدها", Qt::Key_F1), &QAction::triggered, this,
          [this] { KeySheet(this).exec(); });
}

void DeskWindow::AddDensity(QMenu& menu, const QString& text, int padding) {
  connect(menu.addAction(text), &QAction::triggered, this, [this, padding] {
    settings_.setValue("view/padding", padding);
    for (int i = 0; i < tabs_->count(); ++i) TabAt(i)->SetRowPadding(padding);
  });
}

void DeskWindow::MakeStatusBar() {
  constexpr int kLongRun = 10'000;  // milliseconds
  marks_ = std::make_unique<RunMarks>(*tabs_, *statusBar(),
                                      settings_.value("run/long", kLongRun).toLongLong());
  day_ = new QLabel(TodayInPersian(), this);
  day_->setObjectName("day");
  day_->setContentsMargins(8, 0, 8, 0);
  statusBar()->setSizeGripEnabled(false);
  statusBar()->addPermanentWidget(day_);
  auto* const clock = new QTimer(this);
  connect(clock, &QTimer::timeout, day_, [this] { day_->setText(TodayInPersian()); });
  clock->start(kEveryMinute);
}

KeptReports DeskWindow::Kept() { return {settings_, RecentList::KeyOf(KeptName(session_->Who()))}; }

void DeskWindow::ShowKept() {
  const auto links = [this](const QList<int>& reports) {
    QList<StartPage::Link> shown;
    for (const int report : reports) {
      if (const QString title = session_->TitleOf(report); !title.isEmpty()) {
        shown.append({report, title});
      }
    }
    return shown;
  };
  catalogue_->ShowFavourites(Kept().Favourites());
  start_->Show(links(Kept().Recent()), links(Kept().Favourites()));
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
  catalogue_->Show(session_->Catalogue(), session_->Groups());
  ShowKept();
  toolbar_->TellWho(session_->InWords());
  TabChanged();
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
  ConnectTab(*tab);
  tabs_->addTab(tab, TitleOfReport(report));
  return tab;
}

void DeskWindow::ConnectTab(ReportTab& tab) {
  const QString title = TitleOfReport(tab.ReportNumber());
  const auto offer = [this, &tab] {
    if (&tab == CurrentTab()) OfferActions();
  };
  tab.on_come_to_front = [this, &tab] { tabs_->setCurrentWidget(&tab); };
  tab.on_result = offer;
  tab.on_run = [this, &tab, title, offer](const QString& words, const QString& time) {
    marks_->GoesOn(tab, title, words, time);
    offer();
  };
  tab.on_run_ended = [this, &tab, title, offer](qint64 milliseconds) {
    marks_->Ended(tab, title, milliseconds);
    offer();
  };
}

// The sheet, the toolbar and the title are the shown report's.
void DeskWindow::TabChanged() {
  sheets_->setCurrentWidget(tabs_->count() > 0 ? static_cast<QWidget*>(tabs_) : start_);
  OfferActions();
  TellTitle();
  if (CurrentTab() != nullptr) catalogue_->ShowOpen(CurrentTab()->ReportNumber());
}

void DeskWindow::OfferActions() {
  ReportTab* const tab = CurrentTab();
  toolbar_->Offer([tab](ReportAction action) { return tab != nullptr && tab->Offers(action); });
  toolbar_->ShowRunning(tab != nullptr && tab->Running());
  toolbar_->Recommend(ReportAction::kChart, tab != nullptr && tab->WantsChart());
}

void DeskWindow::TellTitle() {
  QStringList parts;
  if (CurrentTab() != nullptr) parts << TitleOfReport(CurrentTab()->ReportNumber());
  if (session_ != nullptr) parts << session_->InWords();
  if (parts.isEmpty()) parts << "گزارشها";
  setWindowTitle(parts.join(" - "));
}

QString DeskWindow::TitleOfReport(std::int32_t report) const {
  const QString title = session_->TitleOf(report);
  return title.isEmpty() ? QString::number(report) : title;
}

void DeskWindow::ShowTab() {
  TabChanged();
  marks_->Shown();
  Later([this] { StartShownTab(); });
}

// A restored tab whose report the user may not see any more goes again.
void DeskWindow::StartShownTab() {
  ReportTab* const tab = CurrentTab();
  TabChanged();
  if (tab == nullptr || tab->Running() || tab->InView()) return;
  tab->Start();
  TabChanged();
  if (tabs_->indexOf(tab) < 0 || tab->Loaded()) return;
  Later([this, tab] { CloseTab(tabs_->indexOf(tab)); });
}

ReportTab* DeskWindow::OpenReport(std::int32_t report) {
  for (int i = 0; i < tabs_->count(); ++i) {
    if (TabAt(i)->ReportNumber() != report) continue;
    tabs_->setCurrentIndex(i);
    return TabAt(i);
  }
  return OpenAgain(report);
}

ReportTab* DeskWindow::OpenAgain(std::int32_t report) {
  ReportTab* const tab = AddTab(report);
  {
    const QSignalBlocker quiet(tabs_);
    tabs_->setCurrentWidget(tab);
  }
  sheets_->setCurrentWidget(tabs_);
  TabChanged();
  tab->Start();
  // It may have been closed while it ran.
  if (tabs_->indexOf(tab) < 0) return nullptr;
  if (!tab->Loaded()) {
    CloseTab(tabs_->indexOf(tab));
    return nullptr;
  }
  Kept().NoteOpened(report);
  ShowKept();
  TabChanged();
  return tab;
}

DeskWindow* DeskWindow::OpenBeside(std::int32_t report) {
  auto* const window = new DeskWindow(settings_, forms_folder_);
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->show();
  if (!window->Connect(session_->Who())) {
    window->close();
    return nullptr;
  }
  window->Later([window, report] { window->OpenReport(report); });
  return window;
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
  tab->setParent(this);
  tab->Close();
  if (tabs_->count() == 0) TabChanged();
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
