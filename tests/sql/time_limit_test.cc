#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "vorek/database.h"
#include "vorek/error.h"
#include "vorek/sqlite.h"

// What one call of a function does for long ends with the time limit and with a cancel.
namespace vorek {
namespace {

// A text of so many letters, and a pattern that nearly fits at each of them.
std::string Letters(int letters) {
  return "replicate(cast(N'a' as nvarchar(max)), " + std::to_string(letters) + ")";
}
std::string NearlyFits() { return "(N'%' + " + Letters(4000) + " + N'b%')"; }

struct Long {
  const char* name;
  std::string text;
};
std::vector<Long> LongOnes() {
  return {
      {"patindex", "select patindex(" + NearlyFits() + ", " + Letters(400000) + ")"},
      {"like", "select 1 where " + Letters(400000) + " like " + NearlyFits()},
      {"not like", "select 1 where " + Letters(400000) + " not like " + NearlyFits()},
      {"many", "declare @s nvarchar(max), @n int\nset @s = " + Letters(4000000) +
                   "\n;with a(n) as (select 1 union all select n + 1 from a where n < 100000)\n"
                   "select @n = sum(len(reverse(upper(@s + cast(n as nvarchar(9)))))) from a"},
  };
}

class TimeLimitTest : public testing::Test {
 protected:
  // The number of the error that the text ends with, 0 for none.
  long RunFor(const std::string& text, int timeout) {
    ExecuteOptions options;
    options.timeout_seconds = timeout;
    const auto begin = std::chrono::steady_clock::now();
    long number = 0;
    try {
      connection_->Execute(text, options);
    } catch (const Error& error) {
      number = error.Number();
    }
    took_ = std::chrono::steady_clock::now() - begin;
    return number;
  }
  void ExpectUsable() {
    const ResultSetPtr rows = connection_->Execute("select patindex(N'%c%', N'abc')", {});
    EXPECT_EQ(rows->columns[0].Display(0), "3");
  }

  std::unique_ptr<DatabaseConnection> connection_ =
      SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
  std::chrono::duration<double> took_{};
};

TEST_F(TimeLimitTest, ReachesInsideAFunction) {
  for (const Long& one : LongOnes()) {
    EXPECT_EQ(RunFor(one.text, 1), static_cast<long>(ErrorNumber::kTimeout)) << one.name;
    EXPECT_LT(took_.count(), 5.0) << one.name;
    ExpectUsable();
  }
}

TEST_F(TimeLimitTest, ACancelReachesThereToo) {
  for (const Long& one : LongOnes()) {
    const std::jthread user([this] {
      std::this_thread::sleep_for(std::chrono::milliseconds(300));
      connection_->Cancel();
    });
    EXPECT_EQ(RunFor(one.text, 60), static_cast<long>(ErrorNumber::kCancelled)) << one.name;
    EXPECT_LT(took_.count(), 5.0) << one.name;
    ExpectUsable();
  }
}

std::string Times(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

TEST_F(TimeLimitTest, HoldsForTheTranslation) {
  connection_->Execute("create view v0 as select 1 as a", {});
  for (int i = 1; i < 9; ++i) {
    const std::string below = "v" + std::to_string(i - 1);
    connection_->Execute("create view v" + std::to_string(i) + " as select x.a from " + below +
                             " x join " + below + " y on x.a = y.a",
                         {});
  }
  const Long texts[] = {
      {"statements", Times(300000, "select 1\n")},
      {"blocks", Times(60000, "if 1 = 1 begin declare @a int set @a = 1 end\n")},
      {"list", "select 1 where 1 in (1" + Times(1000000, ", 2") + ")"},
      {"columns", "select 1" + Times(300000, ", 2")},
      {"unions", "select 1" + Times(60000, " union all select 1")},
      {"text", "select '" + Times(3000000, "x''") + "'"},
      {"brackets", Times(100000, "(") + "select 1"},
      {"comments", Times(1000000, "/*") + "select 1"},
      {"case", "select case 1" + Times(200000, " when 2 then 3") + " end"},
      {"views", "select count(*) from v8"},
  };
  for (const Long& one : texts) {
    RunFor(one.text, 1);
    EXPECT_LT(took_.count(), 5.0) << one.name;
    ExpectUsable();
  }
}

TEST_F(TimeLimitTest, SearchesGrowWithTheTextAlone) {
  const std::string run = Letters(400000);
  const std::string needle = Letters(200000) + " + N'b'";
  EXPECT_EQ(RunFor("select charindex(" + needle + ", " + run + ")", 20), 0);
  EXPECT_EQ(RunFor("select replace(" + run + ", " + needle + ", N'')", 20), 0);
  EXPECT_EQ(RunFor("select patindex(N'%b', " + run + "), patindex(N'%[^a]%', " + run + ")", 20), 0);
}

// Patterns by their rule, one way after another: a letter fits itself, _ any, [ab] one of both,
// [^a] any other, % any run.
bool Fits(std::string_view pattern, std::string_view s) {
  if (pattern.empty()) return s.empty();
  if (pattern[0] == '%') {
    return Fits(pattern.substr(1), s) || (!s.empty() && Fits(pattern, s.substr(1)));
  }
  if (s.empty()) return false;
  const bool set = pattern[0] == '[';
  const std::size_t length = set ? pattern.find(']') + 1 : 1;
  const bool fits = !set                ? pattern[0] == '_' || pattern[0] == s[0]
                    : pattern[1] == '^' ? s[0] != pattern[2]
                                        : s[0] == pattern[1] || s[0] == pattern[2];
  return fits && Fits(pattern.substr(length), s.substr(1));
}

// The first letter from which on the pattern fits; one behind the last stands for an empty rest.
std::size_t PatIndex(std::string_view pattern, std::string_view s) {
  const bool open = !pattern.empty() && pattern[0] == '%';
  if (!open) return Fits(pattern, s) ? 1 : 0;
  for (std::size_t at = 0; at <= s.size(); ++at) {
    if (Fits(pattern.substr(1), s.substr(at))) return at + 1;
  }
  return 0;
}

TEST_F(TimeLimitTest, PatternsFitAsTheirRuleTells) {
  std::mt19937 random(1);
  const auto make = [&](std::vector<const char*> pieces, std::size_t most) {
    std::string text;
    for (std::size_t i = random() % (most + 1); i > 0; --i)
      text += pieces[random() % pieces.size()];
    return text;
  };
  for (int i = 0; i < 4000; ++i) {
    const std::string s = make({"a", "b", "a", "c"}, 9);
    const std::string pattern =
        (random() % 2 == 0 ? "%" : "") + make({"a", "b", "%", "_", "[ab]", "[^a]", "[bc]"}, 5);
    const ResultSetPtr row =
        connection_->Execute("select patindex('" + pattern + "', '" + s + "'), case when '" + s +
                                 "' like '" + pattern + "' then 1 else 0 end",
                             {});
    ASSERT_EQ(row->columns[0].Display(0), std::to_string(PatIndex(pattern, s)))
        << pattern << " " << s;
    ASSERT_EQ(row->columns[1].Display(0), Fits(pattern, s) ? "1" : "0") << pattern << " " << s;
  }
}

}  // namespace
}  // namespace vorek
