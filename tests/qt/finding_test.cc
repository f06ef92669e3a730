#include <gtest/gtest.h>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QtTest/QTest>
#include <algorithm>

#include "adapters/qt/grid_area.h"
#include "desk_fixture.h"
#include "engine/report_control.h"
#include "qt_environment.h"

// What a user of the window reaches by the menus and keys of a grid.
namespace vorek::qt {
namespace {

class FindingTest : public DeskTest {
 protected:
  GridArea* Open(int report) {
    desk->OpenReport(report);
    QTest::qWait(20);
    return Child<GridArea>("flxMain");
  }
  // A right click on a header, and a choice in the menu that it opens.
  static void ChooseInMenu(GridArea* area, std::int32_t column, const QString& entry) {
    const auto popup = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
    When(popup, [entry](QMenu* menu) {
      SavePicture(*menu, "header-menu");
      auto* const action = menu->findChild<QAction*>(entry);
      ASSERT_NE(action, nullptr);
      menu->setActiveAction(action);
      QTest::keyClick(menu, Qt::Key_Return);
    });
    QTest::mouseClick(area->viewport(), Qt::RightButton, {}, area->CellRect(0, column).center());
  }
};

TEST_F(FindingTest, TheSearchBoxStandsOverItsColumn) {
  desk->resize(780, 600);  // the screen has no more
  GridArea* const area = Open(102);
  const QRect header = area->CellRect(0, 3);
  const QPoint corner = area->viewport()->mapToGlobal(header.topLeft());
  When(ModalWindow, [corner](QWidget* window) {
    EXPECT_LT(std::abs(window->x() - corner.x()), 12);
    EXPECT_LT(std::abs(window->y() - corner.y()), 12);
    TypeText(window->focusWidget(), "روغن زیتون");
    SavePicture(*window->parentWidget()->window(), "quick-search-behind");
    SavePicture(*window, "quick-search");
    QTest::keyClick(window->focusWidget(), Qt::Key_Return);
  });
  ChooseInMenu(area, 3, "mnuQuickSearch");
  const std::string first = Control().flxMain.TextMatrix(Control().flxMain.Row(), 3);
  EXPECT_TRUE(first.starts_with("روغن زيتون")) << first;
  const std::int32_t row = Control().flxMain.Row();
  QTest::keyClick(area, Qt::Key_N, Qt::ShiftModifier);
  EXPECT_GT(Control().flxMain.Row(), row);
  EXPECT_EQ(desk->focusWidget(), area);
}

TEST_F(FindingTest, AMenuSaysWhatAReportDoesNotHave) {
  GridArea* const area = Open(102);
  const auto popup = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
  When(popup, [](QMenu* menu) {
    const QList<QAction*> entries = menu->actions();
    const auto shapes = std::find_if(entries.begin(), entries.end(), [](const QAction* entry) {
      return entry->text() == "گزارش به شکل";
    });
    ASSERT_NE(shapes, entries.end());
    EXPECT_FALSE((*shapes)->isEnabled());
    EXPECT_EQ((*shapes)->toolTip(), "اين گزارش شکل ديگري ندارد.");
    EXPECT_TRUE(menu->toolTipsVisible());
    menu->close();
  });
  QTest::mouseClick(area->viewport(), Qt::RightButton, {}, area->CellRect(0, 3).center());
}

TEST_F(FindingTest, ArrowsTurnATreeAndMoveInItOtherwise) {
  GridArea* const area = Open(103);
  Grid& grid = Control().flxMain;
  ASSERT_TRUE(grid.RightToLeft());
  grid.SelectByUser(2, 3, 2, 3);
  const std::int32_t rows = grid.Rows();
  QTest::keyClick(area, Qt::Key_Left);
  EXPECT_GT(grid.Rows(), rows);
  EXPECT_EQ(grid.Row(), 2);
  EXPECT_EQ(grid.Col(), 3);
  QTest::keyClick(area, Qt::Key_Left);
  EXPECT_EQ(grid.Col(), 4);
  SavePicture(*desk, "tree-open");
  QTest::keyClick(area, Qt::Key_Right);
  EXPECT_EQ(grid.Rows(), rows);
}

}  // namespace
}  // namespace vorek::qt
