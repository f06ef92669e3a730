#include "messages/messages.h"

#include <gtest/gtest.h>

#include "messages/persian_reason.h"
#include "platform/memory_database.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"

namespace vorek {
namespace {

class MessagesTest : public testing::Test {
 protected:
  // Shows the error form and does `act` on it.
  template <typename Act>
  void WithErrorForm(const Act& act) {
    windows->Queue([&](Form& form) { act(dynamic_cast<FormError&>(form)); });
    messages.DisplayError(-5, "short", "long", "unused", -2147467259);
  }

  std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  Process process{{{database}, windows, std::make_shared<FixedClock>()}};
  Messages messages{process};
};

TEST_F(MessagesTest, AsksYesOrNo) {
  const struct {
    const char* button;  // null: the close box
    int answer;
    int left_behind;
  } cases[] = {{"cmdYes", 1, 1}, {"cmdNo", 2, 2}, {"cmdContinue", 2, 0}, {nullptr, 2, 0}};
  for (const auto& c : cases) {
    windows->Queue([&](Form& form) {
      if (c.button != nullptr) form.Find(c.button)->Click();
    });
    EXPECT_EQ(messages.ShowConfirm("پرسش", "؟"), c.answer);
    EXPECT_EQ(process.main.ConfirmAnswer, c.left_behind);
  }
  EXPECT_EQ(windows->shown.front(), "FormConfirm|پرسش|؟");
}

// What a formula warns of in every row.
TEST_F(MessagesTest, IsSilencedForARunFromItsSecondTimeOn) {
  const auto show = [&](const char* text, bool offered, bool silence) {
    windows->Queue([=](Form& form) {
      auto& box = dynamic_cast<FormMessage&>(form).chkSilent;
      EXPECT_EQ(box.Visible(), offered) << text;
      EXPECT_EQ(box.Value(), 0) << text;
      if (silence) box.Click();
    });
    messages.ShowMessage("هشدار", text);
  };
  show("a", false, false);
  show("a", false, false);  // outside of a run
  {
    const Messages::Run run(messages);
    show("a", false, false);
    show("b", false, false);
    show("a", true, false);
    {
      const Messages::Run within(messages);
      show("a", true, true);
    }
    const std::size_t shown = windows->shown.size();
    messages.ShowMessage("هشدار", "a");
    EXPECT_EQ(windows->shown.size(), shown) << "silenced";
    show("b", true, false);
    messages.ShowMessage("خطا", "a");
    EXPECT_EQ(windows->shown.size(), shown + 2) << "another title is another message";
  }
  const Messages::Run next(messages);
  show("a", false, false);
}

TEST(PersianReasonTest, SaysInPersianWhatTheSystemItselfFound) {
  const struct {
    const char* description;
    const char* shown;
  } cases[] = {
      {"Cannot open the database '/a/b c.db': the file doesn't exist.",
       "پايگاه داده \u2066/a/b c.db\u2069 باز نشد: فايل وجود ندارد."},
      {"Cannot open the database '/a/كارون.db': file is not a database.",
       "پايگاه داده \u2066/a/كارون.db\u2069 باز نشد: فايل پايگاه داده نيست."},
      {"Invalid object name 'tblX' (line 1, column 15).",
       "جدول يا نماي \u2066tblX\u2069 وجود ندارد (سطر 1، ستون 15)."},
      {"Invalid column name 'مبلغ' (line 3).", "ستون \u2068مبلغ\u2069 وجود ندارد (سطر 3)."},
      {"Timeout expired: database is locked.",
       "مهلت اجرا تمام شد: پايگاه داده در اختيار برنامه ديگري است."},
      {"Conversion failed when converting the nvarchar value 'x' to data type int.",
       "مقدار \u2066x\u2069 به نوع \u2066int\u2069 تبديل نشد."},
      {"/etc/x: Permission denied", "\u2066/etc/x\u2069: اجازه دسترسي نيست."},
      {"'merge' is not supported (line 1, column 1).",
       "\u2066merge\u2069 پشتيباني نمي شود (سطر 1، ستون 1)."},
      {"An UPDATE through a common table is not supported (line 1, column 37).",
       "\u2066An UPDATE through a common table\u2069 پشتيباني نمي شود (سطر 1، ستون 37)."},
      {"The label 'x' of GOTO isn't declared in a block around it (line 2, column 1).",
       "برچسب \u2066x\u2069 براي \u2066GOTO\u2069 تعريف نشده است (سطر 2، ستون 1)."},
      {"UNIQUE constraint failed: t.a", "مقدار تكراري پذيرفته نيست: \u2066t.a\u2069."},
      {"The statement conflicted with the CHECK constraint \"ck\".",
       "مقدار با قيد \u2066ck\u2069 سازگار نيست."},
      {"A condition stands where a value is expected (line 1, column 9).",
       "دستور پذيرفته نشد: \u2066A condition stands where a value is expected\u2069 (سطر 1، ستون "
       "9)."},
      {"سند قطعي است (line 3, column 1).", "سند قطعي است (line 3, column 1)."},
      // a server's own words, and what only looks alike
      {"Login failed for user 'u'.", "Login failed for user 'u'."},
      {"Cannot open the database", "Cannot open the database"},
      {"Provider 'x' cannot be", "Provider 'x' cannot be"},
      {"100% (line 2)", "100% (line 2)"},
      {"", ""}};
  for (const auto& c : cases) EXPECT_EQ(PersianReason(c.description), c.shown);
}

TEST_F(MessagesTest, FoldsTheDetailOfAnError) {
  WithErrorForm([](FormError& form) {
    EXPECT_EQ(form.Caption(), "اشکال شماره :  2147467259");
    EXPECT_EQ(form.txtError.Text(), "long");
    const std::int32_t folded = form.Height();
    EXPECT_EQ(form.cmdDetail.Caption(), "جزييات >>");
    form.cmdDetail.Click();
    EXPECT_EQ(form.Height(), folded * 2);
    EXPECT_EQ(form.cmdDetail.Caption(), "جزييات <<");
    form.cmdDetail.Click();
    EXPECT_EQ(form.Height(), folded);
    form.cmdDetail.Click();
  });
  WithErrorForm([](FormError& form) {
    EXPECT_FALSE(form.DetailOpen());
    EXPECT_EQ(form.Height(), FormError::kDesignHeight / 2);
  });
}

TEST_F(MessagesTest, ClosesAnErrorByItsKeys) {
  const struct {
    int key;
    int shift;
    bool on_button;
    bool closes;
  } cases[] = {{13, 0, false, true}, {13, 0, true, false}, {13, 2, true, true},
               {27, 0, true, true},  {88, 4, true, true},  {88, 0, true, false},
               {65, 0, false, false}};
  for (const auto& c : cases) {
    WithErrorForm([&](FormError& form) {
      (c.on_button ? static_cast<Control&>(form.cmdDetail) : form.txtError).SetFocus();
      form.FormKeyDown(c.key, c.shift);
      EXPECT_EQ(form.Shown(), !c.closes) << c.key << '+' << c.shift;
    });
  }
}

TEST_F(MessagesTest, ShowsTheDatabasesWordsForWantOfOthers) {
  process.data.Rebind("Provider=VorekMemory;");
  EXPECT_FALSE(IgnoreErrors([&] { process.dten().rssqlQuery.Open("select * from nowhere"); }));
  std::string detail;
  windows->Queue([&](Form& form) { detail = form.DetailText(); });
  messages.DisplayError(-5, "short", "", "", 1);
  EXPECT_NE(detail.find("nowhere"), std::string::npos);
  windows->Queue([&](Form& form) { detail = form.DetailText(); });
  messages.DisplayError(0, "short", "", "", 1);
  EXPECT_EQ(detail, "");
}

}  // namespace
}  // namespace vorek
