// The road of a report from its number to the grid over the wire, and what a user meets when the
// server goes away and comes back.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "catalog/data_connection.h"
#include "odbc/tds/tokens.h"
#include "odbc/tds/wire.h"
#include "sample/sample_database.h"
#include "vorek/odbc.h"
#include "vorek/report.h"
#include "vorek/system.h"

namespace vorek::tds {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

// A control on a connection, with what it tells its user.
class Shown {
 public:
  explicit Shown(const std::string& connection_string) {
    report_.SetOleConnectionString(connection_string);
    report_.SetUserID(1);
    report_.SetPositionID(1);
    report_.SetPeriodID(1);
  }

  // Whether the report came, its grid, and what was told meanwhile.
  std::string View(std::int32_t id) {
    told_.str("");
    std::string text;
    try {
      text = report_.View(id) ? "shown\n" : "not shown\n";
    } catch (const Error& error) {
      text = std::to_string(error.Number()) + " " + error.Description() + '\n';
    }
    for (std::int32_t row = 0; row < report_.Rows(); ++row) {
      for (std::int32_t col = 0; col < report_.Cols(); ++col) {
        text += (col == 0 ? "" : "|") + report_.TextMatrix(row, col);
      }
      text += '\n';
    }
    return text + told_.str();
  }

  std::string Told() const { return told_.str(); }
  VorekReport1& Report() { return report_; }
  World& Its() { return world_; }

 private:
  WorldOptions Options() {
    WorldOptions options;
    options.providers = {OdbcProvider(), SqliteProvider()};
    options.windows = WindowsOnStream(told_);
    AddSystemServices(options);
    return options;
  }

  std::ostringstream told_;
  World world_{Options()};
  VorekReport1 report_{world_};
};

class ViewTest : public testing::Test {
 protected:
  static constexpr std::int32_t kFlat = 102;  // a report without parameters

  Server server_{{SqliteProvider(), Sample().ConnectionString()}};
  Shown wire_{StringFor(server_, "Connect Timeout=5")};
};

TEST_F(ViewTest, ShowsEveryReportAsTheEmbeddedDatabaseDoes) {
  Shown embedded(Sample().ConnectionString());
  const auto connection = SqliteProvider()->Connect(Sample().ConnectionString());
  const ResultSetPtr reports = connection->Execute("select ID from tblVorekReport order by ID", {});
  std::size_t shown = 0;
  for (std::size_t i = 0; i < reports->rows; ++i) {
    const auto id = static_cast<std::int32_t>(reports->columns[0].Scaled(i));
    const std::string here = embedded.View(id);
    const std::string there = wire_.View(id);
    EXPECT_EQ(there, here) << "report " << id;
    if (there.starts_with("shown\n")) ++shown;
  }
  EXPECT_GT(shown, 50u);
  EXPECT_GT(server_.Told().Batches().size(), 1000u);
}

TEST_F(ViewTest, ConnectsAnewAfterTheServerWasStartedAgain) {
  const std::string before = wire_.View(kFlat);
  ASSERT_TRUE(before.starts_with("shown\n")) << before;
  server_.Stop();
  server_.Start();
  EXPECT_EQ(wire_.View(kFlat), before);
  server_.Stop();
  server_.Start();
  EXPECT_TRUE(wire_.Report().Refresh(false)) << wire_.Told();
  EXPECT_EQ(wire_.View(kFlat), before);
}

TEST_F(ViewTest, TellsThatTheServerIsGone) {
  ASSERT_TRUE(wire_.View(kFlat).starts_with("shown\n"));
  const std::string before = wire_.Told();
  server_.Stop();
  EXPECT_FALSE(wire_.Report().Refresh(false));
  EXPECT_NE(wire_.Told(), before);
  EXPECT_NE(wire_.Told().find("Unable to connect"), std::string::npos) << wire_.Told();
  EXPECT_TRUE(wire_.View(kFlat).starts_with("-2147467259 "));
  server_.Start();
  EXPECT_TRUE(wire_.Report().Refresh(false)) << wire_.Told();
  EXPECT_TRUE(wire_.View(kFlat).starts_with("shown\n"));
}

// Whatever a report is, the user who asks for it anew is told.
TEST_F(ViewTest, TellsInReportsOfAllKindsThatTheServerIsGone) {
  const auto connection = SqliteProvider()->Connect(Sample().ConnectionString());
  const ResultSetPtr reports = connection->Execute("select ID from tblVorekReport order by ID", {});
  constexpr std::size_t kEvery = 6;
  for (std::size_t i = 0; i < reports->rows; i += kEvery) {
    const auto id = static_cast<std::int32_t>(reports->columns[0].Scaled(i));
    if (!wire_.View(id).starts_with("shown\n") || wire_.Report().QueryRecordCount() <= 0) continue;
    const std::string before = wire_.Told();
    server_.Stop();
    EXPECT_FALSE(wire_.Report().Refresh(false)) << id;
    EXPECT_NE(wire_.Told(), before) << id;
    server_.Start();
    EXPECT_TRUE(wire_.Report().Refresh(false)) << id << wire_.Told();
  }
}

TEST_F(ViewTest, IsCancelledWhileItConnects) {
  for (const Welcome welcome : {Welcome::kSilent, Welcome::kSilentAtLogin}) {
    server_.Told().Receive(welcome);
    Shown other(StringFor(server_, "Connect Timeout=30"));
    std::thread canceller([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(400));
      other.Its().Cancel();
    });
    const auto begin = steady_clock::now();
    const std::string shown = other.View(kFlat);
    canceller.join();
    EXPECT_TRUE(shown.starts_with("-2147217842 ")) << shown;
    EXPECT_LT(steady_clock::now() - begin, seconds(3));
    // Nobody waits for the connect that was left behind.
    server_.Told().Receive(Welcome::kProper);
    EXPECT_TRUE(other.View(kFlat).starts_with("shown\n"));
    EXPECT_LT(steady_clock::now() - begin, seconds(6));
  }
}

TEST_F(ViewTest, EndsWhenTheConnectionIsCutInARun) {
  ASSERT_TRUE(wire_.View(kFlat).starts_with("shown\n"));
  wire_.Report().SetUseThisQuery("select 'cut here' as a");
  server_.Told().On("select 'cut here' as a", [](PacketStream& out) { out.Cut(); });
  const std::string shown = wire_.View(kFlat);
  EXPECT_FALSE(shown.starts_with("shown\n")) << shown;
  wire_.Report().SetUseThisQuery("");
  EXPECT_TRUE(wire_.View(kFlat).starts_with("shown\n"));
}

// It may have changed something before the connection went.
TEST_F(ViewTest, RunsNoStatementTwice) {
  const ProviderList providers = {OdbcProvider()};
  RunningStatement running;
  OpenConnections open;
  DataConnection connection(providers, running, open);
  connection.SetProvider("SQLOLEDB");
  connection.SetConnectionString(StringFor(server_));
  connection.Execute("select 1 as a", 30);
  const std::string change = "update tblNowhere set a = 1";
  server_.Told().On(change, [](PacketStream& out) { out.Cut(); });
  EXPECT_THROW(connection.Execute(change, 30), Error);
  EXPECT_EQ(connection.Execute("select 2 as a", 30)->columns[0].Scaled(0), 2);
  const std::vector<std::string> batches = server_.Told().Batches();
  EXPECT_EQ(std::count(batches.begin(), batches.end(), change), 1);
}

}  // namespace
}  // namespace vorek::tds
