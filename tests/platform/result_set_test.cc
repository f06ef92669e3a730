#include "vorek/result_set.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "vorek/field_type.h"

namespace vorek {
namespace {

// Numbers of 32 bits with wider ones among them, at the edges of both and of the chunks.
std::vector<std::int64_t> Mixed(std::size_t first_wide, std::size_t rows) {
  std::vector<std::int64_t> numbers;
  for (std::size_t row = 0; row < rows; ++row) {
    const auto small = static_cast<std::int64_t>(row) - 5;
    numbers.push_back(row < first_wide || row % 3 != 0 ? small : INT64_MIN + small + 5);
  }
  numbers.front() = INT32_MIN;
  numbers.back() = INT32_MAX;
  return numbers;
}

TEST(ResultColumn, GivesNumbersBackWhereverTheyGetWide) {
  constexpr std::size_t kRows = 3 * ResultColumn::kChunkRows + 7;
  for (const std::size_t first_wide :
       {std::size_t{0}, std::size_t{10}, ResultColumn::kChunkRows - 1, ResultColumn::kChunkRows,
        ResultColumn::kChunkRows + 1, kRows}) {
    const std::vector<std::int64_t> numbers = Mixed(first_wide, kRows);
    ResultColumn column("n", kBigInt, ResultColumn::Storage::kScaled);
    for (std::size_t row = 0; row < kRows; ++row) {
      if (row % 1000 == 999) {
        column.AppendNull();
      } else {
        column.AppendScaled(numbers[row]);
      }
    }
    for (std::size_t row = 0; row < kRows; ++row) {
      const bool null = row % 1000 == 999;
      ASSERT_EQ(column.IsNull(row), null);
      ASSERT_EQ(column.Scaled(row), null ? 0 : numbers[row]) << first_wide << " " << row;
    }
  }
}

TEST(ResultColumn, KeepsSmallNumbersInFourBytes) {
  ResultColumn narrow("n", kBigInt, ResultColumn::Storage::kScaled);
  ResultColumn wide("n", kBigInt, ResultColumn::Storage::kScaled);
  for (std::int64_t row = 0; row < 100000; ++row) {
    narrow.AppendScaled(INT32_MAX - row);
    wide.AppendScaled(std::int64_t{INT32_MAX} + 1 + row);
  }
  EXPECT_LT(narrow.Memory(), 450000U);
  EXPECT_LT(wide.Memory(), 900000U);
}

}  // namespace
}  // namespace vorek
