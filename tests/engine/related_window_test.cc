#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "engine/entry_points.h"
#include "engine/form_report.h"
#include "support/fixed_clock.h"
#include "support/scripted_windows.h"
#include "vorek/report.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

// Keeps the forms that show and hides none by itself.
class OpenWindows : public ScriptedWindows {
 public:
  void Show(Form& form) override {
    open.insert(&form);
    newest = &form;
  }
  std::size_t Shown() const {
    return static_cast<std::size_t>(
        std::count_if(open.begin(), open.end(), [](const Form* form) { return form->Shown(); }));
  }
  std::set<Form*> open;
  Form* newest = nullptr;
};

// Report 1 links to itself: each row passes its number.
class RelatedWindow : public testing::Test {
 protected:
  RelatedWindow() {
    std::filesystem::remove(file);
    report.SetOleConnectionString("Provider=VorekSQLite;Data Source=" + file + ";Mode=Create");
    report.SetUserID(1);
    Run("create table tblVorekReport (ID int, Title nvarchar(50), Notes nvarchar(9), CreateDate "
        "datetime default '2026-01-01', SQLQuery nvarchar(max), Reserved nvarchar(9), MakeTree "
        "int, MakeTranspose bit, MakeMerge bit, MakeSecure bit, ShowDiagram bit, FormTypeID int, "
        "FontSize int, ReportRowHeight int, SQLSP nvarchar(9), IsStoredProcedure bit, "
        "ShowFlatternParameters bit, ShowPopupTree bit);"
        "create table tblVorekReportLayout (ReportID int, ColumnNumber int, Alignment int, Width "
        "int, MergeType int, TransposeType int, MakeSum bit);"
        "create table tblVorekReportTranspose (ReportID int, ColumnNumber int, Alignment int, "
        "Width int, MergeType int, SortedAfterTransporting bit);"
        "create table tblVorekReportExpression (ReportID int, ColumnNumber int, Name nvarchar(9));"
        "create table tblVorekReportParameter (ReportID int, ParameterID int, Sequence int);"
        "create table tblVorekSystemParameters (ID int, Value int);"
        "create table tblVorekRelatedReports (CallerReportID int, CalledReportID int, "
        "CallerReportColumn nvarchar(9), CallerParameterID int, CalledParameterID int, isSecondary "
        "bit);"
        "create table tblUser (ID int, FullName nvarchar(9), BranchID int);"
        "create table tblEmployee (ID int, FirstName nvarchar(9), SureName nvarchar(9));"
        "create table tblPosition (ID int, Name nvarchar(9));"
        "create table tblNumbers (n int);"
        "insert into tblNumbers values (1), (2), (3);"
        "insert into tblVorekReport (ID, Title, SQLQuery) values (1, N'یک', N'Select n, n * (@1) "
        "as "
        "m from tblNumbers Where n < (@1) + 2 Order By n');"
        "insert into tblVorekReportLayout values (1, 2, 4, 900, 0, 0, 1);"
        "insert into tblVorekReport (ID, Title, SQLQuery) values (2, N'دو', N'Select n, n + (@1) "
        "as "
        "m from tblNumbers');"
        "insert into tblVorekReportParameter values (1, 1, 1), (2, 1, 1);"
        "insert into tblVorekRelatedReports values (1, 1, 'n', null, 1, 0)");
  }
  void Run(const std::string& text) { Impl().world.process.dten().rssqlGeneral5.Open(text); }
  ReportControl& Impl() { return report.Impl(); }
  FormReport& Open(ReportControl& caller, std::int32_t called, const std::string& values) {
    ViewReportWithoutParameters(caller, called, values, "عنوان");
    return dynamic_cast<FormReport&>(*windows->newest);
  }
  static std::string Column(const Grid& grid, std::int32_t col) {
    std::string all;
    for (std::int32_t row = 1; row < grid.Rows(); ++row) all += grid.TextMatrix(row, col) + ",";
    return all;
  }

  ~RelatedWindow() override { std::filesystem::remove(file); }

  const std::string file = testing::TempDir() + "vorek-" +
                           testing::UnitTest::GetInstance()->current_test_info()->name() + ".db";
  std::shared_ptr<OpenWindows> windows = std::make_shared<OpenWindows>();
  World world{{{SqliteProvider()}, windows, std::make_shared<FixedClock>()}};
  VorekReport1 report{world};
};

