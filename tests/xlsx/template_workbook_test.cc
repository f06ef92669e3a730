#include <gtest/gtest.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <string>
#include <utility>
#include <vector>

#include "adapters/xlsx/archive.h"
#include "vorek/error.h"
#include "vorek/spreadsheet.h"
#include "vorek/xlsx.h"
#include "xlsx/workbook_files.h"

namespace vorek {
namespace {

// A workbook with everything that speaks of rows: row 5 is the one that is copied, row 6 has sums.
std::string MakeWorkbook(const std::string& name) {
  const std::string path = ScratchFile(name);
  lxw_workbook* const book = workbook_new(path.c_str());
  lxw_worksheet* const sheet = workbook_add_worksheet(book, "Data");
  lxw_worksheet* const other = workbook_add_worksheet(book, "Other");
  for (lxw_row_t row = 0; row < 12; ++row) {
    for (lxw_col_t col = 0; col < 4; ++col)
      worksheet_write_number(sheet, row, col, row + 1, nullptr);
  }
  worksheet_write_string(sheet, 4, 0, "#2", nullptr);
  worksheet_write_formula(sheet, 4, 3, "=B5*C$5+D12", nullptr);
  worksheet_write_formula(sheet, 5, 2, "=SUM(C4:C5)+SUM(C5:C6)", nullptr);
  worksheet_write_formula(other, 0, 0, "=Data!C6+Other!B6", nullptr);
  worksheet_write_number(other, 5, 1, 3, nullptr);
  worksheet_set_row(sheet, 4, 33, nullptr);
  worksheet_merge_range(sheet, 4, 1, 4, 2, "merged", nullptr);
  worksheet_merge_range(sheet, 8, 0, 9, 1, "below", nullptr);
  lxw_conditional_format format = {};
  format.type = LXW_CONDITIONAL_TYPE_FORMULA;
  std::string rule = "=$C5>0";
  format.value_string = rule.data();
  lxw_format* const red = workbook_add_format(book);
  format_set_font_color(red, LXW_COLOR_RED);
  format.format = red;
  worksheet_conditional_format_range(sheet, 4, 0, 4, 3, &format);
  lxw_data_validation validation = {};
  validation.validate = LXW_VALIDATION_TYPE_INTEGER;
  validation.criteria = LXW_VALIDATION_CRITERIA_BETWEEN;
  validation.minimum_number = 1;
  validation.maximum_number = 9;
  worksheet_data_validation_range(sheet, 4, 1, 4, 1, &validation);
  worksheet_write_url(sheet, 10, 0, "internal:Data!A11", nullptr);
  worksheet_write_comment(sheet, 7, 3, "a comment");
  lxw_row_t breaks[] = {3, 8, 0};
  worksheet_set_h_pagebreaks(sheet, breaks);
  worksheet_print_area(sheet, 0, 0, 11, 3);
  worksheet_repeat_rows(sheet, 0, 1);
  workbook_define_name(book, "Total", "=Data!$C$6");
  lxw_table_options table = {};
  worksheet_add_table(sheet, 13, 0, 15, 2, &table);
  lxw_chart* const chart = workbook_add_chart(book, LXW_CHART_COLUMN);
  chart_add_series(chart, "=Data!$A$5:$A$6", "=Data!$C$5:$C$6");
  worksheet_insert_chart(sheet, 8, 5, chart);
  EXPECT_EQ(workbook_close(book), LXW_NO_ERROR);
  return path;
}

std::unique_ptr<TemplateSheet> Open(const std::string& path) {
  return XlsxSpreadsheet()->OpenTemplate(SystemFiles().Read(path), path, [] {});
}

std::string Save(TemplateSheet& sheet, const std::string& name) {
  const std::string path = ScratchFile(name);
  const auto out = SystemFiles().Create(path);
  sheet.Save(*out);
  out->Commit();
  return path;
}

std::string Part(const std::string& path, const std::string& part) {
  return xlsx::Archive(SystemFiles().Read(path), path).Read(part);
}

void ExpectHolds(const std::string& text, const std::vector<std::string>& pieces) {
  for (const std::string& piece : pieces) {
    EXPECT_NE(text.find(piece), std::string::npos) << piece << " isn't in\n" << text;
  }
}

TEST(Template, ReferencesOfAllKindsFollowNewRows) {
  const auto sheet = Open(MakeWorkbook("all.xlsx"));
  sheet->InsertCopies(5, 6, 3);
  const std::string path = Save(*sheet, "all-made.xlsx");
  const std::string xml = Part(path, "xl/worksheets/sheet1.xml");
  ExpectHolds(xml, {"<f>B5*C$5+D15</f>", "<f>B6*C$5+D16</f>", "<f>B8*C$5+D18</f>",
                    "<f>SUM(C4:C5)+SUM(C5:C9)</f>", "<mergeCell ref=\"B5:C5\"/>",
                    "<mergeCell ref=\"B8:C8\"/>", "<mergeCell ref=\"A12:B13\"/>",
                    "<mergeCells count=\"5\">", "<conditionalFormatting sqref=\"A5:D8\">",
                    "<formula>$C5&gt;0</formula>", "sqref=\"B5:B8\"", "ref=\"A14\"",
                    "location=\"Data!A14\"", "<brk id=\"3\"", "<brk id=\"11\""});
  const auto reopened = Open(path);
  for (std::int32_t row = 5; row <= 8; ++row) EXPECT_EQ(reopened->Text(row, 1), "#2") << row;
  EXPECT_EQ(reopened->Text(9, 1), "6");
  EXPECT_EQ(reopened->Formula(9, 3), "=SUM(C4:C5)+SUM(C5:C9)");
  std::size_t tall = 0;
  for (std::size_t at = xml.find("ht=\"33\""); at != std::string::npos; ++tall) {
    at = xml.find("ht=\"33\"", at + 1);
  }
  EXPECT_EQ(tall, 4U);
  ExpectHolds(Part(path, "xl/worksheets/sheet2.xml"), {"<f>Data!C9+Other!B6</f>"});
  ExpectHolds(Part(path, "xl/workbook.xml"),
              {"Data!$A$1:$D$15", "Data!$1:$2", "Data!$C$9", "fullCalcOnLoad=\"1\""});
  ExpectHolds(Part(path, "xl/charts/chart1.xml"), {"Data!$A$5:$A$9", "Data!$C$5:$C$9"});
  ExpectHolds(Part(path, "xl/comments1.xml"), {"ref=\"D11\""});
  ExpectHolds(Part(path, "xl/drawings/vmlDrawing1.vml"), {"<x:Row>10</x:Row>"});
  ExpectHolds(Part(path, "xl/drawings/drawing1.xml"), {"<xdr:row>11</xdr:row>"});
  ExpectHolds(Part(path, "xl/tables/table1.xml"), {"ref=\"A17:C19\""});
  EXPECT_EQ(ReadByOpenpyxl(path).find("failed"), std::string::npos);
  EXPECT_NE(ReadBySsconvert(path).find("merged"), std::string::npos);
}

// One picture in the row that is copied, one below; a comment in that row.
std::string MakeWorkbookWithPictures(const std::string& name) {
  constexpr unsigned char kPicture[] = {
      0x89, 'P',  'N',  'G',  '\r', '\n', 0x1A, '\n', 0,   0,   0,    13,   'I',  'H',
      'D',  'R',  0,    0,    0,    1,    0,    0,    0,   1,   8,    6,    0,    0,
      0,    0x1F, 0x15, 0xC4, 0x89, 0,    0,    0,    13,  'I', 'D',  'A',  'T',  0x78,
      0x9C, 0x63, 0xF8, 0xCF, 0xC0, 0xF0, 0x1F, 0,    5,   0,   1,    0xFF, 0x56, 0xC7,
      0x2F, 0x0D, 0,    0,    0,    0,    'I',  'E',  'N', 'D', 0xAE, 0x42, 0x60, 0x82};
  const std::string path = ScratchFile(name);
  lxw_workbook* const book = workbook_new(path.c_str());
  lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
  worksheet_write_string(sheet, 4, 0, "#2", nullptr);
  worksheet_write_comment(sheet, 4, 1, "a comment");
  for (const lxw_row_t row : {4U, 8U}) {
    EXPECT_EQ(worksheet_insert_image_buffer(sheet, row, 3, kPicture, sizeof kPicture), 0);
  }
  EXPECT_EQ(workbook_close(book), LXW_NO_ERROR);
  return path;
}

TEST(Template, PicturesAndCommentsAreMovedAndNotRepeated) {
  const std::string before = MakeWorkbookWithPictures("pictures.xlsx");
  const auto sheet = Open(before);
  sheet->InsertCopies(5, 6, 3);
  const std::string path = Save(*sheet, "pictures-made.xlsx");
  const std::string drawing = Part(path, "xl/drawings/drawing1.xml");
  ExpectHolds(drawing,
              {"<xdr:from><xdr:col>3</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>4</xdr:row>",
               "<xdr:from><xdr:col>3</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>11</xdr:row>"});
  std::size_t pictures = 0;
  for (std::size_t at = drawing.find("<xdr:pic>"); at != std::string::npos; ++pictures) {
    at = drawing.find("<xdr:pic>", at + 1);
  }
  EXPECT_EQ(pictures, 2U);
  const std::string comments = Part(path, "xl/comments1.xml");
  ExpectHolds(comments, {"ref=\"B5\""});
  EXPECT_EQ(comments.find("ref=\"B6\""), std::string::npos);
  EXPECT_EQ(Part(path, "xl/media/image1.png"), Part(before, "xl/media/image1.png"));
  EXPECT_EQ(ReadByOpenpyxl(path).find("failed"), std::string::npos);
}

TEST(Template, AsksTheUserWhileItOpensIsFilledAndSaved) {
  const std::string path = MakeWorkbook("asks.xlsx");
  int questions = 0;
  const auto sheet = XlsxSpreadsheet()->OpenTemplate(SystemFiles().Read(path), path,
                                                     [&questions] { ++questions; });
  EXPECT_GE(std::exchange(questions, 0), 1);
  sheet->InsertCopies(5, 6, 3000);
  EXPECT_GE(std::exchange(questions, 0), 3);
  const auto parts = xlsx::Archive(SystemFiles().Read(path), path).Names().size();
  Save(*sheet, "asks-made.xlsx");
  EXPECT_GT(questions, static_cast<int>(parts) + 5);
}

TEST(Template, AReferenceOverManySheetsIsRefusedByTheTemplatesName) {
  const std::string path = ScratchFile("sheets.xlsx");
  lxw_workbook* const book = workbook_new(path.c_str());
  workbook_add_worksheet(book, "Data");
  lxw_worksheet* const other = workbook_add_worksheet(book, "Other");
  worksheet_write_formula(other, 0, 0, "=SUM(Data:Other!B7)", nullptr);
  EXPECT_EQ(workbook_close(book), LXW_NO_ERROR);
  const auto sheet = Open(path);
  sheet->InsertCopies(5, 6, 3);
  try {
    Save(*sheet, "sheets-made.xlsx");
    ADD_FAILURE() << "not refused";
  } catch (const Error& error) {
    ExpectHolds(error.Description(), {"الگوي «" + path + "» پر نمي شود", "SUM(Data:Other!B7)"});
  }
}

TEST(Template, CopiesBeforeTheRowKeepItsRules) {
  const auto sheet = Open(MakeWorkbook("before.xlsx"));
  sheet->InsertCopies(5, 5, 2);
  const std::string xml = Part(Save(*sheet, "before-made.xlsx"), "xl/worksheets/sheet1.xml");
  ExpectHolds(xml, {"<conditionalFormatting sqref=\"A5:D7\">", "<formula>$C5&gt;0</formula>",
                    "<f>B7*C$7+D14</f>"});
}

TEST(Template, ADeletedRowTakesItsOwnAlong) {
  const auto sheet = Open(MakeWorkbook("delete.xlsx"));
  sheet->DeleteRow(5);
  const std::string path = Save(*sheet, "delete-made.xlsx");
  const std::string xml = Part(path, "xl/worksheets/sheet1.xml");
  ExpectHolds(xml, {"<f>SUM(C4:C4)+SUM(C5:C5)</f>", "<mergeCells count=\"1\">"});
  EXPECT_EQ(xml.find("conditionalFormatting"), std::string::npos);
  EXPECT_EQ(xml.find("#2"), std::string::npos);
  ExpectHolds(Part(path, "xl/charts/chart1.xml"), {"Data!$A$5:$A$5"});
}

TEST(Template, WhatIsntTouchedStaysByteForByte) {
  const std::string before = MakeWorkbook("same.xlsx");
  const auto sheet = Open(before);
  sheet->SetText(1, 1, "12");
  const std::string after = Save(*sheet, "same-made.xlsx");
  const xlsx::Archive old(SystemFiles().Read(before), before);
  std::size_t same = 0;
  for (const std::string& part : old.Names()) same += old.Read(part) == Part(after, part) ? 1U : 0U;
  // The sheets, the workbook, its relations, the content types and the chart's stored values.
  EXPECT_GE(same, old.Names().size() - 6) << old.Names().size();
  EXPECT_EQ(old.Read("xl/styles.xml"), Part(after, "xl/styles.xml"));
  EXPECT_EQ(old.Read("xl/drawings/drawing1.xml"), Part(after, "xl/drawings/drawing1.xml"));
  EXPECT_EQ(old.Read("xl/comments1.xml"), Part(after, "xl/comments1.xml"));
}

TEST(Template, TextsBecomeWhatTypingMakesOfThem) {
  const auto sheet = Open(MakeWorkbook("typed.xlsx"));
  sheet->SetText(1, 1, "-12.5");
  sheet->SetText(1, 2, "0012");
  sheet->SetText(1, 3, "=1+1");
  sheet->SetTextFormat(2, 1);
  sheet->SetText(2, 1, "77");
  sheet->SetFormula(2, 2, "=A1*2");
  sheet->SetText(2, 3, "a\x01<b>");
  sheet->SetText(30, 300, "far");
  sheet->Protect({.password = "PlumQuartz417"});
  const std::string read = ReadByOpenpyxl(Save(*sheet, "typed-made.xlsx"));
  ExpectHolds(read, {"A1 n -12.5", "B1 s '0012'", "C1 s '=1+1'", "A2 s '77' @", "B2 f '=A1*2'",
                     "C2 s 'a_x0001_<b>'", "KN30 s 'far'", "protected"});
}

// A sheet of our own, with parts taken from it or bad ones put in.
std::string Packed(const std::string& sheet_xml, bool with_workbook = true) {
  const std::string path = ScratchFile("packed.xlsx");
  const auto out = SystemFiles().Create(path);
  xlsx::ZipWriter zip(*out);
  zip.AddEntry("[Content_Types].xml", "<Types/>");
  const std::string office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
  zip.AddEntry("_rels/.rels", "<Relationships><Relationship Id=\"a\" Type=\"" + office +
                                  "officeDocument\" Target=\"xl/workbook.xml\"/></Relationships>");
  if (with_workbook) {
    zip.AddEntry(
        "xl/workbook.xml",
        "<workbook xmlns:r=\"r\"><sheets><sheet name=\"S\" r:id=\"b\"/></sheets></workbook>");
  }
  zip.AddEntry("xl/_rels/workbook.xml.rels",
               "<Relationships><Relationship Id=\"b\" Type=\"" + office +
                   "worksheet\" Target=\"sheet.xml\"/></Relationships>");
  if (!sheet_xml.empty()) zip.AddEntry("xl/sheet.xml", sheet_xml);
  zip.Finish();
  out->Commit();
  return path;
}

TEST(Template, HostileFilesAreRefusedInPersian) {
  const std::string good =
      "<worksheet><sheetData><row r=\"1\"><c r=\"A1\"><v>5</v></c></row></sheetData></worksheet>";
  EXPECT_EQ(Open(Packed(good))->Text(1, 1), "5");
  const std::string cases[] = {
      Packed(good, false),
      Packed(""),
      Packed("<worksheet><sheetData>"),
      Packed("<worksheet/>"),
      Packed("<!DOCTYPE a [<!ENTITY b \"c\">]>" + good),
      Packed("<worksheet><sheetData><row r=\"1048577\"/></sheetData></worksheet>"),
      Packed("<worksheet><sheetData><row r=\"3\"/><row r=\"3\"/></sheetData></worksheet>"),
      Packed("<worksheet><sheetData><row><c r=\"XFE1\"/></row></sheetData></worksheet>"),
      Packed("<worksheet><sheetData><row><c><f t=\"shared\" "
             "si=\"99999999\">A1</f></c></row></sheetData></worksheet>"),
      Packed(good + std::string(std::size_t{100} << 20U, ' '))};
  for (const std::string& path : cases) {
    try {
      Open(path);
      ADD_FAILURE() << path;
    } catch (const Error& error) {
      EXPECT_TRUE(error.Description().starts_with("الگوي «")) << error.Description();
    }
  }
  std::string broken = SystemFiles().Read(MakeWorkbook("broken.xlsx"));
  for (std::size_t at = 100; at < broken.size(); at += broken.size() / 40) {
    std::string cut = broken.substr(0, at);
    EXPECT_THROW(XlsxSpreadsheet()->OpenTemplate(cut, "cut", [] {}), Error) << at;
    std::string turned = broken;
    turned[at] = static_cast<char>(turned[at] ^ 0x55);
    IgnoreErrors([&] { XlsxSpreadsheet()->OpenTemplate(turned, "turned", [] {}); });
  }
}

TEST(Template, SharedFormulasAreWrittenOutAndThereIsRoom) {
  const auto sheet = Open(
      Packed("<worksheet><sheetData><row r=\"1\"><c r=\"A1\"><f t=\"shared\" si=\"0\" "
             "ref=\"A1:A2\">B1*$C$1</f>"
             "</c></row><row r=\"2\"><c r=\"A2\"><f t=\"shared\" si=\"0\"/></c></row>"
             "<row r=\"1048570\"><c r=\"A1048570\"><v>1</v></c></row></sheetData></worksheet>"));
  EXPECT_EQ(sheet->Formula(2, 1), "=B2*$C$1");
  EXPECT_THROW(sheet->InsertCopies(1, 2, 7), Error);
  sheet->InsertCopies(1, 2, 6);
  EXPECT_EQ(sheet->Formula(8, 1), "=B8*$C$1");
  EXPECT_EQ(sheet->Text(1048576, 1), "1");
}

}  // namespace
}  // namespace vorek
