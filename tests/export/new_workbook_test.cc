#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "adapters/xlsx/archive.h"
#include "export/document_name.h"
#include "export/excel_export.h"
#include "platform/memory_files.h"
#include "support/random_report.h"
#include "vorek/documents.h"
#include "vorek/xlsx.h"

namespace vorek {
namespace {

class NewWorkbookTest : public testing::Test {
 protected:
  NewWorkbookTest() {
    random_.process.services.spreadsheet = XlsxSpreadsheet();
    random_.state.ReportDistributed = "توزيع شده";
    random_.state.QueryFields = {{"الف", kVarWChar}, {"مبلغ", kCurrency}, {"كد", kVarWChar}};
    Grid& grid = random_.flxMain;
    grid.Clear();
    grid.SetRows(4);
    grid.SetCols(4);
    const char* const texts[4][4] = {{"رديف", "الف", "مبلغ (1)", "كد"},
                                     {"1", "=1+1", "1/500", "0012"},
                                     {"2", "hid", "(2/000.5)", "12345678901234567"},
                                     {"مجموع", "", "10", "1404/01/02"}};
    for (std::int32_t row = 0; row < 4; ++row) {
      for (std::int32_t col = 0; col < 4; ++col) grid.WriteCell(row, col, texts[row][col]);
    }
    grid.SetColWidth(2, 1200);
    grid.SetColWidth(1, 600);
    grid.SetColAlignment(2, 7);
    grid.SetRowHeight(2, 0);
  }

  void Write(const NewWorkbookOptions& options) {
    ReportContext report = random_.Context();
    PlainMoney money(report);
    EXPECT_EQ(WriteNewWorkbook(report, money, options, files_.Create("made")), 1U);
    sheet_ = XlsxSpreadsheet()->OpenTemplate(files_.contents["made"], "made", [] {});
    xml_ = xlsx::Archive(files_.contents["made"], "made").Read("xl/worksheets/sheet1.xml");
  }
  void ExpectHolds(const std::string& piece) {
    EXPECT_NE(xml_.find(piece), std::string::npos) << piece << " isn't in\n" << xml_;
  }

