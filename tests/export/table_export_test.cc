#include "export/table_export.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/memory_files.h"
#include "support/random_report.h"

namespace vorek {
namespace {

// A hidden column, a hidden row, and texts that a markup would take for its own.
class TableExportTest : public testing::Test {
 protected:
  TableExportTest() {
    report_.state.ReportID = 12;
    report_.state.Title = "فروش <\"ماه\">";
    Grid& grid = report_.flxMain;
    grid.Clear();
    grid.SetRows(4);
    grid.SetCols(4);
    const char* const texts[4][4] = {{"", "نام", "كد", "a&b"},
                                     {"1", "ب\"\\ج", "7", "(1/234)"},
                                     {"2", "پنهان", "8", "0"},
                                     {"3", "x\r\ny\t", "9", "\xC3<"}};
    for (std::int32_t row = 0; row < 4; ++row) {
      for (std::int32_t col = 0; col < 4; ++col) grid.WriteCell(row, col, texts[row][col]);
    }
    grid.SetRowHeight(2, 0);
    for (std::int32_t col = 0; col < 4; ++col)
      grid.SetColWidth(col, col == 2 ? 0 : 100 * col + 300);
    grid.SetColAlignment(3, 7);
  }

  std::string Made(void (*write)(ReportContext&, OutputFile&)) {
    MemoryFiles files;
    ReportContext context = report_.Context();
    const auto out = files.Create("made");
    write(context, *out);
    out->Commit();
    return files.contents["made"];
  }

  RandomReport report_{1};
};

TEST_F(TableExportTest, HtmlHoldsWhatIsShown) {
  const std::string page = Made(WriteHtmlFile);
  const std::size_t body = page.find("</head>");
  ASSERT_NE(body, std::string::npos);
  EXPECT_NE(page.find("<title>فروش &lt;\"ماه\"&gt;</title>"), std::string::npos) << page;
  EXPECT_EQ(page.substr(body),
            "</head>\n<body><h1>فروش &lt;\"ماه\"&gt;</h1>\n<table>\n"
            "<tr><th></th><th>نام</th><th>a&amp;b</th></tr>\n"
            "<tr><td>1</td><td>ب\"\\ج</td><td>(1/234)</td></tr>\n"
            "<tr><td>3</td><td>x<br>y\t</td><td>\xEF\xBF\xBD&lt;</td></tr>\n"
            "</table></body></html>\n");
}

TEST_F(TableExportTest, JsonHoldsTheWholeGrid) {
  report_.flxMain.SetColAlignment(0, 1);
  report_.flxMain.SetColAlignment(1, 1);
  report_.flxMain.SetColAlignment(2, 4);
  const std::string expected =
      R"json({"report": 12, "title": "فروش <\"ماه\">",
 "columns": [
  {"column": 0, "header": "", "width": 300, "alignment": 1, "hidden": false},
  {"column": 1, "header": "نام", "width": 400, "alignment": 1, "hidden": false},
  {"column": 2, "header": "كد", "width": 0, "alignment": 4, "hidden": true},
  {"column": 3, "header": "a&b", "width": 600, "alignment": 7, "hidden": false}],
 "rows": [
  ["1", "ب\"\\ج", "7", "(1/234)"],
  ["2", "پنهان", "8", "0"],
  ["3", "x\u000d\u000ay\u0009", "9", ")json"
      "\xEF\xBF\xBD"
      R"json(<"]]}
)json";
  EXPECT_EQ(Made(WriteJsonFile), expected);
}

}  // namespace
}  // namespace vorek
