#include "adapters/qt/qt_file_dialogs.h"

#include <QApplication>
#include <QFileDialog>

#include "adapters/qt/control_view.h"

namespace vorek::qt {
namespace {

// "Texts|*.txt;*.csv|All|*.*" as Qt writes it: "Texts (*.txt *.csv)", "All (*)".
QStringList NameFilters(const std::string& filter) {
  const QStringList parts = ToQt(filter).split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString patterns = parts[i + 1];
    patterns.replace("*.*", "*").replace(';', ' ');
    filters << parts[i] + " (" + patterns + ")";
  }
  return filters;
}

bool Ask(BusyScreen& screen, FileDialogRequest& request, QFileDialog::AcceptMode mode,
         QFileDialog::FileMode file) {
  screen.ComeToFront();
  const BusyScreen::Asking asking(screen);
  QFileDialog dialog(QApplication::activeWindow(), ToQt(request.title));
  dialog.setLayoutDirection(Qt::RightToLeft);
  // Paths run from the left; a desktop's own dialog has its own fields.
  for (const char* const name : {"lookInCombo", "fileNameEdit"}) {
    auto* const field = dialog.findChild<QWidget*>(name);
    if (field != nullptr) field->setLayoutDirection(Qt::LeftToRight);
  }
  dialog.setAcceptMode(mode);
  dialog.setFileMode(file);
  dialog.setNameFilters(NameFilters(request.filter));
  dialog.setDefaultSuffix(ToQt(request.default_extension));
  if (!request.file_name.empty()) dialog.selectFile(ToQt(request.file_name));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
  request.file_name = dialog.selectedFiles().front().toStdString();
  return true;
}

}  // namespace

bool QtFileDialogs::Save(FileDialogRequest& request) {
  return Ask(*screen_, request, QFileDialog::AcceptSave, QFileDialog::AnyFile);
}

bool QtFileDialogs::Open(FileDialogRequest& request) {
  return Ask(*screen_, request, QFileDialog::AcceptOpen, QFileDialog::ExistingFile);
}

}  // namespace vorek::qt
