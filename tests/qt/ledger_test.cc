#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QtTest/QTest>

#include "adapters/qt/grid_area.h"
#include "desk_fixture.h"
#include "engine/report_control.h"
#include "qt_environment.h"

// The ledger reports as a bookkeeper has them on the screen.
namespace vorek::qt {
namespace {

QMenu* OpenMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

class LedgerTest : public DeskTest {
 protected:
  void Open(int report) {
    desk->resize(1250, 620);
    desk->OpenReport(report);
    QTest::qWait(20);
  }
  void Type(const QString& name, const QString& text) {
    auto* const edit = Child<QLineEdit>(name);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    TypeText(edit, text);
    QTest::keyClick(edit, Qt::Key_Tab);
    QTest::qWait(20);
  }
};

TEST_F(LedgerTest, FillsItsFieldsOneFromTheOther) {
  Open(2846);
  SavePicture(*desk, "ledger-form");
  Type("slt(1)", "سال مالي 1403");
  EXPECT_EQ(Child<QLineEdit>("dat(1)")->text(), "1403/01/01");
  EXPECT_EQ(Child<QLineEdit>("txt(2)")->text(), "462");
  Type("txt(2)", "110");
  EXPECT_EQ(Child<QLineEdit>("dat(2)")->text(), "1403/01/21");
  EXPECT_EQ(Child<QLineEdit>("txt(2)")->text(), "110");
  QTest::mouseClick(Child<QPushButton>("cmdOk"), Qt::LeftButton);
  EXPECT_GT(Control().flxMain.Rows(), 5);
  SavePicture(*desk, "trial-balance");
}

TEST_F(LedgerTest, ShowsItsGroups) {
  Open(2846);
  Control().state.PeriodID = 48;
  ASSERT_TRUE(Control().View(2852, "", ""));
  QTest::qWait(50);
  SavePicture(*desk, "ledger-grouped");
  auto* const area = Child<GridArea>("flxMain");
  When(OpenMenu, [](QMenu* menu) {
    auto* const shape = menu->findChild<QAction*>("mnuGroupBy");
    ASSERT_NE(shape, nullptr);
    EXPECT_TRUE(shape->isEnabled());
    SavePicture(*menu, "ledger-shapes");
    shape->trigger();
    menu->close();
  });
  const std::int32_t rows = Control().flxMain.Rows();
  QTest::mouseClick(area->viewport(), Qt::RightButton, {}, area->CellRect(0, 4).center());
  QTest::qWait(20);
  Menu& shape = Control().FlexPopupMenu.mnuGroupBy;
  if (Control().state.GroupMode == 0) shape.Click();
  EXPECT_LT(Control().flxMain.Rows(), rows);
  SavePicture(*desk, "ledger-subtotals");
}

// A name that is new is typed, one that is there is chosen or replaced.
TEST_F(LedgerTest, SavesTheFormUnderAName) {
  Open(218);
  When(ModalWindow, [](QWidget* window) {
    auto* const names = window->findChild<QComboBox*>("cmb");
    ASSERT_NE(names, nullptr);
    EXPECT_TRUE(names->isEditable());
    TypeText(names->lineEdit(), "نمونه من");
    SavePicture(*window, "save-setting");
    QTest::mouseClick(window->findChild<QPushButton*>("cmdOk"), Qt::LeftButton);
  });
  QTest::mouseClick(Child<QPushButton>("cmdSaveParameterConfig"), Qt::LeftButton);
  QStringList names;
  When(OpenMenu, [&names](QMenu* menu) {
    for (const QAction* action : menu->actions()) names << action->text();
    menu->close();
  });
  QTest::mouseClick(Child<QPushButton>("cmdLoadParameterConfig"), Qt::LeftButton);
  EXPECT_TRUE(names.contains("نمونه من")) << names.join("|").toStdString();
}

}  // namespace
}  // namespace vorek::qt
