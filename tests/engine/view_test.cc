#include <gtest/gtest.h>

#include <new>

#include "engine/report_control.h"
#include "engine/report_filter.h"
#include "grid/column_layout_pass.h"
#include "platform/memory_database.h"
#include "support/fixed_clock.h"
#include "support/report_columns.h"
#include "support/scripted_windows.h"
#include "vorek/field_type.h"
#include "vorek/report.h"

namespace vorek {
namespace {

// A catalogue in memory with one report, number 7, and faults on demand.
class ViewTest : public testing::Test {
 protected:
  ViewTest() {
    database->Answer("sysobjects", MakeResult({{"Name", kVarWChar}}, {}));
    database->Answer("syscolumns", MakeResult({{"id", kInteger}}, {}));
    database->Answer("tblVorekSystemParameters", MakeResult({{"ID", kInteger}}, {}));
    database->Answer(
        "tblUser", MakeResult({{"FullName", kVarWChar}, {"BranchID", kInteger}}, {{"مریم", "3"}}));
    database->Answer("tblEmployee", MakeResult({{"FirstName", kVarWChar}}, {}));
    database->Answer("tblPosition", MakeResult({{"Name", kVarWChar}}, {}));
    database->Answer("tblVorekReport ", MakeResult(kReportColumns, {}));
    SetLayout({});
    database->Answer(
        "tblVorekReportTranspose",
        MakeResult({{"ColumnNumber", kInteger}, {"Alignment", kInteger}, {"Width", kInteger}}, {}));
    database->Answer("tblVorekReportExpression", MakeResult({{"Name", kVarWChar}}, {}));
    SetReport("select rows");
    SetRows(
        MakeResult({{"کد", kInteger},
                    {"مبلغ", kCurrency},
                    {"تاريخ سند", kVarWChar},
                    {"زمان", kInteger},
                    {"نرخ", kDouble},
                    {"شرح", kVarWChar}},
                   {{"1", "-1234567.5", "1404/01/02", "125", "12.50", "x"},
                    {"2", std::nullopt, "1404/01/03", std::nullopt, std::nullopt, std::nullopt}}));
    report.SetOleConnectionString("Provider=VorekMemory;");
    report.SetUserID(9);
  }

