// Catches a dialog for Access files that doesn't show the fields of the file which the user chose,
// or whose rows don't reach it.
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include "desk_fixture.h"
#include "engine/export_events.h"

namespace vorek::qt {
namespace {

class AccessTest : public DeskTest {
 protected:
  AccessTest() {
    EXPECT_TRUE(QFile::copy("samples/invoices.mdb", path));
    desk->OpenReport(247);
    QTest::qWait(20);
  }
  // Answers the system's dialog for files once it stands in front.
  static void Choose(const QString& file) {
    When([] { return qobject_cast<QFileDialog*>(ModalWindow()); },
         [file](QFileDialog* dialog) {
           dialog->findChild<QLineEdit*>("fileNameEdit")->setText(file);
           QMetaObject::invokeMethod(dialog, "accept");
         });
  }
  // The modal window with that title in front.
  static auto Titled(const QString& title) {
    return [title]() -> QWidget* {
      QWidget* const window = ModalWindow();
      return window != nullptr && window->windowTitle() == title ? window : nullptr;
    };
  }
  static void Press(QWidget* window, const char* button) {
    QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton);
  }
  QString Count() const {
    QProcess counter;
    counter.start("mdb-count", {path, "Invoices"});
    EXPECT_TRUE(counter.waitForFinished());
    return QString::fromUtf8(counter.readAllStandardOutput()).trimmed();
  }

  QTemporaryDir files;
  QString path = files.filePath("invoices.mdb");
};

TEST_F(AccessTest, TakesTheRowsOfAReport) {
  When(Titled("ذخيره در فايل اکسس"), [this](QWidget* window) {
    Choose(path);
    Press(window, "cmdSave");
    QTest::qWait(20);
    SavePicture(*window, "access");
    EXPECT_TRUE(window->findChild<QLineEdit*>("txtSaveFileName")->text().endsWith("invoices.mdb"));
    EXPECT_EQ(window->findChild<QLineEdit*>("txtSaveFileName")->layoutDirection(), Qt::LeftToRight);
    When(Titled("موفقيت"), [](QWidget* told) { Press(told, "cmdContinue"); });
    Press(window, "cmdOk");
  });
  const int rows = Control().flxMain.Rows() - 1;
  ASSERT_GT(rows, 100);
  mnuSendToAccess_Click(Control());
  EXPECT_EQ(Count(), QString::number(rows));
}

TEST_F(AccessTest, TellsOfAFileThatIsNoneAndIsClosedByEscape) {
  const QString other = files.filePath("other.mdb");
  QFile file(other);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("no file of Access");
  file.close();
  QString told;
  When(Titled("ذخيره در فايل اکسس"), [&](QWidget* window) {
    Choose(other);
    When(Titled("اشکال بازخواني"), [&](QWidget* message) {
      told = message->windowTitle();
      SavePicture(*message, "access-refused");
      Press(message, "cmdContinue");
    });
    Press(window, "cmdSave");
    QTest::keyClick(window, Qt::Key_Escape);
    if (window->isVisible()) Press(window, "cmdCancel");
  });
  mnuSendToAccess_Click(Control());
  EXPECT_EQ(told, "اشکال بازخواني");
  EXPECT_EQ(Count(), "0");
}

}  // namespace
}  // namespace vorek::qt
