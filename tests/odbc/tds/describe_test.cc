// A text's columns as the server tells them of a prepared statement: nothing runs.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "odbc/tds/wire.h"
#include "vorek/field_type.h"

namespace vorek::tds {
namespace {

class DescribeTest : public testing::Test {
 protected:
  Server server_{InMemory()};
  std::unique_ptr<DatabaseConnection> connection_ = ConnectTo(StringFor(server_));
};

TEST_F(DescribeTest, TellsColumnsWithoutRunning) {
  connection_->Execute("create table t (a int, n nvarchar(20), m money)", {});
  const auto columns = connection_->Describe("select a, n as N'نام', m from t where a = 1", 30);
  ASSERT_TRUE(columns.has_value());
  ASSERT_NE(*columns, nullptr);
  ASSERT_EQ((*columns)->columns.size(), 3u);
  EXPECT_EQ((*columns)->columns[0].AdoType(), kInteger);
  EXPECT_EQ((*columns)->columns[1].Name(), "نام");
  EXPECT_EQ((*columns)->columns[1].AdoType(), kVarWChar);
  EXPECT_EQ((*columns)->columns[2].AdoType(), kCurrency);
  EXPECT_EQ((*columns)->rows, 0u);
}

TEST_F(DescribeTest, ChangesNothing) {
  connection_->Execute("create table t (a int)", {});
  const auto columns = connection_->Describe("insert t values (1)", 30);
  ASSERT_TRUE(columns.has_value());
  EXPECT_EQ(*columns, nullptr);
  EXPECT_EQ(connection_->Execute("select count(*) as n from t", {})->columns[0].Scaled(0), 0);
}

TEST_F(DescribeTest, TellsWhatIsWrong) {
  const auto fail = [&](const char* text) {
    return FailureOf([&] { connection_->Describe(text, 30); });
  };
  EXPECT_EQ(fail("select a from tblNowhere").number, -2147217865);
  EXPECT_NE(fail("select a from tblNowhere").words.find("tblNowhere"), std::string::npos);
  EXPECT_EQ(fail("select a where from t").number, -2147217900);
  EXPECT_EQ(connection_->Execute("select 5 as a", {})->columns[0].Scaled(0), 5);
}

}  // namespace
}  // namespace vorek::tds
