#include "export/template_fill.h"

#include <gtest/gtest.h>
#include <xlsxwriter.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "adapters/system/system_files.h"
#include "platform/memory_files.h"
#include "support/random_report.h"
#include "vorek/system.h"
#include "vorek/xlsx.h"

namespace vorek {
namespace {

using Cells = std::map<std::pair<int, int>, std::string>;  // by row and column, from 1

// The bytes of a workbook with these cells, made by another writer.
std::string WorkbookOf(const Cells& cells) {
  const std::string path =
      (std::filesystem::temp_directory_path() /
       (std::string("vorek-") + testing::UnitTest::GetInstance()->current_test_info()->name() +
        ".xlsx"))
          .string();
  lxw_workbook* const book = workbook_new(path.c_str());
  lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
  for (const auto& [place, text] : cells) {
    const auto row = static_cast<lxw_row_t>(place.first - 1);
    const auto col = static_cast<lxw_col_t>(place.second - 1);
    if (text.starts_with('=')) {
      worksheet_write_formula(sheet, row, col, text.c_str(), nullptr);
    } else {
      worksheet_write_string(sheet, row, col, text.c_str(), nullptr);
    }
  }
  EXPECT_EQ(workbook_close(book), LXW_NO_ERROR);
  return SystemFiles().Read(path);
}

// A report of three columns whose grid is written by hand.
class FillTest : public testing::Test {
 protected:
  FillTest() {
    random_.process.services.files = files_;
    random_.process.services.spreadsheet = XlsxSpreadsheet();
    random_.process.main.UserFullName = "علي";
    random_.state.ListOfVisualParameters = "@125=تهران&@7=#2";
    random_.state.ReportDistributed = "توزيع شده";
    random_.state.QueryFields = {{"نام", kVarWChar}, {"مبلغ", kCurrency}, {"شرح", kVarWChar}};
    SetGrid({{"1", "الف", "1/500", "x"}, {"2", "ب", "(2/000)", "y"}, {"3", "پ", "30", "#4"}});
  }

  void SetGrid(const std::vector<std::vector<std::string>>& rows) {
    Grid& grid = random_.flxMain;
    grid.Clear();
    grid.SetRows(static_cast<std::int32_t>(rows.size()) + 1);
    grid.SetCols(4);
    const char* const header[] = {"رديف", "نام", "مبلغ", "شرح"};
    for (std::int32_t col = 0; col < 4; ++col) grid.WriteCell(0, col, header[col]);
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (std::size_t col = 0; col < 4; ++col) {
        grid.WriteCell(static_cast<std::int32_t>(row) + 1, static_cast<std::int32_t>(col),
                       rows[row][col]);
      }
    }
  }

  // The formulas and texts that the filled workbook holds, by the places asked for.
  void Fill(const Cells& cells) {
    files_->contents["t.xls"] = WorkbookOf(cells);
    ReportContext report = random_.Context();
    const PlainMoney money(report);
    FillExcelTemplate(report, random_.flxMain, "t.xls", money, *files_->Create("made.xlsx"));
    made_ = XlsxSpreadsheet()->OpenTemplate(files_->contents["made.xlsx"], "made.xlsx", [] {});
  }
  void Expect(const Cells& cells) {
    for (const auto& [place, text] : cells) {
      EXPECT_EQ(made_->Formula(place.first, place.second), text)
          << place.first << "," << place.second;
    }
  }

