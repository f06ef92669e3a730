#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
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
  // One that an earlier program left open to all.
  const QString old = folder.filePath("old.ini");
  ASSERT_TRUE(QFile::copy(settings.fileName(), old));
  ASSERT_EQ(::chmod(old.toLocal8Bit().constData(), 0644), 0);
  desk::PrivateFile(old);
  ASSERT_EQ(::stat(old.toLocal8Bit().constData(), &file), 0);
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
  EXPECT_FALSE(settings.contains("widths/1/101"));
  EXPECT_TRUE(settings.contains("widths/1/201"));
}

TEST_F(DeskTest, RunsARestoredTabWhenItIsShown) {
  for (const int report : {101, 201, 215}) desk->OpenReport(report);
  desk->OpenReport(201);
  Restart();
  auto* const tabs = desk->findChild<QTabWidget*>();
  ASSERT_EQ(tabs->count(), 3);
  const auto rows = [&](int index) {
    auto* const tab = static_cast<desk::ReportTab*>(tabs->widget(index));
    return tab->Widget().Report().QueryRecordCount();
  };
  EXPECT_EQ(desk->CurrentTab()->ReportNumber(), 201);
  EXPECT_GT(rows(1), 0);
  EXPECT_EQ(rows(0), -1);
  EXPECT_EQ(rows(2), -1);
  tabs->setCurrentIndex(2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return rows(2) > 0; }));
  // Another connection in between keeps them as well.
  ASSERT_TRUE(desk->Connect(Owner()));
  EXPECT_EQ(tabs->count(), 0);
  desk->ReopenTabs();
  EXPECT_EQ(tabs->count(), 3);
  // Never shown, it is still there at the next start.
  Restart();
  EXPECT_EQ(desk->findChild<QTabWidget*>()->count(), 3);
}

TEST_F(DeskTest, ForgetsReportsThatFailedAndClosesThoseThatAreDenied) {
  When(ModalWindow, [](QWidget* window) { window->close(); });
  ASSERT_NE(desk->OpenReport(903), nullptr) << "one that fails stays, to be run again";
  desk->OpenReport(101);
  Restart();
  auto* tabs = desk->findChild<QTabWidget*>();
  ASSERT_EQ(tabs->count(), 1);
  EXPECT_EQ(desk->CurrentTab()->ReportNumber(), 101);

  desk::Login clerk = Owner();
  clerk.user = 3;
  ASSERT_TRUE(desk->Connect(clerk));
  When(ModalWindow, [tabs](QWidget* window) {
    EXPECT_EQ(window->windowTitle(), "خطا");
    // What waited for the tab on show comes while the message stands, and leaves the tab alone.
    Q_EMIT tabs->currentChanged(0);
    QCoreApplication::processEvents();
    EXPECT_EQ(tabs->count(), 1);
    window->close();
  });
  EXPECT_EQ(desk->OpenReport(402), nullptr);
  EXPECT_EQ(tabs->count(), 0);
}

TEST_F(DeskTest, KeepsFilesByTheirAbsolutePaths) {
  const QString sample = QString::fromStdString(SampleFile());
  desk::Login login = Owner();
  login.db = QDir::current().relativeFilePath(sample);
  ASSERT_FALSE(login.db.startsWith('/'));
  ASSERT_TRUE(desk->Connect(login));
  EXPECT_EQ(desk::RecentList(settings).All(), QStringList{QFileInfo(sample).absoluteFilePath()});
  login.db = "Provider=VorekSQLite;Data Source=" + login.db;
  ASSERT_TRUE(desk->Connect(login));
  EXPECT_TRUE(desk::RecentList(settings).All().front().contains("Data Source=" + sample));
}

// By what the user wrote, and by what is kept of it for the next start.
TEST_F(DeskTest, OpensAFileOfAnyName) {
  for (const char* const name :
       {"a;b.db", "it's.db", "x={y};z.db", "Password=1;.db", "فروش ۱.db"}) {
    desk::Login login = Owner();
    login.db = folder.filePath(name);
    ASSERT_TRUE(QFile::copy(QString::fromStdString(SampleFile()), login.db));
    ASSERT_TRUE(desk->Connect(login)) << name;
    login.db = desk::RecentList(settings).All().front();
    ASSERT_TRUE(desk->Connect(login)) << name;
    EXPECT_NE(desk->OpenReport(201), nullptr) << name;
  }
}

TEST_F(DeskTest, SearchesAnewAndSaysWhenNothingIsFound) {
  auto* const search = desk->findChild<QLineEdit*>("search");
  const auto* const nothing = desk->findChild<QLabel*>("nothingFound");
  search->setFocus();
  TypeText(search, "zzz");
  EXPECT_TRUE(nothing->isVisible());
  EXPECT_TRUE(nothing->text().contains("zzz"));
  desk->OpenReport(101);
  QTest::keyClick(desk->focusWidget(), Qt::Key_L, Qt::ControlModifier);
  EXPECT_TRUE(search->hasFocus());
  TypeText(search, "فاكتور");
  EXPECT_EQ(search->text(), "فاكتور");
  QTest::keyClick(search, Qt::Key_L, Qt::ControlModifier);
  TypeText(search, "كالا");
  EXPECT_EQ(search->text(), "كالا");
  EXPECT_FALSE(nothing->isVisible());
}

// Kilobytes of the program in memory.
long Resident() {
  const QString status = TextOf("/proc/self/status");
  return status.section("VmRSS:", 1).simplified().section(' ', 0, 0).toLong();
}

TEST_F(DeskTest, GivesTheMemoryOfABigReportBack) {
  desk->OpenReport(215);
  const long before = Resident();
  desk->CurrentTab()->Widget().Report().SetUseThisQuery(
      "with n(i) as (select 1 union all select i + 1 from n where i < 800000) "
      "select i, N'شرح ' + cast(i as nvarchar(20)) as t, i * 1000 as a from n");
  ASSERT_TRUE(desk->CurrentTab()->View());
  const long big = Resident();
  ASSERT_GT(big - before, 20'000);
  const QPointer<QWidget> tab = desk->CurrentTab();
  QTest::keyClick(desk->focusWidget(), Qt::Key_W, Qt::ControlModifier);
  ASSERT_TRUE(QTest::qWaitFor([&] { return tab.isNull(); }, 2000));
  EXPECT_LT(Resident() - before, (big - before) / 3) << before << " " << big << " " << Resident();
}

}  // namespace
}  // namespace vorek::qt
