#include <set>

#include "parameter_fixture.h"

namespace vorek {
namespace {

class DependenciesTest : public ParameterTest {
 protected:
  DependenciesTest() {
    for (const char* column : {"DepOnParameterIDForm int", "DepOnParameterIDObject int"}) {
      Run(std::string("alter table tblVorekReportParameter add ") + column);
    }
    Run("create table tblAccountPeriod (ID int, Name nvarchar(50), FarsiBeginDate nvarchar(10), "
        "FarsiEndDate nvarchar(10), BeginDate datetime, EndDate datetime)");
    Run("insert into tblAccountPeriod values (47, N'1403', '1403/01/01', '1403/12/30', '20240320', "
        "'20250320'), (48, N'1404', '1404/01/01', '1404/12/29', '20250321', '20260320')");
    Run("create view vwAccountPeriodMajor as select ID, Name from tblAccountPeriod");
    Run("create table tblAccountDocument (ID int, Code int, IsPreDoc bit, DocumentDate datetime)");
    Run("insert into tblAccountDocument values (1, 10, 0, '20240401'), (2, 12, null, '20240501'), "
        "(3, 15, 0, '20240501'), (4, 99, 1, '20240601'), (5, null, 0, '20240601'), "
        "(6, 20, 0, '20250110'), (7, 30, 0, '20250401')");
    Run("create table tblAccountClass (ID int, Name nvarchar(50), ViewMajor nvarchar(50), "
        "ViewMinor nvarchar(50))");
    Run("insert into tblAccountClass values (1, N'چيزها', 'tblThing', 'Name'), (2, N'هيچ', null, "
        "null)");
    Run("create view vwAccountClassMajor as select ID, Name from tblAccountClass");
    Run("create table tblAccountDocumentDetail (DocumentID int, RowNumber int, AccountID int)");
    Run("create table tblAccountDocumentObjects (DocumentID int, RowNumber int, ClassID int, "
        "ObjectID int)");
    Run("insert into tblAccountDocumentDetail values (1, 1, 101), (1, 2, 102), (2, 1, 103)");
    Run("insert into tblAccountDocumentObjects values (1, 1, 1, 5), (1, 2, 1, 7), (2, 1, 3, 5)");
    Run("create view vwAccountTwoLevels as select 101 as ID, N'يک' as Name union all select 102, "
        "N'دو' union all select 103, N'سه'");
    Run("create table tblRecPayCashTurn (ID int, CashID int, Name nvarchar(50))");
    Run("insert into tblRecPayCashTurn values (1, 5, N'الف'), (2, 6, N'ب')");
    Run("create view vwRecPayCashTurnMajor as select ID, Name from tblRecPayCashTurn");
    Run("create view vwRecPayCashMajor as select ID, Name from tblThing");
    Run("create view vwBranchMajor as select ID, Name from tblThing");
  }

