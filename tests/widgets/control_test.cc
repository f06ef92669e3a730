#include "widgets/control.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "platform/no_windows.h"
#include "vorek/error.h"
#include "widgets/basic_controls.h"
#include "widgets/form.h"
#include "widgets/vorek_date.h"

namespace vorek {
namespace {

// A presenter in small: it copies what it is told to show and nothing else.
class Mirror : public ControlObserver {
 public:
  void PropertyChanged(Control& control, std::string_view property) override {
    if (control.Has(property) && property != "List")
      texts[control.Path() + "." + std::string(property)] = control.Get(property);
  }
  void ChildAdded(Control& child) override { ++controls[child.PathName()]; }
  void ChildRemoved(Control& child) override { --controls[child.PathName()]; }
  void FocusSet(Control& control) override { focus = control.Path(); }

  std::map<std::string, std::string> texts;
  std::map<std::string, int> controls;
  std::string focus;
};

struct SampleForm : Form {
  explicit SampleForm(Windows& windows) : Form(windows, "FormSample") {}
  Label lblTitle{this, "lblTitle"};
  Frame frame{this, "frame"};
  ControlArray<TextBox> txt{frame, "txt"};
  CheckBox chk{&frame, "chk"};
  ComboBox cmb{&frame, "cmb"};
};

TEST(ControlTest, TellsAMirrorAllThatItShows) {
  NoWindows windows;
  Mirror mirror;
  SampleForm form(windows);
  form.SetObserver(&mirror);
  form.txt.Load();
  TextBox& box = form.txt.Load();
  box.Move(10, 20, 300, 240);
  box.SetText("سلام");
  box.SetTag("7");
  box.SetVisible(false);
  form.lblTitle.SetCaption("عنوان");
  form.chk.Click();
  form.cmb.AddItem("یک", 10);
  form.cmb.Choose(0);
  box.SetFocus();
  for (const auto& [path, text] : mirror.texts) {
    const std::size_t dot = path.rfind('.');
    Control* const control =
        form.Find(path.substr(form.Name().size() + 1, dot - form.Name().size() - 1));
    ASSERT_NE(control, nullptr) << path;
    EXPECT_EQ(control->Get(path.substr(dot + 1)), text) << path;
  }
  EXPECT_EQ(mirror.texts["FormSample.txt(1).Text"], "سلام");
  EXPECT_EQ(mirror.texts["FormSample.txt(1).Visible"], "False");
  EXPECT_EQ(mirror.texts["FormSample.chk.Value"], "1");
  EXPECT_EQ(mirror.texts["FormSample.cmb.ListIndex"], "0");
  EXPECT_EQ(mirror.focus, "FormSample.txt(1)");
  form.txt.Unload(1);
  EXPECT_EQ(mirror.controls["txt(0)"], 1);
  EXPECT_EQ(mirror.controls["txt(1)"], 0);
  EXPECT_EQ(form.ActiveControl(), nullptr);
}

TEST(ControlTest, IsReachedByPath) {
  NoWindows windows;
  SampleForm form(windows);
  form.txt.Load();
  EXPECT_EQ(form.Find("FRAME.TXT(0)"), &form.txt[0]);
  EXPECT_EQ(form.Find("frame.txt(1)"), nullptr);
  EXPECT_EQ(form.Find("frame.txt(0).deeper"), nullptr);
  EXPECT_THROW(form.Get("Nothing"), Error);
  form.Set("Left", "12");
  EXPECT_EQ(form.Left(), 12);
  EXPECT_THROW(form.cmb.Set("ListIndex", "3"), Error);
}

TEST(ControlTest, ClosesModalFormsThatNobodyAnswers) {
  NoWindows windows;
  SampleForm form(windows);
  int loads = 0;
  form.on_load = [&] { ++loads; };
  form.ShowModal();
  EXPECT_FALSE(form.Shown());
  form.ShowModal();
  EXPECT_EQ(loads, 1);
  form.Unload();
  form.ShowModal();
  EXPECT_EQ(loads, 2);
}

TEST(VorekDateTest, TakesPersianDates) {
  VorekDate date(nullptr, "dat");
  int changes = 0;
  date.on_change = [&] { ++changes; };
  EXPECT_TRUE(date.IsNull());
  date.SetFarsiDate("1404/09/03");
  EXPECT_EQ(date.EnglishDate(), "20251124");
  EXPECT_EQ(date.FarsiDate(), "1404/09/03");
  EXPECT_THROW(date.SetFarsiDate("1404/12/30"), Error);
  EXPECT_EQ(date.FarsiDate(), "1404/09/03");
  EXPECT_EQ(changes, 1);
  date.SetToday({2026, 11, 24});
  const struct {
    const char* typed;
    const char* shown;  // null: refused
  } cases[] = {{"5", "1405/09/05"},
               {"2/31", "1405/02/31"},
               {"04/2/5", "1404/02/05"},
               {"۱۴۰۳/۱۲/۳۰", "1403/12/30"},
               {"\u200F1404/02/05\u200E", "1404/02/05"},
               {"99-1-1", "1399/01/01"},
               {"7/31", nullptr},
               {"abc", nullptr},
               {"1404//5", nullptr},
               {"", ""}};
  for (const auto& c : cases) {
    date.SetFarsiDate("1400/01/01");
    EXPECT_EQ(IgnoreErrors([&] { date.Type(c.typed); }), c.shown != nullptr) << c.typed;
    EXPECT_EQ(date.FarsiDate(), c.shown != nullptr ? c.shown : "1400/01/01") << c.typed;
  }
}

}  // namespace
}  // namespace vorek
