#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QtTest/QTest>
#include <memory>

#include "adapters/qt/colors.h"
#include "adapters/qt/grid_area.h"
#include "adapters/qt/presenter.h"
#include "catalog/data_session.h"
#include "platform/field_type.h"
#include "platform/memory_database.h"
#include "qt_environment.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

// A window with one grid of `rows` records by four columns, right to left.
class GridTest : public testing::Test {
 protected:
  void Open(int rows) {
    std::vector<MemoryRow> records;
    for (int row = 1; row <= rows; ++row) {
      const std::string number = std::to_string(row);
      records.push_back({"نام " + number, number, "1404/01/01", "x" + number});
    }
    auto database = std::make_shared<MemoryDatabase>();
    database->Answer(
        "rows",
        MakeResult(
            {{"نام", kVarWChar}, {"مبلغ", kInteger}, {"تاريخ", kVarWChar}, {"شرح", kVarWChar}},
            records));
    session = std::make_unique<DataSession>(ProviderList{database});
    session->Rebind("Provider=VorekMemory;");
    session->Get().rssqlQuery.Open("rows");
    grid.Bind(session->Get().rssqlQuery);
    grid.NumberRows();
    grid.SetRightToLeft(true);
    grid.Move(0, 0, 9000, 4500);
    presenter = std::make_unique<Presenter>(root, window);
    window.resize(640, 400);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    area = window.findChild<GridArea*>("flx");
    ASSERT_NE(area, nullptr);
    area->setFocus();
    area->SyncBars();
  }
  QPoint Middle(int row, int col) { return area->CellRect(row, col).center(); }

  std::unique_ptr<DataSession> session;
  QWidget window;
  Frame root{nullptr, "root"};
  Grid grid{&root, "flx"};
  std::unique_ptr<Presenter> presenter;
  GridArea* area = nullptr;
};

TEST_F(GridTest, StandsFromRightToLeftBelowItsHeader) {
  Open(100);
  EXPECT_EQ(area->CellRect(0, 0).right(), area->viewport()->rect().right());
  EXPECT_LT(area->CellRect(1, 2).right(), area->CellRect(1, 1).left() + 1);
  grid.SetTopRow(40);
  grid.SetColWidth(1, 0);
  EXPECT_EQ(area->CellRect(0, 0).top(), 0);
  EXPECT_EQ(area->CellRect(40, 0).top(), area->CellRect(0, 0).height());
  EXPECT_TRUE(area->CellRect(40, 1).isEmpty());
  EXPECT_TRUE(area->CellRect(39, 2).isEmpty());
}

TEST_F(GridTest, TellsTheGridWhatTheMouseDoes) {
  Open(100);
  std::string events;
  const auto note = [&](const std::string& what) {
    events +=
        what + " " + std::to_string(grid.MouseRow()) + "," + std::to_string(grid.MouseCol()) + ";";
  };
  grid.on_mouse_down = [&](int button, int shift, double, double) {
    note("down" + std::to_string(button) + "/" + std::to_string(shift));
  };
  grid.on_click = [&] { note("click"); };
  grid.on_dblclick = [&] { note("double"); };
  QWidget* const view = area->viewport();
  QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, Middle(3, 2));
  QTest::mouseClick(view, Qt::LeftButton, Qt::ControlModifier, Middle(5, 1));
  QTest::mouseClick(view, Qt::RightButton, Qt::NoModifier, Middle(0, 3));
  QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, Middle(4, 2));
  QTest::mouseDClick(view, Qt::LeftButton, Qt::NoModifier, Middle(4, 2));
  EXPECT_EQ(events,
            "down1/0 3,2;click 3,2;down1/2 5,1;click 5,1;down2/0 0,3;"
            "down1/0 4,2;click 4,2;double 4,2;");
  EXPECT_EQ(grid.Row(), 4);
  EXPECT_EQ(grid.Col(), 2);
}

