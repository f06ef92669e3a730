#ifndef VOREK_TESTS_SUPPORT_RECORDSET_CASES_H_
#define VOREK_TESTS_SUPPORT_RECORDSET_CASES_H_

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "catalog/data_session.h"
#include "catalog/recordset.h"
#include "text/utf8.h"
#include "vorek/database.h"
#include "vorek/error.h"
#include "vorek/field_type.h"

// One set of cases over every provider: each makes the same three rows of tblItem. A test program
// includes them and instantiates RecordsetTest for its providers.
namespace vorek {

struct ProviderCase {
  const char* name;
  std::shared_ptr<DatabaseProvider> (*make)();
  std::string (*connection)();
  // In the server's own words.
  const char* create = "create table tblItem (ID int, Name nvarchar(50), Price money, Parent int)";
  int price_type = kCurrency;
};

class RecordsetTest : public testing::TestWithParam<ProviderCase> {
 protected:
  RecordsetTest() : session_({GetParam().make()}) {
    session_.Rebind(GetParam().connection());
    Slot().Open(GetParam().create);
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
  EXPECT_EQ(Slot().FieldType(2), GetParam().price_type);
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
  session_.Rebind(GetParam().connection());
  EXPECT_EQ(Slot().Filter(), "0");
  EXPECT_EQ(Slot().State(), 0);
}

TEST_P(RecordsetTest, TellsAnObjectThatIsntThere) {
  try {
    Slot().Open("select * from tblMissing");
    FAIL();
  } catch (const Error& error) {
    EXPECT_TRUE(error.Is(ErrorNumber::kMissingObject)) << error.Number();
    EXPECT_TRUE(text::ContainsIgnoreCase(error.Description(), "tblMissing"));
  }
  EXPECT_EQ(Slot().State(), 0);
  EXPECT_FALSE(session_.Get().cnn.LastError().empty());
  Slot().Open("select * from tblItem where ID = 9");
  EXPECT_EQ(Slot().RecordCount(), 0);
  EXPECT_TRUE(Slot().AtEnd());
}

inline std::string NameOfCase(const testing::TestParamInfo<ProviderCase>& param) {
  return param.param.name;
}

}  // namespace vorek

#endif  // VOREK_TESTS_SUPPORT_RECORDSET_CASES_H_
