#include "chart/chart_reader.h"

#include "support/random_report.h"
#include "totals/group_reports.h"

namespace vorek {
namespace {

// A small report: a code, a name, an amount, a count and a time, four rows and a sum.
class ChartReader : public testing::Test {
 protected:
  ChartReader() {
    report.state.Title = "فروش";
    report.state.FoundRows = 4;
    Fill({{"كد", kInteger},
          {"نام", kVarWChar},
          {"مبلغ", kCurrency},
          {"تعداد", kInteger},
          {"زمان", kInteger}},
         {{"7", "علي", "1/000", "3", "01:30"},
          {"8", "حسن", "(2/500)", "4", "00:05"},
          {"9", "رضا", "", "5", "10:00"},
          {"10", "مينا", "0.5", "6", ""}});
  }

  void Fill(const std::vector<MemoryColumn>& columns,
            const std::vector<std::vector<std::string>>& rows) {
    grid.SetRows(static_cast<std::int32_t>(rows.size()) + 1);
    grid.SetCols(static_cast<std::int32_t>(columns.size()) + 1);
    report.state.QueryFields.clear();
    grid.WriteCell(0, 0, "رديف");
    std::int32_t col = 0;
    for (const MemoryColumn& column : columns) {
      report.state.QueryFields.push_back({column.name, column.ado_type});
      grid.SetColWidth(++col, 1000);
      grid.WriteCell(0, col, column.name);
      for (std::size_t row = 0; row < rows.size(); ++row) {
        grid.WriteCell(static_cast<std::int32_t>(row) + 1, col,
                       rows[row][static_cast<std::size_t>(col) - 1]);
      }
    }
    grid.NumberRows();
    Select(1, 1, 1, 1);
  }

  void Select(std::int32_t row, std::int32_t col, std::int32_t row_sel, std::int32_t col_sel) {
    grid.SelectByUser(row, col, row_sel, col_sel);
  }

  static std::string Told(const ChartModel& chart) {
    if (!chart.refusal.empty()) return chart.refusal;
    std::string text = chart.category_title + ":";
    for (const std::string& category : chart.categories) text += " " + category;
    for (const ChartSeries& series : chart.series) {
      text += " | " + series.name + ":";
      for (const ChartValue& value : series.values) {
        text += " " + (value ? chart.Text(*value) : "-");
      }
    }
    return text + (chart.note.empty() ? "" : " | " + chart.note);
  }
  // With the columns as the user arranged them.
  ChartModel Chart(bool turned = false) {
    const ReportContext context = report.Context();
    ColumnView view(context.ActiveGrid());
    view.SetWishes(wishes);
    return ReadChart(context, view, turned);
  }
  std::string Read(bool turned = false) { return Told(Chart(turned)); }

