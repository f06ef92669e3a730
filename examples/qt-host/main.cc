// A Qt host in a page: shows a report by number in a window.
//   qt-host "Provider=VorekSQLite;Data Source=sample.db" 201 1

#include <vorek/qt.h>
#include <vorek/sqlite.h>
#include <vorek/system.h>

#include <QApplication>
#include <QMainWindow>
#include <QStatusBar>
#include <QTimer>
#include <utility>

namespace {

// What a record is about stands below; a double click doesn't lead away.
void Listen(vorek::VorekReportWidget& report, QMainWindow& window) {
  QObject::connect(&report, &vorek::VorekReportWidget::ViewCelChange, &window, [&] {
    // A condition of SQL runs from the left, also in a bar that runs from the right.
    const QString condition = QString::fromStdString(report.Report().UniqueWC());
    window.statusBar()->showMessage(QChar(0x2066) + condition + QChar(0x2069));
  });
  QObject::connect(&report, &vorek::VorekReportWidget::DblClick, &window,
                   [](bool* cancel) { *cancel = true; });
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 4) {
    qWarning("usage: qt-host CONNECTION REPORT USER");
    return 2;
  }
  vorek::WorldOptions options;
  options.providers = {vorek::SqliteProvider()};
  vorek::AddQtServices(options);
  vorek::AddSystemServices(options);

  QMainWindow window;
  auto* const report = new vorek::VorekReportWidget(std::move(options), &window);
  Listen(*report, window);
  window.setCentralWidget(report);
  window.resize(1000, 600);
  window.show();
  report->SetOleConnectionString(arguments[1]);
  report->SetUserID(arguments[3].toInt());
  QTimer::singleShot(0, report, [&] {
    report->View(arguments[2].toInt());
    window.setWindowTitle(report->Title());
  });
  return QApplication::exec();
}
