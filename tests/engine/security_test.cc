#include <gtest/gtest.h>

#include "engine/rights.h"
#include "state/process.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "text/utf8.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

// Documents 1 to 4 are records of form 10; lines belong to documents. Position 5 may see documents
// 1 and 3, position 6 document 2 of form 11.
constexpr const char* kTables =
    "create table tblDoc (ID int, FormTypeID int, Name nvarchar(20));"
    "insert into tblDoc values (1, 10, 'a'), (2, 11, 'b'), (3, 10, 'c'), (4, 10, 'd');"
    "create table tblLine (DocID int, Row int, Goods int);"
    "insert into tblLine values (1, 1, 7), (1, 2, 8), (2, 1, 7), (3, 1, 9), (4, 1, 9);"
    "create table tblNote (FormID int, Name nvarchar(20));"
    "insert into tblNote values (1, 'x'), (2, 'y'), (3, 'z');"
    "create table tblDeal (ID int); insert into tblDeal values (50), (51);"
    "create table tblShare (DocID int, DealID int, Code int, Part nvarchar(5));"
    "insert into tblShare values (1, 50, 9, 'p'), (1, 51, 9, 'q'), (2, 50, 9, 'r');"
    "create table tblVorekAllowablePosition (FormTypeID int, FormID int, PositionID int);"
    "insert into tblVorekAllowablePosition values (10, 1, 5), (10, 3, 5), (11, 2, 6), (30, 1, 5), "
    "(30, 3, 5), (60, 50, 5), (60, 51, 6);"
    "create table tblVorekTableFormRelationship (FormTypeID int, TableName nvarchar(50), IsMaster "
    "int);"
    "insert into tblVorekTableFormRelationship values (10, 'tblDoc', 1), (20, 'tblLine', 1), "
    "(30, 'tblNote', 1), (40, 'tblShare', 1), (60, 'tblDeal', 1);"
    "create table tblVorekRelatedTables (ReferenceTable nvarchar(50), ReferenceKey nvarchar(50), "
    "DependentTable nvarchar(50), ForeignKey nvarchar(50));"
    "insert into tblVorekRelatedTables values ('tblDoc', 'ID', 'tblLine', 'DocID'), ('tblGoods', "
    "'ID', 'tblLine', 'Goods'), ('tblX', 'Code', 'tblLine', 'DocID'), ('tblDoc', 'ID', "
    "'tblShare', 'DocID'), ('tblDeal', 'ID', 'tblShare', 'DealID'), ('tblNote', 'FormID', "
    "'tblShare', 'Code');"
    "create table tblVorekColumn (TableName nvarchar(50), Name nvarchar(50), IsPrimaryKey bit);"
    "insert into tblVorekColumn values ('tblLine', 'DocID', 1), ('tblLine', 'Row', 1), "
    "('tblShare', 'DocID', 1), ('tblShare', 'DealID', 1), ('tblShare', 'Code', 1);"
    "create table tblVorekFormType (ID int, SecurityTypeID int);"
    "insert into tblVorekFormType values (10, 1), (20, 0), (30, 1), (60, 1);";

