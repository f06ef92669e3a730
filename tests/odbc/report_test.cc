// The road of a report from its number to the grid over a real server. It finds what the parts by
// themselves can't: a number of a field's type that the grid's rules don't know, a connection that
// isn't made anew after a failure.

#include "vorek/report.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "odbc/postgres_server.h"
#include "vorek/error.h"
#include "vorek/odbc.h"
#include "vorek/system.h"

namespace vorek::odbc {
namespace {

std::string ReadFile(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

class ReportTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ConnectTo(SharedPostgres().ConnectionString())->Execute(ReadFile("tests/odbc/catalog.sql"), {});
  }

  void SetUp() override {
    report_.SetOleConnectionString(SharedPostgres().ConnectionString());
    report_.SetUserID(1);
    report_.SetPositionID(4);
  }

  WorldOptions Options() {
    WorldOptions options;
    options.providers = {OdbcProvider()};
    options.windows = WindowsOnStream(shown_);
    AddSystemServices(options);
    return options;
  }

  std::string Grid() const {
    std::string text;
    for (std::int32_t row = 0; row < report_.Rows(); ++row) {
      for (std::int32_t col = 0; col < report_.Cols(); ++col) {
        text += (col == 0 ? "" : "|") + report_.TextMatrix(row, col);
      }
      text += '\n';
    }
    return text;
  }

  std::ostringstream shown_;
  World world_{Options()};
  VorekReport1 report_{world_};
};

TEST_F(ReportTest, FillsTheGridByTheTypesOfTheFields) {
  ASSERT_TRUE(report_.View(1)) << shown_.str();
  EXPECT_EQ(report_.Title(), "فاكتورها");
  EXPECT_EQ(Grid(),
            "رديف|مشخصه|تاريخ|مشتري|مبلغ|وزن|زمان\n"
            "1|1|1404/01/05|فروشگاه اميد|1/234/567.5|12.5|02:05\n"
            "2|2|1404/01/06|پخش نور|(1/500)|0.25|00:59\n"
            "3|3|1404/01/07|||0|00:00\n");
  EXPECT_EQ(report_.getflxMain().ColWidth(1), 0);
}

TEST_F(ReportTest, ShowsAPositionItsRows) {
  ASSERT_TRUE(report_.View(2)) << shown_.str();
  EXPECT_EQ(Grid(), "رديف|id|مشتري\n1|1|فروشگاه اميد\n2|3|\n");
  report_.SetPositionID(9);
  ASSERT_TRUE(report_.View(2)) << shown_.str();
  EXPECT_EQ(report_.QueryRecordCount(), 0);
}

TEST_F(ReportTest, FillsInParameters) {
  ASSERT_TRUE(report_.View(5, "@1=2&@2='1404/01/01'")) << shown_.str();
  EXPECT_EQ(Grid(), "رديف|id|customer\n1|2|پخش نور\n");
}

TEST_F(ReportTest, TellsWhatTheServerSays) {
  EXPECT_FALSE(report_.View(3));
  EXPECT_NE(shown_.str().find("relation \"tblnowhere\" does not exist"), std::string::npos)
      << shown_.str();
  EXPECT_FALSE(report_.View(4)) << "no role of the user's may see it";
  EXPECT_TRUE(report_.View(1)) << "the connection is as good as before";
}

TEST_F(ReportTest, RunsAgainOnceTheServerIsBack) {
  std::thread other([] {
    WaitUntilSleeping(SharedPostgres());
    SharedPostgres().Kill();
  });
  // The run ends as a failed one; what View asks afterwards finds the server still gone.
  long number = 0;
  try {
    report_.View(6);
  } catch (const Error& error) {
    number = error.Number();
  }
  other.join();
  EXPECT_EQ(number, -2147467259);
  EXPECT_EQ(report_.Rows(), 2);
  SharedPostgres().Start();
  EXPECT_TRUE(report_.View(1)) << shown_.str();
  EXPECT_EQ(report_.QueryRecordCount(), 3);
}

TEST_F(ReportTest, IsCancelledByTheHost) {
  std::thread other([this] {
    WaitUntilSleeping(SharedPostgres());
    world_.Cancel();
  });
  EXPECT_FALSE(report_.View(6));
  other.join();
  EXPECT_TRUE(report_.View(1)) << shown_.str();
}

}  // namespace
}  // namespace vorek::odbc
