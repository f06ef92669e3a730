#include <gtest/gtest.h>

#include "export/crystal_print.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

// Staging tables of 50 columns, of which a row takes texts of 20 letters.
class StagingTest : public testing::Test, public Notices {
 protected:
  StagingTest() {
    process.data.Rebind("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
    std::string columns;
    for (int c = 1; c <= 50; ++c) columns += ", Column" + std::to_string(c) + " nvarchar(20)";
    for (const char* const table : {"tblVorekCrystalReport", "tblVorekCrystalReportHeader"}) {
      Run(std::string("create table ") + table + " (UserID int, ReportID int, Sequence int" +
          columns + ")");
    }
    state.UserID = 5;
    state.ReportID = 7;
    flxMain.SetRows(3);
    flxMain.SetCols(4);
    for (std::int32_t row = 0; row < 3; ++row) {
      for (std::int32_t col = 0; col < 4; ++col) {
        flxMain.WriteCell(row, col, "r" + std::to_string(row) + "c" + std::to_string(col));
      }
    }
  }
  void Run(const std::string& text) { process.dten().rssqlGeneral5.Open(text); }
  // The rows of a table, columns 1 to 4 with "-" for NULL.
  std::string Staged(const std::string& table = "tblVorekCrystalReport") {
    Recordset& slot = process.dten().rssqlGeneral5;
    OpenSlot(slot, "Select * from " + table + " Order by UserID, Sequence");
    std::string all;
    for (; !slot.AtEnd(); slot.MoveNext()) {
      all += slot.Field("UserID").Text() + "/" + slot.Field("ReportID").Text() + "/" +
             slot.Field("Sequence").Text() + ":";
      for (const char* const column : {"Column1", "Column2", "Column3", "Column4"}) {
        all += slot.Field(column).IsNull() ? "-" : slot.Field(column).Text();
        all += ",";
      }
      all += ";";
    }
    slot.Close();
    return all;
  }
  void ShowMessage(const std::string&, const std::string& message) override { told += message; }
  int ShowConfirm(const std::string&, const std::string&) override { return answer; }

  std::string told;
  int answer = 2;
  std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
  Process process{{.providers = {SqliteProvider()},
                   .windows = windows,
                   .clock = std::make_shared<FixedClock>()}};
  ReportState state;
  Grid flxMain{nullptr, "flxMain"};
  Grid flxTranspose{nullptr, "flxTranspose"};
  EvaluationClass evaluation;
  ReportContext report{process, state, flxMain, flxTranspose, *this, evaluation};
};

TEST_F(StagingTest, CountsHiddenColumnsInRowsAndNotInHeaders) {
  Run("insert into tblVorekCrystalReport (UserID, ReportID, Sequence, Column1) values (5, 1, 1, "
      "'old'), (6, 7, 1, 'other')");
  flxMain.SetColWidth(2, 0);
  flxMain.WriteCell(2, 1, "O'x''");
  StageRows(report);
  EXPECT_EQ(Staged(), "5/7/1:r1c1,r1c2,r1c3,,;5/7/2:O'x'',r2c2,r2c3,,;6/7/1:other,-,-,-,;");
  // The columns between the last one written and Cols keep the table's default.
  EXPECT_EQ(Staged("tblVorekCrystalReportHeader"), "5/7/:r0c1,r0c3,-,,;");
}

TEST_F(StagingTest, LeavesOutHiddenRowsWithoutAGap) {
  flxMain.SetRowHeight(1, 0);
  StageRows(report);
  EXPECT_EQ(Staged(), "5/7/1:r2c1,r2c2,r2c3,,;");
}

TEST_F(StagingTest, StagesTheColumnsOnShowOfACrossTable) {
  state.isTransposedResult = true;
  flxTranspose.SetRows(2);
  flxTranspose.SetCols(4);
  for (std::int32_t col = 0; col < 4; ++col) flxTranspose.WriteCell(1, col, std::to_string(col));
  flxTranspose.SetColWidth(1, 0);
  // Without the header's table nothing fails.
  StageRows(report);
  EXPECT_EQ(Staged(), "5/7/1:2,3,-,,;");
}

TEST_F(StagingTest, KeepsTheRowsBeforeOneThatIsRefused) {
  flxMain.SetRows(4);
  flxMain.WriteCell(3, 1, "more than twenty letters");
  EXPECT_THROW(StageRows(report), Error);
  EXPECT_EQ(Staged(), "5/7/1:r1c1,r1c2,r1c3,,;5/7/2:r2c1,r2c2,r2c3,,;");
  Run("Select @@trancount As Open1");
  EXPECT_EQ(process.dten().rssqlGeneral5.Field("Open1").Text(), "0");
  process.dten().rssqlGeneral5.Close();
  flxMain.SetRows(2);
  flxMain.SetCols(52);
  EXPECT_THROW(StageRows(report), Error);
  flxMain.SetCols(51);
  EXPECT_NO_THROW(StageRows(report));
}

// Rows go to the database many at a time.
TEST_F(StagingTest, StagesManyRowsInTheirOrder) {
  flxMain.SetRows(703);
  for (std::int32_t row = 1; row < 703; ++row) flxMain.WriteCell(row, 1, std::to_string(row));
  flxMain.SetRowHeight(400, 0);
  const std::string kCounted =
      "Select '5' UserID, count(*) ReportID, max(Sequence) Sequence, sum(cast(Column1 as int)) "
      "Column1, count(distinct Sequence) Column2, null Column3, null Column4 From "
      "tblVorekCrystalReport Where Sequence = cast(Column1 as int) - iif(Sequence < 400, 0, 1)";
  StageRows(report);
  EXPECT_EQ(Staged("(" + kCounted + ") s"), "5/701/701:246353,701,-,-,;");
  flxMain.WriteCell(650, 1, "more than twenty letters");
  EXPECT_THROW(StageRows(report), Error);
  EXPECT_EQ(Staged("(" + kCounted + ") s"), "5/648/648:210525,648,-,-,;");
}

// Jobs that write down what they are given.
struct WrittenJobs : PrintJobs {
  struct Job : PrintJob {
    explicit Job(WrittenJobs& all) : jobs(all) {}
    void ReportFilePath(const std::string& path) override { jobs.log += path + ";"; }
    void DatabaseConnection(const std::string& text) override { jobs.connection = text; }
    void AddFormula(std::int32_t& index, const std::string& text) override {
      jobs.formulas += std::to_string(index) + " " + text + ";";
      if (text.starts_with("Refused") || text.starts_with("UserID")) {
        throw Error(ErrorNumber::kInvalidCall, text);
      }
    }
    void DataQuery(const std::string& text) override { jobs.log += text + ";"; }
    void OutputTarget(std::int32_t target) override { jobs.end = std::to_string(target); }
    void StartJob(std::int32_t start) override {
      jobs.end += std::to_string(start) + " " + std::to_string(jobs.windows->pointer);
      if (jobs.log.starts_with("bad") && jobs.refuses-- > 0) {
        throw Error(ErrorNumber::kBadTemplate, "bad.rpt");
      }
    }
    WrittenJobs& jobs;
  };
  std::unique_ptr<PrintJob> Make() override { return std::make_unique<Job>(*this); }

