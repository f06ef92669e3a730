#include "parameters/saved_settings.h"

#include <map>

#include "parameter_fixture.h"
#include "parameters/form_get_text.h"
#include "text/key_list.h"

namespace vorek {
namespace {

class SettingsTest : public ParameterTest {
 protected:
  SettingsTest() {
    Run("create table tblVorekReportParameterConfig (ReportID int, Name nvarchar(100), "
        "ListOfParameters nvarchar(4000), UserID int, isShared bit)");
    Add(1, "text", 1002, "nvarchar");
    Add(2, "date", 1, "datetime");
    Add(3, "selector", 2, "int", 1, 1, "tblThing");
    Add(4, "combo", 1003, "int", 1, 1, "tblThing");
    Add(5, "many", 1007, "int", 1, 1, "tblThing");
    Add(6, "check", 1006, "bit");
    Add(7, "time", 3, "int");
    Add(8, "amount", 11, "money");
    Add(9, "date as text", 1, "nvarchar");
    ViewAll();
  }
  void ViewAll() {
    ASSERT_TRUE(View("select @1 , @2 , @3 , @4 , @5 , @6 , @7 , @8 , @9 from tblThing"));
  }

  void Enter() {
    panel.widgets.txt[1].SetText("it's 50%");
    panel.widgets.dat[1].SetFarsiDate("1404/02/03");
    panel.widgets.dat[2].SetFarsiDate("1403/12/30");
    panel.widgets.slt[1].SetID(7);
    panel.widgets.cmb[1].SetListIndex(2);
    panel.widgets.mlt[1].SetSelectedIDs("5,8");
    panel.widgets.chk[1].SetValue(0);
    panel.widgets.tim[1].Type("12:30");
    panel.widgets.acr[1].SetText("1500");
  }
  std::string Shown() {
    return panel.widgets.txt[1].Text() + "|" + panel.widgets.dat[1].FarsiDate() + "|" +
           panel.widgets.dat[2].FarsiDate() + "|" + std::to_string(panel.widgets.slt[1].ID()) +
           "|" + std::to_string(panel.widgets.cmb[1].ListIndex()) + "|" +
           panel.widgets.mlt[1].SelectedIDs() + "|" + std::to_string(panel.widgets.chk[1].Value()) +
           "|" + panel.widgets.tim[1].GetTimeFormatted() + "|" + panel.widgets.acr[1].Value();
  }

