// Catches a list that a host's screen shows with other rows or another choice than the field has.
#include "vorek/shown_list.h"

#include <algorithm>

#include "parameter_fixture.h"
#include "vorek/error.h"
#include "vorek/shown_control.h"

namespace vorek {
namespace {

constexpr const char* kMany = "frame.mlt(1)";
constexpr const char* kPicker = "frame.ntp(1)";
constexpr const char* kSelector = "frame.slt(1)";
constexpr const char* kPanel = "frame.app(1)";

class ShownListTest : public ParameterTest {
 protected:
  ShownListTest() {
    Run("create view vwRecord as select 900 + ID / 7 as FormTypeID, ID as FormID, Name from "
        "tblThing");
    Add(1, "many", 1007, "int", 1, 1, "tblThing");
    Add(2, "picker", 13, "nvarchar", 1, 1, "vwRecord");
    Add(3, "selector", 2, "int", 1, 1, "tblThing");
    Add(4, "panel", 9, "int", 1, 1, "tblThing");
    Add(5, "text", 1002, "nvarchar");
    Run("update tblVorekReportParameter set Description = N'چيزها:' where ParameterID = 1");
    EXPECT_TRUE(View("select a in @1 , @2 , @3 , @4 , @5 "));
  }
  // "*5 علي كريمي" for a chosen row; "?" without a list.
  static std::string Told(const std::optional<ShownList>& list) {
    if (!list) return "?";
    std::string all = list->error;
    for (const ShownRow& row : list->rows) {
      if (!all.empty()) all += '|';
      if (row.chosen) all += '*';
      if (row.form_type != 0) all += std::to_string(row.form_type) + ":";
      all += std::to_string(row.key) + " " + row.text;
      if (!row.code.empty()) all += "/" + row.code;
    }
    return all + (list->more ? "..." : "");
  }
  std::string Keys(const char* path) {
    std::string keys;
    const std::optional<ShownList> list = ListOf(panel, path);
    for (const ShownRow& row : list ? list->rows : std::vector<ShownRow>()) {
      keys += (row.chosen ? "*" : "") + std::to_string(row.key) + " ";
    }
    return keys;
  }
  ShownRow Row(const char* path, std::int32_t key) {
    const std::optional<ShownList> list = ListOf(panel, path);
    for (const ShownRow& row : list->rows) {
      if (row.key == key) return row;
    }
    ADD_FAILURE() << path << " has no row " << key;
    return {};
  }
};

TEST_F(ShownListTest, ShowsAndChangesWhichOfSeveralAreChosen) {
  EXPECT_EQ(Told(OpenList(panel, kMany)), "7 ab_c|8 abxc|6 O'Neil 50%|5 علي كريمي");
  EXPECT_TRUE(ListOf(panel, kMany)->several);
  const struct {
    std::int32_t key;
    bool chosen;
    const char* shown;
    const char* value;
  } steps[] = {{7, true, "*7 8 6 5 ", "in  ((7)) "},
               {5, true, "*7 8 6 *5 ", "in  ((7,5)) "},
               {7, true, "*7 8 6 *5 ", "in  ((7,5)) "},
               {7, false, "7 8 6 *5 ", "in  ((5)) "},
               {8, false, "7 8 6 *5 ", "in  ((5)) "}};
  for (const auto& step : steps) {
    EXPECT_TRUE(ChooseRow(panel, kMany, Row(kMany, step.key), step.chosen));
    EXPECT_EQ(Keys(kMany), step.shown);
    EXPECT_NE(Confirmed().find(step.value), std::string::npos) << step.value;
  }
  EXPECT_TRUE(ChooseAll(panel, kMany));
  EXPECT_EQ(Keys(kMany), "*7 *8 *6 *5 ");
  EXPECT_TRUE(panel.widgets.mlt[1].AllSelected());
  EXPECT_TRUE(ChooseRow(panel, kMany, Row(kMany, 8), true));
  EXPECT_TRUE(panel.widgets.mlt[1].AllSelected());
  EXPECT_TRUE(ChooseRow(panel, kMany, Row(kMany, 8), false));
  EXPECT_EQ(Keys(kMany), "*7 8 *6 *5 ");
  EXPECT_TRUE(ChooseAll(panel, kMany, false));
  EXPECT_EQ(Keys(kMany), "7 8 6 5 ");
  for (const char* const one : {kPicker, kSelector, "frame.txt(1)", "none"}) {
    EXPECT_FALSE(ChooseAll(panel, one)) << one;
  }
}

// What is chosen stays chosen while another part of the list is on view.
TEST_F(ShownListTest, ChoosesSeveralOverSeveralSearches) {
  EXPECT_EQ(Told(SearchList(panel, kMany, "_c")), "7 ab_c");
  const ShownRow found = Row(kMany, 7);
  EXPECT_TRUE(ChooseRow(panel, kMany, found));
  EXPECT_EQ(Told(SearchList(panel, kMany, "%")), "6 O'Neil 50%");
  EXPECT_FALSE(ChooseRow(panel, kMany, found, false)) << "it isn't on view";
  EXPECT_TRUE(ChooseRow(panel, kMany, Row(kMany, 6)));
  EXPECT_EQ(Told(SearchList(panel, kMany, "  ")), "*7 ab_c|8 abxc|*6 O'Neil 50%|5 علي كريمي");
  EXPECT_EQ(panel.widgets.mlt[1].SelectedIDs(), "7,6");
}

TEST_F(ShownListTest, PicksARecord) {
  EXPECT_EQ(Told(OpenList(panel, kPicker)),
            "901:7 ab_c|901:8 abxc|900:6 O'Neil 50%|900:5 علي كريمي");
  EXPECT_FALSE(ListOf(panel, kPicker)->several);
  EXPECT_EQ(Told(SearchList(panel, kPicker, "AB")), "901:7 ab_c|901:8 abxc");
  EXPECT_TRUE(panel.widgets.ntp[1].IsNull()) << "nothing is taken by looking";
  EXPECT_TRUE(ChooseRow(panel, kPicker, Row(kPicker, 8)));
  EXPECT_EQ(Told(ListOf(panel, kPicker)), "901:7 ab_c|*901:8 abxc");
  EXPECT_NE(Confirmed().find("'FormTypeID=901:FormID=8'"), std::string::npos);
  ShownRow other_form = Row(kPicker, 7);
  other_form.form_type = 900;
  EXPECT_FALSE(ChooseRow(panel, kPicker, other_form));
  EXPECT_FALSE(ChooseRow(panel, kPicker, Row(kPicker, 8), false));
  EXPECT_TRUE(TypeInto(panel, kPicker, ""));
  EXPECT_EQ(Told(ListOf(panel, kPicker)), "901:7 ab_c|901:8 abxc");
}

// A text that several rows fit leaves them in the list; Escape turns away from it.
TEST_F(ShownListTest, OffersTheRowsThatATextFits) {
  for (const char* const path : {kPicker, kSelector, kPanel}) {
    const auto told = [&] {
      for (const ShownControl& one : ControlsOf(panel)) {
        if (one.path == path) return one.refused_text + ";" + one.text;
      }
      return std::string("?");
    };
    EXPECT_TRUE(TypeInto(panel, path, "ab"));
    EXPECT_EQ(told(), "ab;");
    EXPECT_EQ(Keys(path), "7 8 ");
    EXPECT_EQ(EntriesOf(panel, path).size(), 2U) << path;
    EXPECT_TRUE(PressKey(panel, path, 27));
    EXPECT_EQ(told(), ";");
    EXPECT_EQ(EntriesOf(panel, path).size(), 4U) << path;
    EXPECT_TRUE(TypeInto(panel, path, "ab"));
    EXPECT_TRUE(SearchList(panel, path, "x"));
    EXPECT_EQ(EntriesOf(panel, path).size(), 4U) << "the search is over: " << path;
    EXPECT_TRUE(SearchList(panel, path, "b"));
    EXPECT_TRUE(ChooseRow(panel, path, Row(path, 8)));
    EXPECT_EQ(Keys(path), "7 *8 ");
    EXPECT_EQ(told().substr(0, 1), ";") << "the refusal ends";
  }
}

// Records of two forms may have one key.
TEST_F(ShownListTest, TellsRecordsOfOneKeyApart) {
  Run("create view vwBoth as select * from vwRecord union all select 900, 8, N'abxd'");
  panel.widgets.ntp[1].SetViewMajor("vwBoth");
  EXPECT_EQ(Told(SearchList(panel, kPicker, "abx")), "901:8 abxc|900:8 abxd");
  EXPECT_TRUE(ChooseRow(panel, kPicker, ListOf(panel, kPicker)->rows[1]));
  EXPECT_EQ(Told(ListOf(panel, kPicker)), "901:8 abxc|*900:8 abxd");
}

// The key of what a host shows may stand for something else by now.
TEST_F(ShownListTest, RefusesARowThatReadsOtherwise) {
  EXPECT_EQ(Told(SearchList(panel, kSelector, "108")), "8 abxc/108");
  for (std::string ShownRow::*const field : {&ShownRow::text, &ShownRow::code}) {
    ShownRow other = Row(kSelector, 8);
    other.*field = "x";
    EXPECT_FALSE(ChooseRow(panel, kSelector, other));
    EXPECT_TRUE(panel.widgets.slt[1].IsNull());
  }
  EXPECT_TRUE(ChooseRow(panel, kSelector, Row(kSelector, 8)));
  EXPECT_EQ(Told(ListOf(panel, kSelector)), "*8 abxc/108");
}

TEST_F(ShownListTest, LeavesAloneWhatAUserCouldNotReach) {
  const ShownRow row = OpenList(panel, kSelector)->rows[0];
  Control& widget = panel.widgets.slt[1];
  const auto refused = [&] {
    return !OpenList(panel, kSelector) && !SearchList(panel, kSelector, "ab") &&
           !ChooseRow(panel, kSelector, row) && panel.widgets.slt[1].IsNull() &&
           Keys(kSelector) == "7 8 6 5 ";
  };
  widget.SetEnabled(false);
  EXPECT_TRUE(refused());
  widget.SetEnabled(true);
  panel.frame.SetVisible(false);
  EXPECT_TRUE(refused());
  EXPECT_FALSE(ChooseAll(panel, kMany));
  panel.frame.SetVisible(true);
  panel.widgets.slt[1].SetAllowChange(false);
  EXPECT_TRUE(OpenList(panel, kSelector));
  EXPECT_FALSE(ChooseRow(panel, kSelector, row));
  EXPECT_FALSE(ChooseEntry(panel, kSelector, 0));
  EXPECT_FALSE(TypeInto(panel, kSelector, "abxc"));
  panel.widgets.slt[1].SetAllowChange(true);
  EXPECT_TRUE(ChooseRow(panel, kSelector, row));
  EXPECT_EQ(panel.widgets.slt[1].ID(), row.key);
  for (const char* const other : {"frame.txt(1)", "frame", "none", "cmdOk"}) {
    EXPECT_FALSE(OpenList(panel, other)) << other;
    EXPECT_FALSE(ListOf(panel, other)) << other;
    EXPECT_FALSE(SearchList(panel, other, "ab")) << other;
    EXPECT_FALSE(ChooseRow(panel, other, row)) << other;
  }
}

TEST_F(ShownListTest, TellsOfAListThatCantBeRead) {
  panel.widgets.mlt[1].SetSelectedIDs("7");
  Run("drop table tblThing");
  const std::optional<ShownList> opened = OpenList(panel, kMany);
  ASSERT_TRUE(opened);
  EXPECT_NE(opened->error, "");
  EXPECT_TRUE(opened->rows.empty());
  EXPECT_NE(SearchList(panel, kMany, "ab")->error, "");
  EXPECT_EQ(panel.widgets.mlt[1].SelectedIDs(), "7");
}

TEST_F(ShownListTest, HoldsTheFirstRowsOfALongList) {
  Run("with n(i) as (select 1000 union all select i + 1 from n where i < 7000) insert into "
      "tblThing "
      "(ID, Name) select i, N'رديف' from n");
  const ShownList list = *OpenList(panel, kMany);
  EXPECT_EQ(list.rows.size(), 500U);
  EXPECT_TRUE(list.more);
  EXPECT_FALSE(SearchList(panel, kMany, "ab")->more);
  EXPECT_TRUE(ChooseAll(panel, kMany));
  EXPECT_THROW(ChooseRow(panel, kMany, Row(kMany, 7), false), Error);
  EXPECT_TRUE(panel.widgets.mlt[1].AllSelected());
}

TEST_F(ShownListTest, NamesAFieldByItsLabel) {
  EXPECT_EQ(LabelOf(panel, kMany), "چيزها:");
  EXPECT_EQ(LabelOf(panel, kPicker), "the label");
  for (const char* const self : {"cmdOk", "frame", "frame.lblDesc(1)", "none"}) {
    EXPECT_EQ(LabelOf(panel, self), "") << self;
  }
  panel.widgets.mlt[1].SetTag("");
  EXPECT_EQ(LabelOf(panel, kMany), "چيزها:") << "by the place";
}

}  // namespace
}  // namespace vorek