class SecurityTest : public testing::Test {
 protected:
  SecurityTest() {
    process.data.Rebind("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
    process.dten().rssqlQuery.Open(kTables);
  }

  // The first fields of the rows that the restricted query gives.
  std::string Rows(std::string query, std::int32_t form_type, std::int32_t position) {
    process.main.GlobalPositionID = position;
    state.ReportFormTypeID = form_type;
    state.FormTypeID = -1;
    state.MakeSecure = true;
    ApplySecurityClause(process, state, query);
    const std::string once = query;
    if (state.MakeSecure) ApplySecurityClause(process, state, query);
    EXPECT_EQ(query, once) << "a second run added something";
    Recordset& slot = process.dten().rssqlQuery;
    std::string rows;
    for (slot.Open(query); !slot.AtEnd(); slot.MoveNext()) rows += slot.Field(0).Text() + " ";
    slot.Close();
    return rows;
  }

  Process process{{.providers = {SqliteProvider()},
                   .windows = std::make_shared<ScriptedWindows>(),
                   .clock = std::make_shared<FixedClock>()}};
  ReportState state;
};

TEST_F(SecurityTest, RestrictsTheRowsThatComeBack) {
  const struct {
    const char* query;
    std::int32_t form_type;
    std::int32_t position;
    const char* rows;
    bool secure;  // stays so
  } cases[] = {
      // The form's own table, named in front of .ID.
      {"select tblDoc.ID from tblDoc", 10, 5, "1 3 ", true},
      {"select tblDoc.ID from tblDoc", 10, 6, "", true},
      {"select tblDoc.ID from tblDoc where tblDoc.ID > 1", 10, 5, "3 ", true},
      {"select tblDoc.ID from tblDoc Order By tblDoc.ID desc", 10, 5, "3 1 ", true},
      {"select tblDoc.ID from tblDoc where tblDoc.ID > 0 ORDER BY tblDoc.ID DESC", 10, 5, "3 1 ",
       true},
      // An alias: what stands in front of .ID in the select list is taken.
      {"select d.ID, d.Name from tblDoc d", 10, 5, "1 3 ", true},
      {"select d.Name as n, d.ID from tblDoc d", 10, 5, "a c ", true},
      // The form type comes from the query.
      {"select d.ID, d.FormTypeID from tblDoc d", -1, 6, "2 ", true},
      {"select d.FormTypeID, d.ID from tblDoc d", -1, 5, "10 10 ", true},
      // Without a key named ID, the key of the form that the query gives.
      {"select d.FormID, d.Name from tblNote d", 30, 5, "1 3 ", true},
      // A detail of secured forms is seen with its parent.
      {"select tblLine.Goods from tblLine", 20, 5, "7 8 9 ", true},
      {"select tblLine.Goods from tblLine", 20, 6, "", true},
      // With two secured parents both are asked; a parent by another key than ID is not.
      {"select tblShare.Part from tblShare", 40, 5, "p ", true},
      {"select tblShare.Part from tblShare", 40, 6, "", true},
      // What can't be restricted runs as it is and loses the flag.
      {"select d.Name from tblDoc d", 10, 5, "a b c d ", false},
      {"select d.ID from tblDoc d", -1, 5, "1 2 3 4 ", false},
      {"select 1 as x", 10, 5, "1 ", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Rows(c.query, c.form_type, c.position), c.rows) << c.query;
    EXPECT_EQ(state.MakeSecure, c.secure) << c.query;
  }
}

TEST_F(SecurityTest, StaysInForceWhenItsOwnQueriesFail) {
  process.dten().rssqlQuery.Open("drop table tblVorekRelatedTables");
  std::string query = "select tblDoc.ID from tblDoc";
  state.ReportFormTypeID = 10;
  state.MakeSecure = true;
  EXPECT_THROW(ApplySecurityClause(process, state, query), Error);
  EXPECT_TRUE(state.MakeSecure);
}

TEST_F(SecurityTest, LeavesAGroupedQueryToTheServersRefusal) {
  EXPECT_THROW(Rows("select tblDoc.ID from tblDoc group by tblDoc.ID", 10, 5), Error);
}

TEST_F(SecurityTest, AsksTheRolesOfAUser) {
  EXPECT_TRUE(HasReportRight(process, 1, 1));
  process.dten().rssqlQuery.Open(
      "create table tblRolePermissionOnReport (ReportID int, RoleID int);"
      "insert into tblRolePermissionOnReport values (1, 3);"
      "create table tblRole (ID int, IsAdmin bit); insert into tblRole values (3, 0), (4, 1), (5, "
      "0);"
      "create table tblUserRole (RoleID int, UserID int);"
      "insert into tblUserRole values (3, 10), (4, 11), (5, 12)");
  const struct {
    std::int32_t report;
    std::int32_t user;
    bool right;
  } cases[] = {{1, 10, true}, {1, 11, true}, {1, 12, false}, {1, 13, false}, {2, 13, true}};
  for (const auto& c : cases) {
    EXPECT_EQ(HasReportRight(process, c.report, c.user), c.right) << c.report << " for " << c.user;
  }
}

}  // namespace
}  // namespace vorek
