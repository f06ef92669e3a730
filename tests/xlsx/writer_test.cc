#include <gtest/gtest.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <string>
#include <vector>

#include "vorek/error.h"
#include "vorek/spreadsheet.h"
#include "vorek/xlsx.h"
#include "xlsx/workbook_files.h"

namespace vorek {
namespace {

constexpr std::size_t kBody = 0;
constexpr std::size_t kHeader = 1;
constexpr std::size_t kRed = WorkbookLook::kNoStyle;

WorkbookLook Look() {
  WorkbookLook look;
  look.font = "Calibri";
  look.font_size = 11;
  look.styles = {{"B Mitra", 10, false, true, SheetAlignment::kGeneral},
                 {"B Mitra", 12, true, true, SheetAlignment::kRight}};
  look.column_widths = {24, 0, 10.5, WorkbookLook::kDefaultWidth};
  return look;
}

std::unique_ptr<WorkbookWriter> Begin(const std::string& path, WorkbookLook look) {
  return XlsxSpreadsheet()->NewWorkbook(SystemFiles().Create(path), std::move(look));
}

const std::vector<std::vector<std::string>>& Rows() {
  static const std::vector<std::vector<std::string>> rows = {
      {"شرح", "مبلغ & بها", "<c>"},
      {"=1+1", "-1234.5", " blanks "},
      {"+98", "@home", "line\nbreak"},
      {"", "0012", "\"quoted\" 'text'"},
      {"🙂 text", "x0041", "کتاب‌خانه"}};
  return rows;
}

// The same cells by the other writer.
void WriteByPeer(const std::string& path) {
  lxw_workbook* const book = workbook_new(path.c_str());
  lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
  worksheet_right_to_left(sheet);
  lxw_format* formats[2] = {workbook_add_format(book), workbook_add_format(book)};
  for (lxw_format* const format : formats) {
    format_set_font_name(format, "B Mitra");
    format_set_num_format(format, "@");
  }
  format_set_font_size(formats[kBody], 10);
  format_set_font_size(formats[kHeader], 12);
  format_set_bold(formats[kHeader]);
  format_set_align(formats[kHeader], LXW_ALIGN_RIGHT);
  for (std::size_t row = 0; row < Rows().size(); ++row) {
    for (std::size_t col = 0; col < 3; ++col) {
      const std::string& text = Rows()[row][col];
      if (text.empty()) continue;
      worksheet_write_string(sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(col),
                             text.c_str(), formats[row == 0 ? kHeader : kBody]);
    }
  }
  worksheet_write_number(sheet, 5, 1, -12.25, nullptr);
  lxw_row_col_options hidden = {};
  hidden.hidden = 1;
  worksheet_set_column(sheet, 0, 0, 24, nullptr);
  worksheet_set_column_opt(sheet, 1, 1, 0, nullptr, &hidden);
  worksheet_set_column(sheet, 2, 2, 10.5, nullptr);
  lxw_protection protection = {};
  protection.format_cells = protection.format_columns = protection.format_rows = LXW_TRUE;
  protection.insert_hyperlinks = protection.sort = protection.autofilter = LXW_TRUE;
  protection.scenarios = LXW_FALSE;
  protection.objects = LXW_TRUE;
  worksheet_protect(sheet, "PlumQuartz417", &protection);
  ASSERT_EQ(workbook_close(book), LXW_NO_ERROR);
}

void WriteByUs(const std::string& path) {
  WorkbookLook look = Look();
  look.protection = std::make_unique<SheetProtection>();
  look.protection->password = "PlumQuartz417";
  const auto book = Begin(path, std::move(look));
  for (std::size_t row = 0; row < Rows().size(); ++row) {
    book->BeginRow();
    for (std::int32_t col = 1; col <= 3; ++col) {
      book->Text(col, Rows()[row][static_cast<std::size_t>(col) - 1], row == 0 ? kHeader : kBody);
    }
    book->EndRow();
  }
  book->BeginRow();
  book->Number(2, "-12.25", kRed);
  book->EndRow();
  book->Finish();
}

TEST(Writer, CellsFormatsAndLocksReadAsThoseOfAnotherWriter) {
  const std::string ours = ScratchFile("ours.xlsx");
  const std::string peers = ScratchFile("peer.xlsx");
  WriteByUs(ours);
  WriteByPeer(peers);
  const std::string read = ReadByOpenpyxl(ours);
  EXPECT_EQ(read, ReadByOpenpyxl(peers));
  EXPECT_NE(read.find("A2 s '=1+1' @ B Mitra 10.0 regular"), std::string::npos) << read;
  EXPECT_NE(read.find("protected"), std::string::npos) << read;
  EXPECT_EQ(ReadBySsconvert(ours), ReadBySsconvert(peers));
}

TEST(Writer, ControlCharactersComeBack) {
  const std::string path = ScratchFile("control.xlsx");
  const auto book = Begin(path, Look());
  book->BeginRow();
  book->Text(1,
             "a\x01"
             "b\rc\xFF_x0041_",
             kBody);
  book->EndRow();
  book->Finish();
  const std::string read = ReadByOpenpyxl(path);
  EXPECT_NE(read.find("a_x0001_b_x000D_c\\ufffd_x005F_x0041_"), std::string::npos) << read;
}

TEST(Writer, WhatDoesntFitIsToldAndLeavesTheOldFile) {
  const std::string path = ScratchFile("full.xlsx");
  SystemFiles().Write(path, "old");
  struct Case {
    std::int32_t column;
    std::size_t letters;
    bool fits;
  };
  for (const Case& tried : {Case{1, 32767, true}, Case{1, 32768, false}, Case{16384, 1, true},
                            Case{16385, 1, false}, Case{0, 1, false}}) {
    std::string text;
    for (std::size_t i = 0; i < tried.letters; ++i) text += "ش";
    auto book = Begin(path, Look());
    book->BeginRow();
    if (tried.fits) {
      EXPECT_NO_THROW(book->Text(tried.column, text, kBody));
    } else {
      EXPECT_THROW(book->Text(tried.column, text, kBody), Error) << tried.column;
    }
    book.reset();
    EXPECT_EQ(SystemFiles().Read(path), "old");
  }
}

TEST(Writer, GoesOnInASecondSheet) {
  const std::string path = ScratchFile("long.xlsx");
  const auto book = Begin(path, Look());
  constexpr std::int32_t kMore = 3;
  for (std::int32_t row = 0; row < WorkbookLimits::kRows + kMore; ++row) {
    book->BeginRow();
    if (row >= WorkbookLimits::kRows - 1) book->Text(1, "row " + std::to_string(row), kBody);
    book->EndRow();
  }
  EXPECT_EQ(book->Sheets(), 2U);
  book->Finish();
  const std::string read = OutputOf(
      "/usr/bin/python3 -c \"import openpyxl,sys; b=openpyxl.load_workbook(sys.argv[1], "
      "read_only=True); "
      "print([[r[0].value for r in b.worksheets[1].iter_rows()], len(b.worksheets)])\" '" +
      path + "'");
  EXPECT_EQ(read, "[['row 1048576', 'row 1048577', 'row 1048578'], 2]\n");
}

TEST(PlainNumber, OnlyWhatASheetKeepsAsItStands) {
  for (const char* const number : {"0", "12", "-12.5", "0.50", "123456789012345", "-0.1"}) {
    EXPECT_TRUE(IsSheetNumber(number)) << number;
  }
  for (const char* const text : {"", "-", "007", "1234567890123456", "1E5", "+1", " 1", "1/2",
                                 "12:30", ".5", "5.", "-0", "-0.0", "1.2.3", "۱۲"}) {
    EXPECT_FALSE(IsSheetNumber(text)) << text;
  }
}

}  // namespace
}  // namespace vorek
