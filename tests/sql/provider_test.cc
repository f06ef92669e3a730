#include <gtest/gtest.h>
#include <sqlite3.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "adapters/sqlite/explain.h"
#include "support/scratch_folder.h"
#include "vorek/database.h"
#include "vorek/field_type.h"
#include "vorek/script.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

// Ten million rows and no end in sight.
constexpr char kEndless[] =
    "with a(n) as (select 1 union all select n + 1 from a) select count(*) from a";

class ProviderTest : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return folder_.Path(name); }
  std::unique_ptr<DatabaseConnection> Open(const std::string& name, const std::string& rest = "") {
    return SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=" + Path(name) + rest);
  }
  static ResultSetPtr Run(DatabaseConnection& connection, const std::string& text,
                          int timeout = 30) {
    ExecuteOptions options;
    options.timeout_seconds = timeout;
    return connection.Execute(text, options);
  }
  // The error's number and, in `text`, its description.
  template <typename Action>
  static long NumberOf(Action&& action, std::string* text = nullptr) {
    try {
      action();
    } catch (const Error& error) {
      if (text != nullptr) *text = error.Description();
      return error.Number();
    }
    return 0;
  }
  static constexpr long Number(ErrorNumber number) { return static_cast<long>(number); }

  ScratchFolder folder_;
};

TEST_F(ProviderTest, AnswersToItsNameInAnyCase) {
  EXPECT_TRUE(SqliteProvider()->Answers("voreksqlite"));
  EXPECT_FALSE(SqliteProvider()->Answers("SQLOLEDB"));
}

TEST_F(ProviderTest, RefusesWhatItCannotOpenAndNamesTheFile) {
  std::ofstream(Path("text.db")) << std::string(5000, 'x');
  std::string text;
  EXPECT_EQ(NumberOf([&] { Open("none.db"); }, &text), Number(ErrorNumber::kConnection));
  EXPECT_NE(text.find("none.db"), std::string::npos);
  EXPECT_EQ(NumberOf([&] { Open("text.db"); }, &text), Number(ErrorNumber::kConnection));
  EXPECT_NE(text.find("text.db"), std::string::npos);
  EXPECT_NE(text.find("not a database"), std::string::npos);
  EXPECT_EQ(NumberOf([&] { Open("no/such/folder.db", ";Mode=Create"); }),
            Number(ErrorNumber::kConnection));
  EXPECT_EQ(NumberOf([&] { SqliteProvider()->Connect("Provider=VorekSQLite;"); }),
            Number(ErrorNumber::kConnection));
  EXPECT_EQ(NumberOf([&] { Open("x.db", ";Mode=Sideways"); }), Number(ErrorNumber::kConnection));
}

TEST_F(ProviderTest, KeepsWhatWasMadeForTheNextConnection) {
  Run(*Open("a.db", ";Mode=Create"),
      "create table t (ID bigint primary key, Amount decimal(9,2) default 1.5)\n"
      "insert t (ID) values (5000000000)");
  Run(*Open("a.db"), "create view v as select Amount * 2 as Twice from t");
  const auto again = Open("a.db", ";Mode=ReadOnly");
  const ResultSetPtr rows = Run(*again, "select ID, (select Twice from v) from t");
  ASSERT_EQ(rows->rows, 1U);
  EXPECT_EQ(rows->columns[0].AdoType(), kBigInt);
  EXPECT_EQ(rows->columns[0].Display(0), "5000000000");
  EXPECT_EQ(rows->columns[1].Display(0), "3");
  EXPECT_NE(NumberOf([&] { Run(*again, "insert t (ID) values (1)"); }), 0);
  EXPECT_EQ(Run(*again, "select * from sysobjects")->rows, 2U);
}

TEST_F(ProviderTest, ATranslationEndsWithTheTime) {
  // Each level is translated twice, since its number meets a text.
  std::string query = "select '1'";
  for (int i = 0; i < 40; ++i) query = "select '1' where 1 in (" + query + ")";
  const auto connection = Open("a.db", ";Mode=Create");
  EXPECT_EQ(NumberOf([&] { Run(*connection, query, 1); }), Number(ErrorNumber::kTimeout));
  Run(*connection, "create view v as select 1 as A");
  EXPECT_EQ(Run(*connection, "select A from v")->rows, 1U);
}

