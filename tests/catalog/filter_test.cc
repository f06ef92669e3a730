#include "catalog/filter.h"

#include <gtest/gtest.h>

#include <random>

#include "catalog/filter_case.h"
#include "platform/memory_database.h"
#include "vorek/error.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

ResultSetPtr Rows() {
  return MakeResult({{"ID", kInteger},
                     {"ParentID", kInteger},
                     {"نام", kVarWChar},
                     {"Price", kCurrency},
                     {"Two Words", kDouble},
                     {"A_2.b", kInteger}},
                    {{"1", std::nullopt, "Ali", "12.5", "1", "5"},
                     {"2", "1", "ali reza", "12.5001", "2.5", "6"},
                     {"3", "1", std::nullopt, "-7", "3", "7"},
                     {"4", "2", "O'Neil", std::nullopt, "0", "8"}});
}

std::string Matching(const std::string& text) {
  const ResultSetPtr rows = Rows();
  const RecordFilter filter(text, *rows);
  std::string ids;
  for (std::size_t row = 0; row < rows->rows; ++row) {
    if (filter.Matches(row)) ids += std::to_string(row + 1);
  }
  return ids;
}

TEST(FilterTest, SelectsRows) {
  const struct {
    const char* text;
    const char* ids;
  } cases[] = {
      {"ID = 2", "2"},
      {"parentid = NULL", "1"},
      {"ParentID <> null", "234"},
      {"[نام] = 'ALI'", "1"},
      {"نام like 'ali*'", "12"},
      {"نام like '%REZA'", "2"},
      {"نام LIKE 'a*e*'", "2"},
      {"نام = 'O''Neil'", "4"},
      {"Price = 12.5", "1"},
      {"Price > 12.5", "2"},
      {"Price < 0 OR ID >= 4", "34"},
      {"ID = 1 OR ParentID = 1 AND ID = 3", "13"},
      {"(ID = 1 OR ParentID = 1) AND ID = 3", "3"},
      {"[Two Words] <= 1", "14"},
      {"ID = 99999999999999999999", ""},
      {"ID = 1.5", ""},
      {"a_2.B = 7", "3"},
      {"ID = '2'", "2"},
      {"ID < 3e0", "12"},
      {"نام = #Ali#", "1"},
      {"A_2.b like '5*' or [Two Words] like '2.*'", "12"},
      {"ID > 1.5 and ID < 99999999999999999999", "234"},
      {"Price > 12.50005", "2"},
      {"Price <> 12.50009", "1234"},
      {"ID = 1\tor ID = 4", "14"},
  };
  for (const auto& c : cases) EXPECT_EQ(Matching(c.text), c.ids) << c.text;
}

TEST(FilterTest, ComparesNumbersToTheirLastPlace) {
  // Doubles are apart by more than a unit there.
  const ResultSetPtr rows = MakeResult({{"Price", kCurrency}},
                                       {{"900000000000000.0001"}, {"900000000000000.0002"}, {"0"}});
  const auto matching = [&](const std::string& text) {
    const RecordFilter filter(text, *rows);
    return std::to_string(filter.Matches(0)) + std::to_string(filter.Matches(1)) +
           std::to_string(filter.Matches(2));
  };
  EXPECT_EQ(matching("Price = 900000000000000.0001"), "100");
  EXPECT_EQ(matching("Price > 900000000000000.0001"), "010");
  EXPECT_EQ(matching("Price = 99999999999999999999"), "000");
  EXPECT_EQ(matching("Price > -99999999999999999999"), "111");
  EXPECT_EQ(matching("Price > 900000000000000.00015"), "010");
  EXPECT_EQ(matching("Price = 9.000000000000000001e14"), "100");
  EXPECT_EQ(matching("Price = 9000000000000000002E-4"), "010");
  EXPECT_EQ(matching("Price > -1e-320"), "111");
  EXPECT_EQ(matching("Price < 1e+300"), "111");
  EXPECT_EQ(matching("Price = 0e999999999"), "001");
}

TEST(FilterTest, SelectsWhatAPlainReadingSelects) {
  std::mt19937 random(1);
  int matches = 0;
  for (int i = 0; i < 20000; ++i) {
    std::vector<std::uint8_t> bytes(random() % 120);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    const FilterCase made(bytes);
    const ResultSetPtr rows = made.Result();
    const RecordFilter filter(made.Text(), *rows);
    for (std::size_t row = 0; row < rows->rows; ++row) {
      ASSERT_EQ(filter.Matches(row), made.Matches()[row]) << made.Text() << " row " << row;
      if (made.Matches()[row]) ++matches;
    }
  }
  EXPECT_GT(matches, 10000);
}

TEST(FilterTest, RefusesWhatItCantRead) {
  for (const char* text : {"",          "ID",       "ID =",       "ID = 'x",    "Nothing = 1",
                           "ID = x",    "[ID = 1",  "ID = 1 AND", "(ID = 1",    "ID = 1)",
                           "ID > NULL", "ID like",  "ID ! 3",     "ID = 1 2",   "ID = 1 orID = 2",
                           "ID = ''",   "ID = nan", "ID < inf",   "ID < 1e999", "ID = +-2",
                           "ID{ = 1",   "ID = -",   "ID = 1e",    "ID < 1e-999"}) {
    EXPECT_THROW(Matching(text), Error) << text;
  }
  EXPECT_THROW(Matching(std::string(5000, '(')), Error);
  EXPECT_EQ(Matching(std::string(100, '(') + "ID = 1" + std::string(100, ')')), Matching("ID = 1"));
  std::string chain = "ID = 1";
  for (int i = 0; i < 100000; ++i) chain += " OR ID = 1";
  EXPECT_THROW(Matching(chain), Error);
}

TEST(FilterTest, KnowsTheTestOfOneKey) {
  const ResultSetPtr rows = Rows();
  RecordFilter::KeyTest test{};
  EXPECT_TRUE(RecordFilter("ParentID = 2", *rows).IsKeyTest(test));
  EXPECT_EQ(test.column, 1U);
  EXPECT_EQ(test.key, 2);
  EXPECT_TRUE(RecordFilter("ID = 0.3e1", *rows).IsKeyTest(test));
  EXPECT_EQ(test.key, 3);
  for (const char* const other : {"ID > 2", "ID = 1 or ID = 2", "ID = 1.5", "ID = NULL",
                                  "ID like '1'", "نام = 'a'", "[Two Words] = 1"}) {
    EXPECT_FALSE(RecordFilter(other, *rows).IsKeyTest(test)) << other;
  }
}

TEST(FilterTest, IndexFindsTheSameRowsAsAScan) {
  std::vector<MemoryRow> rows;
  for (int i = 0; i < 5000; ++i) {
    rows.push_back(
        {i % 7 == 0 ? std::nullopt : std::optional(std::to_string((i * 31) % 101 - 50))});
  }
  const ResultSetPtr result = MakeResult({{"K", kInteger}}, rows);
  const KeyIndex index(result->columns[0]);
  for (int key = -55; key < 55; ++key) {
    const RecordFilter filter("K = " + std::to_string(key), *result);
    std::uint32_t found = index.First(key);
    for (std::uint32_t row = 0; row < rows.size(); ++row) {
      if (!filter.Matches(row)) continue;
      ASSERT_EQ(found, row);
      found = index.Next(found);
    }
    EXPECT_EQ(found, KeyIndex::kNone);
  }
}

}  // namespace
}  // namespace vorek