  ColumnWishes wishes;
  RandomReport report{1};
  Grid& grid = report.flxMain;
};

constexpr const char* kMixed = " رسم نشده است: ساعت و عدد محور مشترک ندارند.";

TEST_F(ChartReader, TakesAmountsOverTheFirstText) {
  EXPECT_EQ(Read(),
            std::string("نام: علي حسن رضا مينا | مبلغ: 1/000 (2/500) - 0.5 | «زمان»") + kMixed);
  EXPECT_EQ(Chart().value_title, "مبلغ");
  EXPECT_EQ(Chart().title, "فروش");
  grid.SetColWidth(3, 0);
  EXPECT_EQ(Read(), "نام: علي حسن رضا مينا | زمان: 01:30 00:05 10:00 -");
  grid.SetColWidth(5, 0);
  EXPECT_EQ(Read(), "نام: علي حسن رضا مينا | كد: 7 8 9 10 | تعداد: 3 4 5 6");
  grid.SetColWidth(2, 0);
  EXPECT_EQ(Read(), "رديف: 1 2 3 4 | كد: 7 8 9 10 | تعداد: 3 4 5 6");
  report.state.FoundRows = -1;
  EXPECT_EQ(Read(), "هنوز نتيجه اي براي رسم نمودار نيست.");
}

TEST_F(ChartReader, IsLimitedByASelection) {
  struct Case {
    std::int32_t row, col, row_sel, col_sel;
    const char* told;
  };
  const std::string everything =
      std::string("نام: علي حسن رضا مينا | مبلغ: 1/000 (2/500) - 0.5 | «زمان»") + kMixed;
  const std::string rows = std::string("نام: حسن رضا | مبلغ: (2/500) - | «زمان»") + kMixed;
  const Case cases[] = {
      {2, 3, 2, 3, everything.c_str()},  // a cell
      {2, 1, 2, 5, everything.c_str()},  // a row
      {2, 3, 2, 5, everything.c_str()},  // a row as a run selects it
      {2, 1, 3, 5, rows.c_str()},
      {3, 5, 2, 1, rows.c_str()},  // drawn from below
      {1, 4, 4, 4, "نام: علي حسن رضا مينا | تعداد: 3 4 5 6"},
      {1, 3, 1, 4, "نام: علي حسن رضا مينا | مبلغ: 1/000 (2/500) - 0.5 | تعداد: 3 4 5 6"},
      {2, 4, 3, 4, "نام: حسن رضا | تعداد: 4 5"},
      {1, 2, 2, 2, "عددي براي رسم نمودار نيست."},
  };
  for (const Case& c : cases) {
    Select(c.row, c.col, c.row_sel, c.col_sel);
    EXPECT_EQ(Read(), c.told) << c.row << "," << c.col << " " << c.row_sel << "," << c.col_sel;
  }
}

// What the user hid isn't shown, and a selection goes by what is seen.
TEST_F(ChartReader, GoesByTheColumnsAsTheyAreArranged) {
  wishes.order = {{4, "تعداد", false},
                  {1, "كد", false},
                  {3, "مبلغ", true},
                  {2, "نام", true},
                  {5, "زمان", true}};
  EXPECT_EQ(Read(), "رديف: 1 2 3 4 | تعداد: 3 4 5 6 | كد: 7 8 9 10");
  wishes.order[2].hidden = false;
  Select(1, 4, 2, 1);
  EXPECT_EQ(Read(), "رديف: 1 2 | تعداد: 3 4 | كد: 7 8");
}

TEST_F(ChartReader, LeavesOutWhatIsNoRowOfTheResult) {
  grid.SetColWidth(5, 0);
  grid.AddItem("مجموع");
  grid.WriteCell(5, 3, "9/999");
  grid.AddItem("ميانگين");
  grid.WriteCell(6, 3, "8/888");
  grid.SetRowHeight(2, 0);
  EXPECT_EQ(Read(), "نام: علي رضا مينا | مبلغ: 1/000 - 0.5");
  // An open row of a tree is told by the rows below it.
  grid.SetOutlineKind(Outline::kTree);
  grid.WriteCell(1, 0, "1-");
  grid.WriteCell(3, 0, "1-1+");
  EXPECT_EQ(Read(), "نام: رضا مينا | مبلغ: - 0.5");
}

// A subtotal has no number of its own.
TEST_F(ChartReader, TakesSubtotalsOnlyWithoutTheRowsThatTheySum) {
  grid.SetColWidth(5, 0);
  report.state.ReportID = 2844;
  ASSERT_NE(FindGroupReport(2844), nullptr);
  grid.WriteCell(3, 0, "");
  grid.WriteCell(3, 3, "500");
  EXPECT_EQ(Read(), "نام: علي حسن مينا | مبلغ: 1/000 (2/500) 0.5");
  Select(3, 1, 4, 5);
  grid.WriteCell(4, 0, "");
  EXPECT_EQ(Read(), "نام: رضا مينا | مبلغ: 500 0.5");
}

TEST_F(ChartReader, ReadsCalculatedColumnsByTheirCells) {
  grid.SetColWidth(5, 0);
  report.state.QueryFields.resize(4);
  grid.SetCols(7);
  for (std::int32_t row = 1; row <= 4; ++row) {
    grid.WriteCell(row, 5, row == 2 ? "" : "1.25");
    grid.WriteCell(row, 6, row == 2 ? "متن" : "1");
  }
  grid.WriteCell(0, 5, "نسبت");
  grid.SetColWidth(5, 1000);
  grid.SetColWidth(6, 1000);
  EXPECT_EQ(Read(), "نام: علي حسن رضا مينا | مبلغ: 1/000 (2/500) - 0.5 | نسبت: 1.25 - 1.25 1.25");
}

TEST_F(ChartReader, ShowsNoOtherNumberThanTheResultHas) {
  report.database->Answer("rows", MakeResult({{"نام", kVarWChar}, {"نرخ", kDouble}},
                                             {{"علي", "0.123456"}, {"حسن", "2"}}));
  report.Bind();
  grid.SetColWidth(1, 1000);
  grid.SetColWidth(2, 1000);
  Select(1, 1, 1, 1);
  EXPECT_EQ(Read(), "نام: علي حسن | نرخ: 0.1235 2 | مقدارها تا چهار رقم اعشار گرد شده اند.");
  report.database->Answer("rows", MakeResult({{"نام", kVarWChar}, {"نرخ", kDouble}},
                                             {{"علي", "12345678901234567890"}, {"حسن", "2"}}));
  report.Bind();
  EXPECT_EQ(Read(), "مقدار «نرخ»، «علي» را نمي توان رسم كرد.");
}

TEST_F(ChartReader, NamesASeriesThatIsOneTooMany) {
  std::vector<MemoryColumn> columns = {{"نام", kVarWChar}};
  std::vector<std::string> row = {"علي"};
  for (int i = 1; i <= 18; ++i) {
    columns.push_back({"م" + std::to_string(i), kCurrency});
    row.push_back(i == 2 ? "" : std::to_string(i));
  }
  Fill(columns, {row});
  const ChartModel chart = Chart();
  ASSERT_EQ(chart.series.size(), 16U);
  EXPECT_EQ(chart.series[1].name, "م3") << "one without a value is left out";
  EXPECT_EQ(chart.note, "16 سري نخست از 17 سري رسم شده است.");
}

// --- Cross tables --------------------------------------------------------------------------------

class CrossChartReader : public ChartReader {
 protected:
  // Base column 1, spread column 2, and what the table shows.
  void Cross(const std::vector<MemoryColumn>& source,
             const std::vector<std::vector<std::string>>& table) {
    Fill(source, {std::vector<std::string>(source.size())});
    report.state.isTransposedResult = true;
    report.state.TransposeColumns = {1};
    report.state.TransposeRowColumn = 2;
    cross.SetRows(static_cast<std::int32_t>(table.size()));
    cross.SetCols(static_cast<std::int32_t>(table[0].size()));
    for (std::size_t row = 0; row < table.size(); ++row) {
      for (std::size_t col = 0; col < table[row].size(); ++col) {
        cross.SetColWidth(static_cast<std::int32_t>(col), 1000);
        cross.WriteCell(static_cast<std::int32_t>(row), static_cast<std::int32_t>(col),
                        table[row][col]);
      }
    }
    cross.SetOutlineKind(Outline::kCrossTable);
    cross.SelectByUser(1, 1, 1, 1);
  }
  Grid& cross = report.flxTranspose;
  const std::vector<MemoryColumn> plain = {
      {"شهر", kVarWChar}, {"ماه", kVarWChar}, {"فروش", kCurrency}};
};

TEST_F(CrossChartReader, PutsTheLongerSideOnTheAxis) {
  Cross(plain, {{"رديف", "شهر", "1", "2", "3"},
                {"1", "قم", "10", "", "(30)"},
                {"2", "يزد", "1/000", "2", "3"},
                {"مجموع", "", "99", "99", "99"}});
  EXPECT_EQ(Read(), "ماه: 1 2 3 | قم: 10 - (30) | يزد: 1/000 2 3");
  EXPECT_EQ(Read(true), "شهر: قم يزد | 1: 10 1/000 | 2: - 2 | 3: (30) 3");
  EXPECT_EQ(Chart().value_title, "فروش");
  cross.SetColWidth(3, 0);
  cross.SetColWidth(4, 0);
  EXPECT_EQ(Read(), "شهر: قم يزد | 1: 10 1/000");
  EXPECT_EQ(Read(true), "ماه: 1 | قم: 10 | يزد: 1/000");
  cross.SetRowHeight(1, 0);
  EXPECT_EQ(Read(), "ماه: 1 | يزد: 1/000");
  cross.SetRowHeight(1, 240);
  cross.SetColWidth(3, 1000);
  cross.SelectByUser(1, 3, 2, 3);
  EXPECT_EQ(Read(), "شهر: قم يزد | 2: - 2");
}

TEST_F(CrossChartReader, ShowsTheSubRowsThatAreOpenElseTheFirstOfEach) {
  std::vector<MemoryColumn> source = plain;
  source.push_back({"تعداد", kInteger});
  source.push_back({"شرح", kVarWChar});
  Cross(source, {{"", "شهر", "1", "2", "3"},
                 {"+", "قم", "", "", ""},
                 {"", "فروش", "10", "20", "30"},
                 {"", "تعداد", "1", "2", "3"},
                 {"", "شرح", "4", "4", "4"},
                 {"+", "يزد", "", "", ""},
                 {"", "فروش", "40", "50", "60"},
                 {"", "تعداد", "4", "5", "6"},
                 {"", "شرح", "4", "4", "4"}});
  for (const std::int32_t row : {2, 3, 4, 6, 7, 8}) cross.SetRowHeight(row, 0);
  EXPECT_EQ(Read(), "ماه: 1 2 3 | قم: 10 20 30 | يزد: 40 50 60");
  EXPECT_EQ(Chart().value_title, "فروش");
  for (const std::int32_t row : {6, 7, 8}) cross.SetRowHeight(row, 240);
  EXPECT_EQ(Read(), "ماه: 1 2 3 | يزد - فروش: 40 50 60 | يزد - تعداد: 4 5 6");
}

TEST_F(CrossChartReader, ShowsTimesAndLeavesOpenGroupsOfColumnsOut) {
  Cross({{"شهر", kVarWChar}, {"گروه", kVarWChar}, {"زمان", kInteger}},
        {{"رديف", "شهر", "-1-0", "1-1", "+2-0", "3"}, {"1", "قم", "09:00", "04:00", "05:30", ""}});
  EXPECT_EQ(Read(), "گروه: 1-1 2-0 3 | قم: 04:00 05:30 -");
  Cross({{"شهر", kVarWChar}, {"ماه", kVarWChar}, {"شرح", kVarWChar}},
        {{"رديف", "شهر", "1"}, {"1", "قم", "12"}});
  EXPECT_EQ(Read(), "عددي براي رسم نمودار نيست.") << "codes that are texts";
}

}  // namespace
}  // namespace vorek
