// Against a real server. What these find: a type that loses its value or its number, a text that is
// cut, an error under the wrong number, a statement that can't be stopped.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "odbc/postgres_server.h"
#include "text/utf8.h"
#include "vorek/connection_string.h"
#include "vorek/error.h"
#include "vorek/field_type.h"

namespace vorek::odbc {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

class PostgresTest : public testing::Test {
 protected:
  ResultSetPtr Run(const std::string& text, int timeout_seconds = 30) {
    return connection_->Execute(text, {timeout_seconds, {}});
  }

  long NumberOf(const std::string& text, int timeout_seconds = 30) {
    try {
      Run(text, timeout_seconds);
    } catch (const Error& error) {
      description_ = error.Description();
      return error.Number();
    }
    return 0;
  }

  std::unique_ptr<DatabaseConnection> connection_ = ConnectTo(SharedPostgres().ConnectionString());
  std::string description_;
};

// Each text as the password of a role that has to give it, and as the name of another one.
TEST_F(PostgresTest, TakesNamesAndPasswordsAsTheyAre) {
  const std::string server = SharedPostgres().ConnectionString();
  const auto with = [&](const std::string& user, const std::string& password) {
    std::vector<ConnectionPiece> pieces = ParseConnectionString(server);
    std::erase_if(pieces, [](const ConnectionPiece& piece) { return piece.key == "User ID"; });
    pieces.push_back({"User ID", user});
    pieces.push_back({"Password", password});
    return FormatConnectionString(pieces);
  };
  Run("create role checked login");
  for (const char* text : {"secret", "100%", "%41%25", "a+b", "a b", "a;b", "{a", "a}", "a}}b",
                           "{a}", "'", "=", "گذرواژه", "ي+ك%20;{}'", " x ", "\\", "};UID=x;"}) {
    const std::string literal = text::Replace(text, "'", "''");
    Run("alter role checked password '" + literal + "'");
    EXPECT_NO_THROW(ConnectTo(with("checked", text))) << text;
    EXPECT_THROW(ConnectTo(with("checked", std::string(text) + "%")), Error) << text;
    if (text::Contains(text, ";") || std::string_view(text) == "{a") {
      EXPECT_THROW(ConnectTo(with(text, "any")), Error) << text;
      continue;
    }
    Run("create role \"" + std::string(text) + "\" login");
    EXPECT_NO_THROW({
      const auto named = ConnectTo(with(text, "any"));
      EXPECT_EQ(named->Execute("select current_user as u", {})->columns[0].Text(0), text);
    }) << text;
  }
}

TEST_F(PostgresTest, KeepsTypesAndValues) {
  struct Case {
    const char* expression;
    int type;
    const char* shown;
  };
  const Case cases[] = {
      {"cast(-7 as smallint)", kSmallInt, "-7"},
      {"2147483647", kInteger, "2147483647"},
      {"-9223372036854775808", kBigInt, "-9223372036854775808"},
      {"true", kBoolean, "True"},
      {"cast(0.1 as double precision)", kDouble, "0.1"},
      {"cast(1234567890123.45 as numeric(18,2))", kNumeric, "1234567890123.45"},
      {"cast(-0.0001 as numeric(18,4))", kNumeric, "-0.0001"},
      {"cast('123456789012345678901234567890.5' as numeric(38,1))", kNumeric,
       "123456789012345678901234567890.5"},
      {"cast('-1234.50' as money)", kCurrency, "-1234.5"},
      {"cast('فاكتور' as varchar(20))", kVarWChar, "فاكتور"},
      {"cast('😀 a' as varchar(3))", kVarWChar, "😀 a"},
      {"timestamp '2025-03-21 08:30:05.125'", kDBTimeStamp, "2025-03-21 08:30:05.125"},
      {"timestamp '2025-03-21 00:00:00'", kDBTimeStamp, "2025-03-21 00:00:00"},
      {"date '2025-03-21'", kDBDate, "2025-03-21"},
      {"time '08:30:05'", kDBTime, "08:30:05"},
      {"decode('00ff10', 'hex')", kLongVarBinary, "0x00FF10"},
  };
  for (const Case& c : cases) {
    const ResultSetPtr result =
        Run(std::string("select ") + c.expression + " as value union all select null");
    ASSERT_EQ(result->rows, 2u);
    const ResultColumn& column = result->columns.at(0);
    EXPECT_EQ(column.Name(), "value");
    EXPECT_EQ(column.AdoType(), c.type) << c.expression;
    EXPECT_EQ(column.Display(0), c.shown) << c.expression;
    EXPECT_TRUE(column.IsNull(1)) << c.expression;
  }
}

TEST_F(PostgresTest, ReadsLongTextsWholeBesideOthers) {
  // Rows of a block: short, longer than what the driver says a text may have, very long, short.
  const ResultSetPtr result =
      Run("select n, repeat('ك', n) as long, n * 2 as twice from "
          "(values (3), (9000), (3000000), (0), (5)) as t(n)");
  ASSERT_EQ(result->rows, 5u);
  const std::size_t lengths[] = {3, 9000, 3000000, 0, 5};
  for (std::size_t row = 0; row < 5; ++row) {
    const std::string_view text = result->columns[1].Text(row);
    EXPECT_EQ(text.size(), 2 * lengths[row]);
    EXPECT_EQ(text.substr(0, 2), lengths[row] == 0 ? "" : "ك");
    EXPECT_EQ(result->columns[2].Scaled(row), static_cast<std::int64_t>(2 * lengths[row]));
  }
  const ResultSetPtr bytes = Run("select decode(repeat('ab', 100000), 'hex') as b");
  EXPECT_EQ(bytes->columns[0].Text(0).size(), 2u + 200000u);
}

TEST_F(PostgresTest, GivesTheFirstRowsOfSeveralStatements) {
  EXPECT_EQ(Run("create temporary table t (a int)"), nullptr);
  EXPECT_EQ(Run("insert into t values (1)"), nullptr);
  const ResultSetPtr result =
      Run("insert into t values (2); select a from t order by a; insert into t values (3)");
  ASSERT_NE(result, nullptr);
  EXPECT_EQ(result->rows, 2u);
  EXPECT_EQ(Run("select a from t")->rows, 3u);
  EXPECT_EQ(Run("delete from t where a > 100"), nullptr);
  const ResultSetPtr empty = Run("select a, 'x' as b from t where a > 100");
  EXPECT_EQ(empty->rows, 0u);
  EXPECT_EQ(empty->columns.size(), 2u);
}

TEST_F(PostgresTest, GivesAdosNumbersAndTheServersWords) {
  EXPECT_EQ(NumberOf("select * from nowhere"), -2147217865);
  EXPECT_EQ(description_.substr(0, 42), "ERROR: relation \"nowhere\" does not exist");
  EXPECT_EQ(NumberOf("select nofunction(1)"), -2147217865);
  EXPECT_EQ(NumberOf("selec 1"), -2147217900);
  EXPECT_EQ(NumberOf("select 1/0"), -2147217900);
  EXPECT_EQ(description_, "ERROR: division by zero");
  EXPECT_EQ(NumberOf("select cast('abc' as int)"), -2147217913);
  EXPECT_EQ(NumberOf("select cast(300000 as smallint)"), -2147217833);
  EXPECT_EQ(NumberOf("create temporary table k (a int not null); insert into k values (null)"),
            -2147217873);
  EXPECT_EQ(NumberOf("select 1/(500 - n) from generate_series(1, 1000) as t(n)"), -2147217900);
  EXPECT_EQ(Run("select 1 as a")->rows, 1u) << "the connection is as good as before";
}

TEST_F(PostgresTest, LooksUpATextWithoutRunningIt) {
  Run("create temp sequence looked_up");
  const auto rows =
      connection_->Describe("select nextval('looked_up') as n, cast('x' as varchar(5)) as t", 30);
  ASSERT_TRUE(rows && *rows != nullptr);
  ASSERT_EQ((*rows)->columns.size(), 2U);
  EXPECT_EQ((*rows)->columns[0].Name(), "n");
  EXPECT_EQ((*rows)->columns[0].AdoType(), kBigInt);
  EXPECT_EQ((*rows)->rows, 0U);
  EXPECT_EQ(Run("select nextval('looked_up') as n")->columns[0].Display(0), "1");
  EXPECT_THROW(connection_->Describe("select * from nowhere", 30), Error);
}

TEST_F(PostgresTest, StopsAtTheTimeOut) {
  const auto start = steady_clock::now();
  EXPECT_EQ(NumberOf("select pg_sleep(20)", 1), -2147217871);
  EXPECT_LT(steady_clock::now() - start, seconds(5));
  EXPECT_EQ(Run("select 1 as a")->rows, 1u);
}

TEST_F(PostgresTest, IsCancelledFromAnotherThread) {
  std::thread other([this] {
    WaitUntilSleeping(SharedPostgres());
    connection_->Cancel();
  });
  const auto start = steady_clock::now();
  EXPECT_EQ(NumberOf("select pg_sleep(20)"), -2147217842);
  EXPECT_LT(steady_clock::now() - start, seconds(5));
  other.join();
  connection_->Cancel();  // nothing runs: no effect on what comes
  EXPECT_EQ(Run("select 1 as a")->rows, 1u);
}

TEST_F(PostgresTest, AsksWhileRowsAreRead) {
  std::vector<std::size_t> asked;
  const ExecuteOptions options = {30, [&](std::size_t rows) {
                                    asked.push_back(rows);
                                    return rows < 10000;
                                  }};
  try {
    connection_->Execute("select n from generate_series(1, 1000000) as t(n)", options);
    FAIL() << "not cancelled";
  } catch (const Error& error) {
    EXPECT_TRUE(error.Is(ErrorNumber::kCancelled));
  }
  ASSERT_GT(asked.size(), 2u);
  EXPECT_LT(asked.back(), 20000u);
}

TEST_F(PostgresTest, ReadsAMillionRows) {
  const ResultSetPtr result = Run(
      "select n, n * 1.25 as d, 'مشتري ' || n as name from generate_series(1, 1000000) as t(n)");
  ASSERT_EQ(result->rows, 1000000u);
  EXPECT_EQ(result->columns[0].Scaled(999999), 1000000);
  EXPECT_EQ(result->columns[1].Display(999999), "1250000");
  EXPECT_EQ(result->columns[2].Text(500000), "مشتري 500001");
}

TEST_F(PostgresTest, SaysThatTheServerIsGoneAndConnectsAgain) {
  SharedPostgres().Kill();
  EXPECT_EQ(NumberOf("select 1"), -2147467259) << description_;
  EXPECT_EQ(NumberOf("select 1"), -2147467259) << "still gone: " << description_;
  EXPECT_THROW(ConnectTo(SharedPostgres().ConnectionString()), Error);
  SharedPostgres().Start();
  connection_ = ConnectTo(SharedPostgres().ConnectionString());
  EXPECT_EQ(Run("select 1 as a")->rows, 1u);
}

TEST_F(PostgresTest, NoticesAServerThatDiesInTheMiddleOfAStatement) {
  std::thread other([] {
    WaitUntilSleeping(SharedPostgres());
    SharedPostgres().Kill();
  });
  EXPECT_EQ(NumberOf("select pg_sleep(20)"), -2147467259) << description_;
  other.join();
  SharedPostgres().Start();
}

// The driver itself waits for ever here, also when it is told to cancel.
TEST_F(PostgresTest, GivesUpAServerThatDoesNotAnswer) {
  const auto cancelled = ConnectTo(SharedPostgres().ConnectionString());
  SharedPostgres().Freeze();
  const auto start = steady_clock::now();
  std::thread other([&] {
    try {
      cancelled->Execute("select 1 as a", {600, {}});
      ADD_FAILURE() << "answered";
    } catch (const Error& error) {
      EXPECT_TRUE(error.Is(ErrorNumber::kConnection)) << error.what();
    }
  });
  std::atomic<bool> ended = false;
  std::thread canceller([&] {
    while (!ended) {
      cancelled->Cancel();
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  });
  EXPECT_EQ(NumberOf("select 1 as a", 1), -2147467259) << description_;
  other.join();
  ended = true;
  canceller.join();
  EXPECT_LT(steady_clock::now() - start, seconds(20));
  EXPECT_EQ(NumberOf("select 1 as a"), -2147467259) << "it stays lost";
  SharedPostgres().Thaw();
  connection_ = ConnectTo(SharedPostgres().ConnectionString());
  EXPECT_EQ(Run("select 1 as a")->rows, 1u);
}

}  // namespace
}  // namespace vorek::odbc
