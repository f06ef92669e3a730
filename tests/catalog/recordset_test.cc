#include "catalog/recordset.h"

#include <gtest/gtest.h>

#include "catalog/data_session.h"
#include "platform/field_type.h"
#include "platform/memory_database.h"
#include "vorek/error.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

// One set of cases over every provider: each makes the same three rows of tblItem.
struct ProviderCase {
  const char* name;
  std::shared_ptr<DatabaseProvider> (*make)();
  const char* connection;
};

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
    {"Memory", MakeMemory, "Provider=VorekMemory;"},
    {"Sqlite", SqliteProvider, "Provider=VorekSQLite;Data Source=:memory:;Mode=Create"}};

class RecordsetTest : public testing::TestWithParam<ProviderCase> {
 protected:
  RecordsetTest() : session_({GetParam().make()}) {
    session_.Rebind(GetParam().connection);
    Slot().Open("create table tblItem (ID int, Name nvarchar(50), Price money, Parent int)");
    Slot().Open(
        "insert into tblItem values (1, N'کتاب', 12.5, null), (2, null, -0.0001, 1), "
        "(3, '', 922337203685477.5807, 1)");
  }
  Recordset& Slot() { return session_.Get().rssqlGeneral1; }

  DataSession session_;
};

TEST_P(RecordsetTest, LeavesTheSlotClosedWithoutARowSet) {
  EXPECT_EQ(Slot().State(), 0);
  EXPECT_THROW(Slot().RecordCount(), Error);
  Slot().Close();
}

TEST_P(RecordsetTest, ReadsTypedFields) {
  Slot().Open("select * from tblItem");
  EXPECT_EQ(Slot().RecordCount(), 3);
  EXPECT_EQ(Slot().FieldCount(), 4U);
  EXPECT_EQ(Slot().FieldType(0), kInteger);
  EXPECT_EQ(Slot().FieldType(1), kVarWChar);
  EXPECT_EQ(Slot().FieldType(2), kCurrency);
  EXPECT_EQ(Slot().Field("name").Text(), "کتاب");
  EXPECT_EQ(Slot().Field("Price").Text(), "12.5");
  EXPECT_TRUE(Slot().Field("Parent").IsNull());
  EXPECT_THROW(Slot().Field("Parent").Number(), Error);
  EXPECT_THROW(Slot().Field("Missing"), Error);
  Slot().MoveNext();
  EXPECT_EQ(Slot().Field("Name").Text(), "");
  EXPECT_EQ(Slot().Field("Price").Text(), "-0.0001");
  Slot().MoveNext();
  EXPECT_FALSE(Slot().Field("Name").IsNull());
  EXPECT_EQ(Slot().Field("Price").Text(), "922337203685477.5807");
  Slot().MoveNext();
  EXPECT_TRUE(Slot().AtEnd());
  EXPECT_EQ(Slot().AbsolutePosition(), 0);
  EXPECT_THROW(Slot().Field("ID"), Error);
  EXPECT_THROW(Slot().MoveNext(), Error);
  Slot().MoveFirst();
  EXPECT_EQ(Slot().AbsolutePosition(), 1);
  EXPECT_THROW(Slot().Open("select * from tblItem"), Error);
}

TEST_P(RecordsetTest, KeepsTheFilterOverCloseAndOpenUntilARebinding) {
  EXPECT_EQ(Slot().Filter(), "0");
  Slot().Open("select * from tblItem");
  Slot().SetFilter("Parent = 1");
  EXPECT_EQ(Slot().RecordCount(), 2);
  EXPECT_EQ(Slot().Field("ID").Number(), 2);
  EXPECT_THROW(Slot().SetFilter("Nothing = 1"), Error);
  EXPECT_EQ(Slot().Filter(), "Parent = 1");
  Slot().Close();
  Slot().Open();
  EXPECT_EQ(Slot().RecordCount(), 2);
  Slot().SetFilter("Parent = NULL");
  EXPECT_EQ(Slot().RecordCount(), 1);
  Slot().SetFilter("");
  EXPECT_EQ(Slot().Filter(), "0");
  EXPECT_EQ(Slot().RecordCount(), 3);
  Slot().SetFilter("ID > 1");
  session_.Rebind(GetParam().connection);
  EXPECT_EQ(Slot().Filter(), "0");
  EXPECT_EQ(Slot().State(), 0);
}

TEST_P(RecordsetTest, TellsAnObjectThatIsntThere) {
  try {
    Slot().Open("select * from tblMissing");
    FAIL();
  } catch (const Error& error) {
    EXPECT_TRUE(error.Is(ErrorNumber::kMissingObject)) << error.Number();
    EXPECT_NE(error.Description().find("tblMissing"), std::string::npos);
  }
  EXPECT_EQ(Slot().State(), 0);
  EXPECT_FALSE(session_.Get().cnn.LastError().empty());
  Slot().Open("select * from tblItem where ID = 9");
  EXPECT_EQ(Slot().RecordCount(), 0);
  EXPECT_TRUE(Slot().AtEnd());
}

INSTANTIATE_TEST_SUITE_P(Providers, RecordsetTest, testing::ValuesIn(kProviders),
                         [](const auto& param) { return std::string(param.param.name); });

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
