#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest/QTest>

#include "adapters/qt/grid_area.h"
#include "adapters/system/system_files.h"
#include "desk_fixture.h"
#include "engine/report_control.h"
#include "qt_environment.h"
#include "report_tab.h"
#include "slow_database.h"
#include "vorek/qt.h"
#include "vorek/sqlite.h"
#include "vorek/system.h"

namespace vorek::qt {
namespace {

TEST_F(DeskTest, FindsAReportByWordsAndShowsWhatTheGridHolds) {
  auto* const search = desk->findChild<QLineEdit*>("search");
  TypeText(search, "مشتری فاكتور");  // words in any order, ی for ي
  const auto* const list = desk->findChild<QTreeWidget*>("catalogue");
  ASSERT_NE(list->currentItem(), nullptr);
  EXPECT_EQ(list->currentItem()->text(0), "203");
  search->clear();
  TypeText(search, "۱۰۱");
  QTest::keyClick(search, Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([&] { return desk->CurrentTab() != nullptr; }));
  EXPECT_EQ(desk->CurrentTab()->ReportNumber(), 101);
  EXPECT_EQ(Child<QLabel>("lblCaption")->text().toStdString(), Control().state.Title);
  const Grid& grid = Control().flxMain;
  EXPECT_GT(grid.Rows(), 10);
  auto* const area = Child<GridArea>("flxMain");
  QTest::qWait(1);
  EXPECT_TRUE(area->isVisible());
  EXPECT_FALSE(area->CellRect(grid.Row(), 3).isEmpty());
  EXPECT_EQ(desk->findChild<QLabel*>("user")->text(), "sample · بهرام كياني");
}

TEST_F(DeskTest, AsksForParametersInADialog) {
  When(ModalWindow, [](QWidget* window) {
    EXPECT_EQ(window->objectName(), "FormAskUser");
    SavePicture(*window, "ask-user");
    for (const auto& [name, date] : {std::pair{"dat(1)", "14040101"}, {"dat(2)", "14040231"}}) {
      auto* const field = window->findChild<QWidget*>(name);
      ASSERT_NE(field, nullptr) << name;
      auto* edit = qobject_cast<QLineEdit*>(field);
      if (edit == nullptr) edit = field->findChild<QLineEdit*>();
      ASSERT_NE(edit, nullptr) << name;
      edit->setFocus();
      edit->clear();
      TypeText(edit, date);
    }
    auto* const ok = window->findChild<QPushButton*>("cmdOk");
    ok->setFocus();
    QTest::mouseClick(ok, Qt::LeftButton);
  });
  desk->OpenReport(219);
  const ReportState& state = Control().state;
  EXPECT_EQ(state.ListOfVisualParameters, "@2=1404/02/31&@1=1404/01/01");
  EXPECT_GT(state.QueryRecordCount, 0);
}

TEST_F(DeskTest, FillsThePanelAndSearches) {
  desk->OpenReport(106);
  QTest::qWait(1);
  EXPECT_EQ(Control().state.QueryRecordCount, -1);
  auto* const name = Child<QLineEdit>("txt(1)");
  name->setFocus();
  TypeText(name, "%كارون%");
  EXPECT_EQ(name->accessibleName(), "نام مشتري");
  QTest::keyClick(name, Qt::Key_Return);
  const Grid& grid = Control().flxMain;
  ASSERT_GT(grid.Rows(), 2) << Control().state.QueryText;
  std::string scratch;
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    std::string cells;
    for (std::int32_t col = 1; col < grid.Cols(); ++col) cells += grid.TextMatrix(row, col) + "|";
    EXPECT_NE(cells.find("كارون"), std::string::npos) << cells;
  }
}

TEST_F(DeskTest, ChoosesARowOfASearchedList) {
  desk->OpenReport(225);
  QTest::qWait(1);
  auto* const field = Child<QLineEdit>("slt(1)");
  field->setFocus();
  QTest::keyClick(field, Qt::Key_F4);
  auto* const search = field->findChild<QLineEdit*>("listSearch");
  ASSERT_NE(search, nullptr);
  const auto* const rows = field->findChild<QTreeWidget*>("listRows");
  const int all = rows->topLevelItemCount();
  TypeText(search, "كارون");
  QTRY_VERIFY(rows->topLevelItemCount() < all);
  EXPECT_LT(rows->topLevelItemCount(), all);
  ASSERT_GT(rows->topLevelItemCount(), 0);
  SavePicture(*QApplication::activePopupWidget(), "list");
  const QString chosen = rows->topLevelItem(0)->text(0);
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_TRUE(chosen.contains(field->text())) << chosen.toStdString();
  EXPECT_FALSE(field->text().isEmpty());
}

TEST_F(DeskTest, ShowsTheErrorOfAReportThatFails) {
  QString detail;
  When(ModalWindow, [&](QWidget* window) {
    detail = window->findChild<QPlainTextEdit*>("txtError")->toPlainText();
    EXPECT_EQ(window->findChild<QLabel*>("lblError")->text(), "نمايش گزارش با اشکال مواجه شد.");
    QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
  });
  desk->OpenReport(903);
  EXPECT_FALSE(detail.isEmpty());
  EXPECT_EQ(Control().flxMain.Rows(), 2);
}

TEST_F(DeskTest, AnEditableReportTellsItsHostOfItsButtons) {
  desk->OpenReport(101);
  VorekReportWidget& widget = desk->CurrentTab()->Widget();
  EXPECT_FALSE(Child<QPushButton>("cmdAdd")->isVisible());
  widget.SetEditable(true);
  QString told;
  QObject::connect(&widget, &VorekReportWidget::AddClick, [&] { told += "add "; });
  QObject::connect(&widget, &VorekReportWidget::EditClick, [&] { told += "edit "; });
  QObject::connect(&widget, &VorekReportWidget::DeleteClick, [&] { told += "delete "; });
  const auto* const area = Child<GridArea>("flxMain");
  for (const char* const name : {"cmdAdd", "cmdEdit", "cmdDelete"}) {
    auto* const button = Child<QPushButton>(name);
    EXPECT_FALSE(button->geometry().intersects(area->geometry())) << name;
    QTest::mouseClick(button, Qt::LeftButton);
  }
  EXPECT_EQ(told, "add edit delete ");
  EXPECT_EQ(Child<QPushButton>("cmdEdit")->text(), "ويرايش");
  SavePicture(*desk, "editable");
}

// What another control shows in between changes nothing in a widget with a world of its own.
TEST(WorldsTest, AWidgetKeepsItsUserAndItsConnection) {
  const auto make = [](int user) {
    WorldOptions options;
    options.providers = {SqliteProvider()};
    AddQtServices(options);
    AddSystemServices(options);
    auto widget = std::make_unique<VorekReportWidget>(std::move(options));
    widget->SetOleConnectionString("Provider=VorekSQLite;Data Source=" +
                                   QString::fromStdString(SampleFile()));
    widget->SetUserID(user);
    widget->Report().SetUseThisQuery("select <UserID> as Who");
    EXPECT_TRUE(widget->View(215)) << user;
    return widget;
  };
  const auto first = make(1);
  const auto second = make(2);
  EXPECT_TRUE(first->Report().Refresh());
  EXPECT_EQ(first->Report().TextMatrix(1, 1), "1");
  EXPECT_EQ(second->Report().TextMatrix(1, 1), "2");
}

// A window whose report reads from a view that takes as long as nobody cancels it.
class CancelTest : public testing::Test {
 protected:
  CancelTest() {
    host.resize(700, 400);
    WorldOptions options;
    options.providers = {std::make_shared<SlowProvider>(SqliteProvider(), "slow_view")};
    AddQtServices(options);
    AddSystemServices(options);
    widget = std::make_unique<VorekReportWidget>(std::move(options), &host);
    widget->resize(700, 400);
    host.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&host));
    widget->SetOleConnectionString("Provider=VorekSQLite;Data Source=" +
                                   QString::fromStdString(SampleFile()));
    widget->SetUserID(1);
    widget->SetPositionID(1);
    widget->Report().SetUseThisQuery("select * from slow_view");
  }
  QWidget* Panel() const { return host.findChild<QWidget*>("busyPanel"); }
  QWidget* Line() const { return host.findChild<QWidget*>("toldLine"); }

  QWidget host;
  std::unique_ptr<VorekReportWidget> widget;
};