  // The fields of a ledger, and a branch.
  void ViewLedger(int report) {
    const std::string id = std::to_string(report);
    Run("update tblVorekReport set ID = " + id);
    Add(1, "period", 2, "int", 1, 1, "vwAccountPeriodMajor");
    Add(2, "from", 1, "datetime");
    Add(3, "to", 1, "datetime");
    for (int i = 4; i <= 7; ++i) Add(i, "text", 1002, i <= 5 ? "int" : "nvarchar");
    for (int i = 8; i <= 10; ++i) Add(i, "option", 1006, "bit");
    Add(11, "branch", 2, "int", 1, 1, "vwBranchMajor");
    Run("update tblVorekReportParameter set ReportID = " + id);
    std::string query = "select @1 , @2 , @3 , @4 , @5 , @6 , @7 , @8 , @9 , @10 , @11 ";
    panel.SetWidth(9000);
    ASSERT_TRUE(panel.View(report, query, 9000));
  }
  void Depend(int id, const char* column, int on) {
    Run("update tblVorekReportParameter set " + std::string(column) + " = " + std::to_string(on) +
        " where ParameterID = " + std::to_string(id));
  }
  void Type(std::size_t text, const std::string& typed) {
    TextBox& box = panel.widgets.txt[text];
    box.GotFocus();
    box.Type(typed);
    box.LostFocus();
  }
  std::string Range() {
    auto& w = panel.widgets;
    return w.dat[1].FarsiDate() + "-" + w.dat[2].FarsiDate() + " " + w.txt[1].Text() + "-" +
           w.txt[2].Text();
  }
  std::string Offered(ListControl& list) {
    list.FillList();
    std::set<std::int32_t> ids;
    for (const ListRow& row : list.Rows()) ids.insert(row.id);
    std::string all = list.ListError();
    for (const std::int32_t id : ids) all += std::to_string(id) + " ";
    return all;
  }
};

TEST_F(DependenciesTest, BeginALedgerWithItsPeriod) {
  const struct {
    int report;
    bool by_report;
    std::size_t searches;
    const char* checks;
  } cases[] = {{2834, true, 1, "1 0 0"}, {2846, true, 0, "1 0 0"},  {2851, true, 1, "0 0 1"},
               {2853, true, 1, "0 0 1"}, {2858, false, 0, "1 0 0"}, {2860, true, 0, "1 1 1"},
               {7, true, 0, "1 1 1"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.report);
    Run("delete from tblVorekReportParameter");
    ViewLedger(c.report);
    process.main.GlobalBranchID = 7;
    panel.PeriodID = 47;
    panel.CallByReport = c.by_report;
    searches.clear();
    panel.FillInitially();
    auto& w = panel.widgets;
    const bool ledger = c.report != 7 && c.report != 2860;
    EXPECT_EQ(Range(), ledger ? "1403/01/01-1403/12/30 10-20" : "- -");
    EXPECT_EQ(w.slt[1].ID(), c.report == 7 ? 0 : 47);
    EXPECT_EQ(w.slt[2].ID(), c.report == 7 ? 0 : 7);
    EXPECT_EQ(w.slt[2].AllowChange(), c.report == 7);
    EXPECT_EQ(searches.size(), c.searches);
    EXPECT_EQ(std::to_string(w.chk[1].Value()) + " " + std::to_string(w.chk[2].Value()) + " " +
                  std::to_string(w.chk[3].Value()),
              c.checks);
  }
}

// Period, dates and numbers follow each other, and what was typed stays.
TEST_F(DependenciesTest, KeepPeriodDatesAndNumbersTogether) {
  ViewLedger(2846);
  auto& w = panel.widgets;
  w.slt[1].SetID(48);
  EXPECT_EQ(Range(), "1404/01/01-1404/12/29 30-30");
  w.slt[1].SetID(47);
  w.dat[2].SetFarsiDate("1403/02/12");
  EXPECT_EQ(Range(), "1403/01/01-1403/02/12 10-15");
  w.dat[1].SetFarsiDate("1403/06/01");
  w.dat[2].SetFarsiDate("1403/06/10");
  EXPECT_EQ(Range(), "1403/06/01-1403/06/10 -");
  Type(1, "۱۲");
  Type(2, "12");
  EXPECT_EQ(Range(), "1403/02/12-1403/02/12 ۱۲-12");
  w.dat[1].SetFarsiDate("1403/01/01");
  const std::string before = Range();
  Type(1, panel.widgets.txt[1].Text());
  EXPECT_EQ(Range(), before);
  Type(1, "77");
  Type(2, "78");
  EXPECT_EQ(Range(), "- 77-78");
}

// Stored values belong together, also where a date alone would give other numbers.
TEST_F(DependenciesTest, LeaveTheValuesOfASettingAsTheyAre) {
  Run("create table tblVorekReportParameterConfig (ReportID int, Name nvarchar(100), "
      "ListOfParameters nvarchar(4000), UserID int, isShared bit)");
  Run("insert into tblVorekReportParameterConfig (ReportID, Name, ListOfParameters) values (2846, "
      "'x', '@5=12&@4=12&@3=''20240501''&@2=''20240401''&@1=47')");
  ViewLedger(2846);
  panel.widgets.slt[1].SetID(48);
  panel.mnuConfig[1].Click();
  EXPECT_EQ(panel.widgets.slt[1].ID(), 47);
  EXPECT_EQ(Range(), "1403/01/13-1403/02/12 12-12");
}

TEST_F(DependenciesTest, LeaveTheFieldsOfOtherReportsAlone) {
  ViewLedger(7);
  panel.widgets.slt[1].SetID(47);
  panel.widgets.dat[1].SetFarsiDate("1403/01/01");
  Type(1, "12");
  EXPECT_EQ(Range(), "1403/01/01- 12-");
}

// Report 2921 takes the period's dates; its own dates lead nothing.
TEST_F(DependenciesTest, TakeThePeriodAlone) {
  ViewLedger(2921);
  panel.widgets.slt[1].SetID(47);
  EXPECT_EQ(Range(), "1403/01/01-1403/12/30 10-20");
  panel.widgets.dat[2].SetFarsiDate("1403/02/12");
  EXPECT_EQ(Range(), "1403/01/01-1403/02/12 10-20");
}

TEST_F(DependenciesTest, ShowWhatBelongsToAClass) {
  Add(1, "class", 2, "int", 1, 1, "vwAccountClassMajor");
  Add(2, "object", 2, "int", 1, 1, "tblThing");
  Add(3, "objects", 1007, "int", 1, 1, "vwBranchMajor");
  Add(4, "accounts", 1007, "int", 1, 1, "vwAccountTwoLevels");
  Add(5, "accounts of object", 1007, "int", 1, 1, "vwAccountTwoLevels");
  Depend(2, "DepOnParameterIDObject", 1);
  Depend(3, "DepOnParameterIDObject", 1);
  Depend(4, "DepOnParameterIDObject", 1);
  Depend(5, "DepOnParameterIDForm", 2);
  ASSERT_TRUE(View("select @1 , @2 , @3 , @4 , @5 "));
  auto& w = panel.widgets;
  w.slt[2].SetID(8);
  w.mlt[2].SetSelectedIDs("103");
  w.slt[1].SetID(1);
  EXPECT_TRUE(w.slt[2].IsNull());
  EXPECT_EQ(w.slt[2].Caption(), "چيزها");
  EXPECT_EQ(w.mlt[1].ViewMajor(), "tblThing");
  EXPECT_TRUE(w.mlt[2].NoneSelected());
  EXPECT_EQ(Offered(w.mlt[2]), "101 102 ");
  const ResultSetPtr stored =
      Run("select MajorView, MinorView from tblVorekReportParameter where ParameterID = 3");
  EXPECT_EQ(stored->columns[0].Display(0), "tblThing");
  EXPECT_EQ(stored->columns[1].Display(0), "Name");
  w.slt[2].SetID(7);
  EXPECT_EQ(Offered(w.mlt[3]), "102 ");
  // A class without views only takes the choice back.
  w.mlt[2].SetSelectedIDs("101");
  w.slt[1].SetID(2);
  EXPECT_TRUE(w.mlt[2].NoneSelected());
  EXPECT_EQ(Offered(w.mlt[2]), "101 102 ");
}

TEST_F(DependenciesTest, ShowTheTurnsOfACash) {
  Add(1, "cash", 2, "int", 1, 1, "vwRecPayCashMajor");
  Add(2, "turn", 2, "int", 1, 1, "vwRecPayCashTurnMajor");
  Add(3, "not on the form", 2);
  Depend(2, "DepOnParameterIDForm", 1);
  Depend(3, "DepOnParameterIDForm", 1);
  ASSERT_TRUE(View("select @1 , @2 "));
  panel.widgets.slt[1].SetID(6);
  EXPECT_EQ(Offered(panel.widgets.slt[2]), "2 ");
  panel.widgets.slt[1].SetID(5);
  EXPECT_EQ(Offered(panel.widgets.slt[2]), "1 ");
}

// A login without the right to write, or a table that isn't there, ends a step and nothing else.
TEST_F(DependenciesTest, GoOnWithoutWhatTheDatabaseRefuses) {
  Add(1, "class", 2, "int", 1, 1, "vwAccountClassMajor");
  Add(2, "objects", 1007, "int", 1, 1, "vwBranchMajor");
  Depend(2, "DepOnParameterIDObject", 1);
  ASSERT_TRUE(View("select @1 , @2 "));
  Run("select * into tblKept from tblVorekReportParameter");
  Run("drop table tblVorekReportParameter");
  Run("create view tblVorekReportParameter as select * from tblKept union all select * from "
      "tblKept where 1 = 0");
  panel.widgets.slt[1].SetID(1);
  EXPECT_EQ(panel.widgets.mlt[1].ViewMajor(), "tblThing");
  EXPECT_TRUE(messages.texts.empty());
  Run("drop table tblAccountClass");
  panel.widgets.slt[1].setNull();
  EXPECT_TRUE(messages.texts.empty());
}

}  // namespace
}  // namespace vorek
