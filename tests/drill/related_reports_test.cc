#include "drill/related_reports.h"

#include "drill_fixture.h"

namespace vorek {
namespace {

class RelatedReports : public DrillFixture {
 protected:
  RelatedReports() {
    Show("", {{"Name", "ID", "name"}, {"12 a", "5", "O'x"}, {"b", "6", "y"}});
    state.ListOfParameters = "@3=33&@30=x";
  }
  void Link(const std::string& rows) {
    Run("delete tblVorekRelatedReports; insert into tblVorekRelatedReports values " + rows);
  }
  std::string Drill(bool secondary = false) {
    state.SecondaryWanted = secondary;
    DrillFromMain(report, *this);
    EXPECT_FALSE(state.SecondaryWanted);
    return Told();
  }
};

TEST_F(RelatedReports, PassWhatTheirRowsSay) {
  const struct {
    const char* rows;  // caller, called, column, caller's parameter, called's, -, -, secondary
    bool secondary;
    const char* told;
  } cases[] = {
      {"(7, 8, 'ID', null, 1, null, null, 0)", false, "open 8|&@1=5|هشت;"},
      // Headers are compared exactly, and values pass as they are.
      {"(7, 8, 'name', null, 1, null, null, null)", false, "open 8|&@1=O'x|هشت;"},
      {"(7, 8, 'NAME', null, 1, null, null, 0)", false, ""},
      {"(7, 8, 'ID', null, 1, null, null, 0), (7, 9, null, '3', 2, null, null, 0)", false,
       "open 8|&@1=5&@2=33|هشت;"},
      // A parameter without a value passes an empty one.
      {"(7, 8, '', '4', 2, null, null, 0)", false, "open 8|&@2=|هشت;"},
      {"(7, 8, '', ' ', 2, null, null, 0)", false, ""},
      // Primary and secondary.
      {"(7, 8, 'ID', null, 1, null, null, 0), (7, 9, 'ID', null, 4, null, null, 1)", false,
       "open 8|&@1=5|هشت;"},
      {"(7, 8, 'ID', null, 1, null, null, 0), (7, 9, 'ID', null, 4, null, null, 1)", true,
       "open 9|&@4=5|;"},
      {"(7, 9, 'ID', null, 4, null, null, 1)", false, "open 9|&@4=5|;"},
      {"(7, 8, 'ID', null, 1, null, null, 0)", true, ""},
      {"(6, 8, 'ID', null, 1, null, null, 0)", false, ""},
      {"(7, null, 'ID', null, 1, null, null, 0)", false, ""},
  };
  for (const auto& c : cases) {
    Link(c.rows);
    EXPECT_EQ(Drill(c.secondary), c.told) << c.rows;
  }
}

TEST_F(RelatedReports, LeaveRowsThatAreNone) {
  Link("(7, 8, null, '3', 1, null, null, 0)");
  EXPECT_EQ(Drill(), "open 8|&@1=33|هشت;");
  cancels = true;
  EXPECT_EQ(Drill(true), "");
  cancels = false;
  flxMain.SetRow(0);
  EXPECT_EQ(Drill(), "");
  flxMain.SetRow(2);
  flxMain.WriteCell(2, 0, "مجموع");
  EXPECT_EQ(Drill(), "");
  // The first row of an empty result: a width of 0 hides a text.
  flxMain.SetRow(1);
  for (const std::int32_t col : {1, 2, 3}) flxMain.WriteCell(1, col, "");
  EXPECT_EQ(Drill(), "");
  flxMain.WriteCell(1, 3, "x");
  flxMain.SetColWidth(3, 0);
  EXPECT_EQ(Drill(), "");
  flxMain.SetColWidth(3, 1);
  EXPECT_EQ(Drill(), "open 8|&@1=33|هشت;");
}

TEST_F(RelatedReports, NameTheAccountInTheTitle) {
  std::vector<std::string> headers(12, "h"), row;
  for (int i = 1; i <= 12; ++i) row.push_back("c" + std::to_string(i));
  Show("", {headers, row});
  const struct {
    std::int32_t report;
    const char* title;
  } cases[] = {{2834, "هشت : c1 - c2"},      {2840, "هشت : c1 - c12، c2"},
               {2842, "هشت : c1 - c12، c2"}, {2843, "هشت : c1 - c12، c2"},
               {2846, "هشت : c1 - c2، c8"},  {2844, "هشت"}};
  for (const auto& c : cases) {
    state.ReportID = c.report;
    Link("(" + std::to_string(c.report) + ", 8, null, '3', 1, null, null, 0)");
    EXPECT_EQ(Drill(), "open 8|&@1=33|" + std::string(c.title) + ";");
  }
  // A row with fewer columns than the title names.
  Show("", {{"h"}, {"c1"}});
  state.ReportID = 2846;
  Link("(2846, 8, null, '3', 1, null, null, 0)");
  EXPECT_EQ(Drill(), "open 8|&@1=33|هشت : c1 - ، ;");
}

TEST_F(RelatedReports, RunAgainWhatBecameStale) {
  const std::string title = " : 12 a - 5";  // of 2834
  for (const std::int32_t id : {2834, 7}) {
    state.ReportID = id;
    Link("(" + std::to_string(id) + ", 8, null, '3', 1, null, null, 0)");
    const std::string opened = "open 8|&@1=33|هشت" + (id == 7 ? "" : title) + ";";
    const std::string stale =
        "insert into tblVorekReportNeedRefresh values (5, " + std::to_string(id) + ")";
    Run(stale);
    on_open = {};
    EXPECT_EQ(Drill(), opened);  // what was marked before is old
    on_open = [&] { Run(stale); };
    EXPECT_EQ(Drill(), opened + (id == 7 ? "" : "again;"));
  }
}

TEST_F(RelatedReports, OpenTheChildrenOfAClosedTreeRow) {
  Link("(7, 8, 'ID', null, 1, null, null, 0)");
  state.Title = "درخت";
  state.ShowPopupTree = true;
  state.ParentIDColumn = 2;  // the column of ID stands before it
  state.ParentID = 3;
  flxMain.WriteCell(1, 0, "1+");
  std::int32_t parent = 0;
  on_open = [&] { parent = state.ParentID; };
  EXPECT_EQ(Drill(), "open 7|@3=33&@30=x|درخت - O'x;");
  EXPECT_EQ(parent, 5);
  EXPECT_EQ(state.local_ParentID, 5);
  EXPECT_EQ(state.ParentID, 3);
  // The row's name is the first text on show that doesn't begin with a digit, else the last one.
  for (const char* const number : {"0 a", "9 a", ""}) {
    flxMain.WriteCell(1, 1, number);
    EXPECT_TRUE(Drill().ends_with("درخت - O'x;")) << number;
  }
  flxMain.WriteCell(1, 1, " :a");
  EXPECT_TRUE(Drill().ends_with("درخت -  :a;"));
  flxMain.SetColWidth(1, 0);
  flxMain.WriteCell(1, 3, "/");
  EXPECT_TRUE(Drill().ends_with("درخت - /;"));
  on_open = [] { throw Error(ErrorNumber::kConnection, "lost"); };
  EXPECT_THROW(DrillFromMain(report, *this), Error);
  EXPECT_EQ(state.ParentID, 3);
  on_open = {};
  Told();
  state.ParentIDColumn = 0;
  EXPECT_EQ(Drill(), "");
  EXPECT_EQ(state.local_ParentID, -1);
  flxMain.WriteCell(1, 0, "1-");
  EXPECT_EQ(Drill(), "open 8|&@1=5|هشت;");
}

TEST_F(RelatedReports, LeadACrossTableToItself) {
  flxTranspose.SetRows(3);
  flxTranspose.SetCols(3);
  flxTranspose.WriteCell(0, 2, "ID");
  flxTranspose.WriteCell(2, 2, "66");
  flxTranspose.SetRow(2);
  Link(
      "(7, 8, null, null, 1, 4, 'ID', 1), (7, 8, null, '3', 1, 5, '', 0), (7, 8, null, null, 1, 6, "
      "'zz', 0)");
  DrillFromTranspose(report, *this);
  EXPECT_EQ(Told(), "open 7|@4=66&@5=33|هفت;");
  flxTranspose.SetRow(0);
  DrillFromTranspose(report, *this);
  EXPECT_EQ(Told(), "");
  flxTranspose.SetRow(1);
  DrillFromTranspose(report, *this);
  EXPECT_EQ(Told(), "open 7|@4=&@5=33|هفت;");
  // Without a link a procedure's form type is told alone.
  Link("(6, 8, null, null, 1, 4, 'ID', 1)");
  state.SQLSP = "spX";
  flxTranspose.WriteCell(0, 2, "formtypeid");
  flxTranspose.SetRow(2);
  DrillFromTranspose(report, *this);
  EXPECT_EQ(state.FormTypeID, 66);
  EXPECT_EQ(Told(), "");
}

}  // namespace
}  // namespace vorek
