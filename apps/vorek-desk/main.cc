#include <QApplication>
#include <QCommandLineParser>
#include <QPainter>
#include <QPixmap>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include "adapters/qt/translations.h"
#include "adapters/system/database_option.h"
#include "connect_dialog.h"
#include "desk_style.h"
#include "desk_window.h"
#include "report_tab.h"
#include "settings_file.h"
#include "vorek/version.h"

namespace vorek::desk {
namespace {

void AddOptions(QCommandLineParser& parser) {
  parser.setApplicationDescription("Shows the reports of a database in windows.");
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addOptions({
      {"db", "Connection string, or the file of an embedded database.", "db"},
      {"password-file", "File whose first line is the password; else $VOREK_PASSWORD.", "file"},
      {"user", "Number of the user.", "number", "-1"},
      {"position", "The user's position.", "number", "-1"},
      {"employee", "The user's employee number.", "number", "-1"},
      {"period", "The accounting period.", "number", "-1"},
      {"report", "Opens the report; may be given more than once.", "number"},
      {"forms", "Folder with the libraries of forms that rows lead to.", "folder"},
      {"theme", "light or dark; after the system's colours if not given.", "theme"},
      {"size", "The window's size in pixels, as 1280x800.", "size"},
      {"render", "Writes a picture of the window to the file and ends.", "file"},
  });
}

Login LoginFrom(const QCommandLineParser& parser) {
  return {parser.value("db"),
          parser.value("user").toInt(),
          parser.value("position").toInt(),
          parser.value("employee").toInt(),
          parser.value("period").toInt(),
          QString::fromStdString(PasswordGiven(parser.value("password-file").toStdString()))};
}

void OpenReports(DeskWindow& window, const QStringList& reports) {
  if (reports.isEmpty()) window.ReopenTabs();
  for (const QString& report : reports) window.OpenReport(report.toInt());
}

// The window with the form that stands before it, if there is one.
QPixmap Picture(DeskWindow& window) {
  QPixmap picture = window.grab();
  QWidget* const modal = QApplication::activeModalWidget();
  if (modal == nullptr) return picture;
  QPainter painter(&picture);
  const QRect place(modal->pos() - window.pos(), modal->size());
  painter.fillRect(place.adjusted(-2, -2, 2, 2), Qt::darkGray);
  painter.drawPixmap(place.topLeft(), modal->grab());
  return picture;
}

// Nothing is left to come: a form waits for its user, or the report on show has run.
bool IsAtRest(const DeskWindow& window, bool opened) {
  if (QApplication::activeModalWidget() != nullptr) return true;
  const ReportTab* const tab = window.CurrentTab();
  return opened && (tab == nullptr || !tab->Running());
}

// Takes the picture when the window was at rest twice, and ends the program, also out of a form.
void RenderLater(DeskWindow& window, const QString& file, const bool& opened, int rests = 0) {
  constexpr int kWait = 300;  // milliseconds
  QTimer::singleShot(kWait, &window, [&window, file, &opened, rests] {
    const int now = IsAtRest(window, opened) ? rests + 1 : 0;
    if (now < 2) return RenderLater(window, file, opened, now);
    const bool written = Picture(window).save(file);
    if (!written) QTextStream(stderr) << "vorek-desk: " << file << " can't be written\n";
    QApplication::exit(written ? 0 : 1);
  });
}

// A wrong value ends the program: a window would only look as if it had been taken.
void CheckOptions(const QCommandLineParser& parser) {
  static const QRegularExpression kSize("^[1-9][0-9]{1,4}x[1-9][0-9]{1,4}$");
  static const QRegularExpression kNumber("^-?[0-9]{1,9}$");
  const auto check = [](const QString& name, const QStringList& values,
                        const QRegularExpression& form) {
    for (const QString& value : values) {
      if (form.match(value).hasMatch()) continue;
      throw Error(ErrorNumber::kInvalidCall, ("--" + name + " can't be " + value).toStdString());
    }
  };
  check("theme", parser.values("theme"), QRegularExpression("^(light|dark)$"));
  check("size", parser.values("size"), kSize);
  for (const char* const name : {"user", "position", "employee", "period", "report"}) {
    check(name, parser.values(name), kNumber);
  }
}

void TakeSize(DeskWindow& window, const QString& size) {
  if (size.isEmpty()) return;
  window.resize(size.section('x', 0, 0).toInt(), size.section('x', 1, 1).toInt());
}

int Main(const QApplication& app) {
  QCommandLineParser parser;
  AddOptions(parser);
  parser.process(app);
  CheckOptions(parser);
  const Login login = LoginFrom(parser);
  ApplyTheme(parser.value("theme"));
  vorek::qt::InstallPersianTexts();
  const bool render = parser.isSet("render");
  // A picture leaves the user's settings alone.
  const QTemporaryDir nowhere;
  QSettings settings(PrivateFile(render ? nowhere.filePath("desk.ini")
                                        : QSettings("vorek", "vorek-desk").fileName()),
                     QSettings::IniFormat);
  DeskWindow window(settings, parser.value("forms"));
  TakeSize(window, parser.value("size"));
  window.show();
  bool opened = false;
  if (render) RenderLater(window, parser.value("render"), opened);
  // Out of the event loop, so that ending the program ends a form too.
  QTimer::singleShot(0, &window, [&] {
    if (!parser.isSet("db")) {
      window.AskForConnection();
    } else if (window.Connect(login)) {
      OpenReports(window, parser.values("report"));
    } else {
      QApplication::exit(1);
    }
    opened = true;
  });
  return QApplication::exec();
}

}  // namespace
}  // namespace vorek::desk

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("vorek-desk");
  QApplication::setApplicationVersion(VOREK_VERSION_TEXT);
  QApplication::setLayoutDirection(Qt::RightToLeft);
  try {
    return vorek::desk::Main(app);
  } catch (const vorek::Error& error) {
    QTextStream(stderr) << "vorek-desk: " << QString::fromStdString(error.Description()) << '\n';
    return 1;
  }
}
