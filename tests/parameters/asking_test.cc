#include <gtest/gtest.h>

#include "engine/form_ask_user_report.h"
#include "engine/report_control.h"
#include "platform/memory_database.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/field_type.h"
#include "vorek/report.h"

// When a report asks: by its panel or by the dialog, and what goes on behind the dialog.
namespace vorek {
namespace {

class AskingTest : public testing::Test {
 protected:
  AskingTest() {
    for (const char* part :
         {"sysobjects", "syscolumns", "tblVorek", "tblUser", "tblEmployee", "tblPosition"}) {
      database->Answer(part, MakeResult({{"ID", kInteger}}, {}));
    }
    database->Answer("tblVorekReportParameter",
                     MakeResult({{"ReportID", kInteger},
                                 {"ParameterID", kInteger},
                                 {"Name", kVarWChar},
                                 {"Description", kVarWChar},
                                 {"ControlTypeID", kVarWChar},
                                 {"Type", kVarWChar},
                                 {"ColSpan", kInteger},
                                 {"RowSpan", kInteger},
                                 {"Visible", kBoolean},
                                 {"MajorView", kVarWChar},
                                 {"MinorView", kVarWChar},
                                 {"WhereClause", kVarWChar},
                                 {"OrderByClause", kVarWChar}},
                                {{"7", "1", "name", "name", "1002", "nvarchar", "1", "1",
                                  std::nullopt, "", "", "", ""}}));
    database->Answer("select rows", MakeResult({{"a", kInteger}}, {{"1"}, {"2"}}));
    report.SetOleConnectionString("Provider=VorekMemory;");
    report.SetUserID(9);
  }

  // The column that tells whether the panel asks; nullopt is NULL.
  void SetReport(bool has_column, std::optional<std::string> by_panel) {
    std::vector<MemoryColumn> columns = {{"ID", kInteger},         {"Title", kVarWChar},
                                         {"Notes", kVarWChar},     {"CreateDate", kDBTimeStamp},
                                         {"SQLQuery", kVarWChar},  {"MakeTree", kInteger},
                                         {"FontSize", kInteger},   {"ReportRowHeight", kInteger},
                                         {"MakeMerge", kBoolean},  {"MakeTranspose", kBoolean},
                                         {"MakeSecure", kBoolean}, {"ShowDiagram", kBoolean},
                                         {"FormTypeID", kInteger}, {"Cols", kVarWChar}};
    MemoryRow row = {"7",
                     "title",
                     "",
                     "2024-03-20 00:00:00",
                     "select rows where x = @1 ",
                     "0",
                     "0",
                     "0",
                     "0",
                     "0",
                     "0",
                     "0",
                     "0",
                     "1"};
    if (has_column) {
      columns.push_back({"ShowFlatternParameters", kBoolean});
      row.push_back(std::move(by_panel));
    }
    for (const char* part : {"tblVorekReport where ID =7", "tblVorekReport Where ID =7"}) {
      database->Answer(part, MakeResult(columns, {row}));
    }
  }

  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
  World world{{{database}, windows, std::make_shared<FixedClock>()}};
  VorekReport1 report{world};
};

TEST_F(AskingTest, AsksByThePanelUnlessTheColumnSaysNo) {
  const struct {
    const char* what;
    bool has_column;
    std::optional<std::string> value;
    bool by_panel;
  } cases[] = {{"the column is missing", false, std::nullopt, true},
               {"NULL", true, std::nullopt, true},
               {"1", true, "1", true},
               {"0", true, "0", false}};
  for (const auto& c : cases) {
    SetReport(c.has_column, c.value);
    windows->shown.clear();
    EXPECT_EQ(report.View(7), c.by_panel) << c.what;
    EXPECT_EQ(report.Impl().VorekParameters1.Visible(), c.by_panel) << c.what;
    EXPECT_EQ(windows->shown.size(), c.by_panel ? 0u : 1u) << c.what;
  }
}

// Behind the answer of the dialog a failing statement is passed over until the query runs; without
// a dialog the same failure ends the run.
TEST_F(AskingTest, PassesOverErrorsBehindTheDialog) {
  SetReport(true, "0");
  windows->Queue([&](Form& form) {
    database->SetFault("tblVorekReportLayout", {.error_number = -2147217865});
    static_cast<FormAskUser&>(form).VorekParameters1.cmdOk.Click();
  });
  EXPECT_TRUE(report.View(7));
  EXPECT_EQ(report.QueryRecordCount(), 2);
  EXPECT_EQ(report.Rows(), 3);
  database->ClearFaults();
  SetReport(true, "1");
  ASSERT_TRUE(report.View(7));
  database->SetFault("tblVorekReportLayout", {.error_number = -2147217865});
  report.Impl().VorekParameters1.cmdOk.Click();
  EXPECT_EQ(report.Rows(), 2);
  EXPECT_TRUE(report.TextMatrix(1, 1).empty());
}

// The failure of the query itself is none of those.
TEST_F(AskingTest, TellsTheFailureOfTheQueryBehindTheDialog) {
  SetReport(true, "0");
  database->SetFault("select rows", {.error_number = -2147217865});
  windows->Queue(
      [](Form& form) { static_cast<FormAskUser&>(form).VorekParameters1.cmdOk.Click(); });
  EXPECT_FALSE(report.View(7));
  EXPECT_TRUE(windows->shown.back().starts_with("FormError|")) << windows->shown.back();
}

TEST_F(AskingTest, BeginsInTheFirstFieldOfASearchWindow) {
  SetReport(true, "1");
  WorldState& shared = world.State();
  shared.process.main.ConnectionText = "Provider=VorekMemory;";
  FormAskUserReport form(shared);
  windows->Queue([&](Form&) {
    const VorekParameters& panel = form.VorekReport11.VorekParameters1;
    ASSERT_FALSE(panel.Fields().empty());
    EXPECT_EQ(form.ActiveControl(), panel.Fields().front().widget);
    form.FormKeyDown(27, 0);
    EXPECT_FALSE(form.Shown());
  });
  std::int32_t id = 7;
  form.ShowSearch(id);
}

// The focus of a fresh dialog, and of the same one shown again, is in its first field.
TEST_F(AskingTest, BeginsInTheFirstFieldOfTheDialog) {
  SetReport(true, "0");
  const auto focused = [](Form& form) {
    VorekParameters& panel = static_cast<FormAskUser&>(form).VorekParameters1;
    return form.ActiveControl() == panel.Fields().front().widget;
  };
  windows->Queue([&](Form& form) {
    EXPECT_TRUE(focused(form));
    auto& ask = static_cast<FormAskUser&>(form);
    ask.VorekParameters1.cmdOk.GotFocus();
    ask.VorekParameters1.cmdOk.Click();
  });
  EXPECT_TRUE(report.View(7));
  windows->Queue([&](Form& form) {
    EXPECT_TRUE(focused(form));
    form.FormKeyDown(27, 0);
    EXPECT_FALSE(form.Shown());
  });
  report.Impl().mnuShowAskForm_Click();
}

}  // namespace
}  // namespace vorek
