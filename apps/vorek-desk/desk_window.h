#ifndef VOREK_APPS_VOREK_DESK_DESK_WINDOW_H_
#define VOREK_APPS_VOREK_DESK_DESK_WINDOW_H_

#include <QMainWindow>
#include <memory>

#include "catalogue_panel.h"
#include "session.h"

class QAction;
class QLabel;
class QMenu;
class QSettings;
class QSplitter;
class QStackedWidget;
class QTabWidget;

namespace vorek::desk {

class DeskToolbar;
class KeptReports;
class ReportTab;
class RunMarks;
class StartPage;

// The window: the toolbar above, the catalogue on the right, reports in tabs, the day below.
class DeskWindow : public QMainWindow {
 public:
  // The settings must outlive the window. The folder holds the libraries of forms, "" for none.
  explicit DeskWindow(QSettings& settings, QString forms_folder = {});
  ~DeskWindow() override;

  // Connects and shows the catalogue; a failure is told, and false returned.
  bool Connect(const Login& login);
  // Asks for a database and a user, until a connection stands or the user gives up.
  void AskForConnection();
  // Brings the tabs back that were open when the window was last closed on this database. Only the
  // one on show runs its report, another when it is first shown.
  void ReopenTabs();
  // Shows a report in a tab of its own, or the tab that shows it already. Null for a report that
  // can't be loaded, which the user has been told.
  ReportTab* OpenReport(std::int32_t report);
  // Shows it in another tab, beside those that show it already.
  ReportTab* OpenAgain(std::int32_t report);
  // Opens the report in a window of its own, on the same database; it runs when events are handled
  // again.
  DeskWindow* OpenBeside(std::int32_t report);
  ReportTab* CurrentTab() const;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void MakeProgramMenu();
  void MakeReportEntries();
  void MakeViewEntries();
  void AddDensity(QMenu& menu, const QString& text, int padding);
  QAction* AddEntry(const QString& text, const QKeySequence& key);
  void MakeStatusBar();
  void ConnectParts();
  KeptReports Kept();
  void ShowKept();
  void TabChanged();
  void OfferActions();
  void TellTitle();
  QString TitleOfReport(std::int32_t report) const;
  ReportTab* TabAt(int index) const;
  ReportTab* AddTab(std::int32_t report);
  void ConnectTab(ReportTab& tab);
  void ShowTab();
  void StartShownTab();
  void Later(const std::function<void()>& work);
  void CloseTab(int index);
  void TellLine(const QString& text);
  void CloseAllTabs();
  void Remember();
  QString TabsKey() const;

  QSettings& settings_;
  QString forms_folder_;
  std::unique_ptr<Session> session_;
  DeskToolbar* toolbar_;
  QSplitter* splitter_;
  CataloguePanel* catalogue_;
  QStackedWidget* sheets_;  // the start page, or the tabs
  StartPage* start_;
  QTabWidget* tabs_;
  QLabel* day_;
  std::unique_ptr<RunMarks> marks_;
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_DESK_WINDOW_H_
