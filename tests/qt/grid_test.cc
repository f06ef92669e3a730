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
#include "grid/summary_label.h"
#include "platform/memory_database.h"
#include "qt_environment.h"
#include "vorek/field_type.h"
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
  void Drag(QPoint from, QPoint to) {
    QTest::mousePress(area->viewport(), Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, to, area->viewport()->mapToGlobal(to), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area->viewport(), &move);
  }
  // The columns of the picture in which a text of the row can be seen, by the right and left ends.
  std::pair<int, int> InkOf(int row, int col) {
    const QImage picture = area->viewport()->grab().toImage();
    const QRect cell = area->CellRect(row, col).intersected(area->viewport()->rect());
    std::pair<int, int> ends{picture.width(), -1};
    for (int x = cell.left() + 2; x <= cell.right() - 2; ++x) {
      for (int y = cell.top() + 2; y <= cell.bottom() - 2; ++y) {
        if (picture.pixelColor(x, y).lightness() > 110) continue;
        ends = {std::min(ends.first, x), std::max(ends.second, x)};
      }
    }
    return ends;
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

TEST_F(GridTest, KeepsItsPictureWhileAPassChangesTheGrid) {
  Open(100);
  const auto picture = [this] { return area->viewport()->grab().toImage(); };
  const QImage whole = picture();
  {
    const Grid::Hold run(grid);
    grid.SetRedraw(false);
    grid.SetRedraw(true);  // a pass within the run
    grid.SetCols(2);
    grid.WriteCell(1, 1, "half made");
    EXPECT_EQ(picture(), whole);
  }
  const QImage changed = picture();
  EXPECT_NE(changed, whole);
  grid.SetRedraw(false);
  grid.SetRows(2);
  EXPECT_EQ(picture(), changed);
  grid.SetRedraw(true);
  EXPECT_NE(picture(), changed);
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

TEST_F(GridTest, MovesTheViewOnlyTheWayTheKeyGoes) {
  Open(100);
  grid.SetColWidth(2, 9000);
  area->SyncBars();
  grid.SelectByUser(1, 0, 1, 4);  // a whole row, as a run leaves it
  for (int i = 0; i < 30; ++i) QTest::keyClick(area, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(grid.RowSel(), 31);
  EXPECT_EQ(grid.LeftCol(), 1);
  EXPECT_GT(grid.TopRow(), 1);
  const int top = grid.TopRow();
  grid.SelectByUser(31, 1, 31, 1);
  for (int i = 0; i < 3; ++i) QTest::keyClick(area, Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(grid.ColSel(), 4);
  EXPECT_EQ(grid.TopRow(), top);
  EXPECT_TRUE(area->viewport()->rect().contains(area->CellRect(31, 4)));
}

TEST_F(GridTest, ScrollsWhileTheMouseIsDraggedBeyondAnEdge) {
  Open(100);
  const QRect view = area->viewport()->rect();
  Drag(Middle(3, 1), {Middle(3, 2).x(), view.bottom() + 50});
  EXPECT_TRUE(QTest::qWaitFor([&] { return grid.RowSel() > 60; }, 5000));
  EXPECT_EQ(grid.Row(), 3);
  EXPECT_EQ(grid.ColSel(), 2);
  QTest::mouseRelease(area->viewport(), Qt::LeftButton, Qt::NoModifier, {9, view.bottom() + 50});
  const int still = grid.RowSel();
  QTest::qWait(150);
  EXPECT_EQ(grid.RowSel(), still);

  grid.SetColWidth(2, 9000);
  grid.SetTopRow(1);
  area->SyncBars();
  Drag(Middle(2, 1), {-30, Middle(4, 1).y()});
  EXPECT_TRUE(QTest::qWaitFor([&] { return grid.ColSel() == 4; }, 5000));
  EXPECT_EQ(grid.RowSel(), 4);
}

TEST_F(GridTest, FitsAColumnToItsTextsByADoubleClickOnItsEdge) {
  Open(100);
  grid.WriteCell(90, 1, "يك شرح بسيار بلند كه در ستون جا نمي گيرد");
  std::int32_t resized = -1;
  grid.on_user_resize = [&](std::int32_t col) { resized = col; };
  const auto fit = [&](int col) {
    const QRect cell = area->CellRect(0, col);
    QTest::mouseDClick(area->viewport(), Qt::LeftButton, Qt::NoModifier,
                       {cell.left(), cell.center().y()});
    EXPECT_EQ(resized, col);
    return area->CellRect(0, col).width();
  };
  const QFontMetrics metrics(area->font());
  const int needed = metrics.horizontalAdvance(QString::fromStdString(grid.TextMatrix(90, 1)));
  EXPECT_GE(fit(1), needed + 6);
  EXPECT_LE(fit(1), needed + 12);
  EXPECT_LT(fit(2), metrics.horizontalAdvance("0000000000"));
  grid.WriteCell(91, 1, std::string(2000, 'x'));
  EXPECT_LE(fit(1), area->viewport()->width());
}

TEST_F(GridTest, ShowsNoPartOfAFigureThatIsCut) {
  Open(20);
  const std::string amount = "123/456/789/012";
  grid.SelectByUser(9, 1, 9, 1);
  grid.WriteCell(1, 2, amount);
  grid.WriteCell(2, 2, "999/999/999/999");
  const QFontMetrics metrics(area->font());
  const int width = metrics.horizontalAdvance(QString::fromStdString(amount));
  const auto twips = [](int pixels) { return Scale::OfApplication().Twips(pixels); };
  // Too narrow: the same picture as another amount of that length.
  grid.SetColWidth(2, twips(width - 10));
  const auto picture_of = [&](int row) {
    const QRect cell = area->CellRect(row, 2);
    return area->viewport()->grab(cell.intersected(area->viewport()->rect())).toImage();
  };
  EXPECT_EQ(picture_of(1), picture_of(2));
  grid.SetColWidth(2, twips(width + 20));
  EXPECT_NE(picture_of(1), picture_of(2));
  // Cut by the edge of the view: where the rest has room for it, the amount stands there whole.
  const int room = area->CellRect(0, 1).left() + area->CellRect(0, 1).width();
  grid.SetColWidth(1, twips(room - width - 20));
  grid.SetColWidth(2, twips(4 * width));
  area->SyncBars();
  ASSERT_LT(area->CellRect(1, 2).left(), 0);
  const auto whole = InkOf(1, 2);
  EXPECT_GT(whole.second - whole.first, width - 12);
  EXPECT_GE(whole.first, 2);
  // Where it has none, nothing of it is shown, and the edge is shaded.
  grid.SetColWidth(1, twips(room - width / 2));
  area->SyncBars();
  EXPECT_EQ(picture_of(1), picture_of(2));
  const QImage edge = area->viewport()->grab().toImage();
  const int y = area->CellRect(1, 2).top() + 2;
  EXPECT_LT(edge.pixelColor(0, y).lightness(), edge.pixelColor(20, y).lightness() - 40);
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
  // The arrow of a header is as light there as its text.
  const auto light = [&] {
    const QImage picture = area->viewport()->grab(area->CellRect(0, 3)).toImage();
    int points = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 2; x < area->fontMetrics().height(); ++x) {
        if (picture.pixelColor(x, y).lightness() > 170) ++points;
      }
    }
    return points;
  };
  EXPECT_EQ(light(), 0);
  grid.SetSortedBy({3, true});
  EXPECT_GT(light(), 10);
  for (const std::int32_t back : {0xF7D9C2, 0xFFFFFF, 0xC0FFFF, 0x000000, 0x0000FF}) {
    const CellColors colors = ColorsOf(back, 0x808080, dark);
    EXPECT_GT(std::abs(colors.back.lightness() - colors.text.lightness()), 70) << back;
  }
}

TEST_F(GridTest, KeepsSummaryRowsInViewWhileTheOthersScroll) {
  Open(100);
  for (const std::string_view label : {kSumLabel, kAverageLabel}) grid.AddItem(label);
  grid.WriteCell(101, 2, "5050");
  area->SyncBars();
  const QRect sum = area->CellRect(101, 2);
  const QRect average = area->CellRect(102, 2);
  EXPECT_EQ(average.bottom(), area->viewport()->rect().bottom());
  EXPECT_EQ(sum.bottom() + 1, average.top());
  EXPECT_GT(InkOf(101, 2).second, InkOf(101, 2).first);  // the sum's text
  const QImage strip =
      area->viewport()->grab(QRect(sum.topLeft(), average.bottomRight())).toImage();
  for (const int top : {40, 90, 100, 102}) {
    grid.SetTopRow(top);
    area->SyncBars();
    EXPECT_EQ(area->CellRect(101, 2), sum) << top;
    EXPECT_EQ(area->viewport()->grab(QRect(sum.topLeft(), average.bottomRight())).toImage(), strip)
        << top;
  }
  // Scrolled to the end, the last row above them is whole, and the header too.
  area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
  const QRect last = area->CellRect(100, 2);
  EXPECT_FALSE(last.isEmpty());
  EXPECT_LT(last.bottom(), sum.top());
  EXPECT_GT(last.bottom(), sum.top() - last.height());
}

TEST_F(GridTest, TreatsPinnedRowsAsRows) {
  Open(100);
  grid.AddItem(kSumLabel);
  grid.WriteCell(101, 2, "5050");
  area->SyncBars();
  QTest::mouseClick(area->viewport(), Qt::LeftButton, Qt::NoModifier, Middle(101, 2));
  EXPECT_EQ(grid.Row(), 101);
  EXPECT_EQ(grid.TopRow(), 1);  // where it was
  QTest::keyClick(area, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "5050");
  QTest::keyClick(area, Qt::Key_Up);
  EXPECT_EQ(grid.Row(), 100);
  EXPECT_LT(area->CellRect(100, 2).bottom(), area->CellRect(101, 2).top());
  QTest::keyClick(area, Qt::Key_Home, Qt::ControlModifier);
  QTest::keyClick(area, Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(grid.Row(), 101);
  EXPECT_FALSE(area->CellRect(100, 2).isEmpty());
  EXPECT_EQ(grid.TopRow(), area->verticalScrollBar()->maximum() + 1);  // and no further
  // A drag over them scrolls first.
  grid.SetTopRow(1);
  area->SyncBars();
  Drag(Middle(3, 2), Middle(101, 2));
  EXPECT_LT(grid.RowSel(), 50);
  EXPECT_TRUE(QTest::qWaitFor([&] { return grid.RowSel() == 101; }, 8000));
}

TEST_F(GridTest, LeavesSummaryRowsInPlaceWhereAllFits) {
  Open(5);
  grid.AddItem(kSumLabel);
  area->SyncBars();
  EXPECT_EQ(area->CellRect(6, 1).top(), area->CellRect(5, 1).bottom() + 1);
  EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
  // Nor where one stands among the rows.
  Open(100);
  grid.WriteCell(50, 0, kSumLabel);
  EXPECT_TRUE(area->CellRect(50, 1).isEmpty());
}

TEST_F(GridTest, PointsToTheColumnThatTheRowsAreSortedBy) {
  Open(20);
  const auto header = [&](int col) {
    return area->viewport()->grab(area->CellRect(0, col)).toImage();
  };
  // Dark points of the upper and the lower half where the arrow stands.
  const auto halves = [&](const QImage& picture) {
    std::pair<int, int> dark;
    const int half = picture.height() / 2;
    for (int y = 2; y < picture.height() - 2; ++y) {
      for (int x = 2; x < area->fontMetrics().height(); ++x) {
        if (picture.pixelColor(x, y).lightness() < 170) ++(y < half ? dark.first : dark.second);
      }
    }
    return dark;
  };
  const QImage plain = header(2);
  const QImage other = header(1);
  EXPECT_EQ(halves(plain), std::make_pair(0, 0));
  grid.SetSortedBy({2, false});
  const auto up = halves(header(2));
  EXPECT_GT(up.second, up.first);
  grid.SetSortedBy({2, true});
  const auto down = halves(header(2));
  EXPECT_GT(down.first, down.second);
  EXPECT_EQ(header(1), other);
  grid.SetCol(3);
  grid.Sort(1);  // another order, that nobody asked for
  EXPECT_EQ(header(2), plain);
}

TEST_F(GridTest, DrawsATreesMarksInPlaceOfItsSigns) {
  Open(20);
  grid.SetColWidth(0, 3000);
  grid.SetOutlineKind(Outline::kTree);
  grid.SelectByUser(9, 1, 9, 1);
  const std::vector<const char*> texts = {"1+", "1-", "1", "1-3+", "1-3  "};
  for (int i = 0; i < 5; ++i) grid.WriteCell(i + 1, 0, texts[static_cast<std::size_t>(i)]);
  const auto picture = [&](int row) {
    return area->viewport()->grab(area->CellRect(row, 0)).toImage();
  };
  EXPECT_NE(picture(1), picture(2));
  EXPECT_NE(picture(1), picture(3));
  // The position stands in one place, whatever the mark; a child is set in.
  const int mark = area->fontMetrics().height();
  const auto [left, right] = InkOf(3, 0);
  EXPECT_EQ(InkOf(1, 0).first, left);
  EXPECT_EQ(InkOf(2, 0).first, left);
  EXPECT_GT(InkOf(1, 0).second, right + mark / 4);
  EXPECT_LT(InkOf(4, 0).second, InkOf(1, 0).second - mark / 2);
  EXPECT_LT(InkOf(5, 0).second, InkOf(4, 0).second);
  // A narrow column shows less of the position, but the mark.
  grid.SetColWidth(0, Scale::OfApplication().Twips(2 * mark));
  EXPECT_NE(picture(1), picture(2));
  grid.SetOutlineKind(Outline::kNone);
  grid.SetColWidth(0, 3000);
  EXPECT_LT(InkOf(1, 0).second - InkOf(1, 0).first, 2 * mark);
}

TEST_F(GridTest, TakesTheWholeCellOfAMarkForTheClick) {
  Open(20);
  grid.SetOutlineKind(Outline::kCrossTable);
  grid.WriteCell(1, 0, "+");
  grid.WriteCell(0, 2, "+2-1");
  QWidget* const view = area->viewport();
  int clicks = 0;
  grid.on_click = [&] {
    if (grid.MouseRow() == 1 && grid.MouseCol() == 0) ++clicks;
  };
  const QRect cell = area->CellRect(1, 0);
  const QPoint corner(4, 4);
  for (const QPoint at : {cell.topLeft() + corner, cell.bottomRight() - corner}) {
    QTest::mouseMove(view, at);
    EXPECT_EQ(view->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, at);
  }
  EXPECT_EQ(clicks, 2);
  QTest::mouseMove(view, Middle(0, 2));
  EXPECT_EQ(view->cursor().shape(), Qt::PointingHandCursor);
  QTest::mouseMove(view, Middle(2, 0));
  EXPECT_EQ(view->cursor().shape(), Qt::ArrowCursor);
  // The sign of a sub-row's base is drawn, in its place and alone.
  const auto [left, right] = InkOf(1, 0);
  EXPECT_NEAR((left + right) / 2.0, cell.center().x(), 2);
  // Closed, it points to where the columns go on: the tip has less ink than the other end.
  const QImage picture = view->grab().toImage();
  const auto ink_of = [&](int x) {
    int points = 0;
    for (int y = cell.top() + 2; y < cell.bottom() - 2; ++y) {
      if (picture.pixelColor(x, y).lightness() <= 110) ++points;
    }
    return points;
  };
  EXPECT_LT(ink_of(left + 1), ink_of(right - 1));
  QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(area);
  EXPECT_TRUE(reader->tableInterface()->cellAt(1, 0)->state().collapsed);
  EXPECT_FALSE(reader->tableInterface()->cellAt(2, 0)->state().expandable);
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
