#ifndef VOREK_TESTS_PARAMETERS_PARAMETER_FIXTURE_H_
#define VOREK_TESTS_PARAMETERS_PARAMETER_FIXTURE_H_

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "parameters/form_ask_user.h"
#include "parameters/vorek_parameters.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/sqlite.h"

namespace vorek {

class RecordedMessages : public Notices {
 public:
  void ShowMessage(const std::string& title, const std::string& message) override {
    texts.push_back(title + "|" + message);
  }
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }
  std::vector<std::string> texts;
};

// A catalogue with report 7 in an embedded database in memory, and a panel over it. A character is
// 96 twips wide there.
class ParameterTest : public testing::Test {
 protected:
  ParameterTest() {
    process.main.ConnectionText = "Provider=VorekSQLite;Data Source=:memory:;Mode=Create";
    process.data.Rebind(process.main.ConnectionText);
    Run("create table tblVorekReport (ID int primary key, Cols int)");
    Run("insert into tblVorekReport values (7, 1)");
    Run("create table tblVorekReportParameter (ReportID int, ParameterID int, Sequence int, "
        "Name nvarchar(100), Description nvarchar(200), ControlTypeID int, Type nvarchar(30), "
        "ColSpan int default 1, RowSpan int default 1, Visible bit, MajorView nvarchar(100), "
        "MinorView nvarchar(100), WhereClause nvarchar(500), OrderByClause nvarchar(200))");
    Run("create table tblThing (ID int primary key, Name nvarchar(100), Alt nvarchar(20), "
        "ParentID int)");
    Run("insert into tblThing values (5, N'علي كريمي', '105', null), (6, N'O''Neil 50%', '106', 5),"
        " (7, N'ab_c', '107', 5), (8, N'abxc', '108', null)");
    panel.on_search = [this](const std::string& query) { searches.push_back(query); };
    panel.on_clear = [this] { ++clears; };
  }

  ResultSetPtr Run(const std::string& text) { return process.dten().cnn.Execute(text, 30); }

  void Add(int id, const std::string& name, int kind, const std::string& type = "int",
           int col_span = 1, int row_span = 1, const std::string& view = "") {
    const std::string number = std::to_string(id);
    Run("insert into tblVorekReportParameter (ReportID, ParameterID, Sequence, Name, Description, "
        "ControlTypeID, Type, ColSpan, RowSpan, MajorView, MinorView) values (7, " +
        number + ", " + number + ", N'" + name + "', N'the label', " + std::to_string(kind) +
        ", '" + type + "', " + std::to_string(col_span) + ", " + std::to_string(row_span) + ", '" +
        view + "', 'Name')");
  }
  bool View(std::string query, std::int32_t width = 9000) {
    panel.SetWidth(width);
    return panel.View(7, query, width);
  }
  // The finished query of a confirmation, "" if none came.
  std::string Confirmed() {
    searches.clear();
    panel.cmdOk.Click();
    return searches.empty() ? "" : searches.back();
  }

  std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
  Process process{{.providers = {SqliteProvider()},
                   .windows = windows,
                   .clock = std::make_shared<FixedClock>(),
                   .files = {},
                   .function_file = {}}};
  RecordedMessages messages;
  VorekParameters panel{nullptr, "VorekParameters1", process, messages};
  std::vector<std::string> searches;
  int clears = 0;
};

}  // namespace vorek

#endif  // VOREK_TESTS_PARAMETERS_PARAMETER_FIXTURE_H_
