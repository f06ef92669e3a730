#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "vorek/database.h"
#include "vorek/error.h"
#include "vorek/sqlite.h"

// Files of a database that somebody else made, to do harm to who opens them.
namespace vorek {
namespace {

class HostileFileTest : public testing::Test {
 protected:
  HostileFileTest() {
    std::string name = (std::filesystem::temp_directory_path() / "vorek-hostile-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) std::abort();
    folder_ = name;
  }
  ~HostileFileTest() override { std::filesystem::remove_all(folder_); }

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
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

  std::filesystem::path folder_;
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
