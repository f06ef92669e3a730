#include <gtest/gtest.h>

#include "engine/flx_main_events.h"
#include "engine/report_control.h"
#include "platform/memory_database.h"
#include "support/fixed_clock.h"
#include "support/report_columns.h"
#include "support/scripted_windows.h"
#include "vorek/field_type.h"
#include "vorek/report.h"

namespace vorek {
namespace {

constexpr std::int32_t kRows = 9000;

// A user who cancels at one question of a pass, and the lines that the screen told.
class CancellingWindows : public ScriptedWindows {
 public:
  bool PassGoesOn() override {
    ++questions;
    if (look) look();
    return questions != cancel_at;
  }
  bool TellCancelled(std::string_view line) override {
    if (cancel_at == 0 || questions < cancel_at) return false;
    told.emplace_back(line);
    return true;
  }
  void CancelAt(int question) {
    questions = 0;
    cancel_at = question;
    told.clear();
  }

  std::function<void()> look;  // at each question
  int questions = 0;
  int cancel_at = 0;  // 0 for never
  std::vector<std::string> told;
};

ResultSetPtr MakeRows(bool tree) {
  std::vector<MemoryRow> rows;
  for (std::int32_t row = 1; row <= kRows; ++row) {
    const bool top = !tree || row % 2 == 1;
    rows.push_back(
        {std::to_string(row), top ? std::optional<std::string>() : std::to_string(row - 1),
         "شرح " + std::to_string(row * 7919 % kRows), std::to_string(row * 104729 % 1000003)});
  }
  return MakeResult(
      {{"ID", kInteger}, {"ParentID", kInteger}, {"شرح", kVarWChar}, {"مبلغ", kCurrency}}, rows);
}

class CancelTest : public testing::Test {
 protected:
  void Start(const std::string& kind) {
    const bool tree = kind == "tree";
    for (const char* name :
         {"sysobjects", "syscolumns", "tblVorekSystemParameters", "tblUser", "tblEmployee",
          "tblPosition", "tblVorekReport ", "tblVorekReportTranspose"}) {
      database->Answer(name, MakeResult({{"ID", kInteger}}, {}));
    }
    database->Answer("tblVorekReportLayout",
                     MakeResult({{"ColumnNumber", kInteger},
                                 {"Alignment", kSmallInt},
                                 {"Width", kInteger},
                                 {"MergeType", kInteger},
                                 {"TransposeType", kInteger},
                                 {"MakeSum", kBoolean}},
                                {{"4", "4", "1000", kind == "fold" ? "1" : "0", "0", "1"}}));
    database->Answer("tblVorekReportExpression",
                     MakeResult({{"Name", kVarWChar},
                                 {"GeneralExpression", kVarWChar},
                                 {"FirstRowExpression", kVarWChar},
                                 {"JustShowPositiveValue", kInteger}},
                                {{"مانده", "C'4+C4", "C4", std::nullopt}}));
    database->Answer("tblVorekReport where ID =7",
                     MakeResult(kReportColumns,
                                {{"7", "گزارش", std::nullopt, "2024-03-20 00:00:00", "select rows",
                                  tree ? "1" : "0", "0", kind == "fold" ? "1" : "0", "0", "0",
                                  std::nullopt, "12", "300"}}));
    database->Answer("select rows", MakeRows(tree));
    report.SetOleConnectionString("Provider=VorekMemory;");
    report.SetUserID(9);
    ASSERT_TRUE(report.View(7));
  }

  std::string Shown() {
    std::string text;
    const Grid& grid = control.flxMain;
    for (std::int32_t row = 0; row < grid.Rows(); ++row) {
      for (std::int32_t col = 0; col < grid.Cols(); ++col) text += grid.TextMatrix(row, col) + "|";
      text += std::to_string(grid.FormatAt(row, 1).back_color) + "\n";
    }
    const SortMark& mark = grid.SortedBy();
    text += std::to_string(mark.column) + (mark.descending ? "d" : "a");
    return text + (grid.Redraw() ? "" : " frozen") + (control.Progress.Visible() ? " bar" : "");
  }

  // The rows by a column that an earlier report was sorted by: their numbers go with them.
  void ViewAsAtFirst() {
    control.state.SortColumn = 1;
    control.state.TreeSortColumn = 0;
    control.state.SortCode = 2;
    control.state.TreeSortDescending = false;
    for (std::int32_t column = 1; column < 4; ++column) {
      control.world.process.main.ColumnLayouts[column].make_sum = false;
    }
    windows->CancelAt(0);
    ASSERT_TRUE(report.View(7));
  }