TEST_F(RelatedWindow, KeepsAChainOfTwentyWhileItIsLookedAt) {
  ASSERT_TRUE(report.View(1, "@1=2"));
  ReportControl* caller = &Impl();
  std::vector<FormReport*> chain;
  for (int step = 0; step < 20; ++step) {
    chain.push_back(&Open(*caller, 1, "&@1=2"));
    caller = &chain.back()->VorekReport11;
    EXPECT_EQ(chain.back()->cmdWay.Size(), chain.size());
    EXPECT_EQ(Column(caller->flxMain, 2), "2,4,6,12,");
  }
  EXPECT_EQ(windows->Shown(), 20U);
  // A window that is closed takes with it what it has opened, and holds nothing.
  chain[4]->Unload();
  EXPECT_EQ(windows->Shown(), 4U);
  EXPECT_EQ(chain[19]->VorekReport11.flxMain.Rows(), 2);
  EXPECT_FALSE(chain[19]->VorekReport11.world.process.dten().cnn.IsOpen());
  EXPECT_EQ(Column(chain[3]->VorekReport11.flxMain, 2), "2,4,6,12,");
  // The next window from there takes the place of those that went.
  windows->open.clear();
  Open(chain[3]->VorekReport11, 1, "&@1=1");
  EXPECT_EQ(windows->Shown(), 1U);
  report.setNull();
  EXPECT_EQ(windows->Shown(), 0U);
}

TEST_F(RelatedWindow, LeavesTheCallerAsItWas) {
  ASSERT_TRUE(report.View(1, "@1=2"));
  Open(Impl(), 2, "&@1=5");
  // Neither the other's layout nor its query reach the caller: the sum stays.
  EXPECT_TRUE(report.Refresh());
  EXPECT_EQ(Column(Impl().flxMain, 2), "2,4,6,12,");
  EXPECT_EQ(Impl().flxMain.ColWidth(2), 900);
  EXPECT_EQ(Impl().state.QueryRecordCount, 3);
}

// A cell is pasted as it is: a quote breaks the called query, and words become part of it.
TEST_F(RelatedWindow, PastesWhatALinkPasses) {
  ASSERT_TRUE(report.View(1, "@1=2"));
  FormReport& form = Open(Impl(), 2, "&@1=0 as z, 9");
  EXPECT_EQ(Column(form.VorekReport11.flxMain, 3), "9,9,9,");
  Open(Impl(), 1, "&@1=O'Neil");
  EXPECT_TRUE(windows->shown.back().starts_with("FormError|")) << windows->shown.back();
  // The caller stands as it was.
  EXPECT_EQ(Column(Impl().flxMain, 2), "2,4,6,12,");
}

TEST_F(RelatedWindow, HasNoWindowForAReportThatCannotBeShown) {
  ASSERT_TRUE(report.View(1, "@1=2"));
  Run("create table tblRolePermissionOnReport (ReportID int, RoleID int);"
      "create table tblRole (ID int, IsAdmin bit);"
      "create table tblUserRole (RoleID int, UserID int);"
      "insert into tblRolePermissionOnReport values (2, 7)");
  ViewReportWithoutParameters(Impl(), 2, "&@1=5", "x");
  EXPECT_EQ(windows->open.size(), 0U);
  EXPECT_EQ(windows->shown.back(), "FormMessage|خطا|شما مجاز به مشاهده اين گزارش نيستيد.");
  // Nor for nothing to show.
  ViewReportWithoutParameters(Impl(), 1, "", "x");
  ViewReportWithoutParameters(Impl(), 0, "&@1=5", "x");
  EXPECT_EQ(windows->open.size(), 0U);
  Run("drop table tblVorekReportLayout; drop table tblVorekReportTranspose; drop table "
      "tblVorekReport");
  EXPECT_THROW(ViewReportWithoutParameters(Impl(), 1, "&@1=5", "x"), Error);
  EXPECT_EQ(windows->open.size(), 0U);
  EXPECT_EQ(Impl().flxMain.MousePointer(), 0);
}

}  // namespace
}  // namespace vorek
