#include "adapters/odbc/connection_text.h"

#include <gtest/gtest.h>

#include "adapters/odbc/diagnostics.h"
#include "adapters/odbc/value_text.h"
#include "adapters/odbc/wide_text.h"
#include "vorek/connection_string.h"
#include "vorek/error.h"

namespace vorek::odbc {
namespace {

const std::vector<std::string> kBoth = {"FreeTDS", "ODBC Driver 17 for SQL Server",
                                        "ODBC Driver 18 for SQL Server", "SQLite3"};
const std::vector<std::string> kFreeTds = {"SQLite3", "FreeTDS"};

TEST(ConnectionTextTest, TurnsTheStringsOfHostsIntoThoseOfTheDriver) {
  struct Case {
    const char* text;
    const std::vector<std::string>& installed;
    const char* expected;
  };
  const Case cases[] = {
      {"Provider=SQLOLEDB.1;Data Source=db1;Initial Catalog=books;User ID=sa;Password=secret",
       kFreeTds,
       "DRIVER=FreeTDS;SERVER=db1;PORT=1433;TDS_Version=7.4;ClientCharset=UTF-8;DATABASE=books;"
       "UID=sa;PWD=secret;"},
      {"Provider=MSOLEDBSQL;Server=tcp:db1, 1500;Database=books;UID=sa;PWD=x;Use Encryption for "
       "Data=True;Application Name=Sales",
       kFreeTds,
       "DRIVER=FreeTDS;SERVER=db1;PORT=1500;TDS_Version=7.4;ClientCharset=UTF-8;"
       "Encryption=require;DATABASE=books;UID=sa;PWD=x;APP=Sales;"},
      {"Provider=SQLNCLI11;Data Source=db1\\books;User ID=sa;Password=x", kFreeTds,
       "DRIVER=FreeTDS;SERVER=db1\\books;TDS_Version=7.4;ClientCharset=UTF-8;UID=sa;PWD=x;"},
      {"Provider=SQLNCLI11;Data Source=(local)\\e,1500;Integrated Security=SSPI", kBoth,
       "DRIVER=ODBC Driver 18 for SQL Server;SERVER={(local)\\e,1500};Trusted_Connection=yes;"
       "Encrypt=no;"},
      {"Provider=SQLOLEDB;Data Source=.;Encrypt=yes;Trust Server Certificate=yes;"
       "Driver={ODBC Driver 17 for SQL Server};Persist Security Info=False",
       kBoth,
       "DRIVER=ODBC Driver 17 for SQL Server;SERVER=localhost;Encrypt=yes;"
       "TrustServerCertificate=yes;"},
      // Quotes of both kinds, and characters that an ODBC string has to put in braces.
      {"Provider=SQLOLEDB;Data Source=db1;User ID='o''hara';Password=\"a;b\"\"c}d\"", kFreeTds,
       "DRIVER=FreeTDS;SERVER=db1;PORT=1433;TDS_Version=7.4;ClientCharset=UTF-8;UID={o'hara};"
       "PWD={a;b\"c}d};"},
      {"Provider=MSOLEDBSQL;Server=db1;Database=b;UID=u;Password=a}b%+", kBoth,
       "DRIVER=ODBC Driver 18 for SQL Server;SERVER=db1;Encrypt=no;DATABASE=b;UID=u;"
       "PWD={a}}b%+};"},
      {"Provider=MSDASQL;DSN=books;User ID=u;Password={p;}}w}", kFreeTds,
       "DSN=books;UID=u;PWD={p;}}w};"},
      {"Provider=MSDASQL.1;Extended Properties=\"Driver={SQLite3};Database=a b.db\"", kFreeTds,
       "Driver={SQLite3};Database=a b.db"},
      {"Provider=MSDASQL;Driver={PostgreSQL Unicode};Servername=h;BoolsAsChar=0", kFreeTds,
       "Driver=PostgreSQL Unicode;Servername=h;BoolsAsChar=0;"},
      {"Provider=MSDASQL;Driver={PostgreSQL Unicode};Servername=h;User ID=a%41;Password=a+b",
       kFreeTds, "Driver=PostgreSQL Unicode;Servername=h;UID=a%41;PWD={a+b};"},
  };
  for (const Case& c : cases) EXPECT_EQ(ToOdbc(c.text, c.installed).odbc, c.expected) << c.text;
}

TEST(ConnectionTextTest, KeepsThePasswordApart) {
  EXPECT_EQ(ToOdbc("Provider=SQLOLEDB;Data Source=d;Password=s3cret", kFreeTds).password, "s3cret");
  EXPECT_EQ(ToOdbc("Provider=MSDASQL;Extended Properties='DSN=d;PWD={s;3}'", {}).password, "s;3");
  EXPECT_EQ(WithoutPassword("Login failed for sa/s3cret", "s3cret"), "Login failed for sa/***");
  EXPECT_EQ(WithoutPassword("a cat", "a"), "a cat");
}

TEST(ConnectionTextTest, RefusesWhatNoDriverCanDo) {
  const auto number_of = [](const char* text, const std::vector<std::string>& installed) {
    try {
      ToOdbc(text, installed);
    } catch (const Error& error) {
      EXPECT_EQ(error.Description().find("s3cret"), std::string::npos);
      return error.Number();
    }
    return 0L;
  };
  constexpr long kRefused = -2147467259;
  EXPECT_EQ(number_of("Provider=SQLOLEDB;Data Source=d", {"SQLite3"}), kRefused);
  EXPECT_EQ(number_of("Provider=SQLOLEDB;Data Source=d;Integrated Security=SSPI", kFreeTds),
            kRefused);
  EXPECT_EQ(number_of("Provider=SQLOLEDB;Data Source=d;Password='s3cret", kFreeTds), kRefused);
  EXPECT_EQ(number_of("Provider=SQLOLEDB;Data Source=d;Password='s3cret};x'", kFreeTds), kRefused);
  EXPECT_EQ(number_of("Provider=SQLOLEDB;Data Source=d;Password='s3cret};x'", kBoth), 0);
  const std::string endless = "Provider=SQLOLEDB;Data Source=d;APP=" + std::string(40000, 'x');
  EXPECT_EQ(number_of(endless.c_str(), kFreeTds), kRefused);
}

TEST(ConnectionTextTest, AnswersToTheNamesOfSqlServersProviders) {
  for (const char* name : {"SQLOLEDB", "sqloledb.1", "MSOLEDBSQL", "MSOLEDBSQL19", "SQLNCLI11.1"}) {
    EXPECT_TRUE(IsSqlServerProvider(name)) << name;
  }
  for (const char* name : {"", "SQLOLEDBX", "VorekSQLite", "MSDASQL"}) {
    EXPECT_FALSE(IsSqlServerProvider(name)) << name;
  }
}

TEST(ConnectionStringTest, ReadsPiecesAsTheyStand) {
  const auto pieces = ParseConnectionString(" a = b ;; no piece ;c==d=1;e=' x ';f={y}};z};g=");
  ASSERT_EQ(pieces.size(), 5u);
  EXPECT_EQ(pieces[0].key + "|" + pieces[0].value, "a|b");
  EXPECT_EQ(pieces[1].key + "|" + pieces[1].value, "c=d|1");
  EXPECT_EQ(pieces[2].value, " x ");
  EXPECT_EQ(pieces[3].value, "y};z");
  EXPECT_EQ(pieces[4].key + "|" + pieces[4].value, "g|");
  EXPECT_EQ(ConnectionValue(pieces, {"none", "A"}), "b");
}

TEST(DiagnosticsTest, GivesTheServersOwnWords) {
  EXPECT_EQ(ServerWords("[Microsoft][ODBC Driver 17 for SQL Server][SQL Server]Invalid [x]."),
            "Invalid [x].");
  EXPECT_EQ(ServerWords("ERROR: no [x];\nError while executing the query"), "ERROR: no [x]");
  EXPECT_EQ(ServerWords("[half"), "[half");
}

TEST(DiagnosticsTest, KnowsAdosNumbers) {
  EXPECT_EQ(NumberOfState("08S01"), -2147467259);
  EXPECT_EQ(NumberOfState("HYT00"), -2147217871);
  EXPECT_EQ(NumberOfState("42S02"), -2147217865);
  EXPECT_EQ(NumberOfState("42000"), -2147217900);
  EXPECT_EQ(NumberOfState("22012"), -2147217900);  // a division by zero
  EXPECT_EQ(NumberOfState("23505"), -2147217873);
}

TEST(ValueTextTest, ScalesDecimalsExactly) {
  struct Case {
    const char* text;
    int scale;
    std::optional<std::int64_t> expected;
  };
  const Case cases[] = {
      {"12.50", 2, 1250},
      {"-12.5", 4, -125000},
      {"12", 0, 12},
      {".5", 2, 50},
      {"$1,234.5000", 4, 12345000},
      {"0.1000", 1, 1},  // zeros behind the scale are nothing lost
      {"0.15", 1, std::nullopt},
      {"922337203685477.5807", 4, INT64_MAX},
      {"-922337203685477.5808", 4, INT64_MIN},
      {"922337203685477.5808", 4, std::nullopt},
      {"92233720368547758070", 0, std::nullopt},
      {"NaN", 2, std::nullopt},
      {"", 2, std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(ScaledOf(c.text, c.scale), c.expected) << c.text;
}

TEST(WideTextTest, GoesThereAndBack) {
  for (const std::string text : {"", "abc", "فاكتور", "😀 و 😀", "é"}) {
    const std::vector<SQLWCHAR> wide = ToWide(text);
    std::string back;
    AppendUtf8(wide.data(), wide.size(), back);
    EXPECT_EQ(back, text);
  }
  const SQLWCHAR halves[] = {0xD83D, 'a', 0xDE00};
  std::string text;
  AppendUtf8(halves, 3, text);
  EXPECT_EQ(text, "\uFFFDa\uFFFD");
}

}  // namespace
}  // namespace vorek::odbc