// The window lives while the query runs, takes nothing but the wish to cancel, and says in a line
// that the run was cancelled.
TEST_F(CancelTest, EndsARunWithALine) {
  for (const bool by_button : {true, false}) {
    widget->Report().SetUseThisQuery("select * from slow_view");
    bool refused = false;
    When([this] { return Panel(); },
         [&](QWidget* busy) {
           try {
             widget->Report().Refresh(true);
           } catch (const Error&) {
             refused = true;
           }
           if (by_button) {
             QTest::mouseClick(busy->findChild<QPushButton*>("busyCancel"), Qt::LeftButton);
           } else {
             QTest::keyClick(&host, Qt::Key_Escape);
           }
         });
    bool asked = false;
    When(ModalWindow, [&](QWidget* window) {
      asked = true;
      window->close();
    });
    EXPECT_FALSE(widget->View(101));
    EXPECT_FALSE(asked);
    EXPECT_EQ(Panel(), nullptr);
    ASSERT_NE(Line(), nullptr);
    EXPECT_EQ(Line()->accessibleName(), "اجراي گزارش لغو شد.");
    QTest::mouseClick(&host, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Line(), nullptr);
    // Nothing else is lost: the report runs again.
    widget->Report().SetUseThisQuery("");
    EXPECT_TRUE(widget->View(101));
    EXPECT_GT(widget->Report().QueryRecordCount(), 0);
  }
}

