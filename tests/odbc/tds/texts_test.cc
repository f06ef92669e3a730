// Persian texts of every length around the borders of packets, buffers and types.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "odbc/tds/tokens.h"
#include "odbc/tds/wire.h"
#include "vorek/field_type.h"

namespace vorek::tds {
namespace {

// A text of so many UTF-16 units that differs from place to place, with an emoji, two units, at
// each place of `emoji`.
std::string TextOf(std::size_t units, std::size_t emoji_every) {
  static const std::vector<std::string> kLetters = {"ف", "ا", "ك", "ت", "و", "ر", "ي", " ", "x"};
  std::string text;
  for (std::size_t i = 0; i < units;) {
    if (emoji_every > 0 && i % emoji_every == emoji_every - 1 && i + 2 <= units) {
      text += "😀";
      i += 2;
    } else {
      text += kLetters[i % kLetters.size()];
      ++i;
    }
  }
  return text;
}

class TextsTest : public testing::TestWithParam<std::size_t> {
 protected:
  void SetUp() override {
    server_.Told().UsePackets(GetParam());
    connection_ = ConnectTo(StringFor(server_));
  }

  void ExpectArrive(const Column& column, const std::vector<std::string>& texts) {
    server_.Told().On("texts", RowsAnswer({column, {"behind", Kind::kInt, 4}},
                                          [&](const auto& columns, PacketStream& out) {
                                            Row row(columns);
                                            for (const std::string& text : texts) {
                                              out.Put(row.Text(text).Whole(7).Token());
                                            }
                                            out.Put(row.Null().Whole(7).Token());
                                            return texts.size() + 1;
                                          }));
    const ResultSetPtr rows = connection_->Execute("texts", {});
    ASSERT_EQ(rows->rows, texts.size() + 1);
    for (std::size_t i = 0; i < texts.size(); ++i) {
      ASSERT_FALSE(rows->columns[0].IsNull(i)) << ToUtf16(texts[i]).size() / 2 << " units";
      ASSERT_TRUE(rows->columns[0].Text(i) == texts[i])
          << ToUtf16(texts[i]).size() / 2 << " units became "
          << ToUtf16(rows->columns[0].Text(i)).size() / 2;
      ASSERT_EQ(rows->columns[1].Scaled(i), 7);
    }
    EXPECT_TRUE(rows->columns[0].IsNull(texts.size()));
  }

  Server server_{InMemory()};
  std::unique_ptr<DatabaseConnection> connection_;
};

TEST_P(TextsTest, ArriveInBoundColumns) {
  std::vector<std::string> texts;
  for (const std::size_t emoji : Sizes({0, 1, 7, 64})) {
    for (std::size_t units = 0; units <= 300; ++units) texts.push_back(TextOf(units, emoji));
    for (std::size_t units = 3990; units <= 4000; ++units) texts.push_back(TextOf(units, emoji));
  }
  ExpectArrive({"t", Kind::kNVarChar, 8000}, texts);
}

TEST_P(TextsTest, ArriveInColumnsWithoutABound) {
  std::vector<std::string> texts;
  for (const std::size_t emoji : Sizes({0, 1, 2, 127})) {
    for (std::size_t units = 0; units <= 20; ++units) texts.push_back(TextOf(units, emoji));
    for (const std::size_t middle : Sizes({127, 255, 512, 2048, 4000, 8000, 16384, 32767, 65536})) {
      for (std::size_t units = middle - 2; units <= middle + 2; ++units) {
        texts.push_back(TextOf(units, emoji));
      }
    }
    texts.push_back(TextOf(100000, emoji));
  }
  ExpectArrive({"t", Kind::kNVarChar, Column::kMax}, texts);
}

TEST_P(TextsTest, ArriveFromTheCodePage) {
  std::vector<std::string> texts;
  for (const std::size_t units : Sizes({0, 1, 2, 3, 127, 128, 255, 256, 4000, 4001, 7999, 8000})) {
    texts.push_back(TextOf(units, 0));
  }
  ExpectArrive({"t", Kind::kVarChar, 8000}, texts);
  texts.push_back(TextOf(32768, 0));
  texts.push_back(TextOf(100000, 0));
  ExpectArrive({"t", Kind::kVarChar, Column::kMax}, texts);
}

// Signs that drivers read for themselves outside of literals.
TEST_P(TextsTest, ReachTheServerWithTheirSigns) {
  const ResultSetPtr rows = connection_->Execute(
      "/* ? {call x} 'it' */ select N'a?b {d ''2020-01-01''} {fn now()} %s' as [c?d {e}], "
      "'{ts}' as t, N'؟?' as q -- ? {fn} 'it\n where 1 = 1 -- '?'",
      {});
  ASSERT_EQ(rows->rows, 1u);
  EXPECT_EQ(rows->columns[0].Name(), "c?d {e}");
  EXPECT_EQ(rows->columns[0].Text(0), "a?b {d '2020-01-01'} {fn now()} %s");
  EXPECT_EQ(rows->columns[1].Text(0), "{ts}");
  EXPECT_EQ(rows->columns[2].Text(0), "؟?");
}

// A statement of any length reaches the server as it stands.
TEST_P(TextsTest, ReachTheServer) {
  for (const std::size_t emoji : Sizes({0, 3})) {
    for (const std::size_t middle : Sizes({1, 128, 2025, 4000, 32744, 32767})) {
      for (std::size_t units = middle - 1; units <= middle + 1; ++units) {
        const std::string text = TextOf(units, emoji);
        const ResultSetPtr rows = connection_->Execute("select N'" + text + "' as t", {});
        ASSERT_TRUE(rows->columns[0].Text(0) == text) << units << " units";
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(PacketSizes, TextsTest, testing::Values(512, 4096, 8000),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace vorek::tds
