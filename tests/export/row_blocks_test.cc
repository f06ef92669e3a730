#include "export/row_blocks.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/memory_files.h"
#include "support/random_report.h"
#include "vorek/error.h"

namespace vorek {
namespace {

class RowBlocksTest : public testing::Test {
 protected:
  void Write(RowRange rows, const RowsMaker& make) {
    ReportContext report = random_.Context();
    LongWork work(report, rows.end);
    const auto out = files_.Create("made");
    WriteInBlocks(rows, *out, work, make);
    out->Commit();
  }

  RandomReport random_{1};
  MemoryFiles files_;
};

TEST_F(RowBlocksTest, WritesEachRowOnceInOrder) {
  for (const RowRange rows : {RowRange{0, 0}, RowRange{1, 2}, RowRange{0, 2048}, RowRange{1, 2050},
                              RowRange{3, 60'000}}) {
    std::string expected;
    for (std::int32_t row = rows.first; row < rows.end; ++row) {
      expected += std::to_string(row) + "\n";
    }
    Write(rows, [](RowRange block, std::string& text) {
      for (std::int32_t row = block.first; row < block.end; ++row) {
        text += std::to_string(row) + "\n";
      }
    });
    EXPECT_EQ(files_.contents["made"], expected) << rows.first << " to " << rows.end;
  }
}

// Whichever thread meets it, and whatever the other one is about.
TEST_F(RowBlocksTest, AFailureOfTheMakerEndsBothThreads) {
  files_.contents["made"] = "old";
  for (std::int32_t bad = 0; bad < 50'000; bad += 1'111) {
    try {
      Write({0, 50'000}, [bad](RowRange block, std::string&) {
        if (block.first <= bad && bad < block.end) throw Error(ErrorNumber::kOverflow, "row");
      });
      ADD_FAILURE() << bad;
    } catch (const Error& error) {
      EXPECT_TRUE(error.Is(ErrorNumber::kOverflow));
    }
    EXPECT_EQ(files_.contents["made"], "old") << bad;
  }
}

}  // namespace
}  // namespace vorek
