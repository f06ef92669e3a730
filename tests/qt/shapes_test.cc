#include <gtest/gtest.h>

#include <QLabel>
#include <QScrollBar>
#include <QToolButton>
#include <QtTest/QTest>

#include "adapters/qt/grid_area.h"
#include "adapters/qt/theme.h"
#include "desk_fixture.h"
#include "engine/report_filter.h"
#include "grid/column_sort.h"
#include "grid/cross_table_click.h"
#include "grid/summary_label.h"
#include "grid/tree_rows.h"
#include "grid/tree_sort.h"

namespace vorek::qt {
namespace {

// Reports in the shapes that a result takes, as a user sees them.
class ShapesTest : public DeskTest {
 protected:
  GridArea& Open(std::int32_t report, const char* grid) {
    desk->resize(1100, 500);
    desk->OpenReport(report);
    QTest::qWait(20);
    return *Child<GridArea>(grid);
  }
  ReportContext Context() { return Control().Context(); }
  static QImage Picture(GridArea& area, std::int32_t row, std::int32_t col) {
    QTest::qWait(20);
    return area.viewport()->grab(area.CellRect(row, col)).toImage();
  }
  void SetFilter(const std::string& text) { SetReportFilter(Control(), text); }
  QString Counts() {
    QTest::qWait(20);
    return Child<QLabel>("resultCounts")->text();
  }
};

TEST_F(ShapesTest, PointsToTheColumnThatTheReportIsSortedBy) {
  GridArea& area = Open(301, "flxMain");
  const QImage plain = Picture(area, 0, 2);
  ReportContext report = Context();
  SortByHeader(report, 2);
  const QImage first = Picture(area, 0, 2);
  EXPECT_NE(first, plain);
  SortByHeader(report, 2);
  EXPECT_NE(Picture(area, 0, 2), first);
  SavePicture(*desk, "sorted");
  // A run in the query's own order, though the column is remembered.
  QTest::keyClick(&area, Qt::Key_F5);
  EXPECT_EQ(Picture(area, 0, 2), plain);
  EXPECT_EQ(Control().state.SortColumn, 2);
}

TEST_F(ShapesTest, KeepsTheSumOfAReportInView) {
  GridArea& area = Open(301, "flxMain");
  Grid& grid = Control().flxMain;
  ASSERT_EQ(TrailingSummaryRows(grid), 1);
  ReportContext report = Context();
  SortByHeader(report, 3);
  QTest::qWait(20);
  area.verticalScrollBar()->setValue(8);
  const QImage sum = Picture(area, grid.Rows() - 1, 0);
  EXPECT_EQ(area.CellRect(grid.Rows() - 1, 0).bottom(), area.viewport()->rect().bottom());
  EXPECT_EQ(grid.TopRow(), 9);
  SavePicture(*desk, "pinned");
  // The picture is that of the label: the last row of the data looks otherwise.
  area.verticalScrollBar()->setValue(area.verticalScrollBar()->maximum());
  EXPECT_EQ(Picture(area, grid.Rows() - 1, 0), sum);
  EXPECT_NE(Picture(area, grid.Rows() - 2, 0), sum);
}

TEST_F(ShapesTest, OpensATreeByItsMarks) {
  GridArea& area = Open(401, "flxMain");
  Grid& grid = Control().flxMain;
  EXPECT_EQ(grid.OutlineKind(), Outline::kTree);
  ReportContext report = Context();
  ASSERT_EQ(TreeMark(grid, 1), '+') << grid.TextMatrix(1, 0);
  const QString before = Counts();
  const QImage closed = Picture(area, 1, 0);
  ClickTreeMark(report, 1);
  EXPECT_NE(Picture(area, 1, 0), closed);
  ASSERT_EQ(TreeMark(grid, 2), '+') << grid.TextMatrix(2, 0);
  ClickTreeMark(report, 2);
  EXPECT_NE(Counts(), before);
  SavePicture(*desk, "tree");
  // A sort by a column of the first level leaves what is open.
  SortTree(report, grid, 2);
  EXPECT_EQ(grid.SortedBy(), (SortMark{2, true}));
}

TEST_F(ShapesTest, ShowsTheSubRowsOfACrossTable) {
  GridArea& area = Open(209, "flxTranspose");
  Grid& grid = Control().flxTranspose;
  ASSERT_EQ(grid.TextMatrix(1, 0), "+");
  const QString before = Counts();
  const QImage closed = Picture(area, 1, 0);
  ReportContext report = Context();
  ClickCrossTable(report, 1, 0);
  EXPECT_NE(Picture(area, 1, 0), closed);
  EXPECT_NE(Counts(), before);
  const QImage plain = Picture(area, 0, 1);
  SavePicture(*desk, "sub-rows");
  ClickCrossTable(report, 0, 1);
  EXPECT_EQ(grid.SortedBy(), (SortMark{1, false}));
  EXPECT_NE(Picture(area, 0, 1), plain);
}

TEST_F(ShapesTest, TellsTheFilterAndTakesItAway) {
  GridArea& area = Open(102, "flxMain");
  const std::int32_t all = Control().state.QueryRecordCount;
  const QString plain = Counts();
  EXPECT_EQ(plain, QString("%1 رديف").arg(all));
  auto* const button = Child<QToolButton>("resultTakeFilterAway");
  EXPECT_FALSE(button->isVisible());
  const Grid& grid = Control().flxMain;
  const std::string field = grid.TextMatrix(0, 1);
  const std::string filter = "[" + field + "] = '" + grid.TextMatrix(1, 1) + "'";
  SetFilter(filter);
  EXPECT_EQ(Counts(),
            QString("%1 رديف از %2 رديف يافت شده").arg(Control().state.QueryRecordCount).arg(all));
  EXPECT_LT(Control().state.QueryRecordCount, all);
  EXPECT_TRUE(Child<QLabel>("resultFilter")->text().contains(QString::fromStdString(filter)));
  EXPECT_GE(Child<QLabel>("resultFilter")->mapTo(desk.get(), QPoint()).y(),
            area.mapTo(desk.get(), QPoint(0, area.height())).y());
  ASSERT_TRUE(button->isVisible());
  SavePicture(*desk, "filter");
  // A mark in the header of the column that the filter asks for, and in no other.
  const auto marked = [&](std::int32_t col) {
    const QImage picture = area.viewport()->grab().toImage();
    const QRect cell = area.CellRect(0, col);
    for (int x = cell.left(); x < cell.right(); ++x) {
      if (picture.pixelColor(x, cell.center().y()) == ThemeOf(area.palette()).accent) return true;
    }
    return false;
  };
  EXPECT_TRUE(marked(1));
  EXPECT_FALSE(marked(2));
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(Counts(), plain);
  EXPECT_FALSE(button->isVisible());
  EXPECT_FALSE(marked(1));
  EXPECT_EQ(grid.Rows(), all + 1);
  // A filter that nothing passes leaves an empty row, which isn't one of the result.
  SetFilter("[" + field + "] = '-1'");
  EXPECT_EQ(Counts(), QString("0 رديف از %1 رديف يافت شده").arg(all));
}

}  // namespace
}  // namespace vorek::qt
