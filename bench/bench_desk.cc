// How long the desktop takes to its window, to the rows of a report and to the figures of a large
// selection, and whether its memory stays flat: bench_desk [REPORTS], 300 without a number.

#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "adapters/qt/grid_area.h"
#include "adapters/system/system_files.h"
#include "desk_style.h"
#include "desk_window.h"
#include "engine/report_control.h"
#include "report_tab.h"
#include "vorek/script.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

std::string MakeSample(const std::string& path) {
  const auto connection =
      SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=" + path + ";Mode=Create");
  std::vector<fs::path> scripts;
  for (const fs::directory_entry& entry : fs::directory_iterator(VOREK_SAMPLES)) {
    if (entry.path().extension() == ".sql") scripts.push_back(entry.path());
  }
  std::sort(scripts.begin(), scripts.end());
  const SystemFiles files;
  for (const fs::path& script : scripts) {
    RunScript(*connection, files.Read(script.string()), {.timeout_seconds = 600, .progress = {}});
  }
  return path;
}

double ResidentMegabytes() {
  std::ifstream pages("/proc/self/statm");
  long all = 0;
  long resident = 0;
  pages >> all >> resident;
  return static_cast<double>(resident * ::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

// Milliseconds since the kernel made the process.
double SinceStart() {
  std::ifstream stat("/proc/self/stat");
  std::string word;
  for (int field = 1; field < 22; ++field) stat >> word;
  double ticks = 0;
  stat >> ticks;
  double up = 0;
  std::ifstream("/proc/uptime") >> up;
  return (up - ticks / static_cast<double>(::sysconf(_SC_CLK_TCK))) * 1000;
}

void Tell(const char* what, double value, const char* unit) {
  std::printf("%-44s %9.1f %s\n", what, value, unit);
  std::fflush(stdout);
}

desk::ReportTab* Open(desk::DeskWindow& desk, int report) {
  desk::ReportTab* const tab = desk.OpenReport(report);
  desk.grab();
  return tab;
}

void CloseTab(desk::DeskWindow& desk) {
  Q_EMIT desk.findChild<QTabWidget*>("reports")->tabCloseRequested(0);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
}

// A million rows with a whole column selected, up to the line that tells its sum.
void MeasureSums(desk::DeskWindow& desk) {
  desk::ReportTab* const tab = desk.OpenReport(101);
  VorekReport1& report = tab->Widget().Report();
  report.SetUseThisQuery(
      "select top 1000000 a.InvoiceID, cast(a.Quantity * 1000 as money) as m, b.Quantity as q "
      "from tblSaleInvoiceDetail a cross join tblSaleInvoiceDetail b");
  QElapsedTimer clock;
  clock.start();
  tab->View();
  Tell("a million rows, run and filled", static_cast<double>(clock.elapsed()), "ms");
  clock.restart();
  desk.grab();
  Tell("their first picture", static_cast<double>(clock.nsecsElapsed()) / 1e6, "ms");
  Grid& grid = report.Impl().flxMain;
  const auto* const figures = tab->findChild<QLabel*>("resultFigures");
  for (int i = 0; i < 50; ++i) QCoreApplication::processEvents();
  for (const int column : {2, 3}) {
    clock.restart();
    grid.SelectByUser(1, column, grid.Rows() - 1, column);
    const QString before = figures->text();
    while (figures->text() == before) QCoreApplication::processEvents();
    Tell(column == 2 ? "sums of a million amounts" : "sums of a million numbers",
         static_cast<double>(clock.nsecsElapsed()) / 1e6, "ms");
  }
  CloseTab(desk);
}

void MeasureMemory(desk::DeskWindow& desk, int reports) {
  constexpr int kKinds[] = {101, 201, 208, 215, 103, 401};
  double first = 0;
  for (int i = 0; i < reports; ++i) {
    Open(desk, kKinds[static_cast<std::size_t>(i) % std::size(kKinds)]);
    CloseTab(desk);
    // The caches of fonts and statements are full by then.
    if (i == reports / 10) first = ResidentMegabytes();
  }
  Tell("memory after a tenth of the reports", first, "MB");
  Tell("memory after all", ResidentMegabytes(), "MB");
}

int Main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setLayoutDirection(Qt::RightToLeft);
  const double before_sample = SinceStart();
  const QTemporaryDir folder;
  const std::string sample = MakeSample(folder.filePath("sample.db").toStdString());
  const double made = SinceStart() - before_sample;
  QElapsedTimer clock;
  desk::ApplyTheme("light");
  QSettings settings(folder.filePath("desk.ini"), QSettings::IniFormat);
  desk::DeskWindow desk(settings);
  desk.show();
  desk.grab();
  Tell("from the start to the window", SinceStart() - made, "ms");
  clock.start();
  if (!desk.Connect({QString::fromStdString(sample), 1, 1, -1, -1})) return 1;
  Tell("connecting", static_cast<double>(clock.nsecsElapsed()) / 1e6, "ms");
  clock.restart();
  Open(desk, 201);
  Tell("to the rows of a report", static_cast<double>(clock.nsecsElapsed()) / 1e6, "ms");
  CloseTab(desk);
  MeasureSums(desk);
  MeasureMemory(desk, argc > 1 ? std::max(std::atoi(argv[1]), 1) : 300);
  return 0;
}

}  // namespace
}  // namespace vorek

int main(int argc, char** argv) { return vorek::Main(argc, argv); }
