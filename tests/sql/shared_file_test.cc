// Catches a file that can't be read after a killed writer, a reader that stops a writer, a busy
// file that is told as a broken one, and a query that takes all of the machine's memory.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>

#include "support/scratch_folder.h"
#include "vorek/database.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

class SharedFileTest : public testing::Test {
 protected:
  std::string Path() const { return folder_.Path("a.db"); }
  std::unique_ptr<DatabaseConnection> Open(const std::string& rest = "") const {
    return SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=" + Path() + rest);
  }
  static std::string Value(DatabaseConnection& connection, const std::string& text) {
    return connection.Execute(text, {})->columns[0].Display(0);
  }
  // By SQLite itself, in its way to keep a change.
  static void Raw(sqlite3* db, const char* text) {
    EXPECT_EQ(sqlite3_exec(db, text, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
  }
  // A writer that ends in the midst of a change that already stands in the file.
  void LeaveHalfAChange(const char* journal) const {
    const pid_t child = ::fork();
    if (child == 0) {
      sqlite3* db = nullptr;
      sqlite3_open(Path().c_str(), &db);
      Raw(db, ("pragma journal_mode = " + std::string(journal)).c_str());
      Raw(db, "insert into t values (2, 'whole')");
      Raw(db,
          "pragma cache_size = 1; begin; update t set n = 'half'; "
          "insert into t select 100 + value, hex(randomblob(500)) from "
          "(with recursive r(value) as (select 1 union all select value + 1 from r "
          "where value < 2000) select value from r)");
      ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
  }
  static long NumberOf(const std::function<void()>& action, std::string* text = nullptr) {
    try {
      action();
    } catch (const Error& error) {
      if (text != nullptr) *text = error.Description();
      return error.Number();
    }
    return 0;
  }

  ScratchFolder folder_;
};

TEST_F(SharedFileTest, IsReadAfterAKilledWriter) {
  for (const char* const journal : {"delete", "wal"}) {
    std::filesystem::remove(Path());
    sqlite3* db = nullptr;
    sqlite3_open(Path().c_str(), &db);
    Raw(db, "create table t (ID int primary key, n text); insert into t values (1, 'old')");
    sqlite3_close(db);
    LeaveHalfAChange(journal);
    const auto reader = Open(";Mode=ReadOnly");
    EXPECT_EQ(Value(*reader, "select count(*) as c from t"), "2") << journal;
    EXPECT_EQ(Value(*reader, "select max(n) as m from t"), "whole") << journal;
    EXPECT_NE(NumberOf([&] { reader->Execute("delete t", {}); }), 0) << journal;
  }
}

TEST_F(SharedFileTest, ALongReaderStopsNoWriter) {
  Open(";Mode=Create")->Execute("create table t (ID int)", {});
  const auto writer = Open();
  const auto reader = Open();
  std::atomic<bool> reading{false};
  std::thread long_one([&] {
    ExecuteOptions options;
    options.progress = [&](std::size_t) { return reading = true; };
    NumberOf([&] {
      reader->Execute(
          "with a(n) as (select 1 union all select n + 1 from a) "
          "select count(*) from a where n not in (select ID from t)",
          options);
    });
  });
  while (!reading) std::this_thread::yield();
  ExecuteOptions hasty;
  hasty.timeout_seconds = 5;
  EXPECT_EQ(NumberOf([&] { writer->Execute("insert into t values (1)", hasty); }), 0);
  reader->Cancel();
  long_one.join();
  EXPECT_EQ(Value(*reader, "select count(*) as c from t"), "1");
}

TEST_F(SharedFileTest, WhoOnlyReadsLeavesTheFileAsItIs) {
  sqlite3* db = nullptr;
  sqlite3_open(Path().c_str(), &db);
  Raw(db, "create table t (ID int)");
  sqlite3_close(db);
  const auto before = std::filesystem::last_write_time(Path());
  Value(*Open(), "select count(*) as c from t");
  EXPECT_EQ(std::filesystem::last_write_time(Path()), before);
  EXPECT_FALSE(std::filesystem::exists(Path() + "-wal"));
}

TEST_F(SharedFileTest, ABusyFileIsATimeoutAtItsOpening) {
  sqlite3* db = nullptr;
  sqlite3_open(Path().c_str(), &db);
  Raw(db, "create table t (ID int); begin exclusive");
  std::string text;
  EXPECT_EQ(NumberOf([&] { Open(";Connect Timeout=1"); }, &text),
            static_cast<long>(ErrorNumber::kTimeout));
  EXPECT_NE(text.find("Timeout expired"), std::string::npos) << text;
  EXPECT_EQ(NumberOf([&] { Open(";Connect Timeout=x"); }),
            static_cast<long>(ErrorNumber::kConnection));
  Raw(db, "commit");
  sqlite3_close(db);
  EXPECT_EQ(Value(*Open(";Connect Timeout=1"), "select count(*) as c from t"), "0");
}

TEST_F(SharedFileTest, WhatIsMadeIsForItsUserAlone) {
  const mode_t mask = ::umask(0);
  Open(";Mode=Create")->Execute("create table t (ID int)", {});
  ::umask(mask);
  EXPECT_EQ(std::filesystem::status(Path()).permissions() & std::filesystem::perms::all,
            std::filesystem::perms(0600));
}

TEST_F(SharedFileTest, AResultBeyondItsLimitIsRefused) {
  const auto connection = Open(";Mode=Create");
  const std::string endless = "with a(n) as (select 1 union all select n + 1 from a) ";
  const struct {
    std::string text;
    ResultLimits limits;
    const char* told;
  } cases[] = {
      {endless + "select n from a", {.rows = 100000, .bytes = 0}, "100000 rows"},
      {endless + "select replicate('x', 7000) + cast(n as varchar(9)) as t from a",
       {.rows = 0, .bytes = std::size_t{32} << 20U},
       "32 megabytes"},
      {"declare c cursor for " + endless + "select n from a\nopen c",
       {.rows = 100000, .bytes = 0},
       "100000 rows"},
  };
  for (const auto& c : cases) {
    ExecuteOptions options;
    options.limits = c.limits;
    std::string text;
    EXPECT_EQ(NumberOf([&] { connection->Execute(c.text, options); }, &text),
              static_cast<long>(ErrorNumber::kOutOfMemory));
    EXPECT_NE(text.find(c.told), std::string::npos) << text;
    EXPECT_EQ(Value(*connection, "select 1 as a"), "1");
  }
  ExecuteOptions exact;
  exact.limits.rows = 3;
  EXPECT_EQ(connection->Execute("select 1 as a union all select 2 union all select 3", exact)->rows,
            3U);
  exact.limits.rows = 2;
  EXPECT_THROW(connection->Execute("select 1 as a union all select 2 union all select 3", exact),
               Error);
}

}  // namespace
}  // namespace vorek
