#include "text/long_needle.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "text/utf8.h"

namespace vorek::text {
namespace {

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// The rule as it is told: the first place where a letter begins from which on the texts are equal.
LongNeedle::Hit Plainly(std::string_view s, std::string_view needle) {
  for (std::size_t at = 0; at < s.size(); ++at) {
    if (IsContinuation(s[at])) continue;
    for (std::size_t length = 0; at + length <= s.size(); ++length) {
      if (EqualsIgnoreCase(s.substr(at, length), needle)) return {at, length};
    }
  }
  return {std::string_view::npos, 0};
}

std::string Letters(std::mt19937& random, std::size_t most) {
  // Letters of one to three bytes, whose small ones may be longer, and bytes that are none.
  constexpr const char* kLetters[] = {"a", "A", "a", "Ⱥ", "ⱥ", "ك", "b", "\xFF", "\x80", "\uFFFD"};
  std::string text;
  for (std::size_t count = random() % (most + 1); count > 0; --count)
    text += kLetters[random() % 10];
  return text;
}

TEST(LongNeedle, FindsWhatIsFoundLetterByLetter) {
  std::mt19937 random(1);
  int hits = 0;
  for (int i = 0; i < 4000; ++i) {
    const std::string s = Letters(random, 24);
    const std::string needle = Letters(random, 4);
    if (needle.empty()) continue;
    const LongNeedle::Hit hit = LongNeedle(needle).In(s, 0);
    const LongNeedle::Hit wanted = Plainly(s, needle);
    ASSERT_EQ(hit.at, wanted.at) << testing::PrintToString(s) << testing::PrintToString(needle);
    ASSERT_EQ(hit.length, wanted.length) << testing::PrintToString(s);
    if (hit.at != std::string_view::npos) ++hits;
  }
  EXPECT_GT(hits, 400);
}

TEST(LongNeedle, IsWhatALongTextIsLookedForWith) {
  const std::string run(200000, 'a');
  // Letter by letter it would take minutes.
  EXPECT_EQ(FindIgnoreCase(run + run + "B", run + "b"), run.size());
  EXPECT_EQ(FindIgnoreCase(run + run, run + "b"), std::string_view::npos);
  EXPECT_EQ(FindIgnoreCase(run + "b" + run + "b", run + "b", 1), run.size() + 1);
  EXPECT_EQ(ReplaceIgnoreCase(run + run + "x", run, "-"), "--x");
}

}  // namespace
}  // namespace vorek::text
