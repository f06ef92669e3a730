#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "engine/report_control.h"
#include "support/fixed_clock.h"
#include "support/scratch_folder.h"
#include "support/scripted_windows.h"
#include "vorek/report.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

constexpr const char* kMetadata =
    "create table tblVorekReport (ID int, Title nvarchar(50), Notes nvarchar(50), CreateDate "
    "datetime, "
    "SQLQuery nvarchar(max), MakeTree int, MakeTranspose bit, MakeMerge bit, MakeSecure bit, "
    "ShowDiagram bit, FormTypeID int, FontSize int, ReportRowHeight int);"
    "create table tblVorekReportLayout (ReportID int, ColumnNumber int, Alignment smallint, "
    "Width smallint, MergeType int, TransposeType int, MakeSum bit);"
    "create table tblVorekReportTranspose (ReportID int, ColumnNumber int, Alignment smallint, "
    "Width smallint, MergeType int);"
    "create table tblVorekReportExpression (ReportID int, ColumnNumber int, Name nvarchar(50), "
    "GeneralExpression "
    "nvarchar(200), FirstRowExpression nvarchar(200), JustShowPositiveValue bit);"
    "create table tblVorekSystemParameters (ID int, Value int);"
    "create table tblUser (ID int, FullName nvarchar(50), BranchID int);"
    "create table tblEmployee (ID int, FirstName nvarchar(50), SureName nvarchar(50));"
    "create table tblPosition (ID int, Name nvarchar(50));"
    "insert into tblVorekReport values (1, N'یک', null, '2024-03-20', 'select 1 as a', 0, 0, 0, 0, "
    "0, "
    "null, -1, -1)";

class BadInputTest : public testing::Test {
 protected:
  BadInputTest() {
    const auto made = SqliteProvider()->Connect(Connection("good.db") + ";Mode=Create");
    made->Execute(kMetadata, {});
    std::ofstream(folder_.Path("text.db")) << "this is no database, only a text of some length";
    std::ofstream(folder_.Path("cut.db"), std::ios::binary) << "SQLite format 3";
    report.SetUserID(1);
  }

  std::string Connection(const std::string& file) const {
    return "Provider=VorekSQLite;Data Source=" + folder_.Path(file);
  }

  ScratchFolder folder_;
  std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
  World world{{.providers = {SqliteProvider()},
               .windows = windows,
               .clock = std::make_shared<FixedClock>()}};
  VorekReport1 report{world};
};

TEST_F(BadInputTest, TellsWhatIsWrongWithAConnection) {
  const struct {
    std::string connection;
    const char* named;  // stands in the error
  } cases[] = {{Connection("missing.db"), "missing.db"},
               {Connection("text.db"), "text.db"},
               {Connection("cut.db"), "cut.db"},
               {Connection(""), ""},
               {"Provider=VorekSQLite;", ""}};
  for (const auto& c : cases) {
    report.SetOleConnectionString(c.connection);
    try {
      report.View(1);
      ADD_FAILURE() << c.connection;
    } catch (const Error& error) {
      EXPECT_TRUE(error.Is(ErrorNumber::kConnection)) << c.connection << ": " << error.Number();
      EXPECT_NE(error.Description().find(c.named), std::string::npos) << error.Description();
    }
  }
  report.SetOleConnectionString(Connection("good.db"));
  windows->Queue([&](Form& form) { ADD_FAILURE() << form.DetailText(); });
  EXPECT_TRUE(report.View(1));
}

TEST_F(BadInputTest, KeepsItsConnectionWhenAnotherIsRefused) {
  const struct {
    std::string connection;
    ErrorNumber number;
  } cases[] = {{"Data Source=x", ErrorNumber::kInvalidCall},
               {"", ErrorNumber::kInvalidCall},
               {"Provider=VorekSQLyte;Data Source=x", ErrorNumber::kConnection}};
  const std::string good = Connection("good.db");
  report.SetOleConnectionString(good);
  for (const auto& c : cases) {
    try {
      report.SetOleConnectionString(c.connection);
      ADD_FAILURE() << c.connection;
    } catch (const Error& error) {
      EXPECT_TRUE(error.Is(c.number)) << c.connection << ": " << error.Number();
    }
    EXPECT_EQ(report.OleConnectionString(), good);
    EXPECT_EQ(world.State().process.main.ConnectionText, good);
    EXPECT_TRUE(report.View(1)) << c.connection;
  }
}