// A server that accepts and says nothing holds nobody until the time-out.
TEST_F(CancelTest, EndsAConnect) {
  const QString file = QString::fromStdString(SampleFile());
  widget->SetOleConnectionString("Provider=VorekSQLite;Data Source=" + file + ";APP=slow_view");
  When([this] { return Panel(); }, [&](QWidget*) { QTest::keyClick(&host, Qt::Key_Escape); });
  When(ModalWindow, [](QWidget* window) { window->close(); });
  bool shown = true;
  IgnoreErrors([&] { shown = widget->View(101); });
  EXPECT_FALSE(shown && widget->Report().QueryRecordCount() > 0);
  EXPECT_EQ(Panel(), nullptr);
  widget->SetOleConnectionString("Provider=VorekSQLite;Data Source=" + file);
  widget->Report().SetUseThisQuery("");
  EXPECT_TRUE(widget->View(101));
}

TEST_F(CancelTest, TellsTheTimeThatHasGoneBy) {
  QString first;
  QString later;
  When([this] { return Panel(); },
       [&](QWidget* busy) {
         first = busy->findChild<QLabel*>("busyTime")->text();
         SavePicture(host, "busy");
         QTest::qWait(1200);
         later = busy->findChild<QLabel*>("busyTime")->text();
         EXPECT_TRUE(host.rect().contains(busy->geometry()));
         for (const QLabel* const label : busy->findChildren<QLabel*>()) {
           EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text()));
         }
         QTest::keyClick(&host, Qt::Key_Escape);
       });
  EXPECT_FALSE(widget->View(101));
  EXPECT_EQ(first, "0:00");
  EXPECT_NE(later, first);
  SavePicture(host, "cancelled");
}

// One press of the close box ends the run and then closes the window.
TEST_F(CancelTest, ClosesAWindowThatWasClosedMeanwhile) {
  When([this] { return Panel(); },
       [&](QWidget*) {
         EXPECT_FALSE(host.close());
         EXPECT_TRUE(host.isVisible());
       });
  EXPECT_FALSE(widget->View(101));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !host.isVisible(); }, 2000));
}