  std::string log;
  std::string connection;
  std::string formulas;
  std::string end;
  int refuses = 1;
  std::shared_ptr<ScriptedWindows> windows;
};

TEST_F(StagingTest, GivesTheJobEachFormulaThatItTakes) {
  const auto jobs = std::make_shared<WrittenJobs>();
  jobs->windows = windows;
  process.services.print_jobs = jobs;
  Run("create table tblVorekReportParameter (ReportID int, ParameterID int, Name nvarchar(20))");
  Run("insert into tblVorekReportParameter values (7, 1, 'From'), (7, 2, 'Refused'), (7, 3, "
      "'Quoted'), (7, 4, null), (8, 5, 'Other'), (7, 6, 'Blank')");
  process.main.ParameterValues = {{1, "1403/01/01"}, {2, "x"}, {3, "''"}, {3, "a''b"},
                                  {4, "y"},          {5, "z"}, {6, "  "}, {99, "gone"}};
  process.main.ConnectionText = "Provider=VorekSQLite;Data Source=:memory:";
  process.main.UserFullName = "U";
  process.main.EmployeeFullName = "E";
  process.main.PositionName = "P";
  PrintCrystal(report, "a.rpt");
  std::string parameters;
  for (const char* const formula :
       {"0 From='1403/01/01';", "0 Refused='x';", "0 Quoted='a'b';", "0 ='y';"}) {
    parameters.append(formula).append(formula);
  }
  EXPECT_EQ(jobs->formulas, parameters + "0 UserID=5;1 fmlUserID=5;2 $-1='U';3 $-2='E';4 $-3='P';" +
                                "5 $-4='1405/09/03';6 $-5='10:30:00';");
  EXPECT_EQ(jobs->connection, process.main.ConnectionText);
  EXPECT_EQ(jobs->log,
            "a.rpt;Select * from tblVorekCrystalReport Where UserID = 5 and ReportID=7;");
  EXPECT_EQ(jobs->end, "01 11");  // the hourglass meanwhile
  EXPECT_EQ(windows->pointer, 0);
}

TEST_F(StagingTest, OffersTheListForAFileThatIsNoTemplate) {
  const auto jobs = std::make_shared<WrittenJobs>();
  jobs->windows = windows;
  EXPECT_THROW(PrintCrystal(report, "bad.rpt"), Error);  // a world without prints
  process.services.print_jobs = jobs;
  Run("create view vwVorekCrystalReport_7 as select UserID, ReportID from tblVorekCrystalReport");
  const std::string where = " Where UserID = 5 and ReportID=7;";
  PrintCrystalOrList(report, "bad.rpt", [] { return "list.xml"; });
  EXPECT_EQ(told, "bad.rpt");
  EXPECT_EQ(jobs->log, "bad.rpt;Select * from vwVorekCrystalReport_7" + where);
  jobs->log.clear();
  jobs->refuses = 1;
  answer = 1;
  PrintCrystalOrList(report, "bad.rpt", [] { return "list.xml"; });
  EXPECT_EQ(jobs->log, "bad.rpt;Select * from vwVorekCrystalReport_7" + where +
                           "list.xml;Select * from tblVorekCrystalReport" + where);
}

}  // namespace
}  // namespace vorek