TEST_F(ProviderTest, SeesWhatAnotherConnectionDefines) {
  const auto one = Open("a.db", ";Mode=Create");
  const auto two = Open("a.db");
  Run(*one, "create table t (A int)\ncreate table u (A int)");
  Run(*two, "select A from t");
  Run(*one, "create procedure p as select 1");
  EXPECT_EQ(Run(*two, "exec p")->columns[0].Display(0), "1");
  Run(*one, "alter procedure p as select 2");
  EXPECT_EQ(Run(*two, "exec p")->columns[0].Display(0), "2");
  Run(*one, "alter table t add B money");
  EXPECT_EQ(Run(*two, "select * from t")->columns.size(), 2U);
}

TEST_F(ProviderTest, TellsErrorsByTheirNumbers) {
  const auto connection = Open("a.db", ";Mode=Create");
  const std::vector<std::pair<const char*, long>> cases = {
      {"select * from nothere", Number(ErrorNumber::kMissingObject)},
      {"exec nothere", Number(ErrorNumber::kMissingObject)},
      {"delete nothere", Number(ErrorNumber::kMissingObject)},
      {"select dbo.nothere(1)", Number(ErrorNumber::kMissingObject)},
      {"selec", Number(ErrorNumber::kMissingObject)},  // taken for a procedure's name
      {"select from", Number(ErrorNumber::kSyntax)},
      {"select ?1", Number(ErrorNumber::kSyntax)},  // a parameter of the database beneath
      {"select nothere", Number(ErrorNumber::kSyntax)},
      {"select 1/0", Number(ErrorNumber::kSyntax)},
      {"select 2147483647 + 1", -2147217833},
      {"select cast('x' as int)", -2147217913},
  };
  for (const auto& [text, number] : cases) {
    EXPECT_EQ(NumberOf([&, &text = text] { Run(*connection, text); }), number) << text;
  }
  EXPECT_EQ(Run(*connection, "select 1")->rows, 1U) << "usable after errors";
}

// "name:type" of each column, "?" where they can't be told.
std::string LookedUp(DatabaseConnection& connection, const std::string& text) {
  const ResultSetPtr columns = connection.Describe(text, 30).value();
  if (columns == nullptr) return "?";
  EXPECT_EQ(columns->rows, 0U) << text;
  std::string all;
  for (const ResultColumn& column : columns->columns) {
    all += column.Name() + ":" + std::to_string(column.AdoType()) + " ";
  }
  return all;
}

TEST_F(ProviderTest, LooksUpATextWithoutRunningIt) {
  const auto connection = Open("a.db", ";Mode=Create");
  Run(*connection, "create table t (A int, M money)");
  Run(*connection, "create procedure p @a int, @b int = 2 as insert into t values (@a, @b)");
  Run(*connection,
      "create function f (@n int) returns @r table (x int) as begin insert into @r values (@n) "
      "return end");
  const struct {
    const char* text;
    const char* columns;
  } cases[] = {
      {"select A, M, 'x' as t from t", "A:3 M:6 t:200 "},
      {"insert into t values (1, 2); select A from t", "A:3 "},
      {"declare @a int; set @a = 1; select A from t where A = @a", "A:3 "},
      {"if exists (select * from t) select A from t else select M from t", "A:3 "},
      {"select x from dbo.f(1)", "x:3 "},
      {"update t set A = 2; while 1 = 0 begin print 'x' set nocount on end; select M from t",
       "M:6 "},
      {"declare @a int; select @a = A from t; select A from t; select M from t", "A:3 "},
      {"insert into t exec p 1", "?"},
      {"exec sp_rename 'a', 'b'", "?"},
      {"exec p 1", "?"},
      {"exec p @a = 1", "?"},
      {"delete t", "?"},
      // What the text itself makes can't be looked up.
      {"select A into #t from t; select B from #t", "?"},
      {"create table #t (B int); select B from #t", "?"},
      {"declare @t table (B int); select B from @t", "?"},
  };
  for (const auto& c : cases) EXPECT_EQ(LookedUp(*connection, c.text), c.columns) << c.text;
  EXPECT_EQ(Run(*connection, "select A from t")->rows, 0U) << "something ran";
  for (const char* const text : {"select B from t", "exec p", "exec p 1, 2, 3", "exec p @c = 1",
                                 "exec nothere", "select A from t; select A from", "print 1 +"}) {
    EXPECT_NE(NumberOf([&] { connection->Describe(text, 30); }), 0) << text;
  }
}

