#include "grid/row_ranks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "text/collation.h"

namespace vorek {
namespace {

// Letters of two bytes and more behind beginnings that fill a word of the key, a part, or two.
std::string RandomText(std::mt19937& random) {
  static const std::string kBeginnings[] = {"", "شركت بازرگاني ", "aaaa", "aaaaaaaa",
                                            "aaaaaaaaaaaaaaaa"};
  static const std::string kLetters[] = {"a", "B", "b", "ي", "ی", "ك", "7", "\u200c"};
  std::string text = kBeginnings[random() % 5];
  for (std::size_t length = random() % 6; length > 0; --length) text += kLetters[random() % 8];
  return text;
}

// The plain way: rows moved by their whole keys.
std::vector<std::uint32_t> SortedByKeys(const std::vector<std::string>& texts, bool ignore_case,
                                        bool descending) {
  std::vector<std::uint32_t> rows(texts.size());
  std::iota(rows.begin(), rows.end(), 0U);
  std::stable_sort(rows.begin(), rows.end(), [&](std::uint32_t a, std::uint32_t b) {
    if (descending) std::swap(a, b);
    return text::SortKey(texts[a], ignore_case) < text::SortKey(texts[b], ignore_case);
  });
  return rows;
}

TEST(RowRanks, SortAsWholeKeysDo) {
  for (unsigned seed = 1; seed <= 2000 && !testing::Test::HasFailure(); ++seed) {
    std::mt19937 random(seed);
    std::vector<std::string> texts(random() % 60);
    for (std::string& text : texts) text = RandomText(random);
    RowRanks ranks(texts.size(), seed % 5 == 0);
    for (const std::string& text : texts) ranks.Add(text, seed % 3 != 0);
    const bool ignore_case = seed % 2 == 0;
    const bool descending = seed % 4 < 2;
    EXPECT_EQ(ranks.Sorted(ignore_case, descending, [] {}),
              SortedByKeys(texts, ignore_case, descending))
        << "seed " << seed;
  }
}

// Beyond the sample that shows that nearly every text is its own, equal ones aren't looked for.
TEST(RowRanks, KeepEqualTextsAsTheyCameBehindManyDistinctOnes) {
  std::vector<std::string> texts;
  for (int i = 0; i < 70000; ++i) texts.push_back(std::to_string(i * 7919 % 69997));
  RowRanks ranks(texts.size());
  for (const std::string& text : texts) ranks.Add(text, true);
  EXPECT_EQ(ranks.Sorted(false, false, [] {}), SortedByKeys(texts, false, false));
}

// Few of them are compared, many are dealt out by their digits.
TEST(SortedNumbers, AreInTheirOrderHoweverManyThereAre) {
  for (const std::size_t count : {0U, 7U, 4095U, 4096U, 9000U}) {
    std::mt19937 random(static_cast<unsigned>(count) + 1);
    std::vector<double> numbers(count);
    for (double& number : numbers) {
      const double sign = random() % 2 == 0 ? 1 : -1;
      number = sign * std::ldexp(random() % 5, static_cast<int>(random() % 90) - 45);
    }
    for (const bool descending : {false, true}) {
      std::vector<std::uint32_t> rows(count);
      std::iota(rows.begin(), rows.end(), 0U);
      std::stable_sort(rows.begin(), rows.end(), [&](std::uint32_t a, std::uint32_t b) {
        return descending ? numbers[a] > numbers[b] : numbers[a] < numbers[b];
      });
      EXPECT_EQ(SortedNumbers(numbers, descending), rows) << count << " numbers";
    }
  }
}

}  // namespace
}  // namespace vorek
