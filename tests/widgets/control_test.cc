#include "widgets/control.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "vorek/error.h"
#include "vorek/no_windows.h"
#include "widgets/basic_controls.h"
#include "widgets/form.h"
#include "widgets/vorek_date.h"

namespace vorek {
namespace {

// A refusal ends with whatever value comes next, from the user or from the program.
TEST(TypedControlTest, HoldsATextBackUntilAValueComes) {
  VorekDate date(nullptr, "dat");
  int told = 0;
  date.on_refusal = [&] { ++told; };
  const std::function<void()> ends[] = {[&] { date.Type("1404/01/01"); },
                                        [&] { date.SetFarsiDate("1404/01/01"); },
                                        [&] {
                                          date.SetValue({2025, 3, 21});
                                        },
                                        [&] { date.Clear(); }, [&] { date.DropRefusal(); }};
  for (const auto& end : ends) {
    date.Type("x");
    EXPECT_EQ(date.Get("RefusedText"), "x");
    EXPECT_EQ(date.Get("Refusal"), "«x» تاريخ نيست؛ سال/ماه/روز بنويسيد، مانند 1404/06/01");
    end();
    EXPECT_FALSE(date.Refuses());
  }
  EXPECT_EQ(told, 10);
  date.SetEnabled(false);
  date.Type("x");
  EXPECT_FALSE(date.Refuses());
}

TEST(ComboBoxTest, ComparesLinesAsPeopleWrite) {
  ComboBox box(nullptr, "cmb");
  for (const char* line : {"خراسان رضوي", "كرمان", "كرمانشاه", "منطقه ۵"}) {
    box.AddItem(line, box.ListCount() + 10);
  }
  const struct {
    const char* typed;
    int index;  // -1: refused
  } cases[] = {{"خراسان رضوی", 0}, {"رضوی", 0}, {"کرمان", 1}, {"کرمانش", 2},
               {"منطقه 5", 3},     {"#12", 2},  {"كر", -1},   {"#99", -1}};
  for (const auto& c : cases) {
    box.SetListIndex(-1);
    box.Type(c.typed);
    EXPECT_EQ(box.ListIndex(), c.index) << c.typed;
    EXPECT_EQ(box.Refuses(), c.index < 0) << c.typed;
  }
  EXPECT_EQ(box.FindLine("ک", 2), 2);
  EXPECT_EQ(box.FindLine("ک", 3), 1);
  EXPECT_EQ(box.FindLine("ب", 0), -1);
}

TEST(ButtonTest, IsPressedByEnterAndBlank) {
  Button button(nullptr, "cmd");
  int clicks = 0;
  button.on_click = [&] { ++clicks; };
  button.KeyDown(13, 0);
  button.KeyDown(32, 0);
  EXPECT_EQ(clicks, 2);
  button.KeyDown(13, 2);
  button.KeyDown(65, 0);
  button.SetEnabled(false);
  button.KeyDown(13, 0);
  EXPECT_EQ(clicks, 2);
}

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
               {"1404/06/01", "1404/06/01"},
               {"1404.6.1", "1404/06/01"},
               {" 1404  06 01 ", "1404/06/01"},
               {"1404 / 6 / 1", "1404/06/01"},
               {"14040601", "1404/06/01"},
               {"٠٤٠٦٠١", "1404/06/01"},
               {"14/04/06", "1414/04/06"},
               {"140406", nullptr},  // half of 14040601, or a year 1414?
               {"1404", nullptr},
               {"1404/06", nullptr},
               {"1404/06/", nullptr},
               {"/1404/06/01", nullptr},
               {"1404/-06/01", nullptr},
               {"1404/06/001", nullptr},
               {"1404/06/01/1", nullptr},
               {"1404/13/01", nullptr},
               {"1404/00/01", nullptr},
               {"1404/01/00", nullptr},
               {"1404/12/30", nullptr},
               {"2025/11/24", nullptr},
               {"404/1/1", nullptr},
               {"1199/01/01", nullptr},
               {"1200/01/01", "1200/01/01"},
               {"1499/01/01", "1499/01/01"},
               {"1500/01/01", nullptr},
               {"+", "1400/01/02"},
               {"-", "1399/12/30"},
               {"1404/06/31+", "1404/07/01"},
               {"1404/01/01-", "1403/12/30"},
               {"1403/12/30+", "1404/01/01"},
               {"14040101-", "1403/12/30"},
               {"1404/01-", nullptr},
               {"1404/13/01+", nullptr},
               {"t", "1405/09/03"},
               {"ا", "1405/09/03"},
               {"7/31", nullptr},
               {"abc", nullptr},
               {"1404//5", nullptr},
               {"", ""}};
  for (const auto& c : cases) {
    date.SetFarsiDate("1400/01/01");
    date.Type(c.typed);
    EXPECT_EQ(date.Refuses(), c.shown == nullptr) << c.typed;
    EXPECT_EQ(date.RefusedText(), c.shown == nullptr ? c.typed : "") << c.typed;
    EXPECT_EQ(date.FarsiDate(), c.shown != nullptr ? c.shown : "1400/01/01") << c.typed;
  }
}

}  // namespace
}  // namespace vorek
