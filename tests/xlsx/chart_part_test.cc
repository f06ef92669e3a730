#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "adapters/xlsx/archive.h"
#include "vorek/spreadsheet.h"
#include "vorek/xlsx.h"
#include "xlsx/workbook_files.h"

namespace vorek {
namespace {

SheetChart Sales(ChartKind kind) {
  return {.kind = kind,
          .sheet = "نمودار",
          .title = "فروش & <برگشت>",
          .category_title = "ماه",
          .value_title = "",
          .number_format = "#,##0;(#,##0)",
          .categories = {"=1+1", "ارديبهشت", "خرداد"},
          .series = {{"خالص", {"1500", "20", "-300"}}, {"برگشت", {"12", "", "7"}}}};
}

// A workbook of a row and a chart.
std::string Written(const SheetChart& chart, bool locked = false) {
  const std::string path = ScratchFile("chart.xlsx");
  WorkbookLook look;
  look.styles = {{"B Mitra", 10, false, true, SheetAlignment::kGeneral}};
  look.row_style = 0;
  look.column_widths = {0};
  if (locked) look.protection = std::make_unique<SheetProtection>();
  const auto book = XlsxSpreadsheet()->NewWorkbook(SystemFiles().Create(path), std::move(look));
  book->BeginRow();
  book->Text(1, "رديف", 0);
  book->EndRow();
  book->AddChart(chart);
  EXPECT_EQ(book->Sheets(), 1U);
  book->Finish();
  return path;
}

TEST(ChartPart, ItsNumbersAndItsChartReadByAnotherProgram) {
  const std::string read = ReadByOpenpyxl(Written(Sales(ChartKind::kBars)));
  const char* const first =
      "$B$1\" \"'\\u0646\\u0645\\u0648\\u062f\\u0627\\u0631'!$A$2:$A$4\" "
      "\"'\\u0646\\u0645\\u0648\\u062f\\u0627\\u0631'!$B$2:$B$4\"\n";
  for (const char* const line :
       {"sheet Sheet1 rtl True\ncolumn A 0.0 hidden\nA1 s",
        "sheet \u0646\u0645\u0648\u062f\u0627\u0631 rtl True\n", "A2 s '=1+1' @",
        "B2 n 1500 #,##0;(#,##0)", "B4 n -300 #,##0;(#,##0)", "C2 n 12 #,##0",
        "chart BarChart clustered at 5 2\n",
        "axis TextAxis maxMin General\naxis NumericAxis minMax #,##0;(#,##0)\n", first,
        "'!$C$2:$C$4\"\n"}) {
    EXPECT_NE(read.find(line), std::string::npos) << line << " isn't in\n" << read;
  }
  EXPECT_EQ(read.find("C3"), std::string::npos) << read;
  EXPECT_EQ(read.find("failed"), std::string::npos) << read;
}

TEST(ChartPart, EachKindIsDrawnAsSuch) {
  struct Case {
    ChartKind kind;
    const char* line;
    std::size_t series;
  };
  for (const Case& tried : {Case{ChartKind::kStackedBars, "chart BarChart stacked at", 2},
                            Case{ChartKind::kLines, "chart LineChart standard at", 2},
                            Case{ChartKind::kShares, "chart DoughnutChart  at", 1}}) {
    const std::string read = ReadByOpenpyxl(Written(Sales(tried.kind)));
    EXPECT_NE(read.find(tried.line), std::string::npos) << read;
    std::size_t series = 0;
    for (std::size_t at = 0; (at = read.find("\nseries", at)) != std::string::npos; ++at) ++series;
    EXPECT_EQ(series, tried.series);
  }
}

TEST(ChartPart, StandsOnALockedSheetWhereTheOthersAre) {
  const std::string path = Written(Sales(ChartKind::kBars), true);
  const std::string sheet =
      xlsx::Archive(SystemFiles().Read(path), path).Read("xl/worksheets/sheet2.xml");
  EXPECT_LT(sheet.find("<sheetProtection"), sheet.find("<drawing"));
  EXPECT_NE(sheet.find("<drawing"), std::string::npos);
}

}  // namespace
}  // namespace vorek