// A window with a report of 300,000 rows that goes through its passes on the screen's own thread.
class PassCancelTest : public CancelTest {
 protected:
  // So many that a pass over them takes longer than the wait between two looks at the keyboard.
#ifdef NDEBUG
  static constexpr std::int32_t kRows = 2'000'000;
#else
  static constexpr std::int32_t kRows = 300'000;
#endif
  PassCancelTest() {
    widget->Report().SetUseThisQuery(
        "select top " + std::to_string(kRows) +
        " a.InvoiceID, a.Quantity, b.Quantity as c, "
        "a.InvoiceID * 4000 + b.InvoiceID as d, "
        "N'شرح ' + cast(a.InvoiceID * 4000 + b.InvoiceID as nvarchar(20)) as t "
        "from tblSaleInvoiceDetail a cross join tblSaleInvoiceDetail b");
  }
  // The panel of a pass: that of the query shows while the grid is still empty.
  QWidget* PassPanel() { return Main().Rows() > 100000 ? Panel() : nullptr; }
  Grid& Main() { return widget->Report().Impl().flxMain; }
};

TEST_F(PassCancelTest, EndsARunInThePassesBehindItsQuery) {
  for (const bool by_button : {true, false}) {
    When([this] { return PassPanel(); },
         [&](QWidget* busy) {
           SavePicture(host, "busy-pass");
           EXPECT_TRUE(widget->Report().Impl().Progress.Visible());
           if (by_button) {
             QTest::mouseClick(busy->findChild<QPushButton*>("busyCancel"), Qt::LeftButton);
           } else {
             QTest::keyClick(&host, Qt::Key_Escape);
           }
         });
    EXPECT_FALSE(widget->View(224));
    EXPECT_EQ(Panel(), nullptr);
    ASSERT_NE(Line(), nullptr);
    EXPECT_EQ(Line()->accessibleName(), "اجراي گزارش لغو شد.");
    EXPECT_EQ(Main().Rows(), 2);
    QTest::mouseClick(&host, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  EXPECT_TRUE(widget->View(224));
  EXPECT_EQ(Main().Rows(), kRows + 1);
}

// Escape that comes before the rows move leaves them.
TEST_F(PassCancelTest, LeavesTheRowsWhenASortIsCancelled) {
  ASSERT_TRUE(widget->View(224));
  const std::string first = Main().TextMatrix(1, 5);
  QTimer::singleShot(0, [&] { QTest::keyClick(&host, Qt::Key_Escape); });
  Main().PointAt(0, 5);
  Main().MouseDown(1, 0, 0, 0);
  ASSERT_NE(Line(), nullptr);
  EXPECT_EQ(Line()->accessibleName(), "عمليات لغو شد.");
  EXPECT_EQ(Main().TextMatrix(1, 5), first);
  EXPECT_EQ(Main().SortedBy(), SortMark{});
  Main().MouseDown(1, 0, 0, 0);
  EXPECT_TRUE(Main().TextMatrix(1, 5).starts_with("شرح 1000")) << Main().TextMatrix(1, 5);
}

// What reads rows in slices doesn't read them while a pass changes them.
TEST_F(PassCancelTest, ReadsNoSelectionAndFindsNothingMeanwhile) {
  ASSERT_TRUE(widget->View(224));
  const auto* const figures = widget->findChild<QLabel*>("resultFigures");
  const auto* const found = widget->findChild<QLabel*>("findCount");
  Main().SelectByUser(1, 2, 200'000, 3);
  ASSERT_TRUE(QTest::qWaitFor([&] { return figures->text().contains("جمع"); }, 10'000));
  widget->ShowFindBar();
  widget->findChild<QLineEdit*>("findText")->setText("شرح");
  const QString sum = figures->text();
  const QString count = found->text();
  When([this] { return PassPanel(); },
       [&](QWidget*) {
         QTest::qWait(150);
         EXPECT_EQ(figures->text(), sum);
         EXPECT_EQ(found->text(), count);
         QTest::keyClick(&host, Qt::Key_Escape);
       });
  widget->Do([this] { widget->Report().Refresh(); });
}

}  // namespace
}  // namespace vorek::qt
