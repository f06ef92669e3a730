// A connection that is cut, or damaged, at every place of a reply: an error, never fewer rows than
// there were, and no wait without an end.

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "odbc/tds/tokens.h"
#include "odbc/tds/wire.h"

namespace vorek::tds {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

constexpr long kConnectionNumber = -2147467259;
constexpr std::size_t kRows = 5;

const std::vector<Column> kColumns = {{"a", Kind::kInt, 8},
                                      {"t", Kind::kNVarChar, 80},
                                      {"m", Kind::kNVarChar, Column::kMax},
                                      {"d", Kind::kDecimal, 0, 20, 2}};

std::string Reply() {
  std::string tokens = ColumnsToken(kColumns);
  for (std::size_t i = 0; i < kRows; ++i) {
    Row row(kColumns, i % 2 == 1);
    row.Whole(static_cast<std::int64_t>(i)).Text("فاكتور");
    tokens += (i == 2 ? row.Null().Null() : row.Text("بلند").Decimal("12.50")).Token();
  }
  return tokens + DoneToken(kDoneCount, kRows);
}

class CutTest : public testing::Test {
 protected:
  CutTest() { Answer(Reply()); }

  void Answer(const std::string& tokens) {
    server_.Told().On("run", [tokens](PacketStream& out) {
      out.Put(tokens);
      out.End();
    });
  }
  Failure Run(DatabaseConnection& connection) {
    const auto begin = steady_clock::now();
    const Failure failure = FailureOf([&] { result_ = connection.Execute("run", {20, {}}); });
    EXPECT_LT(steady_clock::now() - begin, seconds(5));
    return failure;
  }

  Server server_{InMemory()};
  ResultSetPtr result_;
};

void ExpectLost(Server& server, DatabaseConnection& connection) {
  EXPECT_FALSE(connection.IsAlive());
  const Failure next = FailureOf([&] { connection.Execute("select 1 as a", {}); });
  EXPECT_EQ(next.number, kConnectionNumber);
  EXPECT_NE(next.words, "Unknown error");
  EXPECT_EQ(FailureOf([&] { ConnectTo(StringFor(server)); }).number, 0);
}

TEST_F(CutTest, LosesTheConnectionWhereverItIsCut) {
  server_.Told().UsePackets(512);
  constexpr std::size_t kHeader = 8;
  const std::size_t whole = Reply().size() + kHeader;
  for (std::size_t at = 0; at < whole; ++at) {
    SCOPED_TRACE(at);
    const auto connection = ConnectTo(StringFor(server_));
    server_.Told().CutNextReplyAfter(at);
    const Failure failure = Run(*connection);
    ASSERT_EQ(failure.number, kConnectionNumber) << failure.words;
    ASSERT_FALSE(failure.words.empty() || failure.words == "Unknown error") << failure.words;
    if (at % 50 == 0) ExpectLost(server_, *connection);
  }
  const auto connection = ConnectTo(StringFor(server_));
  EXPECT_EQ(Run(*connection).number, 0);
  EXPECT_EQ(result_->rows, kRows);
  EXPECT_TRUE(connection->IsAlive());
}

TEST_F(CutTest, IsNotAliveWhereTheServerSaysNothing) {
  const auto connection = ConnectTo(StringFor(server_));
  EXPECT_TRUE(connection->IsAlive());
  server_.Told().On("select 1", [](PacketStream& out) { out.AwaitClose(); });
  const auto begin = steady_clock::now();
  EXPECT_FALSE(connection->IsAlive());
  EXPECT_LT(steady_clock::now() - begin, seconds(9));
}

TEST_F(CutTest, LosesTheConnectionBetweenPackets) {
  std::string tokens = ColumnsToken({{"a", Kind::kNVarChar, 400}});
  const std::vector<Column> columns = {{"a", Kind::kNVarChar, 400}};
  for (int i = 0; i < 500; ++i) tokens += Row(columns).Text("سطر " + std::to_string(i)).Token();
  Answer(tokens + DoneToken(kDoneCount, 500));
  server_.Told().UsePackets(512);
  for (std::size_t at = 512; at < tokens.size(); at += std::size_t{3} * 512) {
    const auto connection = ConnectTo(StringFor(server_));
    server_.Told().CutNextReplyAfter(at);
    ASSERT_EQ(Run(*connection).number, kConnectionNumber) << at;
  }
}

// A byte that begins no token, wherever a token stands.
TEST_F(CutTest, LosesTheConnectionAtAnUnknownToken) {
  const std::vector<Column> columns = {{"a", Kind::kInt, 8}};
  const std::string description = ColumnsToken(columns);
  const std::string row = Row(columns).Whole(1).Token();
  const std::string places[] = {"", description, description + row, description + row + row};
  for (const std::string& before : places) {
    for (const char* garbage : {"\x13", "\x01\x02\x03", "GARBAGE, AND MORE OF IT THAN A TOKEN"}) {
      Answer(before + garbage + DoneToken(kDoneFinal));
      const auto connection = ConnectTo(StringFor(server_));
      const Failure failure = Run(*connection);
      EXPECT_EQ(failure.number, kConnectionNumber) << before.size() << garbage << failure.words;
    }
  }
}

// Replies that end early, as messages properly. Those within the columns' description are left out:
// an assertion of the driver ends the program there.
TEST_F(CutTest, TakesNoReplyThatEndsTooEarly) {
  const std::string whole = Reply();
  for (std::size_t size = ColumnsToken(kColumns).size(); size < whole.size();
       size += whole.size() / 8) {
    Answer(whole.substr(0, size));
    const auto connection = ConnectTo(StringFor(server_));
    const Failure failure = FailureOf([&] { result_ = connection->Execute("run", {1, {}}); });
    ASSERT_NE(failure.number, 0) << "cut at " << size << ", " << result_->rows << " rows";
  }
}

}  // namespace
}  // namespace vorek::tds