  RandomReport random_{1};
  std::shared_ptr<MemoryFiles> files_ = std::make_shared<MemoryFiles>();
  std::unique_ptr<TemplateSheet> made_;
};

TEST_F(FillTest, RepeatsTheDetailRowAndStretchesTheSums) {
  Fill({{{1, 1}, "گزارش"},
        {{1, 2}, "^-1"},
        {{1, 3}, "^125"},
        {{1, 4}, "^999"},
        {{1, 5}, "^-4"},
        {{2, 1}, "^-5"},
        {{5, 1}, "#2"},
        {{5, 2}, "#3"},
        {{5, 3}, "=B5*2"},
        {{5, 4}, "as it is"},
        {{6, 2}, "=SUM(B4:B5)"},
        {{6, 3}, "=SUM(B4:B5)"},
        {{7, 1}, "=B6"}});
  Expect({{{1, 1}, "گزارش"},
          {{1, 2}, "علي"},
          {{1, 3}, "تهران"},
          {{1, 4}, ""},
          {{1, 5}, "1405/09/03"},
          {{2, 1}, "10:30:00"},
          {{5, 1}, "نام"},
          {{5, 2}, "مبلغ"},
          {{6, 1}, "الف"},
          {{6, 2}, "1500"},
          {{7, 2}, "-2000"},
          {{8, 2}, "30"},
          {{8, 3}, "=B8*2"},
          {{8, 4}, "as it is"},
          {{9, 2}, "=SUM(B4:B8)"},
          {{9, 3}, "=SUM(B4:B5)"},
          {{10, 1}, "=B9"}});
}

TEST_F(FillTest, AFirstRowOfItsOwnTakesTheHeader) {
  Fill({{{2, 1}, "#2"}, {{2, 2}, "head #3"}, {{3, 1}, "#2"}, {{3, 2}, "row #3"}, {{4, 1}, "end"}});
  Expect({{{2, 1}, "نام"},
          {{2, 2}, "head مبلغ"},
          {{3, 1}, "الف"},
          {{3, 2}, "row 1500"},
          {{4, 2}, "row -2000"},
          {{5, 2}, "row 30"},
          {{6, 1}, "end"}});
}

TEST_F(FillTest, MarkersInOneCellAndBeyondTheGrid) {
  Fill({{{1, 1}, "#2"},
        {{1, 2}, "#2 / #3"},
        {{1, 3}, "#9"},
        {{1, 4}, "#123456789012345678901234567890"},
        {{1, 14}, "#2"},
        {{1, 15}, "#2"},
        {{1, 13}, "#2"},
        {{1, 5}, "#4"}});
  Expect({{{1, 2}, "نام / مبلغ"},
          {{2, 2}, "الف / 1500"},
          {{2, 3}, "#9"},
          {{2, 4}, "#123456789012345678901234567890"},
          {{1, 14}, "نام"},
          {{1, 15}, "#2"},  // the scan ends ten columns behind the grid's
          {{2, 13}, "الف"},
          {{2, 14}, "#2"},  // of which the rows don't take the last
          {{2, 5}, "x"},
          {{4, 5}, "#4"}});
}

// Sums below the last columns that are looked at, and below the last one that has a name.
TEST_F(FillTest, StretchesTheSumsOfItsOwnColumnsAlone) {
  Fill({{{1, 1}, "#2"},
        {{2, 1}, "=SUM(A1:A1)"},
        {{2, 14}, "=SUM(N1:N1)"},
        {{2, 15}, "=SUM(O1:O1)"}});
  Expect({{{5, 1}, "=SUM(A4:A4)"}, {{5, 14}, "=SUM(N4:N4)"}, {{5, 15}, "=SUM(O1:O1)"}});
  random_.flxMain.SetCols(250);
  Cells cells = {{{1, 1}, "#2"}};
  Cells filled;
  const std::pair<int, std::string> columns[] = {{26, "Z"},  {27, "AA"},  {52, "AZ"},
                                                 {53, "BA"}, {256, "IV"}, {257, "IW"}};
  for (const auto& [column, letters] : columns) {
    cells[{2, column}] = "=SUM(" + letters + "1)";
    filled[{5, column}] = "=SUM(" + letters + (column > 256 ? "1)" : "4)");
  }
  Fill(cells);
  Expect(filled);
}

TEST_F(FillTest, AHeaderIsNoMarker) {
  random_.flxMain.WriteCell(0, 1, "x#3");
  Fill({{{1, 1}, "#2"}, {{1, 2}, "#02#3"}});
  Expect({{{1, 1}, "x#3"}, {{1, 2}, "#02مبلغ"}, {{2, 1}, "الف"}, {{2, 2}, "#021500"}});
}

TEST_F(FillTest, LongMarkersComeBeforeTheirHeads) {
  random_.flxMain.SetCols(22);
  random_.flxMain.WriteCell(1, 20, "twenty");
  Fill({{{1, 1}, "#2"}, {{1, 2}, "#21, #2"}});
  Expect({{{2, 2}, "twenty, الف"}});
}

TEST_F(FillTest, TheScanLooksAtFiveRowsWithoutAMarker) {
  Fill({{{1, 1}, "^-1"}, {{6, 1}, "#2"}});
  Expect({{{1, 1}, "علي"}, {{6, 1}, "نام"}, {{7, 1}, "الف"}});
  Fill({{{1, 1}, "^-1"}, {{7, 1}, "#2"}});
  Expect({{{7, 1}, "#2"}});
  Fill({{{6, 1}, "#2"}});
  Expect({{{6, 1}, "#2"}});
  Fill({{{5, 1}, "#2"}});
  Expect({{{5, 1}, "نام"}});
  Fill({{{1, 14}, "^125"}, {{2, 15}, "^125"}});
  Expect({{{1, 14}, "تهران"}, {{2, 15}, "^125"}});
  Fill({{{2, 1}, "#2"}, {{5, 1}, "^125"}});  // the scan goes on behind the block
  Expect({{{2, 1}, "نام"}, {{8, 1}, "تهران"}});
  Fill({{{2, 1}, "#2"}, {{7, 1}, "^125"}});  // over five rows
  Expect({{{10, 1}, "تهران"}});
  Fill({{{2, 1}, "#2"}, {{8, 1}, "^125"}});
  Expect({{{11, 1}, "^125"}});
  Fill({{{2, 1}, "#2"}, {{3, 1}, "^125"}});  // right behind it too
  Expect({{{6, 1}, "تهران"}});
  Fill({{{2, 1}, "#2"}, {{3, 2}, "x"}, {{4, 1}, "#3"}});  // the rows are used up by then
  Expect({{{5, 1}, "پ"}, {{7, 1}, "#3"}});
}

TEST_F(FillTest, HiddenRowsAreLeftOutAndNoRowsDeleteTheDetail) {
  random_.flxMain.SetRowHeight(2, 0);
  Fill({{{1, 1}, "#2"}, {{2, 1}, "end"}});
  Expect({{{2, 1}, "الف"}, {{3, 1}, "پ"}, {{4, 1}, "end"}});
  random_.flxMain.SetRowHeight(2, 1);
  Fill({{{1, 1}, "#2"}, {{2, 1}, "end"}});
  Expect({{{3, 1}, "ب"}, {{4, 1}, "پ"}, {{5, 1}, "end"}});
  for (std::int32_t row = 1; row < 4; ++row) random_.flxMain.SetRowHeight(row, 0);
  random_.state.LockPrintPreview = true;
  Fill({{{1, 1}, "title"}, {{2, 1}, "#2"}, {{3, 1}, "=A4"}, {{4, 1}, "end"}});
  Expect({{{1, 1}, "title"}, {{2, 1}, "=A3"}, {{3, 1}, "end"}});
}

TEST_F(FillTest, AMarkerOfAParameterIsTakenForOne) {
  // The parameter 7 is "#2".
  Fill({{{1, 1}, "^7"}, {{2, 1}, "end"}});
  Expect({{{1, 1}, "نام"}, {{2, 1}, "الف"}, {{5, 1}, "end"}});
}

TEST_F(FillTest, ATextFullOfMarkersDoesntTakeAllMemory) {
  std::string value;
  for (int i = 0; i < 20000; ++i) value += "#4";
  random_.flxMain.WriteCell(0, 1, value);
  std::string markers;
  for (int i = 0; i < 15000; ++i) markers += "#2";
  EXPECT_THROW(Fill({{{1, 1}, markers}}), Error);
}

// A long text isn't one full of markers.
TEST_F(FillTest, ALongTextTakesAValue) {
  const std::string text(30000, 'x');
  const std::string value = "شركت ساختماني و بازرگاني";
  random_.flxMain.WriteCell(2, 1, value);
  Fill({{{1, 1}, "#2" + text + "#2"}});
  Expect({{{1, 1}, "نام" + text + "نام"}, {{3, 1}, value + text + value}});
}

// Every row holds a marker, and the grid is as wide as a sheet.
TEST_F(FillTest, ManyMarkersTakeSeconds) {
  random_.flxMain.SetCols(16000);
  Cells cells;
  for (int row = 1; row <= 100000; ++row) cells[{row, 1}] = "^125";
  Fill(cells);
  Expect({{{1, 1}, "تهران"}, {{100000, 1}, "تهران"}});
}

TEST_F(FillTest, WhatIsNoTemplateIsRefusedByItsName) {
  files_->contents["t.xls"] = "text";
  ReportContext report = random_.Context();
  const PlainMoney money(report);
  for (const char* const path : {"t.xls", "missing.xls"}) {
    try {
      FillExcelTemplate(report, random_.flxMain, path, money, *files_->Create("made.xlsx"));
      ADD_FAILURE() << path;
    } catch (const Error& error) {
      EXPECT_NE(error.Description().find(path), std::string::npos) << error.Description();
    }
  }
  EXPECT_EQ(files_->contents.count("made.xlsx"), 0U);
}

}  // namespace
}  // namespace vorek
