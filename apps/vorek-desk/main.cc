#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QPixmap>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include "connect_dialog.h"
#include "desk_window.h"
#include "theme.h"

namespace vorek::desk {
namespace {

void AddOptions(QCommandLineParser& parser) {
  parser.setApplicationDescription("Shows the reports of a database in windows.");
  parser.addHelpOption();
  parser.addOptions({
      {"db", "Connection string, or the file of an embedded database.", "db"},
      {"user", "Number of the user.", "number", "-1"},
      {"position", "The user's position.", "number", "-1"},
      {"employee", "The user's employee number.", "number", "-1"},
      {"period", "The accounting period.", "number", "-1"},
      {"report", "Opens the report; may be given more than once.", "number"},
      {"theme", "light or dark; the system's own if not given.", "theme"},
      {"render", "Writes a picture of the window to the file and ends.", "file"},
  });
}

Login LoginFrom(const QCommandLineParser& parser) {
  return {parser.value("db"), parser.value("user").toInt(), parser.value("position").toInt(),
          parser.value("employee").toInt(), parser.value("period").toInt()};
}

void OpenReports(DeskWindow& window, const QStringList& reports) {
  if (reports.isEmpty()) window.ReopenTabs();
  for (const QString& report : reports) window.OpenReport(report.toInt());
}

// The picture is taken when everything has come to rest.
int Render(QApplication& app, DeskWindow& window, const QString& file) {
  constexpr int kRest = 300;  // milliseconds
  bool written = false;
  QTimer::singleShot(kRest, &window, [&] {
    written = window.grab().save(file);
    QApplication::exit(0);
  });
  app.exec();
  if (!written) QTextStream(stderr) << "vorek-desk: " << file << " can't be written\n";
  return written ? 0 : 1;
}

int Main(QApplication& app) {
  QCommandLineParser parser;
  AddOptions(parser);
  parser.process(app);
  ApplyTheme(parser.value("theme"));
  const bool render = parser.isSet("render");
  // A picture leaves the user's settings alone.
  const QTemporaryDir nowhere;
  QSettings settings(
      render ? nowhere.filePath("desk.ini") : QSettings("vorek", "vorek-desk").fileName(),
      QSettings::IniFormat);
  DeskWindow window(settings);
  window.show();
  if (!parser.isSet("db")) {
    window.AskForConnection();
  } else if (window.Connect(LoginFrom(parser))) {
    OpenReports(window, parser.values("report"));
  } else {
    return 1;
  }
  return render ? Render(app, window, parser.value("render")) : QApplication::exec();
}

}  // namespace
}  // namespace vorek::desk

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("vorek-desk");
  QApplication::setLayoutDirection(Qt::RightToLeft);
  return vorek::desk::Main(app);
}
