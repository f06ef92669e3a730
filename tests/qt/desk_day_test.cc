#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeWidget>

#include "adapters/qt/colors.h"
#include "adapters/qt/grid_area.h"
#include "adapters/qt/theme.h"
#include "desk_fixture.h"
#include "desk_style.h"
#include "key_sheet.h"
#include "start_page.h"

// What a day at the desktop needs besides its reports.
namespace vorek::qt {
namespace {

class DayTest : public DeskTest {
 protected:
  GridArea* Open(int report) {
    EXPECT_NE(desk->OpenReport(report), nullptr);
    auto* const area = Child<GridArea>("flxMain");
    area->SyncBars();
    area->setFocus();
    return area;
  }
  QString Figures() {
    QTest::qWait(20);
    return Child<QLabel>("resultFigures")->text().remove(QChar(0x2066)).remove(QChar(0x2069));
  }
};

TEST(Theme, KeepsItsTextsAndMarksApartFromTheirGrounds) {
  for (const Theme* const theme : {&LightTheme(), &DarkTheme()}) {
    for (const QColor& ground : {theme->ground, theme->panel, theme->head, theme->soft,
                                 theme->picked, theme->sum, theme->hit}) {
      EXPECT_GE(Contrast(theme->text, ground), 4.5) << ground.name().toStdString();
    }
    for (const QColor& ground : {theme->ground, theme->panel, theme->head, theme->soft}) {
      EXPECT_GE(Contrast(theme->muted, ground), 4.5) << ground.name().toStdString();
      EXPECT_GE(Contrast(theme->star, ground), 3.0) << ground.name().toStdString();
      EXPECT_GE(Contrast(theme->accent, ground), 3.0) << ground.name().toStdString();
    }
    EXPECT_GE(Contrast(theme->on_accent, theme->accent), 4.5);
    EXPECT_GE(Contrast(theme->sum_line, theme->sum), 3.0);
    EXPECT_GE(Contrast(theme->danger, theme->panel), 4.5);
    // A selected row of the colours that the engine sets can be told from its neighbours.
    EXPECT_GE(Contrast(theme->picked, theme->panel), 1.5);
  }
}

TEST_F(DayTest, TellsTheFiguresOfASelection) {
  GridArea* const area = Open(230);
  Grid& grid = Control().flxMain;
  EXPECT_EQ(Figures(), "") << "a row that is selected whole";
  area->GoTo(1, 3);
  EXPECT_EQ(Figures(), "") << "one cell";
  for (int i = 0; i < 30; ++i) QTest::keyClick(area, Qt::Key_Down, Qt::ShiftModifier);
  ASSERT_EQ(grid.RowSel(), grid.Rows() - 1) << "with the row of the sum";
  const QString figures = Figures();
  EXPECT_TRUE(
      figures.contains("جمع " + QString::fromStdString(grid.TextMatrix(grid.Rows() - 1, 3))))
      << figures.toStdString();
  EXPECT_TRUE(figures.contains("انتخاب: 18"));
  SavePicture(*desk, "selection");
  grid.SelectByUser(1, 1, 3, grid.Cols() - 1);
  EXPECT_EQ(Figures(), "انتخاب: 3") << "whole rows have no sum of their columns";
}

TEST_F(DayTest, FindsATextInAllColumnsWhileItIsTyped) {
  GridArea* const area = Open(201);
  QTest::keyClick(area, Qt::Key_F, Qt::ControlModifier);
  auto* const text = Child<QLineEdit>("findText");
  ASSERT_TRUE(text->hasFocus());
  const auto* const count = Child<QLabel>("findCount");
  TypeText(text, "کرمانی");
  ASSERT_TRUE(QTest::qWaitFor(
      [&] { return !count->text().isEmpty() && !count->text().endsWith('+'); }, 5000));
  const int all = count->text().toInt();
  EXPECT_GT(all, 10);
  SavePicture(*desk, "find-bar");
  QTest::keyClick(text, Qt::Key_Return);
  const Grid& grid = Control().flxMain;
  EXPECT_EQ(count->text(), QString("1 از %1").arg(all));
  EXPECT_TRUE(grid.TextMatrix(grid.Row(), grid.Col()).find("كرماني") != std::string::npos);
  const int first = grid.Row();
  QTest::keyClick(text, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(count->text(), QString("%1 از %1").arg(all));
  QTest::keyClick(text, Qt::Key_Down);
  EXPECT_EQ(grid.Row(), first);
  // The mark is in the picture, in a cell that isn't the current one.
  const QPoint hit = area->CellRect(grid.Row(), grid.Col()).topLeft() + QPoint(2, 2);
  area->GoTo(grid.Row(), grid.FixedCols());
  EXPECT_EQ(area->viewport()->grab().toImage().pixelColor(hit), ThemeOf(area->palette()).hit);
  // Rows that come anew are looked through anew.
  Control().TakeFilterAway();
  QTest::keyClick(text, Qt::Key_Escape);
  EXPECT_FALSE(text->isVisible());
  EXPECT_TRUE(area->hasFocus());
  EXPECT_NE(area->viewport()->grab().toImage().pixelColor(hit), ThemeOf(area->palette()).hit);
}

TEST_F(DayTest, CopiesInThreeForms) {
  GridArea* const area = Open(215);
  const Grid& grid = Control().flxMain;
  area->GoTo(1, 4);
  const QString shown = QString::fromStdString(grid.TextMatrix(1, 4));
  const auto* const data = QApplication::clipboard();
  QTest::keyClick(area, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(data->text(), shown);
  EXPECT_TRUE(data->mimeData()->html().contains(shown));
  QTest::keyClick(area, Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
  EXPECT_EQ(data->text(), QString(shown).remove('/'));
  QTest::keyClick(area, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(data->text(), QString::fromStdString(grid.TextMatrix(0, 4)) + '\n' + shown);
}

TEST_F(DayTest, DrawsTheGridLargerAndKeepsThat) {
  GridArea* area = Open(201);
  const QSize small = area->CellRect(1, 2).size();
  QTest::keyClick(area, Qt::Key_Plus, Qt::ControlModifier);
  area->SyncBars();
  const QSize large = area->CellRect(1, 2).size();
  EXPECT_NEAR(large.width(), small.width() * 1.1, 2);
  EXPECT_GT(large.height(), small.height());
  EXPECT_EQ(Control().flxMain.ColWidth(2), Control().world.process.main.ColumnLayouts[2].width)
      << "the report's own widths stay";
  desk->CurrentTab()->SetRowPadding(12);
  EXPECT_GT(area->CellRect(1, 2).height(), large.height());
  Restart();
  area = Child<GridArea>("flxMain");
  EXPECT_NEAR(area->Zoom(), 1.1, 0.001);
  QTest::keyClick(area, Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(area->Zoom(), 1);
}

TEST_F(DayTest, ArrangesTheColumnsOfTheViewAlone) {
  GridArea* area = Open(215);
  Grid& grid = Control().flxMain;
  ColumnView& view = area->Geometry().Arrangement();
  const auto choose = [&](const QString& start) {
    When([] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); },
         [start](QMenu* menu) {
           for (QAction* const entry : menu->actions()) {
             if (entry->text().startsWith(start)) entry->trigger();
           }
           menu->close();
         });
    desk->findChild<QToolButton*>("columns")->click();
    area->SyncBars();
  };
  const int right_of_4 = area->CellRect(1, 4).right();
  choose(QString::fromStdString(grid.TextMatrix(0, 3)));
  EXPECT_TRUE(area->CellRect(1, 3).isEmpty());
  EXPECT_GT(area->CellRect(1, 4).right(), right_of_4) << "the next one takes its place";
  EXPECT_NE(grid.ColWidth(3), 0) << "the grid's own column stays";
  area->GoTo(1, 4);
  choose("«" + QString::fromStdString(grid.TextMatrix(0, 4)) + "» يك ستون به راست");
  EXPECT_GT(area->CellRect(1, 4).left(), area->CellRect(1, 2).left());
  QTest::keyClick(area, Qt::Key_Left);
  EXPECT_EQ(grid.Col(), 2) << "keys go by the view";
  QTest::keyClick(area, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(area, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
            grid.TextMatrix(1, 4) + '\t' + grid.TextMatrix(1, 2));
  area->GoTo(1, 4);
  choose("ثابت تا");
  EXPECT_EQ(view.Frozen(), 2);
  SavePicture(*desk, "columns");
  Restart();
  area = Child<GridArea>("flxMain");
  EXPECT_EQ(area->Geometry().Arrangement().Frozen(), 2);
  EXPECT_TRUE(area->Geometry().Arrangement().IsHidden(3));
  area->setFocus();
  choose("همه به شكل نخست");
  EXPECT_FALSE(area->CellRect(1, 3).isEmpty());
}

TEST_F(DayTest, MovesAColumnByItsHeaderAndSortsByAPress) {
  GridArea* const area = Open(215);
  const Grid& grid = Control().flxMain;
  const auto places = [&] { return area->Geometry().Arrangement().Shown(); };
  const std::vector<std::int32_t> own = places();
  const auto middle = [&](std::int32_t col) { return area->CellRect(0, col).center(); };
  const auto drag = [&](std::int32_t col, QPoint to, bool cancelled) {
    QWidget* const view = area->viewport();
    QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, middle(col));
    QMouseEvent move(QEvent::MouseMove, to, view->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(view, &move);
    SavePicture(*desk, "header-drag");
    if (cancelled) QTest::keyClick(area, Qt::Key_Escape);
    QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, to);
  };
  const QPoint left_of_4(area->CellRect(0, 4).left() + 2, middle(4).y());
  drag(2, left_of_4, true);
  EXPECT_EQ(places(), own) << "taken back by Escape";
  drag(2, left_of_4, false);
  EXPECT_EQ(places()[2], 4);
  EXPECT_EQ(places()[3], 2) << "behind the column at whose end it was let go";
  EXPECT_EQ(grid.SortedBy(), SortMark{}) << "nothing was sorted";
  drag(2, QPoint(area->CellRect(0, own[0]).right() - 2, middle(2).y()), false);
  EXPECT_EQ(places()[0], 2);
  QTest::mouseClick(area->viewport(), Qt::LeftButton, {}, middle(4));
  EXPECT_EQ(grid.SortedBy().column, 4) << "a press without a movement";
}

// Enter asks for a hit that the slices haven't come to yet: they go on, and the step follows.
TEST_F(DayTest, StepsToAHitWhenItIsFound) {
  GridArea* const area = Open(231);
  Grid& grid = Control().flxMain;
  ASSERT_GT(grid.Rows(), 90'000);
  const std::int32_t last = grid.Rows() - 2;
  grid.WriteCell(last, 2, "نشاني پاياني");
  QTest::qWait(50);
  QTest::keyClick(area, Qt::Key_F, Qt::ControlModifier);
  auto* const text = Child<QLineEdit>("findText");
  text->setText("نشانی پایانی");
  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_NE(grid.Row(), last) << "the key itself doesn't read all rows";
  EXPECT_TRUE(QTest::qWaitFor([&] { return grid.Row() == last && grid.Col() == 2; }, 10'000));
}

TEST_F(DayTest, KeepsFavouritesAndWhatWasOpenedLast) {
  EXPECT_TRUE(desk->findChild<QWidget*>("startPage")->isVisible());
  desk->OpenReport(203);
  desk->OpenReport(215);
  auto* const list = desk->findChild<QTreeWidget*>("catalogue");
  ASSERT_EQ(list->currentItem()->text(0), "215") << "the report on show";
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Asterisk);
  QTest::qWait(5);
  EXPECT_EQ(list->topLevelItem(0)->text(0), "برگزيده");
  EXPECT_EQ(list->topLevelItem(0)->child(0)->text(0), "215");
  EXPECT_EQ(list->topLevelItem(2)->text(0), "فروش") << "a group by its name";
  desk->close();
  desk = std::make_unique<desk::DeskWindow>(settings);
  desk->show();
  ASSERT_TRUE(desk->Connect(Owner()));
  EXPECT_EQ(desk->findChild<QTreeWidget*>("catalogue")->topLevelItem(0)->child(0)->text(0), "215");
  const auto links = desk->findChild<QWidget*>("startPage")->findChildren<QToolButton*>();
  ASSERT_EQ(links.size(), 3);
  EXPECT_TRUE(links[0]->text().startsWith("215")) << "the last one first";
  SavePicture(*desk, "start-page");
  links[1]->click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return desk->CurrentTab() != nullptr; }));
  ASSERT_NE(desk->CurrentTab(), nullptr);
  EXPECT_EQ(desk->CurrentTab()->ReportNumber(), 203);
}

TEST_F(DayTest, OpensAReportTwiceSideBySide) {
  Open(215);
  QTest::keyClick(desk->focusWidget(), Qt::Key_N, Qt::ControlModifier);
  const auto* const tabs = desk->findChild<QTabWidget*>("reports");
  ASSERT_TRUE(QTest::qWaitFor([&] { return tabs->count() == 2; }));
  Control().flxMain.WriteCell(1, 1, "x");
  EXPECT_NE(static_cast<desk::ReportTab*>(tabs->widget(0))->Widget().Report().TextMatrix(1, 1),
            "x");
  desk::DeskWindow* const beside = desk->OpenBeside(215);
  ASSERT_NE(beside, nullptr);
  ASSERT_TRUE(QTest::qWaitFor([&] { return beside->CurrentTab() != nullptr; }));
  EXPECT_EQ(beside->CurrentTab()->ReportNumber(), 215);
  EXPECT_TRUE(beside->windowTitle().contains("بيست مشتري برتر"));
  EXPECT_TRUE(beside->windowTitle().contains("بهرام كياني"));
  beside->close();
}

TEST_F(DayTest, OffersWhatTheReportOnShowCanDo) {
  const auto enabled = [&](const char* button) {
    return desk->findChild<QToolButton*>(button)->isEnabled();
  };
  EXPECT_FALSE(enabled("run"));
  EXPECT_FALSE(enabled("find"));
  Open(218);
  EXPECT_TRUE(enabled("run"));
  EXPECT_TRUE(enabled("parameters"));
  EXPECT_FALSE(enabled("sum")) << "nothing has been searched yet";
  TypeText(desk->focusWidget(), "14040101");
  desk->findChild<QToolButton*>("run")->click();
  QTest::qWait(20);
  EXPECT_GT(Control().flxMain.Rows(), 100);
  EXPECT_TRUE(enabled("sum"));
  const bool folded = Control().VorekParameters1.Folded();
  QTest::keyClick(desk->focusWidget(), Qt::Key_P, Qt::AltModifier);
  EXPECT_NE(Control().VorekParameters1.Folded(), folded);
  GridArea* const area = Open(102);
  EXPECT_FALSE(enabled("parameters"));
  area->GoTo(1, 4);
  const int rows = Control().flxMain.Rows();
  QTest::keyClick(area, Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(Control().flxMain.Rows(), rows + 1);
  EXPECT_NE(Control().flxMain.TextMatrix(rows, 4), "");
}

// Every key that an action of the window has stands on the sheet.
TEST_F(DayTest, ListsEveryKey) {
  desk::KeySheet sheet(desk.get());
  const auto* const table = sheet.findChild<QTableWidget*>("keys");
  QStringList told;
  for (int row = 0; row < table->rowCount(); ++row) {
    if (const QTableWidgetItem* const key = table->item(row, 1); key != nullptr) {
      told += key->text().split("، ");
    }
  }
  for (const QAction* const action : desk->actions()) {
    const QString key = action->shortcut().toString();
    EXPECT_TRUE(key.isEmpty() || told.contains(key)) << key.toStdString();
  }
  sheet.show();
  SavePicture(sheet, "key-sheet");
}

}  // namespace
}  // namespace vorek::qt
