#include "vorek/shown_control.h"

#include <gtest/gtest.h>

#include <string>

#include "vorek/no_windows.h"
#include "vorek/shown_form.h"
#include "vorek/shown_list.h"
#include "widgets/form.h"
#include "widgets/vorek_currency.h"
#include "widgets/vorek_date.h"
#include "widgets/vorek_time.h"

namespace vorek {
namespace {

struct Sample : Form {
  explicit Sample(Windows& windows) : Form(windows, "FormSample") {
    cmb.AddItem("یک", 10);
    cmb.AddItem("دو", 20);
    txt.Load();
    txt.Load();
    chk.SetCaption("همه");
    frame.Move(100, 200, 3000, 900);
  }
  Frame frame{this, "frame"};
  ControlArray<TextBox> txt{frame, "txt"};
  CheckBox chk{&frame, "chk"};
  ComboBox cmb{&frame, "cmb"};
  VorekDate dat{&frame, "dat"};
  VorekTime tim{&frame, "tim"};
  VorekCurrency acr{&frame, "acr"};
  Button cmd{&frame, "cmd"};
};

const ShownControl* Find(const std::vector<ShownControl>& all, const std::string& path) {
  for (const ShownControl& one : all) {
    if (one.path == path) return &one;
  }
  return nullptr;
}

std::string TextIn(Form& form, const std::string& path) {
  const std::vector<ShownControl> all = ControlsOf(form);
  const ShownControl* const found = Find(all, path);
  return found == nullptr ? "?" : found->text;
}

TEST(ShownControl, TakesWhatAUserTypesAndShowsIt) {
  NoWindows windows;
  Sample form(windows);
  const struct {
    const char* path;
    const char* typed;
    const char* shown;
  } cases[] = {{"frame.txt(1)", "سلام", "سلام"},
               {"frame.cmb", "دو", "دو"},
               {"frame.dat", "1404/01/31", "1404/01/31"},
               {"frame.tim", "8:05", "08:05"},
               {"frame.acr", "1234", "1/234"}};
  for (const auto& c : cases) {
    EXPECT_TRUE(TypeInto(form, c.path, c.typed)) << c.path;
    EXPECT_EQ(TextIn(form, c.path), c.shown) << c.path;
  }
  EXPECT_TRUE(TypeInto(form, "dat", "x"));
  const std::vector<ShownControl> all = ControlsOf(form);
  const ShownControl* const date = Find(all, "frame.dat");
  ASSERT_NE(date, nullptr);
  EXPECT_EQ(date->kind, "VorekDate");
  EXPECT_EQ(date->container, "frame");
  EXPECT_EQ(date->refused_text, "x");
  EXPECT_NE(date->refusal, "");
  EXPECT_EQ(date->text, "1404/01/31");
  EXPECT_EQ(Find(all, "frame")->top, 200);
}

TEST(ShownControl, ChoosesAndTicks) {
  NoWindows windows;
  Sample form(windows);
  EXPECT_EQ(EntriesOf(form, "cmb"), (std::vector<std::string>{"یک", "دو"}));
  EXPECT_TRUE(ChooseEntry(form, "cmb", 1));
  EXPECT_EQ(form.cmb.ListIndex(), 1);
  for (const std::int32_t outside : {-1, 2}) EXPECT_FALSE(ChooseEntry(form, "cmb", outside));
  for (const bool wanted : {true, true, false}) {
    EXPECT_TRUE(Tick(form, "chk", wanted));
    const std::vector<ShownControl> all = ControlsOf(form);
    EXPECT_EQ(Find(all, "frame.chk")->checked, wanted);
    EXPECT_EQ(form.chk.Value(), wanted ? 1 : 0);
  }
}

TEST(ShownControl, ShowsTheLinesOfAComboBoxAsRows) {
  NoWindows windows;
  Sample form(windows);
  form.cmb.AddItem("دو", 30);
  const ShownRow last = OpenList(form, "cmb")->rows[2];
  EXPECT_EQ(last.key, 30);
  EXPECT_FALSE(last.chosen);
  EXPECT_TRUE(ChooseRow(form, "cmb", last));
  EXPECT_EQ(form.cmb.ListIndex(), 2);
  EXPECT_TRUE(ListOf(form, "cmb")->rows[2].chosen);
  EXPECT_FALSE(ListOf(form, "cmb")->rows[1].chosen);
  EXPECT_FALSE(ChooseRow(form, "cmb", last, false));
  EXPECT_FALSE(ChooseAll(form, "cmb"));
  EXPECT_FALSE(SearchList(form, "cmb", "د"));
  EXPECT_EQ(form.cmb.ListIndex(), 2);
}

TEST(ShownControl, GivesAKeyToTheRootAloneOnce) {
  Frame root(nullptr, "root");
  TextBox box(&root, "txt");
  int keys = 0;
  root.on_key_down = box.on_key_down = [&](int, int) { ++keys; };
  EXPECT_TRUE(PressKey(root, "", 13));
  EXPECT_EQ(keys, 1);
  EXPECT_TRUE(PressKey(root, "txt", 13));
  EXPECT_EQ(keys, 3);
  NoWindows windows;
  Sample form(windows);
  form.Show();
  form.cmd.GotFocus();
  int clicks = 0;
  form.cmd.on_click = [&] { ++clicks; };
  EXPECT_TRUE(PressKey(form, "", 13));
  EXPECT_EQ(clicks, 1) << "the control that is active takes it";
  form.Hide();
  EXPECT_FALSE(PressKey(form, "", 13));
}

TEST(ShownControl, RefusesWhatAUserCouldNotDo) {
  NoWindows windows;
  Sample form(windows);
  int clicks = 0;
  form.cmd.on_click = [&] { ++clicks; };
  const auto refused = [&] {
    return !TypeInto(form, "txt(0)", "x") && !ChooseEntry(form, "cmb", 0) &&
           !Tick(form, "chk", true) && !PressKey(form, "cmd", 13) && !PressButton(form, "cmd");
  };
  form.Show();
  form.frame.SetEnabled(false);
  EXPECT_TRUE(refused());
  EXPECT_FALSE(ControlsOf(form)[1].enabled);
  form.frame.SetEnabled(true);
  form.frame.SetVisible(false);
  EXPECT_TRUE(refused());
  EXPECT_FALSE(ControlsOf(form)[1].visible);
  form.frame.SetVisible(true);
  form.txt.Load().SetLocked(true);
  EXPECT_FALSE(TypeInto(form, "txt(2)", "x"));
  EXPECT_FALSE(TypeInto(form, "cmd", "x"));
  EXPECT_FALSE(TypeInto(form, "none", "x"));
  EXPECT_EQ(clicks, 0);
  EXPECT_TRUE(PressKey(form, "cmd", 13));
  EXPECT_EQ(clicks, 1);
}

TEST(ShownControl, PressesWhatLeadsOn) {
  NoWindows windows;
  Sample form(windows);
  form.cmd.on_click = [&] { form.Hide(); };
  EXPECT_FALSE(IsShown(form));
  form.Show();
  EXPECT_TRUE(IsShown(form));
  EXPECT_FALSE(Press(form, "none"));
  EXPECT_TRUE(IsShown(form));
  EXPECT_TRUE(Press(form, "cmd"));
  EXPECT_FALSE(IsShown(form));
}

TEST(ShownControl, ChoosesWhatAMenuOffers) {
  Menu menu(nullptr, "mnu");
  Menu sub(&menu, "mnuSub");
  Menu entry(&sub, "mnuEntry");
  Menu hidden(&menu, "mnuHidden");
  int clicks = 0;
  entry.on_click = [&] { ++clicks; };
  hidden.on_click = [&] { ++clicks; };
  hidden.SetVisible(false);
  ASSERT_EQ(EntriesOf(menu).size(), 1U);
  EXPECT_EQ(EntriesOf(menu)[0].entries[0].name, "mnuEntry");
  EXPECT_FALSE(ChooseEntry(menu, "mnuHidden"));
  EXPECT_FALSE(ChooseEntry(menu, "mnuNone"));
  sub.SetEnabled(false);
  sub.SetToolTipText("نيست");
  EXPECT_EQ(EntriesOf(menu)[0].why_not, "نيست");
  EXPECT_FALSE(ChooseEntry(menu, "mnuEntry"));
  EXPECT_EQ(clicks, 0);
  sub.SetEnabled(true);
  EXPECT_TRUE(ChooseEntry(menu, "mnuEntry"));
  EXPECT_EQ(clicks, 1);
}

TEST(ShownControl, TellsTheEntriesOfOneNameApart) {
  Menu menu(nullptr, "mnu");
  ControlArray<Menu> array(menu, "mnuConfig");
  int chosen = -1;
  for (int i = 0; i < 2; ++i) array.Load().on_click = [&chosen, i] { chosen = i; };
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(ChooseEntry(menu, EntriesOf(menu)[static_cast<std::size_t>(i)].name));
    EXPECT_EQ(chosen, i);
  }
}

}  // namespace
}  // namespace vorek