TEST_F(ProviderTest, ExplainsEachStatement) {
  const auto connection = Open("a.db", ";Mode=Create");
  Run(*connection, "create table t (A int, M money)");
  const struct {
    const char* text;
    const char* shown;
  } cases[] = {
      {"select M as m, A + 1 from t", "--   m money, ADO type 6\n--   (no name) int, ADO type 3\n"},
      {"insert t values (1, 2)", "INSERT INTO"},
      {"insert t exec ('select 1, 2')", "-- insert t exec ('select 1, 2')\n"},
      {"update t set M = 1.5", "15000"},
      {"delete t where A = 1", "DELETE FROM"},
      {"declare @a int\nset @a = 2\nselect A from t where A = @a", "--   ?1 is @a\n"},
      {"if exists (select 1 from t) delete t", "-- if "},
      {"while 1 = 0 begin select A from t end", "--   A int, ADO type 3\n"},
      {"print 'one\ntwo'", "-- print 'one\n-- two'\n"},
  };
  for (const auto& c : cases) {
    const std::string shown = sqlite::Explain(*connection, c.text);
    EXPECT_NE(shown.find(c.shown), std::string::npos) << c.text << "\n" << shown;
  }
  EXPECT_EQ(Run(*connection, "select A from t")->rows, 0U) << "something ran";
}

TEST_F(ProviderTest, StopsAtTheTimeOut) {
  const auto connection = Open("a.db", ";Mode=Create");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(NumberOf([&] { Run(*connection, kEndless, 1); }), Number(ErrorNumber::kTimeout));
  const auto took = std::chrono::steady_clock::now() - begin;
  EXPECT_LT(took, std::chrono::seconds(10));
  EXPECT_EQ(Run(*connection, "select 1")->rows, 1U);
}

TEST_F(ProviderTest, StopsWhenCancelledFromAnotherThread) {
  const auto connection = Open("a.db", ";Mode=Create");
  connection->Cancel();  // nothing runs: no effect on what comes
  EXPECT_EQ(Run(*connection, "select 1")->rows, 1U);
  std::atomic<bool> running{false};
  ExecuteOptions options;
  options.timeout_seconds = 60;
  options.progress = [&](std::size_t) {
    running = true;
    return true;
  };
  std::jthread other([&] {
    while (!running) std::this_thread::yield();
    connection->Cancel();
  });
  EXPECT_EQ(NumberOf([&] { connection->Execute(kEndless, options); }),
            Number(ErrorNumber::kCancelled));
  other.join();
}

TEST_F(ProviderTest, AsksTheProgressAndStopsAtItsNo) {
  const auto connection = Open("a.db", ";Mode=Create");
  std::size_t seen = 0;
  ExecuteOptions options;
  options.progress = [&](std::size_t rows) {
    seen = rows;
    return rows < 20000;
  };
  EXPECT_EQ(NumberOf([&] {
              connection->Execute(
                  "with a(n) as (select 1 union all select n + 1 from a) select n from a", options);
            }),
            Number(ErrorNumber::kCancelled));
  EXPECT_GE(seen, 20000U);
}

