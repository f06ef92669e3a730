#include <gtest/gtest.h>

#include <QCalendarWidget>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
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
  // The other signs that people put between, and the rest of what a date takes.
  const std::pair<const char*, const char*> typed[] = {
      {"1404/06/01", "1404/06/01"}, {"1404-6-2", "1404/06/02"}, {"1404.06.03", "1404/06/03"},
      {"1404 06 04", "1404/06/04"}, {"٠٤/٠٦/٠٥", "1404/06/05"}, {"040606", "1404/06/06"},
      {"+", "1404/06/07"},          {"-", "1404/06/06"},        {"1404/01/01-", "1403/12/30"}};
  for (const auto& [text, shown] : typed) {
    edit->selectAll();
    TypeText(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(edit->text(), shown) << text;
    EXPECT_EQ(date.FarsiDate(), shown) << text;
  }
  TypeText(edit, "+");  // behind a date that stands
  EXPECT_EQ(edit->text(), "1404/01/01");
  edit->selectAll();
  date.SetToday({2025, 11, 24});
  TypeText(edit, "ا");
  EXPECT_EQ(edit->text(), "1404/09/03");
}

// Enter, Tab and a click elsewhere leave a text where it is that isn't taken, and the focus with
// it.
TEST_F(KitTest, KeepsATextThatIsntTaken) {
  VorekDate date(&root, "dat");
  VorekCurrency other(&root, "acr");
  Button button(&root, "cmd");
  int clicks = 0;
  button.on_click = [&] { ++clicks; };
  other.Move(300, 900, 3000, 300);
  button.Move(300, 1500, 3000, 300);
  auto* const edit = Open<QLineEdit>(date);
  date.SetFarsiDate("1404/01/31");
  auto* const amount = window.findChild<QLineEdit*>("acr");
  auto* const push = window.findChild<QWidget*>("cmd");
  const std::pair<const char*, std::function<void()>> leaves[] = {
      {"Enter", [&] { QTest::keyClick(edit, Qt::Key_Return); }},
      {"Tab", [&] { QTest::keyClick(edit, Qt::Key_Tab); }},
      {"Shift+Tab", [&] { QTest::keyClick(edit, Qt::Key_Backtab); }},
      {"a field", [&] { QTest::mouseClick(amount, Qt::LeftButton); }},
      {"a button", [&] { QTest::mouseClick(push, Qt::LeftButton); }}};
  int visits = 0;  // a field that is only passed through has been left again before it is known
  other.on_got_focus = [&] { ++visits; };
  for (const auto& [what, leave] : leaves) {
    edit->selectAll();
    TypeText(edit, "14041230");
    leave();
    EXPECT_EQ(visits, what == std::string_view("a field") || what == std::string_view("a button"))
        << what;
    QTest::qWait(1);
    EXPECT_EQ(edit->text(), "1404/12/30") << what;
    EXPECT_EQ(date.Refusal(), "ماه 12 سال 1404 روز 30 ندارد") << what;
    EXPECT_EQ(edit->accessibleDescription(), "ماه 12 سال 1404 روز 30 ندارد") << what;
    EXPECT_FALSE(edit->styleSheet().isEmpty()) << what;
    EXPECT_TRUE(edit->hasFocus()) << what;
    // The next letter takes nothing away.
    TypeText(edit, "0");
    EXPECT_FALSE(date.Refusal().empty()) << what;
    edit->setText("1404/12/30");
  }
  EXPECT_EQ(clicks, 1);
  // A value of the program ends it.
  QTest::keyClick(edit, Qt::Key_Escape);
  date.SetFarsiDate("1404/02/01");
  EXPECT_EQ(edit->text(), "1404/02/01");
  EXPECT_TRUE(edit->styleSheet().isEmpty());
  QTest::keyClick(edit, Qt::Key_Tab);
  EXPECT_TRUE(amount->hasFocus());
}

TEST_F(KitTest, PressesAButtonOnceByEachKey) {
  Button button(&root, "cmd");
  int clicks = 0;
  button.on_click = [&] { ++clicks; };
  auto* const push = Open<QWidget>(button);
  QTest::keyClick(push, Qt::Key_Return);
  EXPECT_EQ(clicks, 1);
  QTest::keyClick(push, Qt::Key_Space);
  EXPECT_EQ(clicks, 2);
  QTest::mouseClick(push, Qt::LeftButton);
  EXPECT_EQ(clicks, 3);
}

TEST_F(KitTest, FindsALineOfAComboByEitherSpelling) {
  ComboBox box(&root, "cmb");
  for (const char* line : {"تهران", "كرمان", "يزد", "كرج"}) box.AddItem(line);
  auto* const combo = Open<QComboBox>(box);
  TypeText(combo, "ی");
  EXPECT_EQ(box.Text(), "يزد");
  QTest::qWait(QApplication::keyboardInputInterval() + 50);
  TypeText(combo, "کرم");
  EXPECT_EQ(box.Text(), "كرمان");
}

// Tab numbers count inside each container.
TEST_F(KitTest, FollowsTabNumbersInEachContainer) {
  Button last(&root, "cmdLast");
  Frame frame(&root, "frame");
  VorekDate second(&frame, "datSecond");
  VorekDate first(&frame, "datFirst");
  Frame grids(&root, "grids");
  Button grid(&grids, "cmdGrid");
  last.SetTabIndex(7);
  second.SetTabIndex(1);
  grids.SetTabIndex(8);
  std::int32_t top = 0;
  for (Control* control : {static_cast<Control*>(&first), static_cast<Control*>(&second),
                           static_cast<Control*>(&last), static_cast<Control*>(&grid)}) {
    control->Move(0, top += 400, 2000, 300);
  }
  frame.Move(0, 0, 3000, 3000);
  grids.Move(3000, 0, 3000, 3000);
  VorekDate before(&root, "datBefore");
  Open<QLineEdit>(before);
  QStringList order;
  for (int i = 0; i < 4; ++i) {
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    order << window.focusWidget()->objectName();
  }
  EXPECT_EQ(order.join(' '), "cmdLast cmdGrid datFirst datSecond");
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

TEST_F(KitTest, OpensTheCalendarOfAnEmptyDateOnTodayAndOnTheScreen) {
  VorekDate date(&root, "dat");
  date.SetToday({2024, 3, 20});
  auto* const edit = Open<QLineEdit>(date);
  const QRect screen = window.screen()->availableGeometry();
  window.move(screen.bottomRight() - QPoint(60, 60));
  QTest::qWait(1);
  QTest::keyClick(edit, Qt::Key_F4);
  auto* const days = edit->findChild<QCalendarWidget*>();
  ASSERT_NE(days, nullptr);
  EXPECT_EQ(days->selectedDate(), QDate(2024, 3, 20));
  EXPECT_EQ(days->yearShown(), 1403);
  EXPECT_EQ(days->monthShown(), 1);
  EXPECT_TRUE(screen.contains(days->window()->geometry()));
  days->window()->close();
  EXPECT_TRUE(date.IsNull());
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
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_EQ(time.GetTimeValue(), 510);
  for (const auto& [typed, value] :
       {std::pair{"08:31", 511}, {"830", 510}, {"8", 480}, {"۲۳:۵۹", 1439}, {"7:5", 425}}) {
    edit->selectAll();
    TypeText(edit, typed);
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(time.GetTimeValue(), value) << typed;
  }
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
