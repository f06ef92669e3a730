#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>

#include "connect_dialog.h"
#include "desk_fixture.h"

// What the desktop's window does around its reports.
namespace vorek::qt {
namespace {

QString TextOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QFile::ReadOnly));
  return QString::fromUtf8(file.readAll());
}

TEST_F(DeskTest, KeepsNoPasswordInItsSettings) {
  const QString strings[] = {
      "Provider=VorekSQLite;Data Source=%1;Password=\"a;s3cret\"",
      "Provider=VorekSQLite;PWD={s3cret};Data Source=%1",
      "Provider=VorekSQLite;Data Source=%1;Extended Properties='UID=u;PWD=s3cret'"};
  for (const QString& text : strings) {
    desk::Login login = Owner();
    login.db = text.arg(login.db);
    login.password = "s3cret too";
    ASSERT_TRUE(desk->Connect(login)) << text.toStdString();
    desk->OpenReport(101);
    desk->close();
    settings.sync();
    QString kept = TextOf(settings.fileName());
    for (const QString& key : settings.allKeys()) {
      kept += QByteArray::fromBase64(key.section('/', 1).toLatin1(), QByteArray::Base64UrlEncoding);
    }
    EXPECT_FALSE(kept.contains("s3cret")) << kept.toStdString();
    EXPECT_TRUE(kept.contains("sample.db"));
  }
  struct stat file {};
  ASSERT_EQ(::stat(settings.fileName().toLocal8Bit().constData(), &file), 0);
  EXPECT_EQ(file.st_mode & 0777U, 0600U);
}

TEST_F(DeskTest, KeepsTheWidthsThatWereDrawnAndNoOthers) {
  desk->OpenReport(101);
  desk->OpenReport(201);
  const int own = Control().flxMain.ColWidth(3);
  Control().flxMain.ResizeByUser(2, 3333);
  Control().flxMain.ResizeByUser(0, 1234);
  desk->CurrentTab()->setFocus();
  QTest::keyClick(desk->focusWidget(), Qt::Key_F5);
  EXPECT_EQ(Control().flxMain.ColWidth(2), 3333) << "after F5";
  EXPECT_EQ(Control().flxMain.ColWidth(3), own);
  ASSERT_TRUE(desk->CurrentTab()->View());
  EXPECT_EQ(Control().flxMain.ColWidth(2), 3333) << "at the next opening";
  Restart();
  desk->OpenReport(201);
  EXPECT_EQ(Control().flxMain.ColWidth(2), 3333) << "at the next start";
  EXPECT_EQ(Control().flxMain.ColWidth(0), 1234);
  EXPECT_EQ(Control().flxMain.ColWidth(3), own);
  // A control shows another report with that one's own widths.
  EXPECT_TRUE(desk->CurrentTab()->Widget().View(101));
  EXPECT_NE(Control().flxMain.ColWidth(2), 3333);
  desk->close();
  EXPECT_FALSE(settings.contains("widths/101"));
  EXPECT_TRUE(settings.contains("widths/201"));
}

}  // namespace
}  // namespace vorek::qt
