#ifndef VOREK_TESTS_DRILL_DRILL_FIXTURE_H_
#define VOREK_TESTS_DRILL_DRILL_FIXTURE_H_

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "drill/drill_host.h"
#include "grid/report_context.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "text/utf8.h"
#include "vorek/sqlite.h"

namespace vorek {

// A report in a database of its own with the metadata of forms and links, and a host that keeps
// what it is asked for.
class DrillFixture : public testing::Test, public DrillHost, public Notices {
 protected:
  DrillFixture() {
    process.data.Rebind("Provider=VorekSQLite;Data Source=:memory:;Mode=Create");
    Run("create table tblVorekReport (ID int, Title nvarchar(50), SQLQuery nvarchar(max), Reserved "
        "nvarchar(max), SQLSP nvarchar(50));"
        "create table tblVorekFormType (ID int, FileName nvarchar(50), IsSystemBuilt bit);"
        "create table tblVorekTable (Name nvarchar(50));"
        "create table tblVorekTableFormRelationship (FormTypeID int, TableName nvarchar(50), "
        "IsMaster int);"
        "create table tblVorekColumn (ID int, TableName nvarchar(50), Name nvarchar(50), "
        "IsPrimaryKey bit, Type nvarchar(20));"
        "create table tblVorekRelatedReports (CallerReportID int, CalledReportID int, "
        "CallerReportColumn nvarchar(50), CallerParameterID nvarchar(9), CalledParameterID int, "
        "ParameterID int, PassingField nvarchar(50), isSecondary bit);"
        "create table tblVorekReportNeedRefresh (UserID int, ReportID int);"
        "create table tblSaleReturn (ID int, SaleInvoiceID int);"
        "insert into tblVorekReport values (7, N'هفت', N'', N'', N''), (8, N'هشت', N'', N'', N'');"
        "insert into tblVorekTable values ('tblA'), ('tblD');"
        "insert into tblVorekTableFormRelationship values (1, 'tblA', 1), (2, 'tblD', 1), "
        "(2, 'tblA', 0);"
        "insert into tblVorekColumn values (1, 'tblA', 'ID', 1, 'int'), (2, 'tblD', 'DocDate', 1, "
        "'int'), (3, 'tblD', 'Code', 1, 'nvarchar'), (4, 'tblD', 'Extra', 0, 'int');"
        "insert into tblVorekFormType values (1, 'comA.comForm.dll', 0), (2, 'x', 1);");
    process.main.GlobalUserID = 5;
    state.ReportID = 7;
    state.QueryRecordCount = 2;
  }

  void Run(const std::string& text) { process.dten().rssqlGeneral5.Open(text); }
  // The query as stored and as run, and the grid that it gives: headers, then rows.
  void Show(const std::string& query, const std::vector<std::vector<std::string>>& rows) {
    Run("update tblVorekReport set SQLQuery = N'" + text::Replace(query, "'", "''") +
        "' where ID = 7");
    state.QuerySource = query;
    state.Forms = {};
    state.FormColumns = {};
    flxMain.SetRows(static_cast<std::int32_t>(rows.size()));
    flxMain.SetCols(static_cast<std::int32_t>(rows[0].size()) + 1);
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (std::size_t col = 0; col < rows[row].size(); ++col) {
        flxMain.WriteCell(static_cast<std::int32_t>(row), static_cast<std::int32_t>(col) + 1,
                          rows[row][col]);
      }
    }
    flxMain.SetRow(1);
    flxMain.SetCol(1);
  }
  // What the host was asked for since the last call.
  std::string Told() { return std::exchange(told_, ""); }

  bool RaiseDblClick() override { return cancels; }
  void RaiseViewCelChange() override { told_ += "record;"; }
  void RaiseInvokeView(std::int32_t form_type, std::string condition, std::string value) override {
    told_ += "view " + std::to_string(form_type) + "|" + condition + "|" + value + ";";
  }
  void RaiseInvokeClearShow(std::int32_t form_type, std::string value) override {
    told_ += "clear " + std::to_string(form_type) + "|" + value + ";";
  }
  void OpenReport(std::int32_t called, std::string parameters, std::string title) override {
    told_ += "open " + std::to_string(called) + "|" + parameters + "|" + title + ";";
    if (on_open) on_open();
  }
  void RunAgain() override { told_ += "again;"; }
  void ShowMessage(const std::string&, const std::string& message) override {
    told_ += "message " + message + ";";
  }
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }

  bool cancels = false;
  std::function<void()> on_open;
  Process process{{.providers = {SqliteProvider()},
                   .windows = std::make_shared<ScriptedWindows>(),
                   .clock = std::make_shared<FixedClock>()}};
  ReportState state;
  Grid flxMain{nullptr, "flxMain"};
  Grid flxTranspose{nullptr, "flxTranspose"};
  EvaluationClass evaluation;
  ReportContext report{process, state, flxMain, flxTranspose, *this, evaluation};

 private:
  std::string told_;
};

}  // namespace vorek

#endif  // VOREK_TESTS_DRILL_DRILL_FIXTURE_H_
