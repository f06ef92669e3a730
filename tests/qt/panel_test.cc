#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QTreeWidget>

#include "adapters/qt/grid_area.h"
#include "desk_fixture.h"
#include "qt_environment.h"

// The panel and the dialog of parameters in their windows.
namespace vorek::qt {
namespace {

class PanelTest : public DeskTest {
 protected:
  ~PanelTest() override { QApplication::setFont(font_); }
  void Open(int report) {
    desk->OpenReport(report);
    QTest::qWait(20);
  }
  void Type(QLineEdit* edit, const QString& text, Qt::Key end) {
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    TypeText(edit, text);
    QTest::keyClick(edit, end);
    QTest::qWait(20);
  }
  // Twice the size that everything is designed for.
  void Enlarge() {
    QFont large = font_;
    large.setPointSizeF(large.pointSizeF() * 2);
    QApplication::setFont(large);
    // Qt tells widgets only while the application's own loop runs.
    for (QWidget* widget : QApplication::allWidgets()) {
      QEvent change(QEvent::ApplicationFontChange);
      QApplication::sendEvent(widget, &change);
    }
    QTest::qWait(100);
  }
  static QRect OnScreen(const QWidget* widget) {
    return {widget->mapToGlobal(QPoint(0, 0)), widget->size()};
  }

