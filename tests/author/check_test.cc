#include <gtest/gtest.h>

#include "engine/report_check.h"
#include "engine/security_check.h"
#include "engine/select_list.h"
#include "grid/formula_check.h"
#include "platform/script.h"
#include "state/process.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

TEST(SelectListTest, ReadsTheNamesOfColumns) {
  const struct {
    const char* query;
    const char* names;  // with "|" behind each; null: can't be seen
  } cases[] = {
      {"select a, t.b, c as d, [e f], 'g' = h, count(*) as n from t", "a|b|d|e f|g|n|"},
      {"select distinct top 5 a x, 1, isnull(b, ',') from t", "x|||"},
      {"select top (5) percent a from t", "a|"},
      {"with q as (select z from t) select a, (select max(b) from t) as m from q", "a|m|"},
      {"select a /* , b */, 'x, y' as s -- , c\n from t union select 1, 2", "a|s|"},
      {"select * from t", nullptr},
      {"select t.*, a from t", nullptr},
      {"exec spX 1, 2", nullptr},
      {"", nullptr},
      {"select 'open", "open|"},
  };
  for (const auto& c : cases) {
    const auto names = SelectListNames(c.query);
    ASSERT_EQ(names.has_value(), c.names != nullptr) << c.query;
    std::string joined;
    for (const std::string& name : names.value_or(std::vector<std::string>())) joined += name + "|";
    EXPECT_EQ(joined, c.names == nullptr ? "" : c.names) << c.query;
  }
}

constexpr const char* kCatalogue =
    "create table tblVorekReport (ID int, Title nvarchar(50), SQLQuery nvarchar(max), SQLSP "
    "nvarchar(max), IsStoredProcedure bit, MakeSecure bit, FormTypeID int, ShowPopupTree bit);"
    "create table tblVorekReportParameter (ReportID int, ParameterID int);"
    "create table tblVorekReportLayout (ReportID int, ColumnNumber int, Alignment int, Width int, "
    "MergeType int, TransposeType int, MakeSum bit);"
    "create table tblVorekReportExpression (ReportID int, ColumnNumber int, Name nvarchar(50), "
    "GeneralExpression nvarchar(99), FirstRowExpression nvarchar(99));"
    "create table tblVorekRelatedReports (CallerReportID int, CalledReportID int, "
    "CallerReportColumn nvarchar(50), CalledParameterID int);"
    "create table tblVorekTableFormRelationship (FormTypeID int, TableName nvarchar(50), IsMaster "
    "int);"
    "create table tblVorekRelatedTables (ReferenceTable nvarchar(50), ReferenceKey nvarchar(50), "
    "DependentTable nvarchar(50), ForeignKey nvarchar(50));"
    "create table tblVorekColumn (TableName nvarchar(50), Name nvarchar(50), IsPrimaryKey bit);"
    "create table tblVorekFormType (ID int, SecurityTypeID int);";

