// Opens a form of a folder as a host does, so that its author can try it alone:
//   try-form FOLDER PROGID KEY CONNECTION [--titles]
// With --titles the titles of its windows are printed, and the program ends.

#include <vorek/components.h>
#include <vorek/error.h>

#include <QApplication>
#include <QTextStream>
#include <QWidget>

namespace {

void PrintTitles() {
  QTextStream out(stdout);
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible()) out << window->windowTitle() << '\n';
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 5) {
    qWarning("usage: try-form FOLDER PROGID KEY CONNECTION [--titles]");
    return 2;
  }
  const auto components = vorek::ComponentsInFolder(arguments[1].toStdString());
  try {
    const auto form = components->Create(arguments[2].toStdString(), -1);
    form->Set("UserID", 1);
    form->Set("PositionID", 1);
    form->Set("EmployeeID", 1);
    form->Set("OleConnectionString", arguments[4].toStdString());
    form->Call("View", {arguments[3].toStdString()});
  } catch (const vorek::Error& error) {
    QTextStream(stderr) << QString::fromStdString(error.Description()) << '\n';
    return 1;
  }
  if (!arguments.contains("--titles")) return QApplication::exec();
  PrintTitles();
  return 0;
}
