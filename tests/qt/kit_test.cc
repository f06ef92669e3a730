#include <gtest/gtest.h>

#include <QCalendarWidget>
#include <QLineEdit>
#include <QMenu>
#include <QtTest/QTest>

#include "adapters/qt/presenter.h"
#include "adapters/qt/qt_windows.h"
#include "qt_environment.h"
#include "widgets/vorek_currency.h"
#include "widgets/vorek_date.h"
#include "widgets/vorek_time.h"

namespace vorek::qt {
namespace {

class KitTest : public testing::Test {
 protected:
  template <typename Widget>
  Widget* Open(Control& control) {
    control.Move(300, 300, 3000, 300);
    presenter = std::make_unique<Presenter>(root, window);
    window.resize(500, 300);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    auto* const found = window.findChild<Widget*>(QString::fromStdString(control.Name()));
    EXPECT_NE(found, nullptr);
    found->setFocus();
    return found;
  }

  QWidget window;
  Frame root{nullptr, "root"};
  std::unique_ptr<Presenter> presenter;
};

TEST_F(KitTest, TakesADateWithItsSlashesFilledIn) {
  VorekDate date(&root, "dat");
  auto* const edit = Open<QLineEdit>(date);
  TypeText(edit, "۱۴۰۴۰۱۳۱");
  EXPECT_EQ(edit->text(), "۱۴۰۴/۰۱/۳۱");
  EXPECT_TRUE(date.IsNull());
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_EQ(date.FarsiDate(), "1404/01/31");
  EXPECT_EQ(edit->text(), "1404/01/31");
  // A day that isn't in the calendar leaves the date as it was.
  edit->selectAll();
  TypeText(edit, "14041230");
  edit->clearFocus();
  EXPECT_EQ(date.FarsiDate(), "1404/01/31");
  EXPECT_EQ(edit->text(), "1404/01/31");
}

TEST_F(KitTest, PicksADateFromAPersianCalendar) {
  VorekDate date(&root, "dat");
  date.SetFarsiDate("1404/07/15");
  auto* const edit = Open<QLineEdit>(date);
  QTest::keyClick(edit, Qt::Key_F4);
  auto* const days = edit->findChild<QCalendarWidget*>();
  ASSERT_NE(days, nullptr);
  EXPECT_EQ(days->calendar().name(), "Jalali");
  EXPECT_EQ(days->firstDayOfWeek(), Qt::Saturday);
  SavePicture(*days, "calendar");
  QTest::keyClick(days->focusWidget() != nullptr ? days->focusWidget() : days, Qt::Key_Left);
  Q_EMIT days->clicked(days->selectedDate());
  EXPECT_NE(date.FarsiDate(), "");
  EXPECT_EQ(date.FarsiDate().substr(0, 7), "1404/07");
}

TEST_F(KitTest, GroupsAnAmountWhileItIsTyped) {
  VorekCurrency amount(&root, "acr");
  auto* const edit = Open<QLineEdit>(amount);
  TypeText(edit, "۱۲34567");
  EXPECT_EQ(edit->text(), "1/234/567");
  edit->setCursorPosition(1);
  TypeText(edit, "9");
  EXPECT_EQ(edit->text(), "19/234/567");
  EXPECT_EQ(edit->cursorPosition(), 2);
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_EQ(amount.Value(), "19234567");
}

TEST_F(KitTest, TakesATimeWithItsColonFilledIn) {
  VorekTime time(&root, "tim");
  auto* const edit = Open<QLineEdit>(time);
  TypeText(edit, "0830");
  EXPECT_EQ(edit->text(), "08:30");
  QTest::keyClick(edit, Qt::Key_Tab);
  EXPECT_EQ(time.GetTimeValue(), 510);
}

// Separators, disabled entries and entries below others, and dots that stand behind the words.
TEST(MenuTest, ClicksTheEntryThatIsChosen) {
  QtWindows windows;
  Menu menu(nullptr, "FlexPopupMenu");
  Menu search(&menu, "mnuQuickSearch");
  search.SetCaption("...جستجوي سريع");
  Menu line(&menu, "sep2");
  line.SetCaption("-");
  Menu off(&menu, "mnuOff");
  off.SetEnabled(false);
  int clicks = 0;
  search.on_click = [&] { ++clicks; };
  const auto popup = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
  When(popup, [](QMenu* shown) {
    ASSERT_EQ(shown->actions().size(), 3);
    EXPECT_EQ(shown->actions()[0]->text(), "جستجوي سريع...");
    EXPECT_TRUE(shown->actions()[1]->isSeparator());
    EXPECT_FALSE(shown->actions()[2]->isEnabled());
    QTest::keyClick(shown, Qt::Key_Down);
    QTest::keyClick(shown, Qt::Key_Return);
  });
  windows.PopupMenu(menu);
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace vorek::qt
