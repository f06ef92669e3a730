// Texts that are equal and written otherwise (padded, in other case) meet wherever texts are
// compared: random tables, bare, indexed and with statistics, against plain counting.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/functions.h"
#include "support/scratch_folder.h"
#include "text/collation.h"
#include "text/utf8.h"
#include "vorek/database.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

constexpr int kKeys = 60;

// One of the ways to write the key's text.
std::string Spelling(int key, std::mt19937& random) {
  std::string text = key % 3 == 0 ? "کد" : key % 3 == 1 ? "كد" : "Код";
  text += (random() % 2 == 0 ? "a" : "A") + std::to_string(key) + (random() % 2 == 0 ? "é" : "É");
  if (key % 3 == 2 && random() % 2 == 0) text.replace(0, 6, "КОД");
  return text.append(random() % 3, ' ');
}

struct Row {
  int key;  // -1 for NULL
  int number;
};
using Rows = std::vector<Row>;

class EqualTexts : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    connection_ = Open();
    Run("create table a (id int identity, c char(12), n int)");
    Run("create table b (id int identity, c nvarchar(14), n int)");
    Run("create table d (c varchar(14) not null primary key, n int)");
    Run("create view v as select c, n from b");
    a_ = Fill("a", 300);
    b_ = Fill("b", 200);
    d_ = FillKeys();
    Prepare(GetParam());
  }
  std::unique_ptr<DatabaseConnection> Open() const {
    return SqliteProvider()->Connect("Provider=VorekSQLite;Mode=Create;Data Source=" +
                                     folder_.Path("a.db"));
  }
  ResultSetPtr Run(const std::string& text) { return connection_->Execute(text, {}); }
  long long Number(const std::string& text) {
    const ResultSetPtr rows = Run(text);
    return rows->rows == 1 ? std::atoll(rows->columns[0].Display(0).c_str()) : -1;
  }

  Rows Fill(const std::string& table, int count) {
    Rows rows;
    std::string values;
    for (int i = 0; i < count; ++i) {
      const Row row{static_cast<int>(random_() % (kKeys + 3)) - 1, static_cast<int>(random_() % 4)};
      values += (i == 0 ? "" : ", ") + Written(row);
      rows.push_back(row);
    }
    Run("insert " + table + " (c, n) values " + values);
    return rows;
  }
  Rows FillKeys() {
    Rows rows;
    std::string values;
    for (int key = 0; key < kKeys; key += 2) {
      rows.push_back({key, key});
      values += (key == 0 ? "" : ", ") + Written(rows.back());
    }
    Run("insert d values " + values);
    return rows;
  }
  std::string Written(const Row& row) {
    const std::string text = row.key < 0 ? "NULL" : "N'" + Spelling(row.key, random_) + "'";
    return "(" + text + ", " + std::to_string(row.number) + ")";
  }
  void Prepare(const std::string& how) {
    if (how == "bare") return;
    Run("create index ia on a (c)\ncreate index ib on b (c, n)");
    if (how == "indexed") return;
    connection_.reset();
    sqlite3* db = nullptr;
    sqlite3_open(folder_.Path("a.db").c_str(), &db);
    sqlite::RegisterFunctions(db);
    EXPECT_EQ(sqlite3_exec(db, "ANALYZE", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
    connection_ = Open();
  }

  static std::set<int> Keys(const Rows& rows) {
    std::set<int> keys;
    for (const Row& row : rows) {
      if (row.key >= 0) keys.insert(row.key);
    }
    return keys;
  }
  template <typename Condition>
  static long long Pairs(const Rows& left, const Rows& right, Condition&& holds) {
    long long count = 0;
    for (const Row& x : left) {
      for (const Row& y : right) count += x.key >= 0 && x.key == y.key && holds(x, y) ? 1 : 0;
    }
    return count;
  }
  static long long Pairs(const Rows& left, const Rows& right) {
    return Pairs(left, right, [](const Row&, const Row&) { return true; });
  }
  static long long In(const Rows& rows, const std::set<int>& keys, bool wanted) {
    long long count = 0;
    for (const Row& row : rows) {
      count += row.key >= 0 && (keys.count(row.key) != 0) == wanted ? 1 : 0;
    }
    return count;
  }
  static long long Nulls(const Rows& rows) {
    long long count = 0;
    for (const Row& row : rows) count += row.key < 0 ? 1 : 0;
    return count;
  }

  std::mt19937 random_{20240115};
  ScratchFolder folder_;
  std::unique_ptr<DatabaseConnection> connection_;
  Rows a_;
  Rows b_;
  Rows d_;
};

TEST_P(EqualTexts, MeetInJoins) {
  const long long pairs = Pairs(a_, b_);
  const auto same_number = [](const Row& x, const Row& y) { return x.number == y.number; };
  const long long left_alone = In(a_, Keys(b_), false) + Nulls(a_);
  const long long right_alone = In(b_, Keys(a_), false) + Nulls(b_);
  EXPECT_EQ(Number("select count(*) from a join b on a.c = b.c"), pairs);
  EXPECT_EQ(Number("select count(*) from b, a where b.c = a.c"), pairs);
  EXPECT_EQ(Number("select count(*) from a join v on a.c = v.c"), pairs);
  EXPECT_EQ(Number("select count(*) from a join b on a.c + '' = b.c"), pairs);
  EXPECT_EQ(Number("select count(*) from a join (select c from b) x on x.c = a.c"), pairs);
  EXPECT_EQ(Number("with x as (select c from b) select count(*) from a join x on x.c = a.c"),
            pairs);
  EXPECT_EQ(Number("select count(*) from a join b on a.c = b.c and a.n = b.n"),
            Pairs(a_, b_, same_number));
  EXPECT_EQ(Number("select count(*) from a left join b on a.c = b.c"), pairs + left_alone);
  EXPECT_EQ(Number("select count(*) from a right join b on a.c = b.c"), pairs + right_alone);
  EXPECT_EQ(Number("select count(*) from a full join b on a.c = b.c"),
            pairs + left_alone + right_alone);
  EXPECT_EQ(Number("select count(*) from a join d on d.c = a.c"), Pairs(a_, d_));
  EXPECT_EQ(Number("select count(*) from a left join d on d.c = a.c where d.c is null"),
            In(a_, Keys(d_), false) + Nulls(a_));
}

TEST_P(EqualTexts, MeetInJoinsOfThree) {
  long long count = 0;
  for (const Row& row : d_) {
    const Rows one = {row};
    count += Pairs(a_, one) * Pairs(b_, one);
  }
  EXPECT_EQ(Number("select count(*) from a join b on a.c = b.c join d on d.c = b.c"), count);
  EXPECT_EQ(Number("select count(*) from d join b on d.c = b.c join a on a.c = d.c"), count);
  count = 0;
  for (const Row& x : a_) {
    for (const Row& y : b_) {
      const Rows one = {x};
      if (x.number == y.number) {
        count += Pairs(one, d_, [](const Row&, const Row& key) { return key.number == 10; });
      }
    }
  }
  EXPECT_EQ(
      Number("select count(d.c) from a join b on a.n = b.n left join d on d.c = a.c and d.n = 10"),
      count);
}

TEST_P(EqualTexts, MeetInSubqueriesAndLists) {
  const std::set<int> keys = Keys(b_);
  EXPECT_EQ(Number("select count(*) from a where c in (select c from b)"), In(a_, keys, true));
  EXPECT_EQ(Number("select count(*) from a where exists (select 1 from b where b.c = a.c)"),
            In(a_, keys, true));
  EXPECT_EQ(Number("select count(*) from a where not exists (select 1 from b where b.c = a.c)"),
            In(a_, keys, false) + Nulls(a_));
  EXPECT_EQ(Number("select count(*) from a where c not in (select c from b where c is not null)"),
            In(a_, keys, false));
  EXPECT_EQ(Number("select count(*) from a where c in (N'" + Spelling(3, random_) + "', N'" +
                   Spelling(4, random_) + "', N'" + Spelling(5, random_) + "')"),
            In(a_, {3, 4, 5}, true));
  EXPECT_EQ(Number("select count(*) from a where c = N'" + Spelling(7, random_) + "'"),
            In(a_, {7}, true));
  EXPECT_EQ(Number("select sum((select count(*) from b where b.c = a.c)) from a"), Pairs(a_, b_));
}

TEST_P(EqualTexts, AreOneInSetsAndGroups) {
  const std::set<int> of_a = Keys(a_);
  const std::set<int> of_b = Keys(b_);
  std::set<int> all = of_a;
  all.insert(of_b.begin(), of_b.end());
  long long both = 0;
  for (const int key : of_a) both += of_b.count(key) != 0 ? 1 : 0;
  const auto nulls = [](const Rows& rows) { return Nulls(rows) > 0 ? 1 : 0; };
  const auto size = [](const std::set<int>& keys) { return static_cast<long long>(keys.size()); };
  const auto count = [&](const std::string& query) {
    return Number("select count(*) from (" + query + ") x");
  };
  ASSERT_GT(nulls(a_) + nulls(b_), 1);
  EXPECT_EQ(count("select distinct c from a"), size(of_a) + 1);
  EXPECT_EQ(Number("select count(distinct c) from a"), size(of_a));
  EXPECT_EQ(count("select c from a union select c from b"), size(all) + 1);
  EXPECT_EQ(count("select c from a except select c from b"), size(of_a) - both);
  EXPECT_EQ(count("select c from a intersect select c from b"), both + 1);
  EXPECT_EQ(count("select c from a group by c"), size(of_a) + 1);
  EXPECT_EQ(Number("select count(*) from (select row_number() over (partition by c order by id) n "
                   "from a) x where n = 1"),
            size(of_a) + 1);
  std::map<int, long long> sums;
  for (const Row& row : a_) sums[row.key] += row.number;
  for (const int key : {0, 1, 2, 31}) {
    const std::string text = "N'" + Spelling(key, random_) + "'";
    EXPECT_EQ(Number("select sum(n) from a group by c having c = " + text), sums[key]) << key;
    EXPECT_EQ(Number("select isnull(max(s), 0) from (select c, sum(n) over (partition by c) s from "
                     "a) x where c = " +
                     text),
              sums[key]);
  }
}

TEST_P(EqualTexts, AreOneInUniqueKeys) {
  for (const int key : {0, 2, 4}) {
    EXPECT_THROW(Run("insert d values " + Written({key, 1})), Error);
  }
  Run("create table u (c nvarchar(14))\ncreate unique index iu on u (c)");
  Run("insert u values (N'" + Spelling(8, random_) + "')");
  EXPECT_THROW(Run("insert u values (N'" + Spelling(8, random_) + "')"), Error);
}

// The order letter by letter, as it is told: the fast one must not differ, whatever the bytes.
int PlainOrder(std::string_view a, std::string_view b) {
  while (!a.empty() && a.back() == ' ') a.remove_suffix(1);
  while (!b.empty() && b.back() == ' ') b.remove_suffix(1);
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    const char32_t x = text::LetterOrder(text::ToLower(text::DecodeAt(a, i)));
    const char32_t y = text::LetterOrder(text::ToLower(text::DecodeAt(b, j)));
    if (x != y) return x < y ? -1 : 1;
  }
  return i < a.size() ? 1 : j < b.size() ? -1 : 0;
}

TEST(CompareTextsTest, OrdersAsLetterByLetter) {
  const std::vector<std::string> pieces = {"a", "A", " ",    "ك",    "ک",        "ي",
                                           "ی", "é", "É",    "я",    "Я",        "\u200C",
                                           "😀", "İ", "\xC3", "\xA9", "\xE2\x80", "پ"};
  std::mt19937 random(11);
  const auto append = [&](std::string& text, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) text += pieces[random() % pieces.size()];
  };
  for (int i = 0; i < 200000; ++i) {
    std::string a;
    append(a, random() % 12);
    std::string b = a;
    append(a, random() % 4);
    append(b, random() % 4);
    const int order = sqlite::CompareTexts(a, b);
    ASSERT_EQ((order > 0) - (order < 0), PlainOrder(a, b)) << a << " | " << b;
  }
}

INSTANTIATE_TEST_SUITE_P(Tables, EqualTexts, testing::Values("bare", "indexed", "analysed"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace vorek
