// Run by tools/check-sqlserver with a server that a person has; skipped without one.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>

#include "odbc/postgres_server.h"
#include "vorek/error.h"
#include "vorek/field_type.h"

namespace vorek::odbc {
namespace {

class SqlServerTest : public testing::Test {
 protected:
  void SetUp() override {
    const char* text = std::getenv("VOREK_SQLSERVER");
    if (text == nullptr) GTEST_SKIP() << "no server: see tools/check-sqlserver";
    connection_ = ConnectTo(text);
  }

  ResultSetPtr Run(const std::string& text, int timeout_seconds = 30) {
    return connection_->Execute(text, {timeout_seconds, {}});
  }

  void ExpectNumber(const std::string& text, ErrorNumber number, int timeout_seconds = 30) {
    try {
      Run(text, timeout_seconds);
      ADD_FAILURE() << text << " went through";
    } catch (const Error& error) {
      EXPECT_TRUE(error.Is(number)) << text << ": " << error.Number() << " " << error.what();
      EXPECT_NE(error.Description().substr(0, 1), "[") << error.what();
    }
  }

  std::unique_ptr<DatabaseConnection> connection_;
};

TEST_F(SqlServerTest, KeepsTypesAndValues) {
  struct Case {
    const char* expression;
    int type;
    const char* shown;
  };
  const Case cases[] = {
      {"cast(1 as bit)", kBoolean, "True"},
      {"cast(255 as tinyint)", kUnsignedTinyInt, "255"},
      {"cast(-7 as smallint)", kSmallInt, "-7"},
      {"cast(-9223372036854775807 as bigint)", kBigInt, "-9223372036854775807"},
      {"cast(-922337203685477.5808 as money)", kCurrency, "-922337203685477.5808"},
      {"cast(12.5 as smallmoney)", kCurrency, "12.5"},
      {"cast('1234567890123456789012345678.0123456789' as decimal(38,10))", kNumeric,
       "1234567890123456789012345678.0123456789"},
      {"cast(-0.05 as decimal(9,2))", kNumeric, "-0.05"},
      {"cast(0.1 as float)", kDouble, "0.1"},
      {"cast('2025-03-21T08:30:05.123' as datetime)", kDBTimeStamp, "2025-03-21 08:30:05.123"},
      {"cast('2025-03-21T08:30:05.1230000' as datetime2)", kDBTimeStamp, "2025-03-21 08:30:05.123"},
      {"cast('2025-03-21' as date)", kDBDate, "2025-03-21"},
      {"cast('08:30:05' as time(0))", kDBTime, "08:30:05"},
      {"cast('6F9619FF-8B86-D011-B42D-00C04FC964FF' as uniqueidentifier)", kGuid,
       "6F9619FF-8B86-D011-B42D-00C04FC964FF"},
      {"cast(N'فاكتور' as nvarchar(20))", kVarWChar, "فاكتور"},
      {"cast('abc' as varchar(20))", kVarChar, "abc"},
      {"cast(0x00FF10 as varbinary(10))", kVarBinary, "0x00FF10"},
      {"cast(N'<a>ك</a>' as xml)", kLongVarWChar, "<a>ك</a>"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.expression);
    const ResultSetPtr result =
        Run(std::string("select ") + c.expression + " as value, N'پس' as behind");
    ASSERT_EQ(result->rows, 1u);
    EXPECT_EQ(result->columns[0].AdoType(), c.type);
    EXPECT_EQ(result->columns[0].Display(0), c.shown);
    EXPECT_EQ(result->columns[1].Text(0), "پس");
  }
}

TEST_F(SqlServerTest, ReadsLongTextsAndBytes) {
  const ResultSetPtr result =
      Run("select replicate(cast(N'ك' as nvarchar(max)), 1500000) as t, 7 as n, "
          "cast(replicate(cast('a' as varchar(max)), 100000) as varbinary(max)) as b, "
          "cast(null as nvarchar(max)) as z");
  EXPECT_EQ(result->columns[0].Text(0).size(), 3000000u);
  EXPECT_EQ(result->columns[1].Scaled(0), 7);
  EXPECT_EQ(result->columns[2].Text(0).size(), 200002u);
  EXPECT_TRUE(result->columns[3].IsNull(0));
}

// Holds in a database with an Arabic code page only; with another the bare text comes as "????".
TEST_F(SqlServerTest, KeepsPersianTextsWithoutN) {
  EXPECT_EQ(Run("select 'فاكتور' as t")->columns[0].Text(0), "فاكتور");
}

TEST_F(SqlServerTest, GivesAdosNumbers) {
  ExpectNumber("select * from tblNowhere", ErrorNumber::kMissingObject);
  ExpectNumber("select 1 1 1", ErrorNumber::kSyntax);
  ExpectNumber("select 1/0", ErrorNumber::kSyntax);
  ExpectNumber("exec spNowhere", ErrorNumber::kMissingObject);
  ExpectNumber("waitfor delay '00:00:20'", ErrorNumber::kTimeout, 1);
  std::thread other([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    connection_->Cancel();
  });
  ExpectNumber("waitfor delay '00:00:20'", ErrorNumber::kCancelled);
  other.join();
  EXPECT_EQ(Run("select 1 as a")->rows, 1u) << "the connection is as good as before";
}

TEST_F(SqlServerTest, GivesTheFirstRowsOfAProcedure) {
  Run("create procedure #p as declare @t table (a int); insert @t values (1), (2); "
      "select a from @t; select 'second' as b");
  const ResultSetPtr result = Run("exec #p");
  ASSERT_NE(result, nullptr);
  EXPECT_EQ(result->rows, 2u);
  Run("create procedure #q as declare @t table (a int); insert @t values (1)");
  EXPECT_EQ(Run("exec #q"), nullptr);
}

TEST_F(SqlServerTest, ReadsAMillionRows) {
  EXPECT_EQ(Run("select top 1000000 row_number() over (order by (select 1)) as n, N'مشتري' as t "
                "from sys.all_columns a, sys.all_columns b",
                600)
                ->rows,
            1000000u);
}

}  // namespace
}  // namespace vorek::odbc