// A host's store, with one value in it.
class OneValue : public PropertyStore {
 public:
  OneValue(std::string key, std::string value) : key_(std::move(key)), value_(std::move(value)) {}
  std::string ReadProperty(const std::string& key, const std::string& default_value) override {
    return key == key_ ? value_ : default_value;
  }
  void WriteProperty(const std::string& key, const std::string& value,
                     const std::string& /*default_value*/) override {
    if (key == key_) value_ = value;
  }
  const std::string& Value() const { return value_; }

 private:
  std::string key_;
  std::string value_;
};

TEST_F(BadInputTest, RefusesAStoredValueThatItsPropertyCantHold) {
  const struct {
    const char* key;
    const char* value;
    long number;  // 0: it is taken
  } cases[] = {{"Enabled", "maybe", 13},
               {"Enabled", "", 13},
               {"Enable_DbClick", "Ja", 13},
               {"Enabled", "false", 0},
               {"Enabled", "-1", 0},
               {"UserID", "x", 13},
               {"UserID", "99999", 6},
               {"PeriodID", "48", 0},
               {"OleConnectionString", "x", 5},
               {"OleConnectionString", "Provider=Nobody;", -2147467259}};
  for (const auto& c : cases) {
    OneValue store(c.key, c.value);
    long number = 0;
    try {
      report.ReadProperties(store);
    } catch (const Error& error) {
      number = error.Number();
      EXPECT_NE(error.Description().find(c.key), std::string::npos) << error.Description();
    }
    EXPECT_EQ(number, c.number) << c.key << "=" << c.value;
  }
}

TEST_F(BadInputTest, StoresNoPassword) {
  report.SetOleConnectionString(Connection("good.db") + ";Password=s3cret");
  OneValue store("OleConnectionString", "");
  report.WriteProperties(store);
  EXPECT_EQ(store.Value(), Connection("good.db") + ";");
  report.SetOleConnectionString(Connection("good.db") + ";PWD=p;Persist Security Info=True");
  report.WriteProperties(store);
  EXPECT_EQ(store.Value(), report.OleConnectionString());
}

TEST_F(BadInputTest, CancelsTenMillionRows) {
  report.SetOleConnectionString(Connection("good.db"));
  report.SetUseThisQuery(
      "with n(i) as (select 1 union all select i + 1 from n where i < 10000000) "
      "select i, N'متن' as t from n");
  std::string detail;
  windows->Queue([&](Form& form) { detail = form.DetailText(); });
  {
    const std::jthread user([&](const std::stop_token& done) {
      while (!done.stop_requested()) {
        // Behind the first steps, whose failures are the caller's.
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        world.Cancel();
      }
    });
    EXPECT_FALSE(report.View(1));
  }
  EXPECT_EQ(windows->shown.size(), 1U);
  EXPECT_FALSE(detail.empty());
  EXPECT_EQ(report.Rows(), 2);
  report.SetUseThisQuery("");
  EXPECT_TRUE(report.View(1));
  EXPECT_EQ(report.TextMatrix(1, 1), "1");
}

TEST_F(BadInputTest, SurvivesHostileMetadata) {
  report.SetOleConnectionString(Connection("good.db"));
  const auto database = SqliteProvider()->Connect(Connection("good.db"));
  const std::string hostile[] = {
      std::string(200000, '('),
      "select " + std::string(100000, 'x'),
      "select '\xFF\xFE' as \"\xC3\"",
      "'",
      "@",
      "select 1 as [a, 2 as b",
      "/* open",
  };
  for (const std::string& query : hostile) {
    report.SetUseThisQuery(query);
    EXPECT_NO_THROW(report.View(1)) << query.substr(0, 30);
  }
  report.SetUseThisQuery("");
  database->Execute(
      "insert into tblVorekReportLayout values (1, -1, 4, 4, null, 1, 1), (1, 99999, 4, 4, 1, 2, "
      "0), "
      "(1, 1, 32767, -5, 1, 2, 1), (1, null, null, null, null, null, null)",
      {});
  EXPECT_TRUE(report.View(1));
}

}  // namespace
}  // namespace vorek
