#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTemporaryDir>
#include <QTreeView>
#include <QtTest/QTest>
#include <memory>

#include "adapters/qt/control_view.h"
#include "adapters/qt/qt_file_dialogs.h"
#include "adapters/qt/qt_windows.h"
#include "adapters/qt/translations.h"
#include "messages/form_confirm.h"
#include "messages/form_error.h"
#include "messages/form_message.h"
#include "qt_environment.h"
#include "support/fixed_clock.h"
#include "totals/form_filter.h"
#include "totals/form_quick_search.h"
#include "vorek/field_type.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

QPushButton* Button(QWidget* window, const char* name) {
  auto* const button = window->findChild<QPushButton*>(name);
  EXPECT_NE(button, nullptr) << name;
  return button;
}

TEST(FormsTest, AMessageIsReadAndClosedByItsButton) {
  QtWindows windows;
  FormMessage form(windows);
  form.SetCaption("خطا");
  form.lblMessage.SetCaption("شما مجاز به مشاهده اين گزارش نيستيد.");
  When(ModalWindow, [](QWidget* window) {
    EXPECT_EQ(window->windowTitle(), "خطا");
    const auto* const label = window->findChild<QLabel*>("lblMessage");
    EXPECT_EQ(label->text(), "شما مجاز به مشاهده اين گزارش نيستيد.");
    EXPECT_EQ(label->layoutDirection(), Qt::RightToLeft);
    QTest::mouseClick(Button(window, "cmdContinue"), Qt::LeftButton);
  });
  form.ShowModal();
  EXPECT_FALSE(form.Shown());
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space}) {
    When(ModalWindow, [key](QWidget* window) {
      EXPECT_EQ(window->focusWidget()->objectName(), "cmdContinue");
      QTest::keyClick(window->focusWidget(), key);
    });
    form.ShowModal();
    EXPECT_FALSE(form.Shown());
  }
}

struct Answer {
  const char* what;
  std::function<void(QWidget*)> act;
  int answer;
};

TEST(FormsTest, AQuestionIsAnsweredByMouseKeyAndCloseBox) {
  const Answer kAnswers[] = {
      {"yes by mouse",
       [](QWidget* window) { QTest::mouseClick(Button(window, "cmdYes"), Qt::LeftButton); }, 1},
      {"no by Tab and Enter",
       [](QWidget* window) {
         Button(window, "cmdYes")->setFocus();
         QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
         EXPECT_EQ(window->focusWidget()->objectName(), "cmdNo");
         QTest::keyClick(window->focusWidget(), Qt::Key_Return);
       },
       2},
      {"no answer by Escape",
       [](QWidget* window) { QTest::keyClick(window->focusWidget(), Qt::Key_Escape); }, 0},
      {"close box", [](QWidget* window) { window->close(); }, 9},
  };
  QtWindows windows;
  for (const Answer& expected : kAnswers) {
    std::int32_t answer = 9;
    FormConfirm form(windows, answer);
    When(ModalWindow, expected.act);
    form.ShowModal();
    EXPECT_EQ(answer, expected.answer) << expected.what;
  }
}

TEST(FormsTest, AnErrorUnfoldsItsDetailAndClosesByEscape) {
  QtWindows windows;
  FormError form(windows);
  form.lblError.SetCaption("نمايش گزارش با اشکال مواجه شد.");
  form.txtError.SetText("no such table: tblMissing");
  When(ModalWindow, [](QWidget* window) {
    const auto* const detail = window->findChild<QPlainTextEdit*>("txtError");
    const int folded = window->height();
    const auto in_view = [&] { return window->rect().contains(detail->geometry()); };
    EXPECT_FALSE(in_view());
    QTest::mouseClick(Button(window, "cmdDetail"), Qt::LeftButton);
    EXPECT_TRUE(in_view());
    EXPECT_EQ(detail->toPlainText(), "no such table: tblMissing");
    EXPECT_EQ(Button(window, "cmdDetail")->text(), "جزييات <<");
    QTest::mouseClick(Button(window, "cmdDetail"), Qt::LeftButton);
    EXPECT_EQ(window->height(), folded);
    QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
  });
  form.ShowModal();
  EXPECT_FALSE(form.Shown());
}