TEST_F(ProviderTest, WaitsForABusyDatabaseWithinTheTimeOut) {
  const auto writer = Open("a.db", ";Mode=Create");
  Run(*writer, "create table t (A int)");
  const auto other = Open("a.db");
  Run(*writer, "begin transaction\ninsert t values (1)");
  std::string text;
  EXPECT_EQ(NumberOf([&] { Run(*other, "insert t values (2)", 1); }, &text),
            Number(ErrorNumber::kTimeout));
  EXPECT_NE(text.find("locked"), std::string::npos) << text;
  std::jthread release([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    Run(*writer, "commit");
  });
  Run(*other, "insert t values (2)", 20);
  release.join();
  EXPECT_EQ(Run(*other, "select A from t")->rows, 2U);
}

TEST_F(ProviderTest, RunsAScriptAsAWholeAndTellsTheLineThatFailed) {
  const auto connection = Open("a.db", ";Mode=Create");
  const std::string good = "create table t (A int)\nGO\ninsert t values (1)\nGO 3\nselect 'GO\nGO'";
  EXPECT_EQ(RunScript(*connection, good, {}).back()->columns[0].Display(0), "GO\nGO");
  EXPECT_EQ(Run(*connection, "select A from t")->rows, 3U);
  const std::vector<std::pair<const char*, const char*>> bad = {
      {"insert t values (9)\ngo\n\ninsert t values (8)\n\nselect 1/0", "(line 6)"},
      {"insert t values (9)\ngo\n\nselect nothere\nfrom t", "(line 4, column 8)"},
      {"insert t values (9)\ngo\n\n\nselect (", "(line 5, column 9)"},
      {"insert t values (9)\ngo\nexec nothere", "(line 3, column 1)"},
  };
  for (const auto& [script, place] : bad) {
    std::string text;
    EXPECT_NE(NumberOf([&, &script = script] { RunScript(*connection, script, {}); }, &text), 0);
    EXPECT_NE(text.find(place), std::string::npos) << text;
    EXPECT_EQ(Run(*connection, "select A from t")->rows, 3U) << "all or nothing";
  }
}

TEST_F(ProviderTest, AScriptStaysWhole) {
  const auto connection = Open("a.db", ";Mode=Create");
  Run(*connection, "create table t (A int)");
  const std::vector<std::pair<const char*, const char*>> bad = {
      {"insert t values (1)\ncommit\ngo\nselect 1/0", "A COMMIT would end the script's own"},
      {"insert t values (1)\ngo\nif 1 = 1 rollback tran", "A ROLLBACK would end the script's own"},
      {"begin tran\ninsert t values (1)\ncommit\ncommit", "(line 4)"},
      {"begin tran\ninsert t values (1)\ncommit\ngo\nselect 1/0", "(line 5)"},
  };
  for (const auto& [script, place] : bad) {
    std::string text;
    EXPECT_NE(NumberOf([&, &script = script] { RunScript(*connection, script, {}); }, &text), 0)
        << script;
    EXPECT_NE(text.find(place), std::string::npos) << text;
    EXPECT_EQ(Run(*connection, "select A from t")->rows, 0U) << script;
  }
  RunScript(*connection, "begin tran\ninsert t values (1)\ncommit\ngo\ninsert t values (2)", {});
  EXPECT_EQ(Run(*connection, "select A from t")->rows, 2U);
  EXPECT_EQ(Run(*connection, "select @@trancount")->columns[0].Display(0), "0");
}

TEST_F(ProviderTest, AScriptThatOnlyReadsWaitsForNoWriter) {
  const auto writer = Open("a.db", ";Mode=Create");
  Run(*writer, "create table t (A int)\ninsert t values (1)");
  Run(*writer, "begin tran");
  const auto reader = Open("a.db");
  ExecuteOptions options;
  options.timeout_seconds = 1;
  const char* const script = "declare @n int\nselect @n = count(*) from t\nif @n = 1 select @n";
  EXPECT_EQ(RunScript(*reader, script, options).size(), 1U);
  EXPECT_EQ(NumberOf([&] { RunScript(*reader, "select 1\ngo\ninsert t values (2)", options); }),
            Number(ErrorNumber::kTimeout));
  Run(*writer, "commit");
  RunScript(*reader, "select 1\ngo\ninsert t values (2)", options);
  EXPECT_EQ(Run(*writer, "select A from t")->rows, 2U);
}

