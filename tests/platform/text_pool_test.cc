#include "vorek/text_pool.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorek {
namespace {

// Whichever part of them tells the texts apart: hardly any of them is kept twice.
TEST(TextPool, KeepsTextsThatComeAgainOnce) {
  constexpr int kTexts = 500;
  constexpr int kRounds = 100;
  constexpr std::size_t kMostBytes = std::size_t{1} << 20U;  // of 1.5 to 5 MB
  const struct {
    const char* head;
    const char* tail;
  } shapes[] = {{"", "000000000000000000000000000000"},
                {"فروشگاه شماره ", ""},
                {"كالاي شماره ", " مدل الف از انبار مركزي تهران"}};
  for (const auto& shape : shapes) {
    TextPool pool;
    std::vector<std::uint32_t> places;
    for (int i = 0; i < kTexts * kRounds; ++i) {
      places.push_back(pool.Add(shape.head + std::to_string(i % kTexts) + shape.tail));
    }
    EXPECT_LT(pool.Memory(), kMostBytes) << shape.head;
    for (int i = 0; i < kTexts * kRounds; ++i) {
      ASSERT_EQ(pool.At(places[static_cast<std::size_t>(i)]),
                shape.head + std::to_string(i % kTexts) + shape.tail);
    }
  }
}

}  // namespace
}  // namespace vorek
