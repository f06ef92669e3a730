#include "vorek/connection_string.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "adapters/system/database_option.h"
#include "adapters/system/system_files.h"
#include "platform/connection_secrets.h"
#include "vorek/error.h"

namespace vorek {
namespace {

TEST(ConnectionStringTest, WritesWhatItReads) {
  const std::vector<ConnectionPiece> pieces = {
      {"Provider", "X"},     {"a=b", "plain"},  {"quotes", "a\"b'c"}, {"parts", "x;y=z"},
      {"braces", "{a}b}}c"}, {"blanks", " x "}, {"empty", ""},        {"متن", "كارون"}};
  const auto again = ParseConnectionString(FormatConnectionString(pieces));
  ASSERT_EQ(again.size(), pieces.size());
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    EXPECT_EQ(again[i].key, pieces[i].key);
    EXPECT_EQ(again[i].value, pieces[i].value);
  }
}

TEST(ConnectionSecretsTest, LeavesNoPasswordInWhatIsKept) {
  const char* const cases[] = {
      "Provider=SQLOLEDB;Data Source=h;User ID=u;Password=s3cret",
      "Provider=SQLOLEDB;Data Source=h;PWD = \"a;b s3cret\";User ID=u",
      "Provider=SQLOLEDB;pwd='s3cret''; x';Data Source=h;User ID=u",
      "Provider=SQLOLEDB;PassWord={s3cret;}}Password=x};Data Source=h;User ID=u",
      "Provider=MSDASQL;User ID=u;Data Source=h;Extended Properties=\"DRIVER={a};PWD=s3cret\"",
      "Provider=MSDASQL;User ID=u;Data Source=h;Extended Properties='D={a};Pwd={x;s3cret}'",
      "Provider=x;Data Source=h;User ID=u;Jet OLEDB:Database Password=s3cret",
      "Provider=x;Data Source=h;User ID=u;x='y=1;Extended Properties=\"z=1;PWD=s3cret\"'",
      "Provider=x;Data Source=h;User ID=u;Password=s3cret\"s3cret"};
  for (const char* const text : cases) {
    const std::string kept = WithoutPasswords(text);
    EXPECT_EQ(kept.find("s3cret"), std::string::npos) << text << " -> " << kept;
    const auto pieces = ParseConnectionString(kept);
    EXPECT_EQ(ConnectionValue(pieces, {"Data Source"}), "h") << kept;
    EXPECT_EQ(ConnectionValue(pieces, {"User ID"}), "u") << kept;
    EXPECT_EQ(kept.rfind("Provider=", 0), 0U) << kept;
  }
  const std::string plain = "Provider=VorekSQLite;Data Source='a b.db' ;Mode=ReadOnly";
  EXPECT_EQ(WithoutPasswords(plain), plain);
  EXPECT_EQ(WithoutPasswords("Provider=x;Password=\"s3cret"), "");
}

// A quote within a quote is doubled: thirty of them would be a billion.
TEST(ConnectionSecretsTest, DropsAStringFourStringsDeepWhole) {
  EXPECT_EQ(WithoutPasswords("a=b=c=d=e=f"), "a=b=c=d=e=f");
  EXPECT_EQ(WithoutPasswords("a=b=c=d;x=1"), "a=b=c=d;x=1");
  EXPECT_EQ(WithoutPasswords("x=1;a=b=c=pwd=2"), "x=1;a=\"b=\"\"c=;\"\";\";");
  std::string deep = "x=1;";
  for (int i = 0; i < 60; ++i) deep += "a=";
  EXPECT_EQ(WithoutPasswords(deep + "pwd=s3cret").find("s3cret"), std::string::npos);
  EXPECT_LT(WithoutPasswords(deep + "pwd=s3cret").size(), 100U);
}

TEST(ConnectionSecretsTest, StoresAPasswordOnlyForAHostThatAsks) {
  EXPECT_EQ(StorableConnection("Provider=x;Password=p;"), "Provider=x;");
  EXPECT_EQ(StorableConnection("Provider=x;Persist Security Info=False;Password=p"),
            "Provider=x;Persist Security Info=False;");
  const std::string asked = "Provider=x;Persist Security Info=True;Password=p";
  EXPECT_EQ(StorableConnection(asked), asked);
}

TEST(DatabaseOptionTest, TakesAPasswordFromAFileOrTheEnvironment) {
  const std::string file = testing::TempDir() + "vorek-password";
  SystemFiles().WritePrivate(file, "a;\"b\r\nsecond line");
  ::setenv("VOREK_PASSWORD", "by environment", 1);
  const struct {
    std::string database;
    std::string file;
    std::string password;
  } cases[] = {{"Provider=SQLOLEDB;Data Source=h", file, "a;\"b"},
               {"Provider=SQLOLEDB;Data Source=h;", "", "by environment"},
               {"Provider=SQLOLEDB;Password=own", file, "own"},
               {"Provider=VorekSQLite;Data Source=x", file, ""},
               {"books.db", "", ""}};
  for (const auto& c : cases) {
    const auto pieces = ParseConnectionString(DatabaseOption(c.database, c.file));
    EXPECT_EQ(ConnectionValue(pieces, {"Password"}), c.password) << c.database;
  }
  ::unsetenv("VOREK_PASSWORD");
  EXPECT_EQ(DatabaseOption("Provider=SQLOLEDB;", ""), "Provider=SQLOLEDB;");
  EXPECT_THROW(DatabaseOption("Provider=SQLOLEDB;", "/none"), Error);
  const auto odd = ParseConnectionString(ConnectionStringOf("odd;\"name\" .db"));
  EXPECT_EQ(ConnectionValue(odd, {"Data Source"}), "odd;\"name\" .db");
}

}  // namespace
}  // namespace vorek