TEST_F(ProviderTest, AScriptGivesAllRowSetsAndTellsWhatItPrints) {
  const auto connection = Open("a.db", ";Mode=Create");
  std::string told;
  ExecuteOptions options;
  options.message = [&](std::string_view text) { told += std::string(text) + "|"; };
  const std::string script =
      ":setvar Name \"x\"\ncreate database books on (name = 'a')\ngo\nuse [books]\nset dateformat "
      "ymd\n"
      "print 'one'\nselect 1\nselect 2 as B\nraiserror('only %d', 5, 1, 7)\ngo\nselect 'x\n:setvar "
      "y'";
  const std::vector<ResultSetPtr> results = RunScript(*connection, script, options);
  ASSERT_EQ(results.size(), 3U);
  EXPECT_EQ(results[1]->columns[0].Name(), "B");
  EXPECT_EQ(results[2]->columns[0].Display(0), "x\n:setvar y");
  EXPECT_EQ(told,
            "line 1: :setvar Name \"x\" is passed over|CREATE DATABASE books is passed over: the "
            "file is the database|USE books is passed over: there is one database|one|only 7|");
  std::string text;
  NumberOf([&] { RunScript(*connection, ":setvar a b\n\nselect 1/0", {}); }, &text);
  EXPECT_NE(text.find("(line 3)"), std::string::npos) << text;
}

TEST(ScriptTest, ReadsUtf16AndRefusesWhatIsNoText) {
  EXPECT_EQ(ScriptText("select N'متن'"), "select N'متن'");
  EXPECT_EQ(ScriptText(std::string("\xFF\xFE"
                                   "a\0\x33\x06=\xD8\x00\xDE",
                                   10)),
            "aس😀");
  EXPECT_EQ(ScriptText(std::string("\xFE\xFF\0a\x06\x33\xD8=\xDE\x00", 10)), "aس😀");
  EXPECT_EQ(ScriptText("\xEF\xBB\xBFselect 1"), "\xEF\xBB\xBFselect 1");
  try {
    ScriptText("select 1\nسلام \xC7\xE1");
    FAIL() << "windows-1256 is no UTF-8";
  } catch (const Error& error) {
    EXPECT_NE(error.Description().find("line 2, column 6"), std::string::npos)
        << error.Description();
  }
}

TEST_F(ProviderTest, TellsDeepAndCyclicTextsFromThoseItCanRun) {
  const auto connection = Open("a.db", ";Mode=Create");
  const auto repeat = [](const std::string& s, int times) {
    std::string out;
    for (int i = 0; i < times; ++i) out += s;
    return out;
  };
  // Long chains run; texts that nest without end are refused.
  EXPECT_EQ(Run(*connection, "select 1 where 1=1" + repeat(" or 1=2", 5000))->rows, 1U);
  EXPECT_EQ(Run(*connection, "select 'a'" + repeat("+'b'", 500))->rows, 1U);
  EXPECT_EQ(Run(*connection, "select " + repeat("(", 50) + "1" + repeat(")", 50))->rows, 1U);
  const std::vector<std::string> deep = {
      "select " + repeat("(", 100000) + "1" + repeat(")", 100000),
      "select " + repeat("-", 100000) + "1",
      "select " + repeat("- ", 100000) + "1",
      "select 1" + repeat("+1", 100000),
      "select " + repeat("case when 1=1 then ", 5000) + "1" + repeat(" end", 5000),
      "select 1 where " + repeat("not ", 100000) + "1=1",
      repeat("begin ", 100000),
      repeat("if 1=1 ", 100000) + "select 1",
      "select * from " + repeat("(select * from ", 5000) + "t",
      "select 1 where 1 in " + repeat("(select 1 where 1 in ", 5000),
      "select 1 " + repeat("union select 1 ", 20000),
      "select " + repeat("abs(", 5000) + "1",
      "select * from t" + repeat(" a join t on 1=1", 5000),
  };
  for (const std::string& text : deep) {
    // "--" begins a comment: that text is only short of an expression.
    EXPECT_NE(NumberOf([&, &text = text] { Run(*connection, text); }), 0) << text.substr(0, 60);
  }
  Run(*connection, "create table t (A int)");
  Run(*connection, "create view a as select A from t");
  Run(*connection, "create view b as select A from a");
  Run(*connection, "alter view a as select 1 as A");
  Run(*connection, "alter view a as select A from b");  // bound by the old one
  EXPECT_NE(NumberOf([&] { Run(*connection, "select * from a"); }), 0);
  EXPECT_EQ(Run(*connection, "select * from t")->rows, 0U);
}