 private:
  QFont font_ = QApplication::font();
};

TEST_F(PanelTest, ATextThatIsntTakenStaysAndTheReportDoesntRun) {
  Open(225);
  auto* const date = Child<QLineEdit>("dat(1)");
  EXPECT_TRUE(Child<QLineEdit>("dat(1)")->hasFocus());
  Type(date, "1404/13/01", Qt::Key_Return);
  EXPECT_EQ(date->text(), "1404/13/01");
  EXPECT_TRUE(date->hasFocus());
  EXPECT_EQ(Control().state.QueryRecordCount, -1);
  const auto* const note = Child<QLabel>("lblNote(0)");
  EXPECT_EQ(note->text(), "ماه 13 وجود ندارد");
  EXPECT_TRUE(note->isVisible());
  EXPECT_GE(OnScreen(note).top(), OnScreen(date).bottom());
  for (const QLineEdit* other : desk->CurrentTab()->findChildren<QLineEdit*>()) {
    if (!other->isVisible()) continue;
    EXPECT_FALSE(OnScreen(other).intersects(OnScreen(note))) << other->objectName().toStdString();
  }
  EXPECT_GE(OnScreen(Child<GridArea>("flxMain")).top(), OnScreen(note).bottom());
  QTest::mouseClick(Child<QPushButton>("cmdOk"), Qt::LeftButton);
  EXPECT_EQ(Control().state.QueryRecordCount, -1);
  Type(Child<QLineEdit>("tim(1)"), "8:60", Qt::Key_Tab);
  SavePicture(*desk, "panel-refused");
  Type(Child<QLineEdit>("tim(1)"), "", Qt::Key_Tab);
  Type(date, "1404/01/01", Qt::Key_Return);
  EXPECT_GT(Control().state.QueryRecordCount, 0);
  EXPECT_NE(Control().state.ListOfVisualParameters.find("=1404/01/01"), std::string::npos);
}

TEST_F(PanelTest, AnAmbiguousNameOpensTheListOnItsRows) {
  Open(225);
  auto* const field = Child<QLineEdit>("slt(1)");
  Type(field, "كارون", Qt::Key_Return);
  EXPECT_EQ(Control().state.QueryRecordCount, -1);
  QWidget* const popup = QApplication::activePopupWidget();
  ASSERT_NE(popup, nullptr);
  const auto* const rows = popup->findChild<QTreeWidget*>("listRows");
  ASSERT_GT(rows->topLevelItemCount(), 1);
  for (int i = 0; i < rows->topLevelItemCount(); ++i) {
    EXPECT_TRUE(rows->topLevelItem(i)->text(0).contains("كارون"));
  }
  SavePicture(*popup, "list-offered");
  auto* const search = popup->findChild<QLineEdit*>("listSearch");
  QTest::keyClick(search, Qt::Key_Down);
  const QString second = rows->topLevelItem(1)->text(0);
  QTest::keyClick(search, Qt::Key_Return);
  QTest::qWait(1);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_TRUE(second.endsWith(field->text())) << field->text().toStdString();
  EXPECT_TRUE(Control().VorekParameters1.widgets.slt[1].Refusal().empty());
}

// A list that is always open takes Enter for itself only while something is searched for in it.
TEST_F(PanelTest, EnterInAnOpenListChoosesOnlyWhatIsSearchedFor) {
  Open(225);
  const auto& choice = Control().VorekParameters1.widgets.app[1];
  auto* const list = Child<QWidget>("app(1)");
  auto* const search = list->findChild<QLineEdit*>("listSearch");
  const auto* const rows = list->findChild<QTreeWidget*>("listRows");
  EXPECT_EQ(rows->currentItem(), nullptr);  // nothing looks chosen that isn't
  search->setFocus();
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_TRUE(choice.IsNull());
  EXPECT_GT(Control().state.QueryRecordCount, 0);
  Control().state.QueryRecordCount = -1;
  TypeText(search, "احمد");
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_FALSE(choice.IsNull());
  EXPECT_EQ(Control().state.QueryRecordCount, -1);
  EXPECT_TRUE(rows->currentItem()->text(0).contains("احمد"));
}

TEST_F(PanelTest, LeavesOneLineOutOfAll) {
  Open(225);
  auto& list = Control().VorekParameters1.widgets.mlt[1];
  auto* const panel = Child<QWidget>("mlt(1)");
  auto* rows = panel->findChild<QTreeWidget*>("listRows");
  QTest::mouseClick(panel->findChild<QPushButton*>("listAll"), Qt::LeftButton);
  EXPECT_TRUE(list.AllSelected());
  rows->topLevelItem(2)->setCheckState(0, Qt::Unchecked);
  int ticked = 0;
  for (int i = 0; i < rows->topLevelItemCount(); ++i) {
    ticked += rows->topLevelItem(i)->checkState(0) == Qt::Checked ? 1 : 0;
  }
  EXPECT_EQ(ticked, rows->topLevelItemCount() - 1);
  EXPECT_EQ(rows->topLevelItem(2)->checkState(0), Qt::Unchecked);
  EXPECT_FALSE(list.AllSelected());
}

TEST_F(PanelTest, GoesThroughItsFieldsByTab) {
  Open(106);
  QStringList order;
  for (int i = 0; i < 6; ++i) {
    order << desk->focusWidget()->objectName();
    QTest::keyClick(desk->focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(order.join(' '), "cmb(1) txt(1) chk(1) cmdOk cmdNew cmdFold");
}

TEST_F(PanelTest, ScrollsWhereItIsLargerThanItsRoom) {
  for (const bool large : {false, true}) {
    SCOPED_TRACE(large);
    if (large) Enlarge();
    desk->resize(700, large ? 600 : 480);
    Open(225);
    auto* const area = Child<QScrollArea>("VorekParameters1");
    QTRY_VERIFY(area->verticalScrollBar()->isVisible());
    EXPECT_GE(OnScreen(desk.get()).bottom(), OnScreen(Child<GridArea>("flxMain")).bottom());
    EXPECT_GT(Child<GridArea>("flxMain")->height(), 50);
    // Each field can be brought into view, the first and the last, right and left.
    for (const VorekParameters::Field& field : Control().VorekParameters1.Fields()) {
      auto* const widget = Child<QWidget>(QString::fromStdString(field.widget->PathName()));
      if (field.widget->Name() == "lbl") continue;
      widget->setFocus();
      EXPECT_TRUE(OnScreen(area).intersects(OnScreen(widget))) << field.widget->PathName();
      EXPECT_GE(widget->mapTo(area->widget(), QPoint(0, 0)).x(), 0) << field.widget->PathName();
    }
    Control().VorekParameters1.FocusFirst();
    SavePicture(*desk, large ? "panel-scrolled-200" : "panel-scrolled");
  }
}

// The values in force stand in a line above, from which the form is opened again.
TEST_F(PanelTest, FoldsAndGivesItsRoomToTheGrid) {
  for (const bool large : {false, true}) {
    if (large) Enlarge();
    Open(218);
    Type(Child<QLineEdit>("dat(1)"), "1404/01/01", Qt::Key_Return);
    const int grid = Child<GridArea>("flxMain")->height();
    QTest::mouseClick(Child<QPushButton>("cmdFold"), Qt::LeftButton);
    QTest::qWait(20);
    EXPECT_GT(Child<GridArea>("flxMain")->height(), grid);
    EXPECT_FALSE(Child<QLabel>("lblValues")->isVisible());
    EXPECT_EQ(Child<QLabel>("headTitle")->text(), "فروش كالا");
    EXPECT_EQ(Child<QLabel>("chipName")->text(), "از تاريخ");
    EXPECT_TRUE(Child<QLabel>("chipValue")->text().contains("1404/01/01"));
    EXPECT_FALSE(Child<QPushButton>("cmdFold")->isVisible());
    SavePicture(*desk, large ? "panel-folded-200" : "panel-folded");
    QTest::mouseClick(Child<QToolButton>("headChange"), Qt::LeftButton);
    QTest::qWait(20);
    EXPECT_EQ(Child<GridArea>("flxMain")->height(), grid);
    EXPECT_TRUE(Child<QLineEdit>("dat(1)")->hasFocus());
    SavePicture(*desk, large ? "panel-200" : "panel");
  }
}

TEST_F(PanelTest, ADialogKeepsATextThatIsntTakenAndCancelsByEscape) {
  When(ModalWindow, [&](QWidget* window) {
    auto* const date = window->findChild<QLineEdit*>("dat(1)");
    EXPECT_TRUE(date->hasFocus());
    const int height = window->height();
    TypeText(date, "1404/07/31");
    QTest::keyClick(date, Qt::Key_Return);
    QTest::qWait(20);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(date->hasFocus());
    EXPECT_GT(window->height(), height);
    EXPECT_TRUE(window->findChild<QLabel*>("lblNote(0)")->isVisible());
    const auto* const caption = window->findChild<QLabel*>("lblCaption");
    for (const QPushButton* button : window->findChildren<QPushButton*>()) {
      if (!button->isVisible() || !caption->isVisible()) continue;
      EXPECT_FALSE(OnScreen(button).intersects(OnScreen(caption)));
    }
    EXPECT_TRUE(window->screen()->availableGeometry().contains(window->frameGeometry()));
    SavePicture(*window, "dialog-refused");
    QTest::keyClick(date, Qt::Key_Escape);
  });
  desk->OpenReport(219);
  EXPECT_EQ(Control().state.QueryRecordCount, -1);
  Enlarge();
  When(ModalWindow, [&](QWidget* window) {
    QTest::qWait(20);
    EXPECT_TRUE(window->screen()->availableGeometry().contains(window->frameGeometry()));
    EXPECT_TRUE(window->findChild<QLineEdit*>("dat(1)")->hasFocus());
    SavePicture(*window, "dialog-200");
    auto* const cancel = window->findChild<QPushButton*>("cmdCancel");
    cancel->setFocus();
    QTest::keyClick(cancel, Qt::Key_Escape);
  });
  EXPECT_FALSE(Control().Refresh(true, "", ""));
}

TEST_F(PanelTest, KeepsItsPopupsOnTheScreen) {
  Enlarge();
  Open(225);
  desk->move(desk->screen()->availableGeometry().bottomRight() - QPoint(500, 300));
  QTest::qWait(20);
  for (const char* name : {"dat(2)", "slt(1)", "ntp(1)"}) {
    auto* const field = Child<QLineEdit>(name);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_F4);
    QWidget* const popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr) << name;
    EXPECT_TRUE(desk->screen()->availableGeometry().contains(popup->geometry())) << name;
    SavePicture(*popup, QString("popup-200-") + QString(name).left(3));
    popup->close();
    QTest::qWait(1);
  }
}

}  // namespace
}  // namespace vorek::qt