  void SetReport(const std::string& query, const std::string& created = "2024-03-20 00:00:00") {
    database->Answer("tblVorekReport where ID =7",
                     MakeResult(kReportColumns, {{"7", "گزارش", std::nullopt, created, query, "0",
                                                  "0", "0", "0", "0", std::nullopt, "12", "300"}}));
  }
  void SetRows(const ResultSetPtr& rows) { database->Answer("select rows", rows); }
  void SetLayout(const std::vector<MemoryRow>& rows) {
    database->Answer("tblVorekReportLayout", MakeResult({{"ColumnNumber", kInteger},
                                                         {"Alignment", kSmallInt},
                                                         {"Width", kInteger},
                                                         {"MergeType", kInteger},
                                                         {"TransposeType", kInteger},
                                                         {"MakeSum", kBoolean}},
                                                        rows));
  }
  std::string Line(std::int32_t row) {
    std::string line;
    for (std::int32_t col = 0; col < report.Cols(); ++col)
      line += report.TextMatrix(row, col) + "|";
    return line;
  }
  Grid& Main() { return report.Impl().flxMain; }

  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  std::shared_ptr<ScriptedWindows> windows = std::make_shared<ScriptedWindows>();
  World world{{{database}, windows, std::make_shared<FixedClock>()}};
  VorekReport1 report{world};
};

TEST_F(ViewTest, FillsAndColoursTheGrid) {
  ASSERT_TRUE(report.View(7));
  EXPECT_EQ(report.Title(), "گزارش");
  EXPECT_EQ(Line(0), "رديف|کد|مبلغ|تاريخ سند|زمان|نرخ|شرح|");
  EXPECT_EQ(Line(1), "1|1|(1/234/567.5)|1404/01/02|02:05|12.5|x|");
  EXPECT_EQ(Line(2), "2|2||1404/01/03|00:00|0||");
  EXPECT_EQ(Main().FormatAt(1, 1).back_color, kWhite);
  EXPECT_EQ(Main().FormatAt(2, 6).back_color, kLightBlue);
  EXPECT_EQ(Main().FormatAt(2, 0).back_color, -1);
  // Numbers and dates in the middle, texts at the right; the last field keeps what its record held.
  EXPECT_EQ(Main().ColAlignment(1), 4);
  EXPECT_EQ(Main().ColAlignment(3), 4);
  EXPECT_EQ(Main().ColAlignment(6), 0);
  EXPECT_EQ(Main().FormatAt(0, 6).alignment, 4);
  EXPECT_EQ(Main().RowHeightMin(), 300);
  EXPECT_EQ(Main().FontSize(), 12);
  EXPECT_TRUE(Main().RightToLeft());
  EXPECT_EQ(Main().Row(), 1);
  EXPECT_EQ(Main().ColSel(), 6);
  EXPECT_EQ(report.QueryRecordCount(), 2);
  EXPECT_EQ(windows->pointer, 0);
  EXPECT_FALSE(report.Impl().Progress.Visible());
  EXPECT_EQ(world.State().process.main.UserFullName, "مریم");
  EXPECT_EQ(world.State().process.main.GlobalBranchID, 3);
}

TEST_F(ViewTest, AppliesStoredLayoutUpToItsFirstGap) {
  SetLayout({{"1", "7", "900", "3", "0", "0"},
             {"2", "1", "0", "3", "0", "0"},
             {"5", "1", "777", "3", "0", "0"},
             {"9999", "1", "777", "3", "0", "0"},
             {std::nullopt, "1", "1", "1", "1", "1"},
             {"1", std::nullopt, "950", "3", "0", "0"}});
  ASSERT_TRUE(report.View(7));
  EXPECT_EQ(Main().ColAlignment(1), 7);
  EXPECT_EQ(Main().ColWidth(1), 950);
  EXPECT_EQ(Main().ColWidth(2), 0);
  EXPECT_EQ(Main().ColAlignment(3), 4);
  EXPECT_EQ(Main().ColAlignment(5), 4);
}

TEST_F(ViewTest, EmptyResultKeepsTheHeaders) {
  SetRows(MakeResult({{"الف", kInteger}, {"ب", kVarWChar}}, {}));
  ASSERT_TRUE(report.View(7));
  EXPECT_EQ(report.Rows(), 2);
  EXPECT_EQ(Line(0), "رديف|الف|ب|");
  EXPECT_EQ(Line(1), "1|||");
  EXPECT_EQ(report.QueryRecordCount(), 0);
}

TEST_F(ViewTest, ReportThatIsntThereShowsAnEmptyGrid) {
  ASSERT_TRUE(report.View(7));
  EXPECT_TRUE(report.View(8));
  EXPECT_EQ(Line(0), "رديف|id|");
  EXPECT_EQ(report.Title(), "");
  EXPECT_TRUE(windows->shown.empty());
}

TEST_F(ViewTest, FailuresLeaveAnEmptyGridAndAUsableControl) {
  const struct {
    MemoryDatabase::Fault fault;
    const char* detail;
    std::size_t connections;  // opened by a Refresh after it
  } cases[] = {
      {{.error_number = -2147217900, .error_text = "x Divide by zero y"}, "اشکال تقسيم بر صفر", 0},
      {{.lost_at_row = 1}, "اتصال قطع شد.", 1},
      {{.busy = true}, "مهلت اجرا تمام شد.", 0}};
  for (const auto& c : cases) {
    database->ClearFaults();
    ASSERT_TRUE(report.View(7));
    database->SetFault("select rows", c.fault);
    std::string detail;
    windows->Queue([&](Form& form) { detail = form.DetailText(); });
    EXPECT_FALSE(report.Refresh());
    EXPECT_EQ(detail, c.detail);
    EXPECT_NE(windows->shown.back().find("|نمايش گزارش با اشکال مواجه شد."), std::string::npos);
    EXPECT_EQ(report.Rows(), 2);
    EXPECT_EQ(report.Cols(), 2);
    EXPECT_EQ(Line(0) + Line(1), "||||");
    EXPECT_TRUE(Main().Redraw());
    EXPECT_EQ(windows->pointer, 0);
    database->ClearFaults();
    const std::size_t before = database->Connections();
    EXPECT_TRUE(report.Refresh());
    EXPECT_EQ(report.Rows(), 3);
    EXPECT_EQ(database->Connections() - before, c.connections);
  }
}

TEST_F(ViewTest, TellsOfAConnectionThatWasLostBetweenTwoRuns) {
  ASSERT_TRUE(report.View(7));
  database->SetFault("tblVorekReportLayout", {.lost_at_row = 0});
  std::string detail;
  windows->Queue([&](Form& form) { detail = form.DetailText(); });
  EXPECT_FALSE(report.Refresh());
  EXPECT_EQ(detail, "اتصال قطع شد.");
  EXPECT_EQ(report.Rows(), 2);
  database->ClearFaults();
  EXPECT_TRUE(report.Refresh());
}

TEST_F(ViewTest, AFilterIsOfOneControlAndEndsWithTheBinding) {
  ASSERT_TRUE(report.View(7));
  VorekReport1 second(world);
  second.SetOleConnectionString("Provider=VorekMemory;");
  ASSERT_TRUE(second.View(7));
  SetReportFilter(second.Impl(), "[کد] = 2");
  EXPECT_EQ(second.QueryRecordCount(), 1);
  EXPECT_TRUE(report.Refresh());
  EXPECT_EQ(report.QueryRecordCount(), 2);
  EXPECT_TRUE(second.Refresh());
  EXPECT_EQ(second.QueryRecordCount(), 1);
  EXPECT_THROW(SetReportFilter(second.Impl(), "[کد] = [کد]"), Error);
  EXPECT_THROW(SetReportFilter(second.Impl(), "[Missing] = 1"), Error);
  EXPECT_EQ(second.Impl().state.Filter, "[کد] = 2");
  EXPECT_TRUE(report.View(7));
  EXPECT_TRUE(second.Refresh());
  EXPECT_EQ(second.QueryRecordCount(), 2);
  EXPECT_EQ(second.Impl().state.Filter, "");
}

TEST_F(ViewTest, AFailureBeforeTheLoadKeepsTheReportAndOneInItLeavesNone) {
  ASSERT_TRUE(report.View(7));
  database->SetFault("tblUser", {.error_number = 1});
  EXPECT_THROW(report.View(8), Error);
  EXPECT_EQ(report.Impl().state.ReportID, 7);
  EXPECT_EQ(report.Rows(), 3);
  database->ClearFaults();
  EXPECT_TRUE(report.Refresh());
  // Half a definition must never run: the query of one report under the restrictions of another.
  database->SetFault("tblVorekReport where ID =7", {.missing_column = "MakeSecure"});
  EXPECT_THROW(report.View(7), Error);
  database->ClearFaults();
  EXPECT_FALSE(report.Refresh());
  EXPECT_EQ(report.Rows(), 2);
  EXPECT_EQ(report.Title(), "");
  EXPECT_TRUE(report.View(7));
}

TEST_F(ViewTest, AsksTheRightOnItsOwnConnection) {
  ASSERT_TRUE(report.View(7));
  VorekReport1 second(world);
  second.SetOleConnectionString("Provider=VorekMemory;second");
  const std::size_t before = database->Connections();
  database->SetFault("sysobjects", {.error_number = 1});
  EXPECT_THROW(report.View(7), Error);
  EXPECT_EQ(database->Connections() - before, 1U);
  EXPECT_EQ(world.State().process.main.ConnectionText, "Provider=VorekMemory;");
}

TEST_F(ViewTest, HandsWantOfMemoryToItsHostAsAnError) {
  struct FullMachine : ScriptedWindows {
    int OsMajorVersion() const override { throw std::bad_alloc(); }
  };
  World full({{database}, std::make_shared<FullMachine>(), std::make_shared<FixedClock>()});
  VorekReport1 poor(full);
  poor.SetOleConnectionString("Provider=VorekMemory;");
  try {
    poor.View(7);
    FAIL();
  } catch (const Error& error) {
    EXPECT_TRUE(error.Is(ErrorNumber::kOutOfMemory));
  }
}

TEST_F(ViewTest, OldAndBrokenCatalogues) {
  database->SetFault("tblVorekReport where", {.missing_column = "ReportRowHeight"});
  EXPECT_THROW(report.View(7), Error);
  database->ClearFaults();
  database->SetFault("tblVorekReport where", {.missing_column = "FontSize"});
  EXPECT_TRUE(report.View(7));
  SetReport("select rows", "");
  EXPECT_THROW(report.View(7), Error);
  EXPECT_EQ(windows->pointer, 0);
  SetReport("");
  database->ClearFaults();
  EXPECT_FALSE(report.View(7));
  EXPECT_EQ(report.Rows(), 2);
  database->SetFault("tblVorekReportLayout", {.error_number = 1});
  SetReport("select rows");
  EXPECT_FALSE(report.View(7));
  database->ClearFaults();
  EXPECT_TRUE(report.View(7));
}

TEST_F(ViewTest, HoldsTheBoundOfColumns) {
  const auto rows_of = [](int columns) {
    std::vector<MemoryColumn> names;
    MemoryRow row;
    for (int i = 0; i < columns; ++i) {
      names.push_back({"c" + std::to_string(i), kInteger});
      row.emplace_back("1");
    }
    return MakeResult(names, {row});
  };
  SetRows(rows_of(2500));
  EXPECT_TRUE(report.View(7));
  SetRows(rows_of(2501));
  EXPECT_FALSE(report.View(7));
  EXPECT_EQ(windows->shown.size(), 1U);
  SetRows(rows_of(3));
  EXPECT_TRUE(report.View(7));
}

TEST_F(ViewTest, RemembersTheRowBetweenRuns) {
  ASSERT_TRUE(report.View(7));
  Main().SetRow(2);
  ASSERT_TRUE(report.Refresh());
  EXPECT_EQ(Main().Row(), 2);
  SetRows(MakeResult({{"a", kInteger}}, {{"1"}}));
  ASSERT_TRUE(report.Refresh());
  EXPECT_EQ(Main().Row(), 1);
}

TEST_F(ViewTest, UsesTheGivenQueryAndTokens) {
  SetReport("select nothing @1 here");
  report.SetUseThisQuery(
      "select rows <UserID> as '' '<farsireportdate>' زمان اجراي گزارش مشخصه كاربر");
  ASSERT_TRUE(report.View(7));
  EXPECT_EQ(report.Impl().state.QuerySource, "select rows 9 ''1405/09/03'' '10:30' 9");
}

TEST_F(ViewTest, TwoControlsOfAWorldShareItAndWorldsDont) {
  VorekReport1 second(world);
  ASSERT_TRUE(report.View(7));
  World other({{database}, windows, std::make_shared<FixedClock>()});
  VorekReport1 stranger(other);
  stranger.SetOleConnectionString("Provider=VorekMemory;other");
  EXPECT_EQ(world.State().process.main.ConnectionText, "Provider=VorekMemory;");
  second.SetOleConnectionString("Provider=VorekMemory;second");
  EXPECT_EQ(world.State().process.main.ConnectionText, "Provider=VorekMemory;second");
  EXPECT_EQ(world.State().process.main.ColumnLayouts[1].header_text, "کد");
  EXPECT_EQ(other.State().process.main.ColumnLayouts[1].header_text, "");
}

TEST_F(ViewTest, HandsErrorsOfItsFirstStepsToTheCaller) {
  database->reachable = false;
  EXPECT_THROW(report.View(7), Error);
  database->reachable = true;
  EXPECT_TRUE(report.View(7));
  VorekReport1 unconnected(world);
  EXPECT_FALSE(unconnected.Refresh());
  EXPECT_EQ(unconnected.TextMatrix(-1, 0), "");
  EXPECT_EQ(unconnected.TextMatrix(99, 0), "");
}

TEST_F(ViewTest, NoReportEmptiesTheControl) {
  ASSERT_TRUE(report.View(7));
  EXPECT_FALSE(report.View(-1));
  EXPECT_EQ(report.Rows(), 2);
  EXPECT_EQ(report.Cols(), 2);
  EXPECT_EQ(Line(0) + Line(1), "||||");
  EXPECT_EQ(report.Title(), "");
  EXPECT_EQ(report.QueryRecordCount(), -1);
  EXPECT_EQ(report.Impl().state.ReportID, -1);
  EXPECT_TRUE(windows->shown.empty());
}

TEST_F(ViewTest, AStringOfParametersStaysInForceForF5) {
  SetReport("select rows where (a = @1)");
  database->Answer("tblVorekReportParameter", MakeResult({{"ParameterID", kInteger}}, {{"1"}}));
  ASSERT_TRUE(report.View(7, "@1=5"));
  report.Root().KeyDown(116, 0);
  const ReportState& state = report.Impl().state;
  EXPECT_EQ(state.ParameterString, "@1=5");
  EXPECT_EQ(state.QuerySource, "select rows where (a = 5)");
  // The next report begins without it.
  SetReport("select rows");
  ASSERT_TRUE(report.View(7));
  report.Root().KeyDown(116, 0);
  EXPECT_EQ(state.ParameterString, "");
  EXPECT_EQ(state.ListOfParameters, "");
}

// A report of rows with parents, shown as a tree by `make_tree`.
class TreeTest : public ViewTest {
 protected:
  void SetTree(const std::string& make_tree) {
    database->Answer("tblVorekReport where ID =7",
                     MakeResult(kReportColumns, {{"7", "درخت", std::nullopt, "2024-03-20 00:00:00",
                                                  "select rows", make_tree, "0", "0", "0", "0",
                                                  std::nullopt, std::nullopt, std::nullopt}}));
    SetRows(MakeResult({{"ID", kInteger}, {"PARENTID", kInteger}},
                       {{"1", std::nullopt}, {"2", "1"}, {"3", "2"}, {"4", "1"}}));
  }
};

TEST_F(TreeTest, OnlyTheNumberOneMakesATree) {
  SetTree("1");
  ASSERT_TRUE(report.View(7));
  EXPECT_TRUE(report.MakeTree());
  EXPECT_EQ(Line(0) + Line(1), "سطح|ID|PARENTID|1+|1||");
  EXPECT_EQ(report.Rows(), 2);
  for (const char* flag : {"2", "0"}) {
    SetTree(flag);
    ASSERT_TRUE(report.View(7));
    EXPECT_FALSE(report.MakeTree()) << flag;
    EXPECT_EQ(report.TextMatrix(0, 0), "رديف") << flag;
    EXPECT_EQ(report.Rows(), 5) << flag;
  }
}

TEST_F(TreeTest, BeginsBelowTheGivenParent) {
  SetTree("1");
  for (const std::int32_t top : {0, -1}) {
    report.SetParentID(top);
    ASSERT_TRUE(report.View(7));
    EXPECT_EQ(Line(1), "1+|1||") << top;
  }
  report.SetParentID(1);
  ASSERT_TRUE(report.View(7));
  EXPECT_EQ(Line(1) + Line(2), "1+|2|1|2|4|1|");
}

TEST_F(ViewTest, AHostWorksOnTheGridThroughItsContract) {
  ASSERT_TRUE(report.View(7));
  FlexGrid& grid = report.getflxMain();
  grid.SetRow(1);
  grid.SetCol(1);
  grid.SetRowSel(2);
  grid.SetColSel(2);
  EXPECT_EQ(grid.Clip(), "1\t(1/234/567.5)\r2\t");
  grid.SetCellFontBold(true);
  EXPECT_TRUE(grid.FormatAt(2, 2).bold);
  grid.AddItem("مجموع");
  grid.SetTextMatrix(3, 1, "0");
  grid.SetCol(1);
  grid.Sort(1);
  EXPECT_EQ(grid.TextMatrix(1, 0), "مجموع");
  grid.RemoveItem(1);
  EXPECT_EQ(grid.Rows(), 3);
  grid.SetColWidth(2, 700);
  grid.SetRowHeight(1, 0);
  grid.SetTopRow(2);
  EXPECT_EQ(grid.ColWidth(2), 700);
  EXPECT_EQ(grid.RowHeight(1), 0);
  EXPECT_EQ(grid.TopRow(), 2);
}

}  // namespace
}  // namespace vorek
