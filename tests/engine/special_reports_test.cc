#include "engine/special_reports.h"

#include <gtest/gtest.h>

#include "support/random_report.h"
#include "vorek/field_type.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

std::string Rewritten(const std::string& query) {
  SpecialQuery special;
  const auto view_of_class = [](const std::string& id) {
    return id == "5" ? std::string("vwFive") : id == "6" ? "vwSix" : "";
  };
  if (!RewriteSpecialQuery(query, view_of_class, special)) return "plain";
  std::string all;
  for (const std::string& statement : special.statements) all += statement + "\n";
  return all;
}

TEST(SpecialReports, AreTheirStatements) {
  const std::string accounts =
      "Delete tblAccountTempID\nInsert into tblAccountTempID (ID,IDType) select tblAccount.ID,1 "
      "from tblAccount Where tblAccount.ID in (11,12)\n";
  const auto details = [](const char* view, int type, const char* list) {
    const std::string v = view;
    return "Insert into tblAccountTempID (ID,IDType) select " + v + ".ID," + std::to_string(type) +
           " from " + v + " Where " + v + ".ID in " + list + "\n";
  };
  const struct {
    const char* query;
    std::string statements;
  } cases[] = {
      {"select 1", "plain"},
      {"EXEC spAccountBalanceMoeinOnMultiDetail1 '1403/01/01','1404/12/29',5,(1,2),(11,12)",
       accounts + details("vwFive", 2, "(1,2)") +
           "EXEC spAccountBalanceMoeinOnMultiDetail1 '1403/01/01','1404/12/29',5,'1','1'\n"},
      {"exec SPACCOUNTBALANCEMOEINONMULTIDETAIL2 'a',5,'(1,2)','(11,12)'",
       accounts + details("vwFive", 2, "(1,2)") +
           "exec SPACCOUNTBALANCEMOEINONMULTIDETAIL2 'a',5,'1','1'\n"},
      {"EXEC spAccountBalanceMoeinOnMultiDetail1 'a',5,(ALL),(11,12)",
       accounts + "EXEC spAccountBalanceMoeinOnMultiDetail1 'a',5,'ALL','1'\n"},
      // A class without a row: no insert, and the call is made.
      {"EXEC spAccountBalanceMoeinOnMultiDetail1 'a',7,(1),(11,12)",
       accounts + "EXEC spAccountBalanceMoeinOnMultiDetail1 'a',7,'1','1'\n"},
      {"EXEC spAccountBalanceMultiTafsil_4Cols 'a',5,(1,2),6,(3),(11,12)",
       accounts + details("vwSix", 3, "(3)") + details("vwFive", 2, "(1,2)") +
           "EXEC spAccountBalanceMultiTafsil_4Cols 'a',5,'1',6,'1','1'\n"},
      {"EXEC spAccountBalanceMultiTafsil_8Cols 'a',5,(1,2),6,(ALL),(11,12)",
       accounts + details("vwFive", 2, "(1,2)") +
           "EXEC spAccountBalanceMultiTafsil_8Cols 'a',5,'1',6,'ALL','1'\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(Rewritten(c.query), c.statements) << c.query;
}

TEST(SpecialReports, GatherSalesFromAView) {
  const struct {
    const char* query;
    const char* values;
    const char* view;
    bool rows;
  } cases[] = {
      {"EXEC spSaleRegionPromoterReport '1403/01/01','1403/12/29',5,7",
       "'1403/01/01','1403/12/29',5,7", "vwSaleRegionPromoterReport", true},
      {"exec spsaleexternallocationreport '','',0, 0", "'1300/01/01','1500/01/01',0,0",
       "vwSaleExternalLocationReport", true},
      {"EXEC spSaleRegionPromoterReport '','1403/12/29',5x,7,spSalePromoterInRegionReport",
       "'1300/01/01','1403/12/29',5,7", "vwSaleRegionPromoterReport", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.query);
    const std::string all = Rewritten(c.query);
    EXPECT_NE(all.find(std::string("Values(") + c.values + ")\n"), std::string::npos) << all;
    EXPECT_NE(all.find(std::string(" from ") + c.view + ")\n"), std::string::npos) << all;
    EXPECT_EQ(all.find("from tblSaleRegionPromoterReport2\n") != std::string::npos, c.rows);
  }
}

// A call that was written otherwise is refused, never run with half of its arguments.
TEST(SpecialReports, RefuseACallWithoutItsArguments) {
  for (const char* query :
       {"EXEC spSaleRegionPromoterReport '1403/01/01',5", "spAccountBalanceMoeinOnMultiDetail1",
        "EXEC spAccountBalanceMoeinOnMultiDetail1 (1),(2)",
        "EXEC spAccountBalanceMultiTafsil_4Cols 'a',5,(1),(2)",
        "spAccountBalanceMultiTafsil_8Cols(((", "((spAccountBalanceMoeinOnMultiDetail2"}) {
    EXPECT_THROW(Rewritten(query), Error) << query;
  }
}

// What was gathered stays in its tables, for the next statement and for others to see; a run that
// fails leaves them as they were.
TEST(SpecialReports, LeaveTheirTablesWholeOrAsTheyWere) {
  Process process{{.providers = {SqliteProvider()},
                   .windows = std::make_shared<ScriptedWindows>(),
                   .clock = std::make_shared<FixedClock>()}};
  process.data.Rebind("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
  const auto run = [&](const std::string& text) { return process.dten().cnn.Execute(text, 30); };
  run("create table tblAccountTempID (ID int, IDType int)");
  run("create table tblAccount (ID int)");
  run("insert into tblAccount values (11), (12), (13)");
  run("create table tblAccountClass (ID int, ViewMajor nvarchar(50))");
  run("insert into tblAccountClass values (5, 'vwFive')");
  run("create view vwFive as select 1 as ID union all select 2");
  run("create procedure spAccountBalanceMoeinOnMultiDetail1 @a nvarchar(10), @c int, @o "
      "nvarchar(10), "
      "@k nvarchar(10) as select ID, IDType, @c as Class, @o as Flag from tblAccountTempID order "
      "by "
      "IDType, ID");
  ReportState state;
  Grid main(nullptr, "flxMain");
  Grid transpose(nullptr, "flxTranspose");
  QuietNotices notices;
  EvaluationClass evaluation;
  ReportContext report{process, state, main, transpose, notices, evaluation};
  const std::string call = "EXEC spAccountBalanceMoeinOnMultiDetail1 'a',5,(2,3),(11,13";
  ASSERT_TRUE(PrepareSpecialReport(report, call + ")"));
  const Recordset& query = process.dten().rssqlQuery;
  ASSERT_EQ(query.RecordCount(), 3);
  EXPECT_EQ(query.Field("ID").Number(), 11);
  EXPECT_EQ(query.Field("Flag").Text(), "1");
  EXPECT_EQ(run("select * from tblAccountTempID")->rows, 3U);
  EXPECT_EQ(run("select @@TRANCOUNT as n")->columns[0].Display(0), "0");
  EXPECT_THROW(PrepareSpecialReport(report, call + ", x)"), Error);
  EXPECT_EQ(run("select * from tblAccountTempID")->rows, 3U);
  EXPECT_EQ(run("select @@TRANCOUNT as n")->columns[0].Display(0), "0");
  EXPECT_FALSE(PrepareSpecialReport(report, "select 1 as a"));
}

TEST(SpecialReports, HaveWidthsByTheirCaller) {
  const struct {
    std::int32_t report;
    std::int32_t caller;
    std::vector<std::int32_t> widths;  // of columns 4 to 17
  } cases[] = {
      {2844,
       2834,
       {0, 1900, 1000, 1000, 1400, 1800, 2000, 1300, 1300, 1000, 1000, 1000, 1400, 1400}},
      {2844, 2840, {0, 0, 1000, 1000, 1500, 2000, 2000, 1400, 1400, 1000, 1000, 1000, 1400, 1400}},
      {2844, 2842, {0, 0, 0, 0, 1800, 2700, 2000, 1500, 1500, 1000, 1000, 1000, 1500, 1500}},
      {2844, 2843, {0, 0, 0, 0, 1800, 2700, 2000, 1500, 1500, 1000, 1000, 1000, 1500, 1500}},
      {2844, 2846, std::vector<std::int32_t>(14, 1000)},
      {2847, 2834, std::vector<std::int32_t>(14, 1000)},
  };
  for (const auto& c : cases) {
    RandomReport report(1);
    report.flxMain.SetCols(18);
    for (std::int32_t col = 0; col < 18; ++col) report.flxMain.SetColWidth(col, 1000);
    report.state.ReportID = c.report;
    report.state.CallerID = c.caller;
    ReportContext context = report.Context();
    WidenSpecialReport(context);
    std::vector<std::int32_t> widths;
    for (std::int32_t col = 4; col < 18; ++col) widths.push_back(report.flxMain.ColWidth(col));
    EXPECT_EQ(widths, c.widths) << c.report << " " << c.caller;
    EXPECT_EQ(report.flxMain.ColWidth(3), 1000);
  }
}

}  // namespace
}  // namespace vorek
