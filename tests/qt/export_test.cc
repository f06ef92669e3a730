#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest/QTest>
#include <algorithm>
#include <string>

#include "attachment_dialog.h"
#include "desk_documents.h"
#include "desk_fixture.h"
#include "engine/export_events.h"
#include "export/form_send_to_text_file.h"
#include "export/form_template.h"
#include "vorek/system.h"
#include "vorek/xlsx.h"

namespace vorek::qt {
namespace {

// A picture of a window, for a person, where one is asked for.
void Keep(QWidget* window, const char* name) {
  const QByteArray folder = qgetenv("VOREK_PICTURES");
  if (!folder.isEmpty()) window->grab().save(QString(folder) + "/" + name + ".png");
}

class ExportTest : public testing::Test {
 protected:
  ExportTest() {
    WorldOptions options;
    options.providers = {SqliteProvider()};
    options.spreadsheet = XlsxSpreadsheet();
    options.documents =
        std::make_shared<desk::DeskDocuments>(MachineDocuments(folder.path().toStdString()));
    AddQtServices(options);
    AddSystemServices(options);
    widget = std::make_unique<VorekReportWidget>(std::move(options));
    widget->resize(900, 600);
    widget->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(widget.get()));
    widget->SetUserID(1);
    widget->SetPositionID(1);
    widget->SetOleConnectionString(
        QString::fromStdString("Provider=VorekSQLite;Data Source=" + SampleFile()));
    EXPECT_TRUE(widget->View(201));
  }
  // What is told of a workbook stays open until it is read.
  ~ExportTest() override {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->objectName() == "finishedWorkbook") window->close();
    }
    widget.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  ReportControl& Control() { return widget->Report().Impl(); }
  QStringList Made() const { return QDir(folder.path()).entryList({"*.xlsx"}); }

  QTemporaryDir folder;
  std::unique_ptr<VorekReportWidget> widget;
};

TEST_F(ExportTest, TheTemplateWindowHasTwoTabsAndMakesAWorkbook) {
  When(ModalWindow, [](QWidget* window) {
    EXPECT_EQ(window->windowTitle(), "الگوهاي چاپي");
    QApplication::processEvents();
    Keep(window, "template");
    EXPECT_GT(window->findChild<QTabBar*>()->height(), 15);
    auto* const tabs = window->findChild<QTabBar*>();
    auto* const names = window->findChild<QComboBox*>("cmbExcelTemplate");
    auto* const prints = window->findChild<QComboBox*>("cmbCrystalReport");
    EXPECT_EQ(names->currentText(), "فهرست با جمع و نمودار");
    EXPECT_TRUE(names->isVisible());
    EXPECT_FALSE(prints->isVisible());
    tabs->setCurrentIndex(1);
    QApplication::processEvents();
    EXPECT_FALSE(names->isVisible());
    EXPECT_TRUE(prints->isVisible());
    EXPECT_TRUE(prints->isEnabled());
    tabs->setCurrentIndex(0);
    QApplication::processEvents();
    names->setFocus();
    QTest::keyClick(names, Qt::Key_Delete);
    EXPECT_EQ(names->currentIndex(), -1);
    QTest::keyClick(names, Qt::Key_Return);
  });
  mnuSendToOfficeExcel_Click(Control());
  QPointer<QMessageBox> box;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->objectName() == "finishedWorkbook") box = qobject_cast<QMessageBox*>(window);
  }
  ASSERT_NE(box, nullptr);
  Keep(box, "finished");
  ASSERT_EQ(Made().size(), 1);
  EXPECT_TRUE(box->informativeText().contains(Made().front()));
  EXPECT_TRUE(Made().front().startsWith("فهرست فاكتورهاي فروش 14"));
  QTest::keyClick(box, Qt::Key_Escape);
  QTest::qWait(1);
  EXPECT_EQ(box, nullptr);
}

TEST_F(ExportTest, TheTextFileWindowTakesItsOptions) {
  When(ModalWindow, [](QWidget* window) {
    EXPECT_EQ(window->windowTitle(), "تهيه فايل متني از روي گزارش");
    Keep(window, "text-file");
    QTest::mouseClick(window->findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
  });
  mnuSendToTextFile_Click(Control());
}

TEST_F(ExportTest, TheQuickWayLeavesTextAndATableOnTheClipboard) {
  mnuSendToOfficeExcellFast_Click(Control());
  const QMimeData* const data = QApplication::clipboard()->mimeData();
  EXPECT_TRUE(data->text().startsWith("رديف\tمشخصه\tشماره فاكتور"));
  EXPECT_TRUE(data->text().contains("589/352/000"));
  EXPECT_TRUE(data->html().contains("<table dir=\"rtl\">"));
  EXPECT_EQ(Made().size(), 1);
}

TEST_F(ExportTest, AttachmentsAreAddedSavedAndDeleted) {
  const auto connection =
      SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=" + SampleFile());
  desk::AttachmentDialog dialog(*connection, 2302, 7001, widget.get());
  dialog.show();
  auto* const list = dialog.findChild<QTableWidget*>();
  EXPECT_EQ(list->rowCount(), 0);
  const QString path = folder.filePath("it's a template.xlsx");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const QByteArray bytes("PK\0\xFF template", 13);
  file.write(bytes);
  file.close();
  EXPECT_TRUE(dialog.Add(path));
  EXPECT_TRUE(dialog.Add(path));
  ASSERT_EQ(list->rowCount(), 2);
  EXPECT_EQ(list->item(1, 0)->text(), "2");
  EXPECT_EQ(list->item(1, 2)->text(), "it's a template.xlsx");
  EXPECT_EQ(list->item(1, 3)->text(), "xls");
  list->setCurrentCell(1, 0);
  Keep(&dialog, "attachments");
  const QString saved = folder.filePath("saved.bin");
  EXPECT_TRUE(dialog.SaveAs(saved));
  QFile back(saved);
  ASSERT_TRUE(back.open(QIODevice::ReadOnly));
  EXPECT_EQ(back.readAll(), bytes);
  list->setCurrentCell(0, 0);
  dialog.DeleteChosen();
  ASSERT_EQ(list->rowCount(), 1);
  EXPECT_EQ(list->item(0, 0)->text(), "2");
  list->setCurrentCell(0, 0);
  dialog.DeleteChosen();
  EXPECT_EQ(list->rowCount(), 0);
}

}  // namespace
}  // namespace vorek::qt
