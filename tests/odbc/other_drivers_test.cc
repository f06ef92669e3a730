// A second opinion on what drivers may do differently, and SQL Server's driver as far as it goes
// without a server.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "odbc/postgres_server.h"
#include "vorek/error.h"
#include "vorek/field_type.h"

namespace vorek::odbc {
namespace {

TEST(SqliteDriverTest, ReadsTextsLongerThanTheirColumns) {
  const auto connection = ConnectTo("Provider=MSDASQL;Driver={SQLite3};Database=:memory:");
  const auto run = [&](const char* text) { return connection->Execute(text, {}); };
  run("create table t (id integer, name nvarchar(5), price decimal(18,2), made date)");
  run("insert into t values (1, 'بسيار درازتر از پنج', '12.50', null), (2, 'كوتاه', null, null)");
  const ResultSetPtr result = run("select id, name as 'نام', price, made from t order by id");
  ASSERT_EQ(result->rows, 2u);
  EXPECT_EQ(result->columns[1].Name(), "نام");
  EXPECT_EQ(result->columns[1].Text(0), "بسيار درازتر از پنج");
  EXPECT_EQ(result->columns[1].Text(1), "كوتاه");
  EXPECT_EQ(result->columns[2].Display(0), "12.5");
  EXPECT_TRUE(result->columns[2].IsNull(1));
  EXPECT_TRUE(result->columns[3].IsNull(0));
}

TEST(FreeTdsTest, ReportsAServerThatIsNotThere) {
  // Port 1 is nobody's.
  try {
    ConnectTo(
        "Provider=SQLOLEDB.1;Driver=FreeTDS;Data Source=127.0.0.1,1;Initial Catalog=books;"
        "User ID=sa;Password=s3cret;Connect Timeout=3");
    FAIL() << "connected";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), -2147467259);
    EXPECT_NE(error.Description().find("Unable to connect"), std::string::npos)
        << error.Description();
    EXPECT_EQ(error.Description().find("s3cret"), std::string::npos);
  }
}

TEST(DriverManagerTest, ReportsADriverThatIsNotThere) {
  try {
    ConnectTo("Provider=MSDASQL;Driver={No such driver};Database=x");
    FAIL() << "connected";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), -2147467259);
    EXPECT_FALSE(error.Description().empty());
    EXPECT_NE(error.Description().front(), '[');
  }
}

}  // namespace
}  // namespace vorek::odbc