TEST(FormsTest, AFilterIsBuiltByHand) {
  QtWindows windows;
  FormFilter form(windows);
  std::string filter = " [كد] > 5";
  When(ModalWindow, [](QWidget* window) {
    EXPECT_EQ(window->windowTitle(), "پرسش فيلتر");
    EXPECT_EQ(window->findChild<QLabel*>("lblFieldName")->text(), "[نام مشتري]");
    auto* const value = window->findChild<QLineEdit*>("txtValue");
    EXPECT_EQ(window->focusWidget(), value);
    TypeText(value, "علي");
    Button(window, "cmdOk")->setFocus();
    value->setFocus();
    EXPECT_EQ(value->selectedText(), "علي");
    for (const char* name : {"cmdAND", "cmdAdd"}) {
      QTest::mouseClick(Button(window, name), Qt::LeftButton);
    }
    SavePicture(*window, "form-filter");
    QTest::mouseClick(Button(window, "cmdOk"), Qt::LeftButton);
  });
  EXPECT_TRUE(form.getFilter("نام مشتري", kVarWChar, filter));
  EXPECT_EQ(filter, " [كد] > 5 AND  [نام مشتري] = 'علي'");
  When(ModalWindow,
       [](QWidget* window) { QTest::keyClick(window->focusWidget(), Qt::Key_Escape); });
  EXPECT_FALSE(form.getFilter("كد", kInteger, filter));
}

TEST(FormsTest, ASearchBoxStandsBareWhereItIsPut) {
  Process process({.providers = {},
                   .windows = std::make_shared<QtWindows>(),
                   .clock = std::make_shared<FixedClock>()});
  FormQuickSearch form(process);
  const Scale scale = Scale::OfApplication();
  const std::int32_t left = scale.Twips(120);
  const std::int32_t top = scale.Twips(80);
  When(ModalWindow, [](QWidget* window) {
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_LT((window->pos() - QPoint(120, 80)).manhattanLength(), 3);
    TypeText(window->focusWidget(), "علي");
    QTest::keyClick(window->focusWidget(), Qt::Key_Return);
  });
  EXPECT_TRUE(form.Ask(left, top));
  EXPECT_EQ(form.txtDesc.Text(), "علي");
  When(ModalWindow, [](QWidget* window) {
    TypeText(window->focusWidget(), "x");
    QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
  });
  EXPECT_FALSE(form.Ask(left, top));
  When(ModalWindow, [](QWidget* window) { window->close(); });
  EXPECT_FALSE(form.Ask(left, top));
}

TEST(FormsTest, AFileIsChosenByItsName) {
  const QTemporaryDir folder;
  FileDialogRequest request{folder.filePath("old.txt").toStdString(), "متن|*.txt|همه|*.*", "ذخيره",
                            "txt"};
  const auto choose = [](QWidget* window) {
    auto* const dialog = qobject_cast<QFileDialog*>(window);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->nameFilters(), QStringList({"متن (*.txt)", "همه (*)"}));
    auto* const name = dialog->findChild<QLineEdit*>("fileNameEdit");
    EXPECT_EQ(name->text(), "old.txt");
    name->setText("گزارش");
    QTest::keyClick(name, Qt::Key_Return);
  };
  When(ModalWindow, choose);
  ASSERT_TRUE(QtFileDialogs().Save(request));
  EXPECT_EQ(request.file_name, folder.filePath("گزارش.txt").toStdString());
  When(ModalWindow, [](QWidget* window) { window->close(); });
  EXPECT_FALSE(QtFileDialogs().Save(request));
}

TEST(FormsTest, AWindowIsNoLargerThanTheScreen) {
  QtWindows windows;
  Form form(windows, "FormLarge");
  form.on_resize = [] {};
  form.Move(0, 0, 60000, 40000);
  When(ModalWindow, [&](QWidget* window) {
    EXPECT_TRUE(window->screen()->availableGeometry().contains(window->frameGeometry()));
    window->close();
  });
  form.ShowModal();
  EXPECT_LT(form.Width(), 60000);  // what is in it knows
}