TEST_F(GridTest, SelectsCopiesAndScrollsByKeys) {
  Open(100);
  QTest::mouseClick(area->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(2, 1));
  QTest::keyClick(area, Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(area, Qt::Key_Left, Qt::ShiftModifier);  // the next column, from the right
  QTest::keyClick(area, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "نام 2\t2\nنام 3\t3");
  QTest::keyClick(area, Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(grid.Row(), 100);
  EXPECT_FALSE(area->CellRect(100, 1).isEmpty());
  QTest::keyClick(area, Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(grid.TopRow(), 1);
}

TEST_F(GridTest, ScrollsBothWaysAndPassesOverHiddenRows) {
  Open(100);
  for (int row = 11; row <= 60; ++row) grid.SetRowHeight(row, 0);
  area->SyncBars();
  area->verticalScrollBar()->setValue(9);
  EXPECT_EQ(grid.TopRow(), 10);
  EXPECT_EQ(area->CellRect(61, 0).top(), area->CellRect(10, 0).bottom() + 1);
  grid.SetTopRow(95);
  area->SyncBars();
  EXPECT_EQ(area->CellRect(95, 0).top(), area->CellRect(0, 0).bottom() + 1);
  EXPECT_TRUE(area->CellRect(10, 0).isEmpty());
}

TEST_F(GridTest, KeepsTheWidthThatAnEdgeIsDrawnTo) {
  Open(10);
  std::int32_t resized = -1;
  grid.on_user_resize = [&](std::int32_t col) { resized = col; };
  const QRect cell = area->CellRect(0, 1);
  const QPoint edge(cell.left(), cell.center().y());
  QTest::mousePress(area->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
  QMouseEvent move(QEvent::MouseMove, edge - QPoint(30, 0),
                   area->viewport()->mapToGlobal(edge - QPoint(30, 0)), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(area->viewport(), &move);
  QTest::mouseRelease(area->viewport(), Qt::LeftButton, Qt::NoModifier, edge - QPoint(30, 0));
  EXPECT_EQ(resized, 1);
  EXPECT_EQ(area->CellRect(0, 1).width(), cell.width() + 30);
  EXPECT_EQ(area->CellRect(0, 1).right(), cell.right());
}

TEST_F(GridTest, PaintsColoursThatCanBeRead) {
  Open(10);
  grid.SetRowBackColor(2, 0xF7D9C2);
  const auto ground_of = [&](int row) {
    const QImage picture = area->viewport()->grab().toImage();
    return picture.pixelColor(area->CellRect(row, 3).topLeft() + QPoint(2, 2));
  };
  EXPECT_EQ(ground_of(2), QColor(0xC2, 0xD9, 0xF7));
  QPalette dark(QColor(50, 50, 50), QColor(40, 40, 40));
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::Text, Qt::white);
  area->setPalette(dark);
  EXPECT_LT(ground_of(2).lightness(), 110);
  EXPECT_NE(ground_of(2), ground_of(4));
  for (const std::int32_t back : {0xF7D9C2, 0xFFFFFF, 0xC0FFFF, 0x000000, 0x0000FF}) {
    const CellColors colors = ColorsOf(back, 0x808080, dark);
    EXPECT_GT(std::abs(colors.back.lightness() - colors.text.lightness()), 70) << back;
  }
}

TEST_F(GridTest, IsReadOutCellByCell) {
  Open(1000);
  QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(area);
  ASSERT_NE(reader, nullptr);
  QAccessibleTableInterface* const table = reader->tableInterface();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->rowCount(), 1001);
  QAccessibleInterface* const cell = table->cellAt(700, 1);
  EXPECT_EQ(cell->text(QAccessible::Name), "نام 700");
  EXPECT_TRUE(cell->state().offscreen);
  QAccessibleTableCellInterface* const place = cell->tableCellInterface();
  EXPECT_EQ(place->columnHeaderCells().front()->text(QAccessible::Name), "نام");
  EXPECT_EQ(place->rowHeaderCells().front()->text(QAccessible::Name), "700");
  EXPECT_EQ(table->cellAt(0, 2)->role(), QAccessible::ColumnHeader);
}

}  // namespace
}  // namespace vorek::qt
