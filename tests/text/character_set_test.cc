#include "text/character_set.h"

#include <gtest/gtest.h>

#include <string>

namespace vorek::text {
namespace {

// At every place of short and long texts, between neighbours that differ by one or by the top bit.
TEST(CharacterSet, FindsItsCharactersWhereverTheyStand) {
  const CharacterSet one("\t");
  const CharacterSet four(",\"\r\n");
  for (std::size_t size = 1; size < 26; ++size) {
    for (std::size_t at = 0; at < size; ++at) {
      for (int c = 0; c < 256; ++c) {
        std::string text(size, 'x');
        text[at] = static_cast<char>(c);
        EXPECT_EQ(one.AnyIn(text), c == '\t') << c << " at " << at << " of " << size;
        EXPECT_EQ(four.AnyIn(text), c == ',' || c == '"' || c == '\r' || c == '\n')
            << c << " at " << at << " of " << size;
      }
    }
  }
  EXPECT_FALSE(four.AnyIn(""));
}

}  // namespace
}  // namespace vorek::text
