#include "vorek/result_set.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "vorek/field_type.h"

namespace vorek {
namespace {

std::string TextOf(int row) {
  switch (row % 5) {
    case 0:
      return "";
    case 1:
      return "تهران";
    case 2:
      return std::string(static_cast<std::size_t>(row % 700), 'x') + std::to_string(row);
    case 3:
      return std::string("with\0zero", 9);
    default:
      return std::to_string(row);
  }
}

TEST(ResultColumn, GivesEachTextAsItWasAdded) {
  ResultColumn column("t", kVarWChar, ResultColumn::Storage::kText);
  constexpr int kRows = 40000;
  for (int row = 0; row < kRows; ++row) {
    if (row % 97 == 0) {
      column.AppendNull();
    } else {
      column.AppendText(TextOf(row));
    }
  }
  column.AppendText(std::string(3000000, 'y'));
  column.AppendText("behind");
  for (int row = 0; row < kRows; ++row) {
    ASSERT_EQ(column.IsNull(static_cast<std::size_t>(row)), row % 97 == 0) << row;
    if (row % 97 != 0) {
      ASSERT_EQ(column.Text(static_cast<std::size_t>(row)), TextOf(row)) << row;
    }
  }
  EXPECT_EQ(column.Text(kRows).size(), 3000000U);
  EXPECT_EQ(column.Text(kRows + 1), "behind");
}

TEST(ResultColumn, KeepsATextThatRepeatsOnce) {
  ResultColumn column("t", kVarWChar, ResultColumn::Storage::kText);
  const std::string text(200, 'x');
  for (int row = 0; row < 100000; ++row) column.AppendText(text);
  EXPECT_LT(column.Memory(), 1000000U);
}

}  // namespace
}  // namespace vorek
