// Cancels and time-outs, wherever the server stands when they come. Each ends soon, with one error
// that says why, and leaves a connection that is as good as before.

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "odbc/tds/tokens.h"
#include "odbc/tds/wire.h"
#include "vorek/error.h"

namespace vorek::tds {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr long kTimeoutNumber = -2147217871;
constexpr long kCancelledNumber = -2147217842;
constexpr long kConnectionNumber = -2147467259;

// Puts rows until the client asks to stop, and says that it did.
void Stream(PacketStream& out, std::size_t rows_a_second) {
  const std::vector<Column> columns = {{"a", Kind::kInt, 8}, {"t", Kind::kNVarChar, 400}};
  out.Put(ColumnsToken(columns));
  Row row(columns);
  for (std::int64_t i = 0; !out.Attention(); ++i) {
    out.Put(row.Whole(i).Text("سطر شماره").Token());
    if (rows_a_second == 0) continue;
    out.Flush();
    std::this_thread::sleep_for(milliseconds(1000 / rows_a_second));
  }
  out.Put(DoneToken(kDoneAttention));
  out.End();
}

void WaitForAttention(PacketStream& out) {
  out.AwaitAttention();
  out.Put(DoneToken(kDoneAttention));
  out.End();
}

class StopTest : public testing::Test {
 protected:
  StopTest() {
    Script& told = server_.Told();
    told.On("waits", WaitForAttention);
    told.On("streams", [](PacketStream& out) { Stream(out, 0); });
    told.On("drips", [](PacketStream& out) { Stream(out, 4); });
    told.On("rows and silence", [](PacketStream& out) {
      const std::vector<Column> columns = {{"a", Kind::kInt, 8}};
      out.Put(ColumnsToken(columns));
      for (int i = 0; i < 1000; ++i) out.Put(Row(columns).Whole(i).Token());
      out.Put("\xD1\x08half");
      out.Flush();
      out.AwaitAttention();
      out.Put("rest");
      WaitForAttention(out);
    });
    told.On("deaf", [](PacketStream& out) { out.AwaitAttention(), out.AwaitClose(); });
  }

  void ExpectStops(const std::string& text, int timeout_seconds, milliseconds cancel_after,
                   long number, milliseconds most) {
    SCOPED_TRACE(text);
    std::thread other([&] {
      if (cancel_after.count() == 0) return;
      server_.Told().Await(text);
      std::this_thread::sleep_for(cancel_after);
      connection_->Cancel();
    });
    const auto begin = steady_clock::now();
    const Failure failure = FailureOf([&] { connection_->Execute(text, {timeout_seconds, {}}); });
    other.join();
    EXPECT_EQ(failure.number, number) << failure.words;
    EXPECT_LT(steady_clock::now() - begin, most);
  }
  void ExpectUsable() {
    EXPECT_EQ(connection_->Execute("select 5 as a", {})->columns[0].Scaled(0), 5);
  }

