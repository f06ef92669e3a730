#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "support/scratch_folder.h"
#include "vorek/database.h"
#include "vorek/error.h"
#include "vorek/sqlite.h"

// Files of a database that somebody else made, to do harm to who opens them.
namespace vorek {
namespace {

class HostileFileTest : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return folder_.Path(name); }
  std::unique_ptr<DatabaseConnection> Open(const std::string& rest = "") {
    return SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=" + Path("a.db") + rest);
  }
  // By another program, which checks nothing.
  void Make(const std::string& sql) {
    sqlite3* db = nullptr;
    sqlite3_open(Path("a.db").c_str(), &db);
    EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(db);
    sqlite3_close(db);
  }

  ScratchFolder folder_;
};

TEST_F(HostileFileTest, RunsNothingThatReachesOutOfIt) {
  Make(
      "CREATE TABLE t (A int); INSERT INTO t VALUES (1); CREATE TABLE u (A int);"
      "CREATE VIEW library AS SELECT load_extension('/tmp/none') AS A;"
      "CREATE VIEW module AS SELECT vk_call('f') AS A;"
      "CREATE VIEW variable AS SELECT vk_variable('@a') AS A;"
      "CREATE TRIGGER sly AFTER INSERT ON t BEGIN SELECT vk_assign('@a', 1); END;");
  const auto connection = Open();
  const std::string inside = Path("inside.db");
  for (const std::string& text :
       {std::string("select * from library"), std::string("select * from module"),
        std::string("select * from variable"), std::string("insert t values (2)"),
        "attach '" + inside + "' as x", "vacuum into '" + inside + "'",
        std::string("pragma writable_schema = on"),
        std::string("select load_extension('/tmp/none')"),
        std::string("select writefile('x', 'y')"), std::string("delete sqlite_master"),
        std::string("exec xp_cmdshell 'id'"),
        std::string("select * from openrowset('a', 'b', 'c')")}) {
    EXPECT_THROW(connection->Execute(text, {}), Error) << text;
  }
  EXPECT_FALSE(std::filesystem::exists(inside));
  EXPECT_EQ(connection->Execute("select A from t", {})->rows, 1U);
}

TEST_F(HostileFileTest, ReadOnlyIsNotWrittenToWhateverAText) {
  Make("CREATE TABLE t (A int); INSERT INTO t VALUES (1)");
  const auto connection = Open(";Mode=ReadOnly");
  for (const char* const text :
       {"delete t", "update t set A = 2", "insert t values (2)", "drop table t",
        "create table u (A int)", "truncate table t", "alter table t add B int", "exec('delete t')",
        "exec sp_executesql N'delete t'", "begin tran delete t commit", "select A into u from t",
        "create procedure p as delete t"}) {
    EXPECT_THROW(connection->Execute(text, {}), Error) << text;
  }
  EXPECT_EQ(connection->Execute("select A from t where A = 1", {})->rows, 1U);
}

TEST_F(HostileFileTest, AValueThatIsNoneOfItsTypeGivesNoFigure) {
  Open(";Mode=Create")
      ->Execute(
          "create table t (X decimal(38,4), M money, A datetime, B bigint, Z varbinary(4))\n"
          "insert t values (1, 1, '2024-01-01', 1, 0x01)",
          {});
  Make("UPDATE t SET X = x'010203', M = 1.5, A = 'x', B = 2.5");
  const auto connection = Open();
  for (const char* const value : {"X",
                                  "X + 1",
                                  "1 - X",
                                  "-X",
                                  "abs(X)",
                                  "sign(X)",
                                  "X / 3",
                                  "X * X",
                                  "X % 2",
                                  "floor(X)",
                                  "round(X, 1)",
                                  "max(X)",
                                  "sum(X)",
                                  "sum(X * X)",
                                  "avg(X)",
                                  "cast(X as decimal(38, 6))",
                                  "cast(X as decimal(38, 2))",
                                  "cast(X as float)",
                                  "cast(X as varchar(50))",
                                  "cast(X as decimal(9, 2))",
                                  "cast(X as int)",
                                  "case when X > 1 then 1 else 0 end",
                                  "M",
                                  "M + 1",
                                  "cast(M as varchar(20))",
                                  "cast(M as int)",
                                  "round(M, 1)",
                                  "sum(M)",
                                  "convert(varchar(30), A, 120)",
                                  "A + 1",
                                  "cast(A as float)",
                                  "dateadd(day, 1, A)",
                                  "datediff(day, A, '2024-01-01')",
                                  "datediff(day, '2024-01-01', A)",
                                  "datepart(day, A)",
                                  "datename(month, A)",
                                  "year(A)",
                                  "eomonth(A)",
                                  "cast(A as smalldatetime)",
                                  "cast(A as date)",
                                  "B",
                                  "B + 1",
                                  "cast(B as int)",
                                  "cast(B as tinyint)"}) {
    EXPECT_THROW(connection->Execute(std::string("select ") + value + " from t", {}), Error)
        << value;
  }
  const ResultSetPtr tried =
      connection->Execute("select try_cast(B as int), try_cast(X as int) from t", {});
  EXPECT_TRUE(tried->columns[0].IsNull(0));
  EXPECT_TRUE(tried->columns[1].IsNull(0));
  Make("UPDATE t SET A = '2024-13-01 00:00:00.000'");
  EXPECT_THROW(connection->Execute("select year(A) from t", {}), Error);
  Make("UPDATE t SET A = '2024-01-0x 00:00:00.000'");
  EXPECT_THROW(connection->Execute("select year(A) from t", {}), Error);
}

TEST_F(HostileFileTest, DamagedPagesEndInAnError) {
  {
    const auto made = Open(";Mode=Create");
    made->Execute("create table t (ID int primary key, Name nvarchar(40), Amount money)", {});
    made->Execute("create index i on t (Name)\ncreate view v as select Name from t", {});
    made->Execute("create procedure p as select count(*) as N from v", {});
    for (int i = 0; i < 300; ++i) {
      const std::string key = std::to_string(i);
      made->Execute("insert t values (" + key + ", N'نام " + key + "', " + key + ".5)", {});
    }
  }
  std::ifstream in(Path("a.db"), std::ios::binary);
  const std::string whole(std::istreambuf_iterator<char>(in), {});
  std::mt19937 random(1);
  int refused = 0;
  for (int i = 0; i < 400; ++i) {
    std::string bytes = whole;
    for (std::size_t turned = random() % 20 + 1; turned > 0; --turned) {
      bytes[100 + random() % (bytes.size() - 100)] = static_cast<char>(random());
    }
    std::ofstream(Path("a.db"), std::ios::binary | std::ios::trunc) << bytes;
    try {
      const auto connection = Open();
      for (const char* const text :
           {"exec p", "select * from t order by Name",
            "select sum(Amount) from t where Name like N'%1%'", "update t set Amount = Amount + 1",
            "select * from sysobjects"}) {
        ExecuteOptions options;
        options.timeout_seconds = 5;
        connection->Execute(text, options);
      }
    } catch (const Error&) {
      ++refused;
    }
  }
  EXPECT_GT(refused, 50);
}

}  // namespace
}  // namespace vorek
