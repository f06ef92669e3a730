#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

#include "adapters/qt/form_window.h"
#include "adapters/qt/grid_area.h"
#include "desk_fixture.h"
#include "engine/form_report.h"

namespace vorek::qt {
namespace {

// Ways out of a row by mouse and keyboard.
class DrillTest : public DeskTest {
 protected:
  ~DrillTest() override { SetSwitch(0); }

  GridArea& Open(std::int32_t report) {
    desk->resize(1100, 600);
    desk->OpenReport(report);
    QTest::qWait(20);
    return *Child<GridArea>("flxMain");
  }
  static void DoubleClick(GridArea& area, std::int32_t row, std::int32_t col) {
    const QPoint at = area.CellRect(row, col).center();
    QTest::mouseClick(area.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(area.viewport(), Qt::LeftButton, {}, at);
    QTest::qWait(30);
  }
  // The windows of forms that show, the newest last.
  static std::vector<FormWindow*> Windows() {
    std::vector<FormWindow*> windows;
    for (QWidget* const widget : QApplication::allWidgets()) {
      auto* const window = dynamic_cast<FormWindow*>(widget);
      if (window != nullptr && window->isVisible()) windows.push_back(window);
    }
    return windows;
  }
  static FormWindow* WindowTitled(const QString& title) {
    for (FormWindow* const window : Windows()) {
      if (window->windowTitle() == title) return window;
    }
    return nullptr;
  }
  static QPushButton* Step(FormWindow& window, const QString& caption) {
    for (auto* const button : window.findChildren<QPushButton*>()) {
      if (button->text() == caption && button->isVisible()) return button;
    }
    return nullptr;
  }
  void SetSwitch(int value) {
    SqliteProvider()
        ->Connect("Provider=VorekSQLite;Data Source=" + SampleFile())
        ->Execute("Update tblVorekSystemParameters Set Value = " + std::to_string(value) +
                      " Where ID = 123",
                  {});
  }
};

TEST_F(DrillTest, OpensAChainOfWindowsWithTheWayThatLedThere) {
  DoubleClick(Open(101), 3, 3);
  FormWindow* const invoices = WindowTitled("فاكتورهاي يك مشتري");
  ASSERT_NE(invoices, nullptr);
  auto* const area = invoices->findChild<GridArea*>("flxMain");
  ASSERT_NE(area, nullptr);
  EXPECT_TRUE(area->hasFocus());
  DoubleClick(*area, 2, 2);
  FormWindow* const lines = WindowTitled("اقلام يك فاكتور");
  ASSERT_NE(lines, nullptr);
  SavePicture(*lines, "related");
  // Each step comes to the front; the window stays.
  QPushButton* const step = Step(*lines, "فاكتورهاي يك مشتري");
  ASSERT_NE(step, nullptr);
  QTest::mouseClick(step, Qt::LeftButton);
  QTest::qWait(30);
  EXPECT_TRUE(invoices->isActiveWindow());
  EXPECT_TRUE(lines->isVisible());
  // Another report is looked at; the way leads back to its tab.
  desk::ReportTab* const first = desk->CurrentTab();
  desk->OpenReport(105);
  QTest::mouseClick(Step(*lines, "فهرست مشتريان"), Qt::LeftButton);
  QTest::qWait(30);
  EXPECT_EQ(desk->CurrentTab(), first);
  // Escape goes back by one window.
  auto* const lines_area = lines->findChild<GridArea*>("flxMain");
  lines_area->setFocus();  // a step that was pressed may still have it
  QTest::keyClick(lines_area, Qt::Key_Escape);
  EXPECT_TRUE(QTest::qWaitFor([&] { return WindowTitled("اقلام يك فاكتور") == nullptr; }, 3000));
  EXPECT_NE(WindowTitled("فاكتورهاي يك مشتري"), nullptr);
  // Escape in a tab keeps it; what it has opened goes with it.
  QTest::keyClick(Child<GridArea>("flxMain"), Qt::Key_Escape);
  EXPECT_EQ(desk->CurrentTab(), first);
  QTest::keyClick(desk.get(), Qt::Key_W, Qt::ControlModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Windows().empty(); }, 3000));
}

TEST_F(DrillTest, ClosesWhatAWindowHasOpenedWithIt) {
  DoubleClick(Open(101), 3, 3);
  FormWindow* const invoices = WindowTitled("فاكتورهاي يك مشتري");
  ASSERT_NE(invoices, nullptr);
  DoubleClick(*invoices->findChild<GridArea*>("flxMain"), 2, 2);
  ASSERT_EQ(Windows().size(), 2U);
  invoices->close();
  QTest::qWait(30);
  EXPECT_TRUE(Windows().empty());
  // And again, from Enter with Ctrl.
  QTest::keyClick(Child<GridArea>("flxMain"), Qt::Key_Return, Qt::ControlModifier);
  QTest::qWait(30);
  EXPECT_NE(WindowTitled("دريافتهاي يك مشتري"), nullptr);
}

TEST_F(DrillTest, ShowsTheRecordOfARow) {
  DoubleClick(Open(243), 1, 2);
  desk::RecordForm* const card = desk->CurrentTab()->Cards().Newest();
  ASSERT_NE(card, nullptr);
  EXPECT_TRUE(card->Shown());
  EXPECT_EQ(card->Caption(), "مشخصات فرم 904 - tblSaleCustomer");
  EXPECT_EQ(card->lblField[0].Caption(), "ID");
  EXPECT_EQ(card->txtField[0].Text(), "7");
  EXPECT_EQ(card->txtField[2].Text(), Control().flxMain.TextMatrix(1, 3));
  EXPECT_TRUE(card->txtField[2].Locked());
  ASSERT_NE(Windows().back()->focusWidget(), nullptr);
  QTest::keyClick(Windows().back()->focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(card->Shown());
}

TEST_F(DrillTest, ShowsTheRecordAndItsLinesWhereTheHostIsAsked) {
  SetSwitch(1);
  DoubleClick(Open(244), 1, 2);
  desk::RecordForm* const card = desk->CurrentTab()->Cards().Newest();
  ASSERT_NE(card, nullptr);
  EXPECT_EQ("ID=" + card->txtField[0].Text(), Control().state.UniqueWC);
  ASSERT_EQ(card->flxTables.size(), 1U);
  EXPECT_EQ(card->lblTable[0].Caption(), "tblSaleInvoiceDetail");
  EXPECT_EQ(card->flxTables[0]->TextMatrix(1, 1), card->txtField[0].Text());
  SavePicture(*Windows().back(), "record-card");
}

TEST_F(DrillTest, TakesARecordOutOfAModalWindow) {
  SetSwitch(1);
  // 205 shows one's own invoices; the window above 101 is modal.
  GridArea& area = Open(101);
  bool seen = false;
  QTimer::singleShot(200, desk.get(), [&] {
    FormWindow* const invoices = WindowTitled("فاكتورهاي يك مشتري");
    seen = invoices != nullptr && QApplication::activeModalWidget() == invoices;
    if (!seen) return;
    QTimer::singleShot(200, desk.get(), [&] {
      FormWindow* const lines = WindowTitled("اقلام يك فاكتور");
      seen = lines != nullptr;
      if (lines == nullptr) return;
      auto* const grid = lines->findChild<GridArea*>("flxMain");
      const QPoint at = grid->CellRect(1, 3).center();
      QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
      QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at);
    });
    auto* const grid = invoices->findChild<GridArea*>("flxMain");
    const QPoint at = grid->CellRect(2, 2).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at);
  });
  DoubleClick(area, 3, 3);
  EXPECT_TRUE(seen);
  desk::RecordForm* const card = desk->CurrentTab()->Cards().Newest();
  ASSERT_NE(card, nullptr);
  EXPECT_EQ(card->Caption(), "مشخصات فرم 902 - tblSaleInvoiceDetail");
  EXPECT_EQ(Windows().size(), 1U);
}

TEST_F(DrillTest, TellsAFormThatIsNotThere) {
  GridArea& area = Open(102);
  QString told;
  QTimer::singleShot(200, desk.get(), [&] {
    QWidget* const modal = QApplication::activeModalWidget();
    if (modal == nullptr) return;
    for (auto* const label : modal->findChildren<QLabel*>()) told += label->text();
    modal->close();
  });
  DoubleClick(area, 2, 3);
  EXPECT_TRUE(told.contains("مجاز به انجام اين عمل نيستيد")) << told.toStdString();
}

}  // namespace
}  // namespace vorek::qt
