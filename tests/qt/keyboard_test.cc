#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QSet>
#include <QTabBar>
#include <QToolButton>

#include "adapters/qt/grid_area.h"
#include "adapters/qt/paper_bar.h"
#include "adapters/qt/print_preview.h"
#include "attachment_dialog.h"
#include "connect_dialog.h"
#include "desk_fixture.h"
#include "desk_toolbar.h"
#include "key_sheet.h"

// Every window by the keyboard alone, and as a screen reader hears it.
namespace vorek::qt {
namespace {

QString Described(const QWidget* widget) {
  return QString(widget->metaObject()->className()) + " " + widget->objectName();
}

// What takes keys of its own; the field within a spin box or a combo box is that box.
bool IsControl(const QWidget& widget) {
  if (qobject_cast<QAbstractSpinBox*>(widget.parentWidget()) != nullptr ||
      qobject_cast<QComboBox*>(widget.parentWidget()) != nullptr) {
    return false;
  }
  return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
         qobject_cast<const QLineEdit*>(&widget) != nullptr ||
         qobject_cast<const QComboBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
         qobject_cast<const QTabBar*>(&widget) != nullptr ||
         (qobject_cast<const QAbstractScrollArea*>(&widget) != nullptr &&
          widget.focusPolicy() != Qt::NoFocus);
}

// The button that closes a tab (Ctrl+W), and one within a field (Alt+Down, Delete).
bool HasKeyElsewhere(const QWidget& widget) {
  return qobject_cast<QTabBar*>(widget.parentWidget()) != nullptr ||
         qobject_cast<QLineEdit*>(widget.parentWidget()) != nullptr;
}

// Everything that Tab comes to, from the widget with the focus round to it again.
QSet<QWidget*> Walk(QWidget& window) {
  constexpr int kMost = 200;
  QSet<QWidget*> seen;
  if (window.focusWidget() == nullptr) QTest::keyClick(&window, Qt::Key_Tab);
  const QWidget* const first = window.focusWidget();
  for (int i = 0; i < kMost && window.focusWidget() != nullptr; ++i) {
    seen << window.focusWidget();
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    if (window.focusWidget() == first) break;
  }
  return seen;
}

void ExpectAllReached(QWidget& window, const char* what) {
  const QSet<QWidget*> reached = Walk(window);
  int controls = 0;
  for (QWidget* const widget : window.findChildren<QWidget*>()) {
    if (!IsControl(*widget) || !widget->isVisible() || !widget->isEnabled() ||
        widget->window() != &window || HasKeyElsewhere(*widget)) {
      continue;
    }
    ++controls;
    EXPECT_TRUE(reached.contains(widget)) << what << ": " << Described(widget).toStdString();
    const QAccessibleInterface* const heard = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(heard, nullptr);
    EXPECT_FALSE(heard->text(QAccessible::Name).trimmed().isEmpty())
        << what << " has no name: " << Described(widget).toStdString();
  }
  EXPECT_GT(controls, 0) << what;
}

class KeyboardTest : public DeskTest {};

TEST_F(KeyboardTest, ReachesAllOfTheDesktop) {
  desk->findChild<QLineEdit*>("search")->setFocus();
  ExpectAllReached(*desk, "start page");
  desk->OpenReport(201);
  Child<GridArea>("flxMain")->setFocus();
  desk->CurrentTab()->Widget().ShowFindBar();
  ExpectAllReached(*desk, "list with its find bar");
  desk->OpenReport(218);
  QTest::qWait(20);
  ExpectAllReached(*desk, "panel");
  Control().VorekParameters1.cmdOk.Click();
  QTest::qWait(20);
  ExpectAllReached(*desk, "panel with a result");
}

TEST_F(KeyboardTest, ReachesAllOfTheOtherWindows) {
  desk->OpenReport(201);
  desk->CurrentTab()->Widget().ShowChart();
  auto* const chart = Child<QWidget>("chartView");
  ASSERT_TRUE(QTest::qWaitForWindowActive(chart));
  ExpectAllReached(*chart, "chart");
  chart->close();
  desk->CurrentTab()->Widget().PrintGrid();
  auto* const preview = desk->findChild<PrintPreview*>();
  ASSERT_NE(preview, nullptr);
  QWidget* const pages = preview->window();
  ASSERT_TRUE(QTest::qWaitForWindowActive(pages));
  ExpectAllReached(*pages, "print preview");
  pages->close();
  desk::KeySheet sheet(desk.get());
  desk::ConnectDialog connect(desk::RecentList(settings), desk.get());
  for (QDialog* const dialog : std::initializer_list<QDialog*>{&sheet, &connect}) {
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
    ExpectAllReached(*dialog, qPrintable(dialog->windowTitle()));
    dialog->close();
  }
}

TEST_F(KeyboardTest, ReachesAllOfTheForms) {
  desk->OpenReport(102);
  auto* const area = Child<GridArea>("flxMain");
  area->setFocus();
  area->GoTo(1, 3);
  for (const char* const entry : {"mnuFilter", "mnuSendToTextFile", "mnuSendToOfficeExcel"}) {
    bool looked = false;
    When(ModalWindow, [&](QWidget* window) {
      looked = true;
      ExpectAllReached(*window, entry);
      window->close();
    });
    desk->CurrentTab()->Widget().Do([&] {
      Control().flxMain.PointAt(0, 3);
      static_cast<Menu*>(Control().FlexPopupMenu.Find(entry))->Click();
    });
    EXPECT_TRUE(looked) << entry;
  }
}

// By the keyboard from the row on: its report, its record, and the files kept with a report.
TEST_F(KeyboardTest, ReachesAllOfWhatARowLeadsTo) {
  struct Case {
    std::int32_t report;
    std::int32_t row;
    std::int32_t col;
    const char* what;
  };
  for (const Case& way : {Case{101, 3, 3, "related report"}, Case{243, 1, 2, "record"}}) {
    desk->OpenReport(way.report);
    QTest::qWait(20);
    auto* const area = Child<GridArea>("flxMain");
    area->setFocus();
    area->GoTo(way.row, way.col);
    QTest::keyClick(area, Qt::Key_Return);
    QTest::qWait(30);
    QWidget* const window = QApplication::activeWindow();
    ASSERT_NE(window, desk.get()) << way.what;
    ExpectAllReached(*window, way.what);
    window->close();
  }
  const auto connection = SqliteProvider()->Connect("Data Source=" + SampleFile());
  desk::AttachmentDialog attachments(*connection, 2302, 201, desk.get());
  attachments.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&attachments));
  ExpectAllReached(attachments, "attachments");
}

// The tip of a button tells its key.
TEST_F(KeyboardTest, HasAKeyForEachButtonOfTheToolbar) {
  const auto buttons = desk->findChild<desk::DeskToolbar*>()->findChildren<QToolButton*>();
  ASSERT_GT(buttons.size(), 8);
  for (const QToolButton* const button : buttons) {
    EXPECT_TRUE(button->toolTip().contains('(')) << button->text().toStdString();
  }
}

}  // namespace
}  // namespace vorek::qt
