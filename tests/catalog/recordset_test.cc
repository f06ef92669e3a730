#include "catalog/recordset.h"

#include <gtest/gtest.h>

#include "catalog/data_session.h"
#include "platform/memory_database.h"
#include "support/recordset_cases.h"
#include "vorek/error.h"
#include "vorek/field_type.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

std::shared_ptr<DatabaseProvider> MakeMemory() {
  auto database = std::make_shared<MemoryDatabase>();
  database->Answer("create table", nullptr);
  database->Answer("insert into", nullptr);
  const std::vector<MemoryColumn> columns = {
      {"ID", kInteger}, {"Name", kVarWChar}, {"Price", kCurrency}, {"Parent", kInteger}};
  database->Answer("from tblItem", MakeResult(columns, {{"1", "کتاب", "12.5", std::nullopt},
                                                        {"2", std::nullopt, "-0.0001", "1"},
                                                        {"3", "", "922337203685477.5807", "1"}}));
  database->Answer("from tblItem where ID = 9", MakeResult(columns, {}));
  return database;
}

const ProviderCase kProviders[] = {
    {"Memory", MakeMemory, [] { return std::string("Provider=VorekMemory;"); }},
    {"Sqlite", SqliteProvider,
     [] { return std::string("Provider=VorekSQLite;Data Source=:memory:;Mode=Create"); }}};

INSTANTIATE_TEST_SUITE_P(Providers, RecordsetTest, testing::ValuesIn(kProviders), NameOfCase);

TEST(DataSessionTest, RefusesStringsWithoutAProvider) {
  auto database = std::make_shared<MemoryDatabase>();
  database->Answer("select", MakeResult({{"a", kInteger}}, {}));
  DataSession session({database});
  EXPECT_THROW(session.Rebind("Provider=VorekMemory"), Error);
  EXPECT_THROW(session.Rebind(""), Error);
  session.Rebind("Provider=Nobody;");
  try {
    session.Get().rssqlQuery.Open("select 1");
    FAIL();
  } catch (const Error& error) {
    EXPECT_TRUE(error.Is(ErrorNumber::kConnection));
    EXPECT_NE(error.Description().find("Nobody"), std::string::npos);
  }
  session.RebindTwice("provider=vorekmemory;x=1");
  session.Get().rssqlQuery.Open("select 1");
  EXPECT_EQ(session.Get().cnn.ConnectionString(), "provider=vorekmemory;x=1");
}

TEST(DataSessionTest, ConnectsAnewAfterALoss) {
  auto database = std::make_shared<MemoryDatabase>();
  database->Answer("select", MakeResult({{"a", kInteger}}, {{"1"}, {"2"}}));
  database->SetFault("select", {.lost_at_row = 1});
  DataSession session({database});
  session.Rebind("Provider=VorekMemory;");
  EXPECT_THROW(session.Get().rssqlQuery.Open("select"), Error);
  database->ClearFaults();
  session.Get().rssqlQuery.Open("select");
  EXPECT_EQ(session.Get().rssqlQuery.RecordCount(), 2);
  EXPECT_EQ(database->Connections(), 2U);
}

}  // namespace
}  // namespace vorek