  // The dialog's user types a name, then presses the button.
  void Answer(const std::string& name, Button FormGetText::*button) {
    windows->Queue([name, button](Form& form) {
      auto& dialog = static_cast<FormGetText&>(form);
      dialog.cmb.Type(name);
      (dialog.*button).Click();
    });
  }
  void Save(const std::string& name) {
    Answer(name, &FormGetText::cmdOk);
    panel.cmdSaveParameterConfig.Click();
  }
  std::string Stored() {
    const ResultSetPtr rows =
        Run("select Name, ListOfParameters from tblVorekReportParameterConfig order by Name");
    std::string all;
    for (std::size_t row = 0; row < rows->rows; ++row) {
      all += rows->columns[0].Display(row) + ":" + rows->columns[1].Display(row) + "\n";
    }
    return all;
  }
  void Load(std::size_t entry) { panel.mnuConfig[entry].Click(); }
};

// Catches a value that doesn't come back, or comes back in another field.
TEST_F(SettingsTest, ComeBackAsTheyWereSaved) {
  Enter();
  const std::string query = Confirmed();
  Save("  تنظيم 'الف' ");
  EXPECT_EQ(Stored(),
            "تنظيم 'الف':@9='1403/12/30'&@8=1500&@7=750&@6=0&@5=(5,8)&@4=7&@3=7&@2='20250423'&@1='"
            "it's 50%'\n");
  ASSERT_EQ(panel.mnuConfig.Size(), 2U);
  EXPECT_FALSE(panel.mnuConfig[0].Visible());
  panel.cmdNew.Click();
  EXPECT_NE(Shown(), "");
  Load(1);
  EXPECT_EQ(Shown(), "its 50%|1404/02/03|1403/12/30|7|2|5,8|0||1500");
  panel.widgets.txt[1].SetText("it's 50%");
  panel.widgets.tim[1].Type("12:30");
  EXPECT_EQ(Confirmed(), query);
}

// A save is no search: nothing runs, and what waits for the user's choice goes on waiting.
TEST_F(SettingsTest, AreSavedWithoutASearch) {
  Enter();
  searches.clear();
  Save("یک");
  EXPECT_TRUE(searches.empty());
  EXPECT_FALSE(panel.userChoice);
  EXPECT_FALSE(panel.result);
  EXPECT_EQ(clears, 0);
  panel.widgets.dat[1].Type("99/99");
  ASSERT_NE(panel.RefusedField(), nullptr);
  panel.cmdSaveParameterConfig.Click();
  EXPECT_EQ(windows->shown.size(), 1U);
}

TEST_F(SettingsTest, TakeTheirNamesFromTheDialog) {
  const struct {
    const char* typed;
    int answer;  // of the question, 0 for none
    const char* told;
    const char* rows;
  } cases[] = {
      {" ", 0, "اشکال|عنوان وارد نشده است", "a b"}, {"c", 0, "", "a b c"}, {"a", 2, "", "a b c"}};
  Save("a");
  Save("b");
  for (const auto& c : cases) {
    messages.texts.clear();
    Save(c.typed);
    EXPECT_EQ(messages.texts.empty() ? "" : messages.texts.back(), c.told) << c.typed;
    std::string names;
    for (std::size_t i = 1; i < panel.mnuConfig.Size(); ++i) {
      names += (names.empty() ? "" : " ") + panel.mnuConfig[i].Caption();
    }
    EXPECT_EQ(names, c.rows) << c.typed;
  }
  Answer("b", &FormGetText::cmdDelete);
  panel.cmdSaveParameterConfig.Click();
  EXPECT_EQ(panel.mnuConfig.Size(), 3U);
  panel.cmdLoadParameterConfig.Click();
  EXPECT_EQ(windows->menus, std::vector<std::string>{"mnuPopup"});
}

TEST_F(SettingsTest, OfAReportWithoutAnyOfferNothing) {
  panel.cmdLoadParameterConfig.Click();
  EXPECT_TRUE(windows->menus.empty());
  EXPECT_EQ(panel.mnuConfig.Size(), 1U);
  EXPECT_TRUE(panel.mnuConfig[0].Visible());
}

TEST_F(SettingsTest, KeepAComboThatHasLostItsLine) {
  Run("insert into tblVorekReportParameterConfig (ReportID, Name, ListOfParameters) values (7, "
      "'x', "
      "'@4=99&@1=''it''''s''&@5=(-1)')");
  ViewAll();
  panel.widgets.cmb[1].SetListIndex(1);
  panel.widgets.mlt[1].SetSelectedIDs("5");
  Load(1);
  EXPECT_EQ(panel.widgets.cmb[1].ListIndex(), 1);
  EXPECT_EQ(panel.widgets.txt[1].Text(), "its");
  EXPECT_TRUE(panel.widgets.mlt[1].NoneSelected());
}

// The fields that a shared filter names take its values; the others stay.
TEST_F(SettingsTest, AreSharedByTheirUser) {
  process.main.GlobalUserID = 4;
  EXPECT_FALSE(panel.SetSharedFilters());
  Run("insert into tblVorekReportParameterConfig (ReportID, Name, ListOfParameters, UserID, "
      "isShared) values (0, '', '@90=''20250321''&@91=''x''', 4, 1)");
  EXPECT_FALSE(panel.SetSharedFilters());
  panel.SharedFilterIDs = {{2, 90}, {1, 91}};
  EXPECT_TRUE(panel.SetSharedFilters());
  EXPECT_EQ(panel.widgets.dat[1].FarsiDate(), "1404/01/01");
  EXPECT_EQ(panel.widgets.txt[1].Text(), "x");
  EXPECT_EQ(searches.size(), 1U);
  Run("update tblVorekReportParameterConfig set ListOfParameters = '' where UserID = 4");
  EXPECT_TRUE(panel.SetSharedFilters());
  EXPECT_EQ(searches.size(), 1U);
  EXPECT_EQ(clears, 1);
}

}  // namespace
}  // namespace vorek