TEST_F(ProviderTest, ReadsAFileThatAnotherProgramMade) {
  sqlite3* db = nullptr;
  sqlite3_open(Path("a.db").c_str(), &db);
  sqlite3_exec(
      db,
      "create table T (ID integer primary key, Name text, Price decimal(10,2), N int);"
      "insert into T values (1, 'Ali', 1.25, 5), (2, 'ali ', 2.5, 'junk'), (3, x'00ff', "
      "1e300, 9e30);"
      "create view W as select ID, Name || '!' as Loud from T;"
      "create table vorek_objects (name, kind, source);"
      "insert into vorek_objects values ('bad', 'P', 'drop table T'), ('worse', 'V', 'x');",
      nullptr, nullptr, nullptr);
  sqlite3_close(db);
  const auto connection = Open("a.db");
  const ResultSetPtr rows = Run(*connection, "select * from t where Name = 'ALI' order by ID");
  ASSERT_EQ(rows->rows, 2U);
  EXPECT_EQ(rows->columns[0].AdoType(), kBigInt);
  EXPECT_EQ(rows->columns[1].AdoType(), kLongVarWChar);
  EXPECT_EQ(rows->columns[2].AdoType(), kDouble);  // SQLite keeps its decimals so
  EXPECT_EQ(rows->columns[2].Display(0), "1.25");
  EXPECT_EQ(rows->columns[3].Display(1), "junk");
  EXPECT_EQ(Run(*connection, "select sum(Price) from t where ID < 3")->columns[0].Display(0),
            "3.75");
  EXPECT_EQ(Run(*connection, "select Loud from w where ID = 1")->columns[0].Display(0), "Ali!");
  EXPECT_EQ(Run(*connection, "select Name from t where ID = 3")->columns[0].Display(0), "0x00FF");
  EXPECT_NE(NumberOf([&] { Run(*connection, "select N from t where ID = 3"); }), 0);
  // What stands in the file under the provider's own names defines nothing else.
  EXPECT_NE(NumberOf([&] { Run(*connection, "exec bad"); }), 0);
  EXPECT_NE(NumberOf([&] { Run(*connection, "select * from worse"); }), 0);
  EXPECT_EQ(Run(*connection, "select * from t")->rows, 3U);
}

TEST_F(ProviderTest, KeepsAnIndexInUse) {
  const auto connection = Open("a.db", ";Mode=Create");
  Run(*connection,
      "create table t (ID int primary key, Name nvarchar(20), Amount money, Kind int, At "
      "datetime)\n"
      "create index i1 on t (Name)\ncreate index i2 on t (Amount)\ncreate index i3 on t (Kind)\n"
      "create index i4 on t (At)");
  const auto plan = [&](const std::string& where) {
    return sqlite::ExplainPlan(*connection, "select ID from t where " + where);
  };
  for (const char* where :
       {"Name = 'x'", "Name = N'X  '", "'x' = Name", "Name like 'x'", "Name like 'ab%'",
        "Name in ('a', 'b')", "Amount = 1.5", "Amount > 2", "Amount >= 1.23456",
        "Amount between 1 and 2.5", "Kind = isnull(5, 0)", "isnull(Kind, 0) = 5", "Kind = '7'",
        "Kind = 7.0", "At >= '2024-01-01'", "At = cast('2024-01-01' as datetime)",
        "Amount = cast('5' as money)", "Kind in (1, 2)"}) {
    EXPECT_NE(plan(where).find("USING"), std::string::npos) << where << "\n" << plan(where);
  }
}

}  // namespace
}  // namespace vorek