// A window that stays while the program goes on, and a form that goes before its window.
TEST(FormsTest, AFormMayGoWhileItsWindowIsOpen) {
  QtWindows windows;
  auto form = std::make_unique<FormMessage>(windows);
  form->Show();
  QTest::qWait(1);
  EXPECT_EQ(QApplication::topLevelWidgets().size(), 1);
  form.reset();
  QTest::qWait(1);
  EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
}

// Latin letters of a text, without the marks of keys and of what stands for a name.
QString Latin(QString text) {
  static const QRegularExpression kNames("%\\d|Ctrl|Shift|Alt|Del|<[^>]*>");
  QString latin;
  for (const QChar letter : text.remove(kNames)) {
    if (letter.unicode() < 0x250 && letter.isLetter()) latin += letter;
  }
  return latin;
}

void ExpectPersian(const QMenu& menu) {
  EXPECT_FALSE(menu.actions().isEmpty());
  for (const QAction* const action : menu.actions()) {
    EXPECT_EQ(Latin(action->text().section('\t', 0, 0)), "") << action->text().toStdString();
  }
}

TEST(TextsTest, FieldsAndScrollBarsHavePersianMenus) {
  InstallPersianTexts();
  InstallPersianTexts();
  QLineEdit line("x");
  QPlainTextEdit text("x");
  std::unique_ptr<QMenu> menu(line.createStandardContextMenu());
  ExpectPersian(*menu);
  menu.reset(text.createStandardContextMenu());
  ExpectPersian(*menu);
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "&Yes"), "بلي");
  EXPECT_EQ(QCoreApplication::translate("QScrollBar", "Scroll here"), "رفتن به اينجا");
  EXPECT_EQ(QCoreApplication::translate("HostWindow", "Open"), "Open");
}

TEST(TextsTest, TheFileDialogOfQtIsPersian) {
  InstallPersianTexts();
  QTemporaryDir folder;
  QFileDialog dialog(nullptr, "انتخاب فايل", folder.path());
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setViewMode(QFileDialog::Detail);
  dialog.show();
  QTest::qWait(50);
  SavePicture(dialog, "file-dialog");
  for (const QLabel* const label : dialog.findChildren<QLabel*>()) {
    EXPECT_EQ(Latin(label->text()), "") << label->text().toStdString();
  }
  for (const QAbstractButton* const button : dialog.findChildren<QAbstractButton*>()) {
    EXPECT_EQ(Latin(button->text() + button->toolTip()), "") << button->objectName().toStdString();
  }
  for (const QAction* const action : dialog.findChildren<QAction*>()) {
    EXPECT_EQ(Latin(action->text()), "") << action->text().toStdString();
  }
  const auto* const files = dialog.findChild<QTreeView*>();
  for (int column = 0; column < files->model()->columnCount(); ++column) {
    const QString title = files->model()->headerData(column, Qt::Horizontal).toString();
    EXPECT_EQ(Latin(title), "") << title.toStdString();
  }
}

TEST(TextsTest, AFailureIsToldInPersianWithItsPathAsOne) {
  QString text;
  When(ModalWindow, [&](QWidget* window) {
    text = static_cast<QMessageBox*>(window)->text();
    EXPECT_EQ(window->layoutDirection(), Qt::RightToLeft);
    SavePicture(*window, "failure");
    window->close();
  });
  ShowFailure(nullptr, "Cannot open the database '/srv/books 1404.db': the file doesn't exist.");
  EXPECT_EQ(text, "پايگاه داده \u2066/srv/books 1404.db\u2069 باز نشد: فايل وجود ندارد.");
}

TEST(TextsTest, CombosAndProgressRunFromTheRight) {
  QWidget window;
  Frame root(nullptr, "root");
  ComboBox combo(&root, "cmb");
  VorekProgressBar bar(&root, "bar");
  Presenter presenter(root, window);
  EXPECT_EQ(window.findChild<QComboBox*>()->layoutDirection(), Qt::RightToLeft);
  EXPECT_EQ(window.findChild<QProgressBar*>()->layoutDirection(), Qt::RightToLeft);
  combo.SetRightToLeft(true);
  combo.SetRightToLeft(false);
  EXPECT_EQ(window.findChild<QComboBox*>()->layoutDirection(), Qt::RightToLeft);
}

}  // namespace
}  // namespace vorek::qt
