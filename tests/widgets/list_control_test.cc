#include <gtest/gtest.h>

#include "platform/memory_database.h"
#include "vorek/error.h"
#include "vorek/field_type.h"
#include "widgets/vorek_entity_picker.h"
#include "widgets/vorek_multi_select.h"
#include "widgets/vorek_selector.h"

namespace vorek {
namespace {

// A view of a million rows that remembers what it was asked.
class MillionRows : public RowReader {
 public:
  ResultSetPtr Read(const std::string& query) override {
    queries.push_back(query);
    if (failing) throw Error(ErrorNumber::kMissingObject, "no such view");
    if (answer != nullptr) return answer;
    std::vector<MemoryRow> rows;
    const int limit = std::stoi(query.substr(query.find("Top ") + 4));
    for (int i = 1; i <= std::min(limit, 1000000); ++i) {
      rows.push_back({"row " + std::to_string(i), std::to_string(i)});
    }
    return MakeResult({{"Name", kVarWChar}, {"ID", kInteger}}, rows);
  }
  std::vector<std::string> queries;
  ResultSetPtr answer;
  bool failing = false;
};

class ListControlTest : public testing::Test {
 protected:
  template <typename List>
  void SetUp(List& list) {
    list.SetReader(&reader);
    list.SetOleConnectionString("Provider=x;");
    list.SetViewMajor("vwThings");
    list.on_change = [this] { ++changes; };
  }
  MillionRows reader;
  int changes = 0;
};

TEST_F(ListControlTest, ReadsOnDemandAndHoldsFew) {
  VorekSelector list(nullptr, "slt");
  SetUp(list);
  EXPECT_TRUE(reader.queries.empty());
  list.FillList();
  EXPECT_EQ(list.ListCount(), 500);
  EXPECT_TRUE(list.MoreRows());
  EXPECT_EQ(reader.queries.back(), "Select Top 501 Name, ID from vwThings Order by Name");
  list.SetWhereClause("Where a = 1");
  EXPECT_EQ(list.ListCount(), 0);  // rows of another question don't stay
  list.SetWhereClauseOfList("b = 2");
  list.SetWhereClauseOfTree("c = 3");
  list.SetViewMinor("Title");
  list.SetOrderByClause("order by d");
  list.SetSupportAlternative(true);
  list.Search("o'n");
  EXPECT_EQ(reader.queries.back(),
            "Select Top 501 Title, ID, Alt from vwThings Where (b = 2) and (Title like N'%o''n%' "
            "or Alt like N'%o''n%') and (a = 1) Order by d");
  list.FillTree(4);
  EXPECT_EQ(reader.queries.back(),
            "Select Top 501 Title, ID, Alt from vwThings Where (c = 3) and (ParentID = 4) and "
            "(a = 1) Order by d");
}

TEST_F(ListControlTest, ReadsNothingWithoutAConnectionOrAView) {
  VorekSelector list(nullptr, "slt");
  list.SetReader(&reader);
  list.FillList();
  list.SetOleConnectionString("Provider=x;");
  list.FillList();
  EXPECT_TRUE(reader.queries.empty());
}

TEST_F(ListControlTest, KeepsTheReasonOfAListThatCantBeRead) {
  VorekPickerPanel list(nullptr, "app");
  SetUp(list);
  reader.failing = true;
  list.FillList();
  EXPECT_EQ(list.ListError(), "no such view");
  list.Type("x");
  EXPECT_EQ(list.Refusal(), "فهرست خوانده نشد");
  reader.failing = false;
  list.FillList();
  EXPECT_EQ(list.ListError(), "");
}

TEST_F(ListControlTest, ChoosesOneRow) {
  VorekSelector list(nullptr, "slt");
  SetUp(list);
  const auto answer = [&](const std::vector<MemoryRow>& rows) {
    reader.answer = MakeResult({{"Name", kVarWChar}, {"ID", kInteger}}, rows);
  };
  answer({{"five", "5"}});
  list.SetID(5);
  EXPECT_EQ(list.Description(), "five");
  list.SetID(5);
  EXPECT_EQ(changes, 1);
  answer({{"five", "5"}, {"fifty", "50"}});
  list.Type("fi");  // which of them?
  EXPECT_TRUE(list.Refuses() && list.OffersRows());
  EXPECT_EQ(list.ListCount(), 2);
  EXPECT_EQ(list.ID(), 5);
  list.Choose(1);
  EXPECT_EQ(list.ID(), 50);
  EXPECT_FALSE(list.Refuses());
  EXPECT_THROW(list.Choose(2), Error);
  answer({});
  list.Type("no such");
  EXPECT_TRUE(list.Refuses() && !list.OffersRows());
  list.DropRefusal();
  answer({{"five", "5"}, {"fifty", "50"}});
  list.FillList();
  list.SetAllowChange(false);
  list.Choose(0);
  list.Type("");
  EXPECT_EQ(list.ID(), 50);
  list.SetAllowChange(true);
  answer({});
  list.SetID(77);  // no such row
  EXPECT_TRUE(list.IsNull());
  EXPECT_EQ(list.ID(), 0);
  EXPECT_EQ(changes, 3);
}

TEST_F(ListControlTest, ChoosesManyRows) {
  VorekMultiSelect list(nullptr, "mlt");
  SetUp(list);
  EXPECT_TRUE(list.NoneSelected());
  list.FillList();
  list.Choose(10);
  list.Choose(3);
  EXPECT_EQ(list.SelectedIDs(), "11,4");
  list.Choose(10);
  EXPECT_EQ(list.SelectedIDs(), "4");
  list.SelectAll();
  EXPECT_TRUE(list.AllSelected() && list.IsSelected(999) && !list.NoneSelected());
  EXPECT_THROW(list.Choose(0), Error);  // all but one of a million
  EXPECT_TRUE(list.AllSelected());
  list.SetSelectedIDs(" ۷, 7,8 ,");
  EXPECT_EQ(list.SelectedIDs(), "7,8");
  list.SetSelectedIDs("-1");
  EXPECT_TRUE(list.NoneSelected());
  EXPECT_EQ(changes, 6);
}

TEST_F(ListControlTest, LeavesOneOutOfAll) {
  VorekMultiSelect list(nullptr, "mlt");
  SetUp(list);
  reader.answer = MakeResult({{"Name", kVarWChar}, {"ID", kInteger}},
                             {{"five", "5"}, {"six", "6"}, {"seven", "7"}});
  list.SetWhereClause("a = 1");
  list.FillList();
  list.SelectAll();
  list.Choose(1);
  EXPECT_EQ(list.SelectedIDs(), "5,7");
  EXPECT_FALSE(list.AllSelected());
  EXPECT_NE(reader.queries.back().find("(a = 1)"), std::string::npos);
}

TEST_F(ListControlTest, TakesAListThatIsTyped) {
  VorekMultiSelect list(nullptr, "mlt");
  SetUp(list);
  reader.answer = MakeResult({{"Name", kVarWChar}, {"ID", kInteger}}, {{"five", "5"}});
  list.Type("#5");
  EXPECT_EQ(list.SelectedIDs(), "5");
  EXPECT_NE(reader.queries[0].find("(ID = 5)"), std::string::npos);
  list.Type("۵، five ,5");
  EXPECT_EQ(list.SelectedIDs(), "5");
  list.Type("*");
  EXPECT_TRUE(list.AllSelected());
  reader.answer = MakeResult({{"Name", kVarWChar}, {"ID", kInteger}}, {});
  list.Type("5,9");
  EXPECT_TRUE(list.Refuses() && list.AllSelected());
  list.setNull();
  EXPECT_FALSE(list.Refuses());
}

TEST_F(ListControlTest, PicksBothHalvesOfAnEntity) {
  VorekEntityPicker picker(nullptr, "ntp");
  SetUp(picker);
  picker.SetFormTypeID(901);
  EXPECT_TRUE(picker.IsNull());
  picker.SetFormID(5);
  EXPECT_FALSE(picker.IsNull());
  picker.Type("۹۰۲:۷");
  EXPECT_EQ(picker.FormTypeID() * 100 + picker.FormID(), 90207);
  reader.answer = MakeResult({{"Name", kVarWChar}, {"FormID", kInteger}, {"FormTypeID", kInteger}},
                             {{"an invoice", "3", "901"}});
  picker.Type("invoice");
  EXPECT_EQ(picker.FormTypeID() * 100 + picker.FormID(), 90103);
  picker.setNull();
  picker.Type("#3");
  EXPECT_EQ(picker.FormTypeID() * 100 + picker.FormID(), 90103);
  EXPECT_NE(reader.queries.back().find("(FormID = 3)"), std::string::npos);
  picker.Type("#902:7");
  EXPECT_EQ(picker.FormTypeID() * 100 + picker.FormID(), 90207);
  reader.answer =
      MakeResult({{"Name", kVarWChar}, {"FormID", kInteger}, {"FormTypeID", kInteger}}, {});
  for (const char* typed : {"901:", "901:5x", "-1:5", "0:0"}) {
    picker.Type(typed);
    EXPECT_TRUE(picker.Refuses()) << typed;
  }
  picker.Type("");
  EXPECT_TRUE(picker.IsNull());
}

}  // namespace
}  // namespace vorek