  void ClickHeader(std::int32_t column) {
    control.flxMain.PointAt(0, column);
    control.flxMain.MouseDown(1, 0, 0, 0);
    control.flxMain.Click();
  }

  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  std::shared_ptr<CancellingWindows> windows = std::make_shared<CancellingWindows>();
  World world{
      {.providers = {database}, .windows = windows, .clock = std::make_shared<FixedClock>()}};
  VorekReport1 report{world};
  ReportControl& control = report.Impl();
};

// Catches a pass that stops half-way, and one that does its work twice or not at all afterwards.
TEST_F(CancelTest, LeavesAReportWholeWhicheverQuestionIsAnsweredWithNo) {
  struct Case {
    const char* report;
    std::function<void()> pass;
  };
  const Case cases[] = {
      {"flat", [this] { ClickHeader(4); }},
      {"flat", [this] { ClickHeader(3); }},
      {"flat",
       [this] {
         control.flxMain.PointAt(0, 1);
         control.FlexPopupMenu.mnuSum.Click();
       }},
      {"tree", [this] { ClickHeader(4); }},
  };
  for (const Case& with : cases) {
    Start(with.report);
    ViewAsAtFirst();
    windows->CancelAt(0);
    with.pass();
    const int questions = windows->questions;
    const std::string done = Shown();
    ASSERT_GT(questions, 0) << with.report;
    ViewAsAtFirst();
    int cancelled = 0;
    for (int question = 1; question <= questions; ++question) {
      const std::string before = Shown();
      windows->CancelAt(question);
      with.pass();
      if (windows->told.empty()) {  // too late: the pass had begun to change things
        EXPECT_TRUE(Shown() == done) << with.report << question;
        ViewAsAtFirst();
        continue;
      }
      ++cancelled;
      EXPECT_EQ(windows->told, std::vector<std::string>{"عمليات لغو شد."});
      EXPECT_TRUE(Shown() == before) << with.report << question;
    }
    EXPECT_GT(cancelled, 0) << with.report;
    windows->CancelAt(0);
    with.pass();
    EXPECT_TRUE(Shown() == done) << with.report;
  }
}

TEST_F(CancelTest, ASortAsksAlsoWhileItComparesItsKeys) {
  Start("flat");
  control.flxMain.SetCol(3);
  windows->CancelAt(0);
  const PassWatch::Pass pass(control.world.process.watch, PassWatch::Leaves::kNothing);
  control.flxMain.Sort(7);
  EXPECT_GT(windows->questions, kRows / PassWatch::kRowsBetweenQuestions);
}

TEST_F(CancelTest, ARunDrawsItsGridOnceItIsWhole) {
  Start("flat");
  bool drawn = false;
  windows->look = [&] { drawn = drawn || control.flxMain.Drawn(); };
  ASSERT_TRUE(report.Refresh());
  EXPECT_FALSE(drawn);
  ClickHeader(3);
  EXPECT_FALSE(drawn);
  EXPECT_TRUE(control.flxMain.Drawn());
}

TEST_F(CancelTest, EmptiesTheGridsOnceWhenARunIsCancelledInAnyOfItsPasses) {
  for (const char* kind : {"flat", "tree", "fold"}) {
    Start(kind);
    const std::string done = Shown();
    windows->CancelAt(0);
    ASSERT_TRUE(report.Refresh());
    const int questions = windows->questions;
    ASSERT_GT(questions, 2) << kind;
    for (int question = 1; question <= questions; ++question) {
      windows->CancelAt(question);
      EXPECT_FALSE(report.Refresh());
      EXPECT_EQ(windows->told, std::vector<std::string>{"اجراي گزارش لغو شد."});
      EXPECT_TRUE(windows->shown.empty());
      EXPECT_EQ(control.flxMain.Rows(), 2);
      EXPECT_EQ(control.flxMain.Cols(), 2);
      EXPECT_FALSE(control.Progress.Visible());
    }
    windows->CancelAt(0);
    EXPECT_TRUE(report.View(7));
    EXPECT_TRUE(Shown() == done) << kind;
  }
}

}  // namespace
}  // namespace vorek
