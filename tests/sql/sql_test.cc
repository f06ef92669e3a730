// Runs the text files of this folder; VOREK_SQL_CASES names another folder of such files, to be run
// beside these. With a connection string in VOREK_SQLSERVER the same cases are run there, each file
// in a database of its own: see tools/check-sqlserver.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "sql_cases.h"
#include "support/scratch_folder.h"
#include "vorek/database.h"
#include "vorek/sqlite.h"
#ifdef VOREK_WITH_ODBC
#include "vorek/odbc.h"
#endif

namespace vorek {
namespace {

constexpr char kInMemory[] = "Provider=VorekSQLite;Data Source=:memory:;Mode=Create";

void ExpectNone(const std::vector<std::string>& differing) {
  for (const std::string& difference : differing) ADD_FAILURE() << difference;
}

class SqlFile : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(SqlFile, GivesWhatItSays) {
  ASSERT_FALSE(ReadSqlCases(GetParam()).empty());
  const auto connection = SqliteProvider()->Connect(kInMemory);
  ExpectNone(DifferingCases(*connection, GetParam(), SqlServer::kEmbedded));
}

// A database on the server, gone with it; a string of the embedded database has its own.
class ScratchDatabase {
 public:
  ScratchDatabase(const std::string& connection_string, const std::string& name)
      : name_("[vorek cases " + name + "]") {
    embedded_ = connection_string.find("VorekSQLite") != std::string::npos;
    if (embedded_) {
      connection_ = SqliteProvider()->Connect(connection_string);
      return;
    }
#ifdef VOREK_WITH_ODBC
    connection_ = OdbcProvider()->Connect(connection_string);
#else
    throw std::runtime_error("a server needs a build with ODBC");
#endif
    Run("if db_id('vorek cases " + name + "') is not null drop database " + name_);
    Run("create database " + name_ + " collate Persian_100_CI_AS");
    Run("use " + name_);
  }
  ~ScratchDatabase() {
    if (embedded_) return;
    IgnoreErrors([&] {
      Run("use master");
      Run("drop database " + name_);
    });
  }
  ScratchDatabase(const ScratchDatabase&) = delete;
  ScratchDatabase& operator=(const ScratchDatabase&) = delete;

  DatabaseConnection& Connection() { return *connection_; }

 private:
  void Run(const std::string& text) { connection_->Execute(text, ExecuteOptions{}); }

  std::string name_;
  bool embedded_ = false;
  std::unique_ptr<DatabaseConnection> connection_;
};

class SqlFileOnServer : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(SqlFileOnServer, GivesWhatItSays) {
  const char* const server = std::getenv("VOREK_SQLSERVER");
  if (server == nullptr) GTEST_SKIP() << "no server: see tools/check-sqlserver";
  if (GetParam().stem() == "embedded") GTEST_SKIP() << "what the embedded database alone says";
  ScratchDatabase database(server, GetParam().stem().string());
  ExpectNone(DifferingCases(database.Connection(), GetParam(), SqlServer::kOther));
}

// The list of what differs, over a file that is wrong in known places.
class DifferingCasesTest : public testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(path_) << "create table t (ID int)\n----\nok\n\n"
                            "# one too many\nselect 1\n----\n1\n2\n\n"
                            "insert t values (1)\n----\nerror: not supported\n\n"
                            "select count(*) from t\n----\n0\n\n"
                            "select * from nothere\n----\nerror: in a server's own words\n\n"
                            "select 1/0\nselect 0\n---- each\n0\n";
  }

  std::vector<std::string> Run(SqlServer server) {
    return DifferingCases(*SqliteProvider()->Connect(kInMemory), path_, server);
  }

  ScratchFolder folder_;
  std::filesystem::path path_ = folder_.Path("wrong.test");
};

TEST_F(DifferingCasesTest, NamesThePlaceAndBothOutcomes) {
  const std::vector<std::string> found = Run(SqlServer::kOther);
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0], path_.filename().string() +
                          " line 6 one too many\nselect 1\nwanted:\n1\n2\ngave:\n1\n");
  EXPECT_NE(found[1].find("select 1/0\nwanted:\n0\ngave:\nerror: Divide by zero"),
            std::string::npos);
}

TEST_F(DifferingCasesTest, HoldsTheEmbeddedDatabaseToItsWords) {
  // The refusal that isn't one, the row that it left, and the words of an error as well.
  EXPECT_EQ(Run(SqlServer::kEmbedded).size(), 5U);
}

std::vector<std::filesystem::path> Files() {
  std::vector<std::filesystem::path> files;
  const char* const more = std::getenv("VOREK_SQL_CASES");
  for (const std::string folder : {VOREK_SQL_TESTS, more == nullptr ? "" : more}) {
    if (folder.empty()) continue;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".test") files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string NameOf(const testing::TestParamInfo<std::filesystem::path>& file) {
  const bool own = file.param.parent_path() == VOREK_SQL_TESTS;
  std::string name = (own ? "" : "more_") + file.param.stem().string();
  std::replace_if(
      name.begin(), name.end(),
      [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Files, SqlFile, testing::ValuesIn(Files()), NameOf);
INSTANTIATE_TEST_SUITE_P(Files, SqlFileOnServer, testing::ValuesIn(Files()), NameOf);

}  // namespace
}  // namespace vorek
