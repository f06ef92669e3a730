#include <gtest/gtest.h>

#include "adapters/system/system_files.h"
#include "author/finding_text.h"
#include "author/formula_rules.h"
#include "author/report_check.h"
#include "author/rule_words.h"
#include "author/security_rules.h"
#include "author/select_list.h"
#include "platform/memory_database.h"
#include "state/process.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "text/utf8.h"
#include "vorek/script.h"
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

// A catalogue of the sample's own tables with one report, 1, over two tables of goods.
class CheckTest : public testing::Test {
 protected:
  CheckTest() {
    process.data.Rebind("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
    for (const ScriptBatch& batch : SplitScript(SystemFiles().Read("samples/10-metadata.sql"))) {
      Run(batch.text);
    }
    Run("create table tblGood (ID int primary key, Code int, Name nvarchar(50), Price money, "
        "GroupID int)");
    Run("create table tblGroup (ID int primary key, ParentID int, Name nvarchar(50), Kept bit)");
    Run("create view vwGroup as select ID, Name from tblGroup");
    Run("create procedure spGoods @group int, @price money as select * from tblGood");
    Run("insert into tblVorekFormType (ID, SecurityTypeID) values (5, 1)");
    Run("insert into tblVorekTableFormRelationship (FormTypeID, TableName, IsMaster) values (5, "
        "'tblGood', 1)");
  }
  void Run(const std::string& text) { process.dten().rssqlGeneral5.Open(text); }
  void Begin() {
    for (const char* const table :
         {"tblVorekReportParameter", "tblVorekReportLayout", "tblVorekReportExpression",
          "tblVorekRelatedReports", "tblVorekReport"}) {
      Run(std::string("delete ") + table);
    }
    Run("insert into tblVorekReport (ID, SQLQuery) values (1, 'select g.Code, g.Price, 1 as n "
        "from tblGood g')");
  }
  // The report's query, with a quote as it stands in it.
  void Query(const std::string& text) {
    Run("update tblVorekReport set SQLQuery = N'" + text::Replace(text, "'", "''") + "'");
  }
  // "code field line:column" of each finding, its row's number behind the code.
  std::string Findings(const XmlReader& reader = {}) {
    std::string all;
    for (const Finding& finding : CheckReports(process, {1}, reader)) {
      const Place& place = finding.place;
      all += std::string(CodeOf(finding.rule)) + (place.row.empty() ? "" : " " + place.row) +
             (place.field.empty() ? "" : " " + place.field);
      if (place.line > 0) {
        all += " " + std::to_string(place.line) + ":" + std::to_string(place.column);
      }
      all += "\n";
    }
    return all;
  }

  Process process{{.providers = {SqliteProvider()},
                   .windows = std::make_shared<ScriptedWindows>(),
                   .clock = std::make_shared<FixedClock>()}};
};

struct QueryCase {
  const char* query;
  const char* rows;      // run beside it
  const char* findings;  // all of them
};

TEST_F(CheckTest, FindsWhatIsWrongWithAQuery) {
  const char* const one =
      "insert into tblVorekReportParameter (ReportID, ParameterID, ControlTypeID, Type) values (1, "
      "1, 1002, 'int')";
  const QueryCase cases[] = {
      // right ones
      {"select g.Code, g.Price from tblGood g where (g.Code = @1)", one, ""},
      {"select Code from tblGood where (Code in (0, @1)) and (Price > @1)", one, ""},
      {"select Code as '' from tblGood where Name <> '<b>' and Name > <FarsiReportDate>", "", ""},
      {"with q as (select GroupID, count(*) as n from tblGood group by GroupID) select * from q",
       "", ""},
      {"select a.Name, b.Name as other from tblGroup a left join tblGroup b on a.ID = b.ParentID",
       "", ""},
      {"select Code into #t from tblGood; select x from #t", "", ""},
      {"exec spGoods 1, 2", "", ""},
      {"select Code, 'don''t ask -- (1)' as [a @ b] from tblGood -- it's",
       "update tblVorekReport set SQLQuery = replace(SQLQuery, '@', 'o')", ""},
      {"exec spGoods 'a @1 b', 2", one, "marker-without-bracket 1\n"},
      {"select ID, ParentID, Name from tblGroup", "update tblVorekReport set MakeTree = 1", ""},
      {"select Code as [كد\u06CC] from tblGood where Name <> N'يك'", "", ""},
      {"create table #t (a int); insert into #t values (1); update #t set a = 2; delete from #t; "
       "select a from #t",
       "", ""},
      // mistakes
      {"", "", "no-query SQLQuery\n"},
      {"  ", "update tblVorekReport set Reserved = ' '", "no-query SQLQuery\n"},
      {"x", "update tblVorekReport set IsStoredProcedure = 1", "no-query SQLSP\n"},
      {"select Code\nfrom  tblGods", "", "missing-table SQLQuery 2:7\n"},
      {"select Code,\n  g.Prise\nfrom tblGood g", "", "missing-column SQLQuery 2:3\n"},
      {"select Code, Prise from tblGood", "", "missing-column SQLQuery 1:14\n"},
      {"select Name from tblGood g join tblGroup h on g.GroupID = h.ID", "",
       "ambiguous-column SQLQuery 1:8\n"},
      {"select Code, from tblGood", "", "syntax SQLQuery 1:14\n"},
      {"selec Code from tblGood", "", "syntax SQLQuery 1:12\n"},
      {"select Code form tblGood", "", "syntax SQLQuery 1:18\n"},
      {"select Code from tblGood were Code = 1", "", "syntax SQLQuery 1:31\n"},
      {"select Code from tblGood where (Code = 1", "", "syntax SQLQuery 1:41\n"},
      {"select Code from tblGood where (Code in (@1))", one, "syntax SQLQuery 1:41\n"},
      {"select 'Code from tblGood", "", "syntax SQLQuery 1:8\n"},
      {"select size_of(Name) as n from tblGood", "", "missing-function SQLQuery 1:8\n"},
      {"select Name, count(*) as n from tblGood", "", "not-grouped SQLQuery 1:8\n"},
      {"select Code from tblGood ", "update tblVorekReport set Reserved = 'wher Code = 1'",
       "syntax Reserved 1:6\n"},
      {"", "update tblVorekReport set IsStoredProcedure = 1, SQLSP = 'spNone 1'",
       "missing-procedure SQLSP 1:1\n"},
      {"", "update tblVorekReport set IsStoredProcedure = 1, SQLSP = 'spGoods 1'",
       "arguments SQLSP 1:1\n"},
      {"select Code from tblGood where (Code = @1)", "", "unknown-marker SQLQuery 1:40\n"},
      {"select Code from tblGood where (Code = @1) and (Code = @12)", one,
       "marker-of-other SQLQuery 1:56\n"},
      {"select Code from tblGood where Name = 'x@y'", "", "lone-at SQLQuery 1:41\n"},
      {"select Code from tblGood where (Name like '%@1%') and (Code = @1)", one,
       "quoted-marker SQLQuery 1:45\n"},
      {"select Code from tblGood where Name = N'\u06CCا\u06A9'", "",
       "other-letters SQLQuery 1:40\n"},
      {"update tblGood set Price = 0", "", "changes-rows SQLQuery 1:1\nno-result SQLQuery\n"},
      {"select 1 as a; delete from tblGood", "", "changes-rows SQLQuery 1:16\n"},
      {"select Code into tblKept from tblGood", "", "changes-rows SQLQuery 1:13\n"},
      {"create table tblKept (A int); select 1 as a", "", "changes-rows SQLQuery 1:1\n"},
      {"delete top (2) from tblGood where Price = 0; select 1 as a", "",
       "changes-rows SQLQuery 1:1\n"},
      {"drop table if exists tblKept; select 1 as a", "", "changes-rows SQLQuery 1:1\n"},
      {"drop table if exists #w; select Code as c into #w from tblGood; update w set c = 'a' from "
       "#w "
       "as w; delete top (1 + 1) from [#w]; create index ix on #w (c); select c from #w",
       "", ""},
      {"select a.Code from tblGood a inner merge join tblGood b on b.Code = a.Code", "", ""},
      {"select '<UserID>' as u from tblGood", "", "quoted-token SQLQuery 1:9\n"},
      {"select ID, Name from tblGroup", "update tblVorekReport set MakeTree = 1",
       "tree-fields MakeTree\n"},
      {"select ID, ParentID from tblGroup", "update tblVorekReport set MakeTree = 2",
       "tree-value MakeTree\n"},
  };
  for (const QueryCase& c : cases) {
    Begin();
    Query(c.query);
    Run(c.rows);
    EXPECT_EQ(Findings(), c.findings) << c.query << "\n" << c.rows;
  }
  Begin();
  Run("delete tblVorekReport");
  EXPECT_EQ(Findings(), "no-report ID\n");
}

TEST_F(CheckTest, FindsWhatIsWrongWithAParameter) {
  const struct {
    const char* condition;  // of the query
    const char* values;     // ControlTypeID, Type, MajorView, MinorView
    const char* findings;
  } cases[] = {
      // right ones
      {"(Name like @1)", "1002, 'nvarchar', null, null", ""},
      {"(Code = @1)", "1002, 'int', null, null", ""},
      {"(GroupID = @1)", "2, 'int', 'vwGroup', 'Name'", ""},
      {"(GroupID in  @1)", "1007, 'int', 'vwGroup', null", ""},
      {"(GroupID in (@1))", "1007, 'int', 'vwGroup', null", ""},
      {"(Name > @1)", "1, 'nvarchar', null, null", ""},
      {"(Name > @1)", "1, 'datetime', null, null", ""},
      {"(Name = @1)", "3, 'nvarchar', null, null", ""},
      {"(Price > @1)", "11, 'money', null, null", ""},
      {"(N'' = @1)", "1001, 'nvarchar', null, null", ""},
      {"(Code = @1)", "1006, 'BIT', null, null", ""},
      {"(Name = @1)", "13, 'nvarchar', null, null", ""},
      {"(Code = @1)", "1003, 'int', 'vwGroup', null", ""},
      // mistakes
      {"(Code = @1)", "7, 'int', null, null", "unknown-kind 1 ControlTypeID\n"},
      {"(Code = @1)", "null, 'int', null, null", "unknown-kind 1 ControlTypeID\n"},
      {"(Code = @1)", "1002, 'integer', null, null", "unknown-type 1 Type\n"},
      {"(Code = @1)", "1002, null, null, null", "unknown-type 1 Type\n"},
      {"(GroupID = @1)", "2, 'int', null, null", "no-list 1 MajorView\n"},
      {"(GroupID = @1)", "1003, 'int', ' ', null", "no-list 1 MajorView\n"},
      {"(GroupID = @1)", "2, 'int', 'vwGroups', null", "missing-list 1 MajorView\n"},
      {"(GroupID = @1)", "2, 'int', 'vwGroup', 'Title'", "list-column 1 MinorView\n"},
      {"(GroupID = @1)", "9, 'int', 'tblVorekReportLayout', 'Width'", "list-column 1 MajorView\n"},
      {"(Name = @1)", "1002, 'nvarchar', null, null", "text-compared SQLQuery 1:40\n"},
      {"(Name <> (@1))", "1002, 'varchar', null, null", "text-compared SQLQuery 1:42\n"},
      {"(Name = @1)", "1002, 'datetime', null, null", "kind-and-type 1 Type\n"},
      {"(Price > @1)", "11, 'nvarchar', null, null", "kind-and-type 1 Type\n"},
      {"(Code = @1)", "3, 'datetime', null, null", "kind-and-type 1 Type\n"},
      {"(GroupID in (@1))", "1007, 'nvarchar', 'vwGroup', null", "kind-and-type 1 Type\n"},
      {"(Code = @1)", "1, 'int', null, null", "date-as-number 1 Type\n"},
      {"(Name = @1)", "2, 'nvarchar', 'vwGroup', null", "name-as-text 1 Type\n"},
      {"(GroupID in @1)", "1007, 'int', 'vwGroup', null", "list-marker SQLQuery 1:44\n"},
      {"Code = @1 and 1 = 1", "1002, 'int', null, null", "marker-without-bracket 1\n"},
      {"Code = @1", "1002, 'int', null, null", "marker-without-bracket 1\nmarker-unseen 1\n"},
      {"Code = 1", "1002, 'int', null, null", "unused-parameter 1\n"},
  };
  for (const auto& c : cases) {
    Begin();
    Query(std::string("select Code from tblGood where ") + c.condition);
    Run(std::string("insert into tblVorekReportParameter (ReportID, ParameterID, ControlTypeID, "
                    "Type, MajorView, MinorView) values (1, 1, ") +
        c.values + ")");
    EXPECT_EQ(Findings(), c.findings) << c.condition << ": " << c.values;
  }
}

TEST_F(CheckTest, FindsWhatFollowsNobody) {
  const struct {
    const char* follows;  // of parameter 2: DepOnParameterIDForm, DepOnParameterIDObject
    const char* findings;
  } cases[] = {{"1, null", ""},
               {"null, 1", ""},
               {"2, null", "no-dependency 2 DepOnParameterIDForm\n"},
               {"null, 9", "no-dependency 2 DepOnParameterIDObject\n"}};
  for (const auto& c : cases) {
    Begin();
    Query("select Code from tblGood where (GroupID = @1) and (GroupID in (@2))");
    Run("insert into tblVorekReportParameter (ReportID, ParameterID, ControlTypeID, Type, "
        "MajorView, DepOnParameterIDForm, DepOnParameterIDObject) values (1, 1, 2, 'int', "
        "'vwGroup', null, null), (1, 2, 1007, 'int', 'vwGroup', " +
        std::string(c.follows) + ")");
    EXPECT_EQ(Findings(), c.findings) << c.follows;
  }
}

TEST_F(CheckTest, FindsWhatIsWrongWithOtherRows) {
  const struct {
    const char* rows;
    const char* findings;
  } cases[] = {
      // right ones
      {"insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width) values (1, 1, "
       "4, 900), (1, 2, 7, 0)",
       ""},
      {"insert into tblVorekReportLayout (ReportID, ColumnNumber, Width) values (1, 0, 900), (1, "
       "1, 900)",
       ""},
      {"insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression) "
       "values (1, 7, 'x', 'C2*C3+P4')",
       ""},
      {"insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerReportColumn) "
       "values (1, 1, 'code')",
       ""},
      {"update tblVorekReport set MakeTranspose = 1; insert into tblVorekReportLayout (ReportID, "
       "ColumnNumber, TransposeType) values (1, 1, 2), (1, 2, 1)",
       ""},
      // mistakes
      {"insert into tblVorekReportLayout (ReportID, ColumnNumber) values (1, 1), (1, 3)",
       "layout-gap 2 ColumnNumber\n"},
      {"insert into tblVorekReportLayout (ReportID, ColumnNumber) values (1, 2)",
       "layout-gap 1 ColumnNumber\n"},
      {"insert into tblVorekReportLayout (ReportID, ColumnNumber) values (1, 9)",
       "layout-beyond 9 ColumnNumber\n"},
      {"insert into tblVorekReportLayout (ReportID, ColumnNumber) values (1, 2501)",
       "layout-end 2501 ColumnNumber\n"},
      {"insert into tblVorekReportLayout (ReportID, ColumnNumber, Alignment, Width) values (1, 1, "
       "12, -5)",
       "width 1 Width\nalignment 1 Alignment\n"},
      {"insert into tblVorekReportLayout (ReportID, ColumnNumber, TransposeType) values (1, 1, 1), "
       "(1, 2, 1)",
       "spread-twice TransposeType\n"},
      {"update tblVorekReport set MakeTranspose = 1", "nothing-spread MakeTranspose\n"},
      {"update tblVorekReport set MakeMerge = 1", "no-fold-key MakeMerge\n"},
      {"insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression) "
       "values (1, 1, 'x', 'C2+' + char(10) + 'C12')",
       "formula-reads-other 1 (x) GeneralExpression 2:1\nformula-line-break 1 (x) "
       "GeneralExpression 1:4\n"},
      {"insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression, "
       "FirstRowExpression) values (1, 1, 'x', null, 'c2')",
       "formula-empty 1 (x) GeneralExpression\nformula-lower-case 1 (x) FirstRowExpression 1:1\n"},
      {"insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression) "
       "values (1, 1, 'x', '(P2+C2)/2')",
       "formula-first-row 1 (x) GeneralExpression 1:2\n"},
      {"insert into tblVorekReportExpression (ReportID, ColumnNumber, Name, GeneralExpression) "
       "values (1, 1, 'x', '@ABS(P2-C2)')",
       "formula-first-row 1 (x) GeneralExpression 1:6\n"},
      {"insert into tblVorekRelatedReports (CallerReportID, CalledReportID) values (1, 9)",
       "link-missing 9 CalledReportID\n"},
      {"insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CallerReportColumn) "
       "values (1, 1, 'z')",
       "link-column 1 CallerReportColumn\n"},
      {"insert into tblVorekRelatedReports (CallerReportID, CalledReportID, CalledParameterID) "
       "values (1, 1, 4)",
       "link-parameter 1 CalledParameterID\n"},
      {"update tblVorekReport set ShowPopupTree = 1",
       "popup-parameter ShowPopupTree\npopup-key ShowPopupTree\n"},
  };
  for (const auto& c : cases) {
    Begin();
    Run(c.rows);
    EXPECT_EQ(Findings(), c.findings) << c.rows;
  }
}

// What a key of the tables keeps out elsewhere.
TEST_F(CheckTest, FindsRowsThatAreThereTwice) {
  Begin();
  for (const char* const table : {"tblVorekReportParameter", "tblVorekReportLayout"}) {
    Run(std::string("select * into tblKept from ") + table);
    Run(std::string("drop table ") + table);
    Run(std::string("select * into ") + table + " from tblKept");
    Run("drop table tblKept");
  }
  Query("select Code from tblGood where (Code = @1)");
  Run("insert into tblVorekReportParameter (ReportID, ParameterID, ControlTypeID, Type, ColSpan, "
      "RowSpan) values (1, 1, 1002, 'int', 1, 1), (1, 1, 1002, 'int', 1, null)");
  Run("insert into tblVorekReportLayout (ReportID, ColumnNumber) values (1, 1), (1, 1)");
  EXPECT_EQ(Findings(),
            "same-parameter 1 ParameterID\nno-spans 1 ColSpan\nlayout-twice 1 ColumnNumber\n");
}

// A list that follows a class is noted in the catalogue, which not every login may write.
TEST_F(CheckTest, TellsWhoMayNotWriteWhatAChoiceWrites) {
  Begin();
  Query("select Code from tblGood where (GroupID = @1) and (GroupID in (@2))");
  Run("insert into tblVorekReportParameter (ReportID, ParameterID, ControlTypeID, Type, MajorView, "
      "MinorView, DepOnParameterIDObject) values (1, 1, 2, 'int', 'vwGroup', 'Name', null), (1, 2, "
      "1007, 'int', 'vwGroup', 'Name', 1)");
  EXPECT_EQ(Findings(), "");
  Run("select * into tblKept from tblVorekReportParameter");
  Run("drop table tblVorekReportParameter");
  Run("create view tblVorekReportParameter as select * from tblKept union all select * from "
      "tblKept where 1 = 0");
  EXPECT_EQ(Findings(), "cannot-note 2 MajorView\n");
  Run("update tblKept set MajorView = 'vwAccountTwoLevels' where ParameterID = 2");
  Run("create view vwAccountTwoLevels as select * from vwGroup");
  EXPECT_EQ(Findings(), "");
}

TEST_F(CheckTest, TellsALedgerWithoutItsColumns) {
  Begin();
  Run("update tblVorekReport set ID = 2857");
  Query("select 1 as a, 2 as b, 3 as c, 4 as d, 5 as e, 6 as f from tblGood");
  const auto found = [&] { return CheckReports(process, {2857}); };
  ASSERT_EQ(found().size(), 1U);
  EXPECT_EQ(TextOf(found()[0], Language::kEnglish).what,
            "subtotals of this report need 7 columns, it has 6");
  Query("select 1 as a, 2 as b, 3 as c, 4 as d, 5 as e, 6 as f, 7 as g from tblGood");
  EXPECT_EQ(found().size(), 0U);
}

TEST_F(CheckTest, FindsSecuredReportsThatLeakOrBreak) {
  const struct {
    const char* query;
    const char* form_type;
    const char* findings;
  } cases[] = {
      {"select tblGood.ID from tblGood where 1 = 1 order by tblGood.ID", "5", ""},
      {"select tblGood.ID from tblGood", "null", "secured-not MakeSecure\n"},
      {"select g.Code from tblGood g", "5", "secured-not MakeSecure\n"},
      {"select Code from tblGood where Code = 1 or Code = 2 union select Code from tblGood", "5",
       "secured-not MakeSecure\nsecured-joined SQLQuery 1:53\nsecured-or SQLQuery 1:41\n"},
      {"select Code from tblGood group by Code order by Code -- all", "5",
       "secured-not MakeSecure\n"},
      {"select Code from tblGood -- all", "5",
       "secured-not MakeSecure\nsecured-comment SQLQuery\n"},
      {"select tblGood.ID from tblGood union select tblGroup.ID from tblGroup", "5",
       "secured-joined SQLQuery 1:32\n"},
      {"select tblGood.ID from tblGood where Code = 1\nor Code = 2", "5",
       "secured-or SQLQuery 2:1\n"},
      {"select tblGood.ID from tblGood -- all of them", "5", "secured-comment SQLQuery\n"},
      {"select tblGood.ID from tblGood\nwhere Code = 1", "5",
       "secured-where-border SQLQuery 2:1\n"},
      {"select tblGood.ID from tblGood where\nCode = 1", "5",
       "secured-where-border SQLQuery 1:32\n"},
      {"select tblGood.ID, count(*) as n from tblGood group by tblGood.ID", "5",
       "secured-group SQLQuery 1:47\n"},
      {"select\ng.ID from tblGood g", "5", "secured-refused SQLQuery\n"},
  };
  for (const auto& c : cases) {
    Begin();
    Query(c.query);
    Run(std::string("update tblVorekReport set MakeSecure = 1, FormTypeID = ") + c.form_type);
    EXPECT_EQ(Findings(), c.findings) << c.query;
  }
}

TEST(SecurityRules, SeeWhereTheConditionGoes) {
  const struct {
    const char* query;
    const char* faults;
  } cases[] = {
      {"select t.ID from t", ""},
      {"select t.ID from t where (t.a = 1 or t.b = @1) and t.c = 2 order by t.ID", ""},
      {"select t.ID, (select max(b) from u where u.a = 1) as m from t where 1 = 1",
       "secured-from|"},
      {"select t.ID\nfrom t where 1 = 1", "secured-from|"},
      {"select t.ID from t union all select u.ID from u where u.a = 1", "secured-joined|"},
      {"select t.ID from t where t.a = @1 and (t.b = @2)", "secured-marker|"},
      {"select t.ID from t where t.a = 'x or y' order by t.a", ""},
      {"select t.ID from t where 1 = 1\norder by t.ID", "secured-order-border|"},
      {"select t.ID, row_number() over (partition by a order by b) as n from t",
       "secured-order-inner|"},
      {"select t.ID from t left join (select a from u where a = 1) x on x.a = t.a",
       "secured-where-outer-join|"},
      {"select t.ID from (select a from u where a = 1) t", "secured-where-inner|"},
      {"select t.ID from t where 1 = 1 -- all of them\n", ""},
      {"select t.ID from t /* all", "secured-comment|"},
      {"select t.ID from t;", "secured-semicolon|"},
  };
  for (const auto& c : cases) {
    std::string faults;
    for (const QueryFault& fault : FindSecurityFaults(c.query)) {
      faults += std::string(CodeOf(fault.rule)) + "|";
    }
    EXPECT_EQ(faults, c.faults) << c.query;
  }
}

TEST(FormulaRules, FindWhatTheEvaluatorReadsOtherwise) {
  const struct {
    const char* formula;  // of column 5, behind 4 others
    const char* faults;   // "code at" of each
  } cases[] = {
      // right ones
      {"C3-C4", ""},
      {"C3+P5", ""},
      {"-C3", ""},
      {"+5-3", ""},
      {"C3*-2", ""},
      {"C1 * ( C2 + 0.5 ) / @ABS ( C3 )", ""},
      {"@PI()*C1^2", ""},
      {"@doble(C1)", ""},
      {"100-16^2", ""},
      {"100-(16^0.5)", ""},
      {"-C1^3", ""},
      {"(100-2)*16^0.5-1", ""},
      {"16^-0.5", ""},
      // mistakes
      {"(C1+C2", "formula-open 0|"},
      {"C1+C2)*2", "formula-stray 5|"},
      {"@MAX(C1)", "formula-function 0|"},
      {"@ABS C1", "formula-call 0|"},
      {"ABS(C1)", "formula-name 0|formula-adjacent 3|"},
      {"c1+C2", "formula-lower-case 0|"},
      {"Total*2", "formula-name 0|"},
      {"1,000+C1", "formula-comma 1|"},
      {"@ABS(C1,C2)", "formula-comma 7|"},
      {"C1\xC3\xB7"
       "2",
       "formula-character 2|"},
      {"C1*\xDB\xB5", "formula-character 3|"},
      {"2(C1)", "formula-adjacent 1|"},
      {"(C1)(C2)", "formula-adjacent 4|"},
      {"C1C2", "formula-adjacent 2|"},
      {"C1 2", "formula-adjacent 3|"},
      {"12\n34", "formula-adjacent 3|formula-line-break 2|"},
      {"C1+\r\nC2", "formula-line-break 3|"},
      {"-C1^2", "formula-minus-power 0|"},
      {"C2-C1^2", "formula-minus-power 2|"},
      {"(-3^2)", "formula-minus-power 1|"},
      {"-@ABS(C2)^2", "formula-minus-power 0|"},
      {"100-16^0.5", "formula-lost-power 6|"},
      {"-C1^.5", "formula-lost-power 3|"},
      {"100 - C1 ^ ( 1/2 )", "formula-lost-power 9|"},
      {"C1-(C2+3)^0.5", "formula-lost-power 9|"},
      {"C1-((C2+3)*2)^0.5", "formula-lost-power 13|"},
      {"C12", "formula-reads-other 0|"},
      {"P45", "formula-reads-other 0|"},
      {"C9", "formula-no-column 0|"},
      {"C5+1", "formula-later 0|"},
      {"C1*", "formula-operator 2|"},
      {"*C1", "formula-operator 0|"},
      {"2*+C1", "formula-operator 2|"},
      {"1E3+C1", "formula-exponent 0|"},
  };
  const FormulaScope scope{5, 5, [](const std::string& name) { return name == "@DOBLE"; }};
  for (const auto& c : cases) {
    std::string faults;
    for (const FormulaFault& fault : FindFormulaFaults(c.formula, scope)) {
      faults += std::string(CodeOf(fault.rule)) + " " + std::to_string(fault.at) + "|";
    }
    EXPECT_EQ(faults, c.faults) << c.formula;
  }
}

TEST(FindingText, TellsWhatAReferenceBehindTheColumnsReads) {
  const std::vector<FormulaFault> faults = FindFormulaFaults("C12", {.last_column = 3});
  ASSERT_EQ(faults.size(), 1U);
  const FindingText text = TextOf({faults[0].rule, 1, {}, faults[0].values}, Language::kEnglish);
  EXPECT_EQ(text.what, "C12 is behind the last column, 3");
  EXPECT_EQ(text.why, "it is read as C1 followed by 2: with 7 in C1 the formula gets 72");
}

TEST(FindingText, NamesAPlaceInBothLanguages) {
  const Finding finding{
      Rule::kMissingObject, 7, {.field = "SQLQuery", .line = 2, .column = 9}, {"tblX"}};
  EXPECT_EQ(PlaceText(finding, Language::kEnglish), "report 7, SQLQuery, line 2, column 9");
  EXPECT_EQ(PlaceText(finding, Language::kPersian), "گزارش 7، SQLQuery، سطر 2، ستون 9");
  EXPECT_EQ(TextOf(finding, Language::kPersian).what, "جدول يا نماي tblX وجود ندارد");
  // What a part of the system says is said in the language too.
  const Finding refused{Rule::kRefused, 7, {}, {"Divide by zero error encountered."}};
  EXPECT_NE(TextOf(refused, Language::kPersian).what.find("تقسيم بر صفر"), std::string::npos);
}

// A server tells no place: the name that it complains of is looked for in the text.
TEST(QueryLookup, FindsThePlaceOfANameThatAServerTells) {
  const std::string text = "select a.Code,\n b.[Prise] from tblGood a";
  const QueryFault fault = FaultOf(
      Error(ErrorNumber::kSyntax, "The multi-part identifier \"b.Prise\" could not be bound."),
      text);
  EXPECT_EQ(fault.rule, Rule::kMissingColumn);
  EXPECT_EQ(fault.at, text.find("[Prise]"));
  EXPECT_EQ(FaultOf(Error(ErrorNumber::kSyntax, "relation does not exist"), text).rule,
            Rule::kRefused);
  const char* const metadata =
      "The metadata could not be determined because the statement uses a temp table.";
  EXPECT_EQ(FaultOf(Error(ErrorNumber::kSyntax, metadata), text).rule, Rule::kNotLookedUp);
}

// A provider that can't look a text up makes a note of it; one that fails is no finding.
TEST(QueryLookup, TellsWhatWasNotLookedUp) {
  auto database = std::make_shared<MemoryDatabase>();
  Process process({.providers = {database},
                   .windows = std::make_shared<ScriptedWindows>(),
                   .clock = std::make_shared<FixedClock>()});
  process.data.Rebind("Provider=VorekMemory;");
  EXPECT_EQ(LookUp(process, "select 1").fault->rule, Rule::kNotLookedUp);
  database->reachable = false;
  process.data.Rebind("Provider=VorekMemory;");
  EXPECT_THROW(LookUp(process, "select 1"), Error);
}

// A reader that takes the document "fits" and one that names a column which isn't there.
XmlElement ReadAsTemplate(std::string_view bytes) {
  if (bytes != "fits" && bytes != "names") throw Error(ErrorNumber::kInvalidCall, "no XML");
  const XmlElement text{
      "text", {{"width", "9"}, {"height", "5"}}, bytes == "fits" ? "{Column1}" : "{Column2}", {}};
  return {"print-template", {{"version", "1"}}, "", {{"detail", {{"height", "6"}}, "", {text}}}};
}

TEST_F(CheckTest, ReadsStoredPrintTemplates) {
  Begin();
  Run("drop table if exists tblVorekFormAttachment");
  EXPECT_EQ(Findings(ReadAsTemplate), "");  // no table of attachments
  Run("create table tblVorekFormAttachment (FormTypeID int, FormID int, RowNumber int, "
      "FileExtension nvarchar(9), FileName nvarchar(50), IsExternal bit, FilePath nvarchar(50), "
      "FileData varbinary(max))");
  Run("insert into tblVorekFormAttachment values "
      "(2302, 1, 1, 'rpt', 'a.xml', 0, null, 0x66697473), "    // fits
      "(2302, 1, 2, 'rpt', 'b.xml', 0, null, 0x6e616d6573), "  // names
      "(2302, 1, 3, 'rpt', 'c.rpt', 0, null, 0xd0cf11e0), "
      "(2302, 1, 4, 'xls', 'd.xls', 0, null, 0xd0cf11e0), "
      "(2302, 2, 1, 'rpt', 'e.rpt', 0, null, 0xd0cf11e0)");
  EXPECT_NE(Findings(ReadAsTemplate).find("print-template 1 FileData"), std::string::npos);
  Run("create table tblVorekCrystalReport (UserID int, Column1 nvarchar(9))");
  EXPECT_EQ(Findings(ReadAsTemplate), "print-template 2 FileData\nprint-template 3 FileData\n");
  Run("create view vwVorekCrystalReport_1 as select Column1, Column1 as Column2 from "
      "tblVorekCrystalReport");
  EXPECT_EQ(Findings(ReadAsTemplate), "print-template 3 FileData\n");
}

}  // namespace
}  // namespace vorek