class CheckTest : public testing::Test {
 protected:
  CheckTest() {
    process.data.Rebind("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
    Run(kCatalogue);
  }
  void Run(const std::string& text) { process.dten().rssqlGeneral5.Open(text); }

  // "field: what" of each finding, an error with "!" in front.
  std::string Findings() {
    std::string all;
    for (const Finding& finding : CheckReports(process, {1})) {
      all += std::string(finding.error ? "!" : "") + finding.field + ": " + finding.what + "\n";
    }
    return all;
  }

  Process process{{.providers = {SqliteProvider()},
                   .windows = std::make_shared<ScriptedWindows>(),
                   .clock = std::make_shared<FixedClock>()}};
};

TEST_F(CheckTest, TellsEachFault) {
  const struct {
    const char* rows;  // beside the report
    const char* query;
    const char* findings;  // a part of them; "" for none at all
  } cases[] = {
      {"insert into tblVorekReportParameter values (1, 1)", "select a from t where (a = @1)", ""},
      {"", "select a from t where (a = @1)", "!SQLQuery: the marker @1 has no parameter"},
      {"insert into tblVorekReportParameter values (1, 1)",
       "select a from t where (a = @1) and (b = @12)",
       "!SQLQuery: the marker @12 has no parameter"},
      {"insert into tblVorekReportParameter values (1, 1), (1, 2)",
       "select a from t where (a = @1)", "parameter 2: no marker of the query uses it"},
      {"insert into tblVorekReportParameter values (1, 1)",
       "select a from t where a = @1 and b = 2",
       "parameter 1: no closing bracket stands behind @1"},
      {"insert into tblVorekReportParameter values (1, 1)", "select a from t where a = @1",
       "!parameter 1: @1 stands at the very end of the query"},
      {"", "select a from t where mail = ''x@y''", "!SQLQuery: an \"@\" that is no marker"},
      {"", "select ''<UserID>'' as u", "SQLQuery: the token <UserID> stands in a text or a name"},
      {"insert into tblVorekReportLayout values (1, 3, 4, 4, 0, 0, 0)", "select a, b from t",
       "layout column 3: the result has 2 columns"},
      {"insert into tblVorekReportLayout values (1, 2501, 4, 4, 0, 0, 0)", "select * from t",
       "!layout column 2501: columns end at 2500"},
      {"insert into tblVorekReportLayout values (1, 1, 4, 4, 0, 1, 0), (1, 2, 4, 4, 0, 1, 0)",
       "select a, b from t", "!TransposeType: 2 columns are to be spread"},
      {"insert into tblVorekReportExpression values (1, 1, N'x', ''C2+P3'', null)",
       "select a from t", "!GeneralExpression of x: P3 refers to a column beyond the 2"},
      {"insert into tblVorekRelatedReports values (1, 9, ''a'', null)", "select a from t",
       "!link to report 9: there is no such report"},
      {"insert into tblVorekRelatedReports values (1, 1, ''z'', null)", "select a from t",
       "!link to report 1: the result has no column \"z\""},
      {"insert into tblVorekRelatedReports values (1, 1, ''a'', 4)", "select a from t",
       "!link to report 1: the called report has no parameter 4"},
      {"insert into tblVorekRelatedReports values (1, 1, ''a'', 4); insert into "
       "tblVorekReportParameter values (1, 4)",
       "select a from t where (a = @4)", ""},
      {"update tblVorekReport set ShowPopupTree = 1", "select ID, ParentID from t",
       "!ShowPopupTree: the report has no parameter to pass on"},
      {"update tblVorekReport set ShowPopupTree = 1; insert into tblVorekReportParameter values "
       "(1, 4)",
       "select ID, a, ParentID from t where (a = @4)",
       "!ShowPopupTree: the field before ParentID isn't ID"},
      {"update tblVorekReport set ShowPopupTree = 1; insert into tblVorekReportParameter values "
       "(1, 4)",
       "select ID, ParentID from t where (a = @4)", ""},
      {"update tblVorekReport set MakeSecure = 1", "select a from t",
       "!MakeSecure: the query gives no form type or no key"},
      {"update tblVorekReport set MakeSecure = 1, FormTypeID = 5",
       "select t.ID from t group by t.ID",
       "MakeSecure: the condition comes behind the query's GROUP BY"},
      {"update tblVorekReport set MakeSecure = 1, FormTypeID = 5", "select t.ID from t", ""},
      {"update tblVorekReport set MakeSecure = 1, FormTypeID = 5",
       "select t.ID from t union select u.ID from u",
       "!MakeSecure: the query is joined to another by UNION"},
      {"insert into tblVorekReportExpression values (1, 1, N'x', ''100-C1^0.5'', null)",
       "select a from t", "GeneralExpression of x: a power with a fraction stands behind a minus"},
  };
  for (const auto& c : cases) {
    Run("delete tblVorekReport; delete tblVorekReportParameter; delete tblVorekReportLayout; "
        "delete "
        "tblVorekReportExpression; delete tblVorekRelatedReports");
    Run(std::string("insert into tblVorekReport values (1, N'x', N'") + c.query +
        "', null, 0, 0, null, 0)");
    std::string rows = c.rows;
    for (std::size_t at; (at = rows.find("''")) != std::string::npos;) rows.replace(at, 2, "'");
    if (!rows.empty()) Run(rows);
    const std::string findings = Findings();
    if (*c.findings == '\0') {
      EXPECT_EQ(findings, "") << c.query;
    } else {
      EXPECT_NE(findings.find(c.findings), std::string::npos) << c.query << "\n" << findings;
    }
  }
  Run("delete tblVorekReport");
  EXPECT_EQ(Findings(), "!ID: there is no report 1\n");
}

// A list that follows a class is noted in the catalogue, which not every login may write.
TEST_F(CheckTest, TellsWhoMayNotWriteWhatAChoiceWrites) {
  Run("insert into tblVorekReport (ID, SQLQuery) values (1, 'select a from t where (a = @1)')");
  Run("drop table tblVorekReportParameter");
  Run("create table tblKept (ReportID int, ParameterID int, ControlTypeID int, MajorView "
      "nvarchar(50), MinorView nvarchar(50), DepOnParameterIDForm int, DepOnParameterIDObject "
      "int)");
  Run("create view tblVorekReportParameter as select * from tblKept union all select * from "
      "tblKept "
      "where 1 = 0");
  const struct {
    const char* row;
    bool told;
  } cases[] = {{"1, 1, 1007, 'vwThing', 'Name', null, 2", true},
               {"1, 1, 1007, 'vwAccountTwoLevels', 'Name', null, 2", false},
               {"1, 1, 1007, 'vwThing', 'Name', 2, null", false},
               {"1, 1, 2, 'vwThing', 'Name', null, 2", false}};
  for (const auto& c : cases) {
    Run("delete tblKept");
    Run(std::string("insert into tblKept values (") + c.row + ")");
    const bool told = Findings().find("parameter 1: this login may not write") != std::string::npos;
    EXPECT_EQ(told, c.told) << c.row;
  }
  Run("drop view tblVorekReportParameter");
  Run("select * into tblVorekReportParameter from tblKept");
  Run("update tblVorekReportParameter set ControlTypeID = 1007");
  EXPECT_EQ(Findings(), "");
}

TEST_F(CheckTest, TellsALedgerWithoutItsColumns) {
  Run("insert into tblVorekReport (ID, SQLQuery) values (2857, 'select a, b, c, d, e, f from t')");
  const auto told = [&] {
    std::string all;
    for (const Finding& finding : CheckReports(process, {2857})) all += finding.what;
    return all;
  };
  EXPECT_EQ(told(), "subtotals of this report need 7 columns, it has 6");
  Run("update tblVorekReport set SQLQuery = 'select a, b, c, d, e, f, g from t'");
  EXPECT_EQ(told(), "");
}

TEST(SecurityCheck, FindsTextsThatLeakOrBreak) {
  const struct {
    const char* query;
    const char* faults;  // with "!" in front of each that leaks
  } cases[] = {
      {"select t.ID from t", ""},
      {"select t.ID from t where (t.a = 1 or t.b = @1) and t.c = 2 order by t.ID", ""},
      {"select t.ID, (select max(b) from u where u.a = 1) as m from t where 1 = 1",
       "!the first FROM between blanks isn't the query's own|"},
      {"select t.ID\nfrom t where 1 = 1", "!the first FROM between blanks isn't the query's own|"},
      {"select t.ID from t union all select u.ID from u where u.a = 1",
       "!the query is joined to another by UNION|"},
      {"select t.ID from t where t.a = 1 or t.b = 2",
       "!an OR stands outside all brackets in the WHERE|"},
      {"select t.ID from t where t.a = @1 and (t.b = @2)",
       "!@1 stands outside all brackets in the WHERE|"},
      {"select t.ID from t where t.a = 'x or y' order by t.a", ""},
      {"select t.ID from t\nwhere t.a = 1", "WHERE doesn't stand between blanks|"},
      {"select t.ID from t where 1 = 1\norder by t.ID", "ORDER BY doesn't stand between blanks|"},
      {"select t.ID, row_number() over (partition by a order by b) as n from t",
       "the first ORDER BY isn't the query's own|"},
      {"select t.ID from t left join (select a from u where a = 1) x on x.a = t.a",
       "!the only WHERE stands in brackets, and the query has an outer join|"},
      {"select t.ID from (select a from u where a = 1) t", "the only WHERE stands in brackets|"},
      {"select t.ID from t -- all of them", "!a comment stands where the condition is put|"},
      {"select t.ID from t where 1 = 1 -- all of them\n", ""},
      {"select t.ID from t /* all", "!a comment stands where the condition is put|"},
      {"select t.ID from t;", "the query ends with a semicolon|"},
  };
  for (const auto& c : cases) {
    std::string faults;
    for (const SecurityFault& fault : FindSecurityFaults(c.query)) {
      faults += (fault.leaks ? "!" : "") + fault.what + "|";
    }
    EXPECT_EQ(faults, c.faults) << c.query;
  }
}

TEST(FormulaCheck, FindsAPowerThatVanishes) {
  const struct {
    const char* formula;
    bool found;
  } cases[] = {{"100-16^0.5", true},
               {"-C1^.5", true},
               {"100 - C12 ^ ( 1/2 )", true},
               {"C1-(C2+3)^0.5", true},
               {"C1-@ABS(C2)^0.5", true},
               {"100-16^2", false},
               {"100-16^2.0", false},
               {"100+16^0.5", false},
               {"100-(16^0.5)", false},
               {"(100-2)*16^0.5-1", false},
               {"16^-0.5", false},
               {"^0.5", false},
               {"", false}};
  for (const auto& c : cases) EXPECT_EQ(RaisesNegativeToFraction(c.formula), c.found) << c.formula;
}

// A reader that takes the document "fits" and one that names a column which isn't there.
XmlElement ReadAsTemplate(std::string_view bytes) {
  if (bytes != "fits" && bytes != "names") throw Error(ErrorNumber::kInvalidCall, "no XML");
  const XmlElement text{
      "text", {{"width", "9"}, {"height", "5"}}, bytes == "fits" ? "{Column1}" : "{Column2}", {}};
  return {"print-template", {{"version", "1"}}, "", {{"detail", {{"height", "6"}}, "", {text}}}};
}

TEST_F(CheckTest, ReadsStoredPrintTemplates) {
  Run("insert into tblVorekReport (ID, SQLQuery) values (1, 'select a from t')");
  const auto faults = [&] {
    std::string all;
    for (const Finding& finding : CheckReports(process, {1}, ReadAsTemplate)) {
      all += std::string(finding.error ? "!" : "") + finding.field + ": " + finding.what + "\n";
    }
    return all;
  };
  EXPECT_EQ(faults(), "");  // no table of attachments
  Run("create table tblVorekFormAttachment (FormTypeID int, FormID int, RowNumber int, "
      "FileExtension nvarchar(9), FileName nvarchar(50), IsExternal bit, FilePath nvarchar(50), "
      "FileData varbinary(max))");
  Run("insert into tblVorekFormAttachment values "
      "(2302, 1, 1, 'rpt', 'a.xml', 0, null, 0x66697473), "    // fits
      "(2302, 1, 2, 'rpt', 'b.xml', 0, null, 0x6e616d6573), "  // names
      "(2302, 1, 3, 'rpt', 'c.rpt', 0, null, 0xd0cf11e0), "
      "(2302, 1, 4, 'xls', 'd.xls', 0, null, 0xd0cf11e0), "
      "(2302, 2, 1, 'rpt', 'e.rpt', 0, null, 0xd0cf11e0)");
  EXPECT_NE(faults().find("!print template 1: the database has no table"), std::string::npos);
  Run("create table tblVorekCrystalReport (UserID int, Column1 nvarchar(9))");
  EXPECT_EQ(faults(),
            "!print template 2: الگوي چاپ: ستون Column2 در داده ها نيست.\n"
            "!print template 3: فايل c.rpt الگوي چاپ اين برنامه نيست. no XML\n");
  Run("create view vwVorekCrystalReport_1 as select Column1, Column1 as Column2 from "
      "tblVorekCrystalReport");
  EXPECT_EQ(faults(), "!print template 3: فايل c.rpt الگوي چاپ اين برنامه نيست. no XML\n");
}

}  // namespace
}  // namespace vorek
