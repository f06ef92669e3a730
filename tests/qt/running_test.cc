#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>

#include "adapters/qt/grid_area.h"
#include "desk_fixture.h"

// Reports that run while others are worked with.
namespace vorek::qt {
namespace {

// Counts as long as nobody cancels it.
constexpr const char* kEndless =
    "with n(i) as (select 1 union all select i + 1 from n where i < 2000000000) "
    "select count(*) as c from n";
// Counts for some time.
constexpr const char* kLong =
    "with n(i) as (select 1 union all select i + 1 from n where i < 6000000) "
    "select count(*) as c from n";

class RunningTest : public DeskTest {
 protected:
  RunningTest() {
    settings.setValue("run/long", 300);
    Restart();
  }

  desk::ReportTab* Tab(int index) { return static_cast<desk::ReportTab*>(Tabs()->widget(index)); }
  QTabWidget* Tabs() { return desk->findChild<QTabWidget*>("reports"); }
  // Opens a report with a query of its own behind the press of its button, and does the work when
  // it has run for so long that it is told.
  void RunMeanwhile(int report, const char* query, const std::function<void()>& work) {
    ASSERT_NE(desk->OpenReport(report), nullptr);
    desk::ReportTab* const tab = desk->CurrentTab();
    tab->Widget().Report().SetUseThisQuery(query);
    When([tab] { return tab->findChild<QWidget*>("busyPanel"); }, [work](QWidget*) { work(); });
    tab->View();
  }
  QString Line(const char* name) { return desk->findChild<QLabel*>(name)->text(); }
};

TEST_F(RunningTest, LetsOtherTabsRunAndScrollMeanwhile) {
  desk->OpenReport(201);
  QPointer<desk::ReportTab> slow;
  RunMeanwhile(101, kEndless, [&] {
    slow = desk->CurrentTab();
    EXPECT_TRUE(slow->Running());
    EXPECT_TRUE(Tabs()->tabText(1).endsWith("0:00")) << Tabs()->tabText(1).toStdString();
    EXPECT_FALSE(Tabs()->tabIcon(1).isNull());
    EXPECT_TRUE(Line("runLine").startsWith("در حال اجراي گزارش"));
    auto* const run = desk->findChild<QToolButton*>("run");
    EXPECT_EQ(run->text(), "انصراف");
    EXPECT_FALSE(desk->findChild<QToolButton*>("sum")->isEnabled());
    SavePicture(*desk, "running");
    // What runs takes no input; its rows of before stay on the screen.
    const int row = Control().flxMain.Row();
    QTest::keyClick(Child<GridArea>("flxMain"), Qt::Key_Down);
    EXPECT_EQ(Control().flxMain.Row(), row);

    Tabs()->setCurrentIndex(0);
    auto* const area = Child<GridArea>("flxMain");
    area->setFocus();
    EXPECT_EQ(run->text(), "اجرا");
    EXPECT_EQ(Line("runLine"), "");
    const int top = Control().flxMain.TopRow();
    for (int i = 0; i < 4; ++i) QTest::keyClick(area, Qt::Key_PageDown);
    EXPECT_GT(Control().flxMain.TopRow(), top);
    run->click();
    EXPECT_GT(Control().flxMain.Rows(), 100) << "another run within the wait";
    SavePicture(*desk, "running-behind");
    EXPECT_TRUE(slow->Running());
    // Escape is that of the tab on show.
    QTest::keyClick(area, Qt::Key_Escape);
    QTest::qWait(50);
    EXPECT_TRUE(slow->Running());
    EXPECT_EQ(desk->CurrentTab(), Tab(0));

    Tabs()->setCurrentIndex(1);
    QTest::qWait(200);
    EXPECT_EQ(run->text(), "انصراف");
    run->click();
  });
  ASSERT_FALSE(slow.isNull());
  EXPECT_FALSE(slow->Running());
  EXPECT_EQ(slow->findChild<QWidget*>("toldLine")->accessibleName(), "اجراي گزارش لغو شد.");
  EXPECT_EQ(Tabs()->tabText(1), desk->windowTitle().section(" - ", 0, 0));
}

TEST_F(RunningTest, TellsThatALongRunHasEndedInATabBehind) {
  desk->OpenReport(201);
  RunMeanwhile(101, kLong, [&] {
    Tabs()->setCurrentIndex(0);
    Child<GridArea>("flxMain")->setFocus();
  });
  EXPECT_EQ(desk->CurrentTab(), Tab(0)) << "its end brings no tab to the front";
  auto* const notice = desk->findChild<QToolButton*>("runNotice");
  ASSERT_TRUE(notice->isVisible());
  EXPECT_TRUE(notice->text().contains("آماده شد"));
  EXPECT_TRUE(desk->focusWidget() == Child<GridArea>("flxMain")) << "nor takes the focus";
  SavePicture(*desk, "run-notice");
  QTest::keyClick(desk->focusWidget(), Qt::Key_J, Qt::ControlModifier);
  EXPECT_EQ(desk->CurrentTab(), Tab(1));
  EXPECT_FALSE(notice->isVisible());
  EXPECT_EQ(Control().flxMain.TextMatrix(1, 1), "6000000");
  EXPECT_TRUE(Tabs()->tabIcon(1).isNull());
}

TEST_F(RunningTest, SaysWhenAnAnswerStandsBehindALaterWait) {
  desk->OpenReport(201);
  QPointer<desk::ReportTab> first;
  QString told;
  RunMeanwhile(101, kLong, [&] {
    first = desk->CurrentTab();
    RunMeanwhile(215, kEndless, [&] {
      EXPECT_TRUE(QTest::qWaitFor(
          [&] {
            told = first->findChild<QLabel*>("busyText")->text();
            return told.startsWith("پاسخ رسيد");
          },
          20'000));
      Tab(2)->Widget().CancelRun();
    });
  });
  EXPECT_TRUE(told.startsWith("پاسخ رسيد"));
  EXPECT_EQ(first->Widget().Report().TextMatrix(1, 1), "6000000");
}

// A form of a report behind stands before its own tab.
TEST_F(RunningTest, BringsATabToTheFrontThatHasSomethingToSay) {
  desk->OpenReport(201);
  bool said = false;
  When(ModalWindow, [&](QWidget* window) {
    said = true;
    EXPECT_EQ(Tabs()->currentIndex(), 1);
    window->close();
  });
  RunMeanwhile(101,
               "with n(i) as (select 1 union all select i + 1 from n where i < 4000000) "
               "select count(*) / (count(*) - count(*)) as c from n",
               [&] { Tabs()->setCurrentIndex(0); });
  EXPECT_TRUE(said);
}

// However deep its callers stand.
TEST_F(RunningTest, ClosesATabThatRuns) {
  QPointer<desk::ReportTab> outer;
  QPointer<desk::ReportTab> inner;
  bool asked = false;
  RunMeanwhile(101, kEndless, [&] {
    outer = desk->CurrentTab();
    RunMeanwhile(201, kEndless, [&] {
      inner = desk->CurrentTab();
      When(ModalWindow, [&](QWidget* window) {
        asked = true;
        window->close();
      });
      Tabs()->setCurrentIndex(0);
      QTest::keyClick(desk.get(), Qt::Key_W, Qt::ControlModifier);
      EXPECT_EQ(Tabs()->count(), 1);
      EXPECT_FALSE(outer.isNull()) << "its callers are still to be returned to";
      QTest::qWait(100);
      QTest::keyClick(desk.get(), Qt::Key_W, Qt::ControlModifier);
      EXPECT_EQ(Tabs()->count(), 0);
    });
  });
  QTest::qWait(20);
  EXPECT_FALSE(asked) << "a run that nobody waits for says nothing";
  EXPECT_TRUE(outer.isNull());
  EXPECT_TRUE(inner.isNull());
  EXPECT_NE(desk->OpenReport(215), nullptr);
}

TEST_F(RunningTest, ClosesTheWindowWhenAllRunsHaveEnded) {
  RunMeanwhile(101, kEndless,
               [&] { RunMeanwhile(201, kEndless, [&] { EXPECT_FALSE(desk->close()); }); });
  EXPECT_TRUE(QTest::qWaitFor([&] { return !desk->isVisible(); }, 5000));
}

}  // namespace
}  // namespace vorek::qt