  Server server_{InMemory()};
  std::unique_ptr<DatabaseConnection> connection_ = ConnectTo(StringFor(server_));
};

TEST_F(StopTest, CancelsWhereverTheServerStands) {
  for (const char* text : {"waits", "streams", "drips", "rows and silence"}) {
    for (const int after : {1, 50, 300}) {
      ExpectStops(text, 0, milliseconds(after), kCancelledNumber, milliseconds(3000));
      ExpectUsable();
    }
  }
}

TEST_F(StopTest, KeepsTimeOutsWhereverTheServerStands) {
  for (const char* text : {"waits", "streams", "drips", "rows and silence"}) {
    ExpectStops(text, 1, milliseconds(0), kTimeoutNumber, milliseconds(3500));
    ExpectUsable();
  }
}

TEST_F(StopTest, StopsWhatTheDatabaseWorksOn) {
  const std::string endless =
      "with n as (select 1 as a union all select a + 1 from n where a < 2000000000) "
      "select sum(cast(a as bigint)) as s from n option (maxrecursion 0)";
  ExpectStops(endless, 0, milliseconds(200), kCancelledNumber, milliseconds(3000));
  ExpectUsable();
  ExpectStops(endless, 1, milliseconds(0), kTimeoutNumber, milliseconds(3500));
  ExpectUsable();
}

TEST_F(StopTest, LeavesAServerThatDoesntStop) {
  ExpectStops("deaf", 1, milliseconds(0), kTimeoutNumber, milliseconds(8000));
  EXPECT_EQ(FailureOf([&] { connection_->Execute("select 1 as a", {}); }).number,
            kConnectionNumber);
}

TEST_F(StopTest, StopsByWhatItsCallerSaysOfTheRows) {
  const auto begin = steady_clock::now();
  const Failure failure = FailureOf([&] {
    connection_->Execute("streams", {0, [](std::size_t rows) { return rows < 5000; }});
  });
  EXPECT_EQ(failure.number, kCancelledNumber) << failure.words;
  EXPECT_LT(steady_clock::now() - begin, std::chrono::seconds(3));
  ExpectUsable();
}

TEST_F(StopTest, StopsWhenItsCallerThrows) {
  const Failure failure = FailureOf([&] {
    connection_->Execute("streams", {0, [](std::size_t) -> bool { throw Error(51, "enough"); }});
  });
  EXPECT_EQ(failure.words, "enough");
  ExpectUsable();
}

// Cancels a text after as many microseconds. It stops, or goes through; the driver may lose the
// connection where the answer comes just when it is told, which is told as such.
class RacingStopTest : public StopTest {
 protected:
  void Race(const std::string& text, int after) {
    std::thread other([&] {
      std::this_thread::sleep_for(std::chrono::microseconds(after));
      connection_->Cancel();
    });
    const Failure failure = FailureOf([&] { connection_->Execute(text, {}); });
    other.join();
    if (failure.number == kConnectionNumber) return Reconnect();
    EXPECT_TRUE(failure.number == 0 || failure.number == kCancelledNumber) << failure.words;
    ASSERT_EQ(FailureOf([&] { ExpectUsable(); }).number, 0) << after;
  }
  void Reconnect() {
    EXPECT_LE(++lost_, 2);
    connection_ = ConnectTo(StringFor(server_));
  }

  int lost_ = 0;
};

// A cancel that comes when nothing runs, or just before or after an answer, stops nothing else.
TEST_F(RacingStopTest, CancelsNothingThatComesLater) {
  for (int i = 0; i < 200 && !HasFatalFailure(); ++i) Race("select 5 as a", i * 10);
}

// A long text takes a while to be sent: a cancel within that time must not get into it.
TEST_F(RacingStopTest, CancelsWhileATextIsBeingSent) {
  const std::string text = "select 5 as a -- " + std::string(100'000, 'x');
  for (int i = 0; i < 200 && !HasFatalFailure(); ++i) Race(text, i * 20);
}

TEST(ConnectTest, EndsWithinItsTime) {
  for (const Welcome welcome : {Welcome::kSilent, Welcome::kSilentAtLogin}) {
    Server server(InMemory());
    server.Told().Receive(welcome);
    const auto begin = steady_clock::now();
    const Failure failure = FailureOf([&] { ConnectTo(StringFor(server, "Connect Timeout=1")); });
    EXPECT_EQ(failure.number, kConnectionNumber) << failure.words;
    EXPECT_FALSE(failure.words.empty());
    EXPECT_LT(steady_clock::now() - begin, std::chrono::seconds(7));
    server.Told().Receive(Welcome::kProper);
    EXPECT_EQ(FailureOf([&] { ConnectTo(StringFor(server, "Connect Timeout=1")); }).number, 0);
  }
}

TEST(ConnectTest, EndsWhenTheServerTurnsAway) {
  for (const Welcome welcome :
       {Welcome::kCut, Welcome::kCutAtLogin, Welcome::kGarbage, Welcome::kGarbageAtLogin}) {
    Server server(InMemory());
    server.Told().Receive(welcome);
    const auto begin = steady_clock::now();
    const Failure failure = FailureOf([&] { ConnectTo(StringFor(server, "Connect Timeout=2")); });
    EXPECT_EQ(failure.number, kConnectionNumber) << static_cast<int>(welcome);
    EXPECT_FALSE(failure.words.empty());
    EXPECT_LT(steady_clock::now() - begin, std::chrono::seconds(8));
  }
}

}  // namespace
}  // namespace vorek::tds
