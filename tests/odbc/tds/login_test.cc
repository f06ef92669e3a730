// Names and passwords with the letters that connection strings treat specially.

#include <gtest/gtest.h>

#include <string>

#include "odbc/tds/wire.h"
#include "text/utf8.h"
#include "vorek/connection_string.h"

namespace vorek::tds {
namespace {

TEST(LoginTest, SendsNamesAndPasswordsAsTheyAre) {
  Server server(InMemory());
  const std::string cases[] = {
      "secret",  "100%",    "%41%25", "a+b",         "a b",          "a;b",
      "{a",      "a}",      "a}}b",   "{a}",         "{a}b",         "{{}}",
      "'",       "a'b\"c",  "=",      "a=b;PWD=c",   "گذرواژه",      "ي+ك%20;{}'",
      " before", "behind ", "  ",     "\"quoted\"",  "'quoted'",     "[a](b),c?*!@",
      "\\",      "a\\;b",   "😀",      "}",           "{}",           "}} ;",
      "a\tb",    "#",       "&<>",    "کي‌ها", "p@ss:w/o?rd#", "$(x)`y`"};
  for (const std::string& text : cases) {
    // A backslash in a user's name parts it from its domain.
    const std::string user = text::Replace(text, "\\", "/");
    const std::string connection_string =
        FormatConnectionString({{"Provider", "SQLOLEDB"},
                                {"Driver", "FreeTDS"},
                                {"Data Source", "127.0.0.1," + std::to_string(server.Port())},
                                {"Initial Catalog", "books"},
                                {"User ID", user},
                                {"Password", text}});
    const Failure failure = FailureOf([&] { ConnectTo(connection_string); });
    ASSERT_EQ(failure.number, 0) << text << ": " << failure.words;
    const Login login = server.Told().Logins().back();
    EXPECT_EQ(login.password, text);
    EXPECT_EQ(login.user, user);
    EXPECT_EQ(login.database, "books");
  }
}

TEST(LoginTest, SendsLongPasswords) {
  Server server(InMemory());
  for (const std::size_t letters : Sizes({1, 30, 31, 32, 64, 127, 128})) {
    std::string text;
    for (std::size_t i = 0; i < letters; ++i) text += i % 3 == 0 ? "ر" : "z";
    ConnectTo("Provider=SQLOLEDB;Driver=FreeTDS;Data Source=127.0.0.1," +
              std::to_string(server.Port()) + ";User ID=u;Password=" + text);
    EXPECT_EQ(server.Told().Logins().back().password, text) << letters;
  }
}

// The password isn't sent in clear to a server that can't do what was asked for.
TEST(LoginTest, SendsNothingWithoutTheEncryptionAskedFor) {
  Server server(InMemory());
  EXPECT_EQ(FailureOf([&] { ConnectTo(StringFor(server, "Encrypt=yes")); }).number, -2147467259);
  EXPECT_TRUE(server.Told().Logins().empty());
}

TEST(LoginTest, TellsARefusalWithoutThePassword) {
  Server server(InMemory());
  server.Told().Receive(Welcome::kRefused);
  const Failure failure = FailureOf([&] { ConnectTo(StringFor(server)); });
  EXPECT_EQ(failure.number, -2147467259);
  EXPECT_EQ(failure.words, "Login failed for user 'vorek'.");
}

}  // namespace
}  // namespace vorek::tds
