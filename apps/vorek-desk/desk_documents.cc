#include "desk_documents.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

namespace vorek::desk {

void DeskDocuments::Show(const std::string& path) {
  const QFileInfo file(QString::fromStdString(path));
  auto* const box = new QMessageBox(QApplication::activeWindow());
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setObjectName("finishedWorkbook");
  box->setIcon(QMessageBox::Information);
  box->setLayoutDirection(Qt::RightToLeft);
  box->setWindowTitle("فايل اكسل");
  box->setTextFormat(Qt::PlainText);
  box->setText("فايل اكسل ساخته شد:");
  box->setInformativeText(QChar(0x2066) + file.absoluteFilePath() + QChar(0x2069));
  QPushButton* const open = box->addButton("باز كردن فايل", QMessageBox::ActionRole);
  QPushButton* const folder = box->addButton("باز كردن پوشه", QMessageBox::ActionRole);
  // Without one of its own neither Escape nor the close box would close it.
  box->setEscapeButton(box->addButton("تاييد", QMessageBox::AcceptRole));
  QObject::connect(box, &QMessageBox::buttonClicked, [=](QAbstractButton* button) {
    if (button == open) QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
    if (button == folder) QDesktopServices::openUrl(QUrl::fromLocalFile(file.absolutePath()));
  });
  box->open();
}

}  // namespace vorek::desk