  RandomReport random_{1};
  MemoryFiles files_;
  std::unique_ptr<TemplateSheet> sheet_;
  std::string xml_;
};

TEST_F(NewWorkbookTest, EveryCellIsATextInItsPlace) {
  random_.flxMain.SetColWidth(1, 0);
  Write({.formatted = true, .locked = true});
  const char* const expected[4][3] = {{"", "مبلغ (1)", "كد"},
                                      {"", "1500", "0012"},
                                      {"", "-2000.5", "12345678901234567"},
                                      {"", "10", "1404/01/02"}};
  for (std::int32_t row = 0; row < 4; ++row) {
    for (std::int32_t col = 0; col < 3; ++col) {
      EXPECT_EQ(sheet_->Formula(row + 1, col + 1), expected[row][col]) << row << "," << col;
    }
  }
  EXPECT_EQ(xml_.find("<v>"), std::string::npos);
  ExpectHolds("rightToLeft=\"1\"");
  ExpectHolds("<col min=\"1\" max=\"1\" width=\"0\" hidden=\"1\"");
  ExpectHolds("<col min=\"2\" max=\"2\" width=\"24.7");
  ExpectHolds("<row r=\"5\" s=\"1\" customFormat=\"1\"></row></sheetData><sheetProtection ");
  ExpectHolds("<c r=\"B1\" s=\"8\"");  // centred across, as 7 is
  const std::string styles = xlsx::Archive(files_.contents["made"], "made").Read("xl/styles.xml");
  EXPECT_NE(styles.find("centerContinuous"), std::string::npos);
  EXPECT_EQ(random_.flxMain.TextMatrix(2, 2), "(2/000.5)");
}

TEST_F(NewWorkbookTest, WithoutFormatsPlainNumbersAreNumbers) {
  Write({.formatted = false});
  ExpectHolds("<c r=\"A2\" t=\"inlineStr\"><is><t>=1+1</t></is></c>");
  ExpectHolds("<c r=\"B2\"><v>1500</v></c>");
  ExpectHolds("<c r=\"C2\" t=\"inlineStr\"><is><t>0012</t>");
  ExpectHolds("<t>12345678901234567</t>");
  ExpectHolds("<t>1404/01/02</t>");
  EXPECT_EQ(xml_.find(" s=\""), std::string::npos);
  EXPECT_EQ(xml_.find("<cols>"), std::string::npos);
  EXPECT_EQ(xml_.find("sheetProtection"), std::string::npos);
}

TEST_F(NewWorkbookTest, ACrossTableLeavesColumnAAndHiddenRowsOut) {
  Grid& cross = random_.flxTranspose;
  cross.SetRows(3);
  cross.SetCols(4);
  cross.WriteCell(0, 1, "سر");
  cross.WriteCell(1, 1, "hidden");
  cross.WriteCell(2, 1, "پا");
  cross.WriteCell(2, 2, "1/234");
  cross.WriteCell(1, 2, "1/234/567/890");
  cross.WriteCell(0, 3, "جمع");
  cross.WriteCell(2, 3, "1/130/000/000");
  cross.SetRowHeight(1, 0);
  random_.state.isTransposedResult = true;
  random_.state.ReportDistributed = "نمايش معمولي";
  Write({.formatted = true});
  EXPECT_EQ(sheet_->Text(1, 1), "");
  EXPECT_EQ(sheet_->Text(1, 2), "سر");
  EXPECT_EQ(sheet_->Text(2, 2), "پا");
  ExpectHolds("<c r=\"C2\"><v>1234</v></c>");
  EXPECT_EQ(cross.TextMatrix(2, 2), "1/234");
  // The amount of ten digits can be read; other columns keep the usual width.
  ExpectHolds("<c r=\"D2\"><v>1130000000</v></c>");
  ExpectHolds("<cols><col min=\"4\" max=\"4\" width=\"11.7");
  Write({.formatted = false});
  EXPECT_EQ(xml_.find("<cols>"), std::string::npos);
}

TEST_F(NewWorkbookTest, TooManyColumnsAreToldAndNothingIsWritten) {
  random_.flxMain.SetCols(16386);
  ReportContext report = random_.Context();
  PlainMoney money(report);
  EXPECT_THROW(WriteNewWorkbook(report, money, {}, files_.Create("wide")), Error);
  EXPECT_EQ(files_.contents.count("wide"), 0U);
}

TEST(DocumentName, IsSafeAndDated) {
  const DateTime day{2026, 11, 24, 0, 0, 0};
  EXPECT_EQ(DocumentName("فروش / ماه", day, "xlsx"), "فروش   ماه 1405-09-03.xlsx");
  EXPECT_EQ(DocumentName("../../etc\n\"x\"", day, "xlsx"), "etc  x 1405-09-03.xlsx");
  EXPECT_EQ(DocumentName("", day, "xlsx"), "گزارش 1405-09-03.xlsx");
}

class MadeDocument : public Documents {
 public:
  std::string NewPath(const std::string&) override { return "made"; }
  void Show(const std::string&) override {}
};

// As a paste makes them: all columns, hidden ones too, numbers where the text is one.
TEST_F(NewWorkbookTest, TheFastWayHoldsEachCellAsItIsShown) {
  const auto files = std::make_shared<MemoryFiles>();
  random_.process.services.files = files;
  random_.process.services.documents = std::make_shared<MadeDocument>();
  random_.flxMain.WriteCell(1, 3, "-12.5");
  ReportContext report = random_.Context();
  ExportExcelFast(report);
  const auto sheet = XlsxSpreadsheet()->OpenTemplate(files->contents["made"], "made", [] {});
  xml_ = xlsx::Archive(files->contents["made"], "made").Read("xl/worksheets/sheet1.xml");
  const char* const texts[4][4] = {{"رديف", "الف", "مبلغ (1)", "كد"},
                                   {"", "=1+1", "1/500", ""},
                                   {"", "hid", "(2/000.5)", "12345678901234567"},
                                   {"مجموع", "", "", "1404/01/02"}};
  for (std::int32_t row = 0; row < 4; ++row) {
    for (std::int32_t col = 0; col < 4; ++col) {
      EXPECT_EQ(sheet->Text(row + 1, col + 1), texts[row][col]) << row << "," << col;
    }
  }
  ExpectHolds("<c r=\"A2\"><v>1</v></c>");
  ExpectHolds("<c r=\"D2\"><v>-12.5</v></c>");
  ExpectHolds("<c r=\"C4\"><v>10</v></c>");
}

}  // namespace
}  // namespace vorek
