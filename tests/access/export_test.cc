// Catches a report's column that goes into another one's field, and a value that changes on the
// way.
#include <gtest/gtest.h>

#include <cstdio>

#include "access/blank_file.h"
#include "export/access_export.h"
#include "export/form_access.h"
#include "support/random_report.h"
#include "support/scratch_folder.h"
#include "vorek/access.h"
#include "vorek/files.h"
#include "vorek/system.h"

namespace vorek {
namespace {

class AccessExportTest : public testing::Test {
 protected:
  AccessExportTest() {
    random_.process.services.windows = windows_;
    random_.process.services.access_file = JetAccessFiles(files_);
  }

  // What another program reads in the file after the export, a line a row.
  std::string Send(const std::vector<BlankField>& fields) {
    BlankFile file;
    file.fields = fields;
    files_->Write(path_, file.Bytes());
    windows_->Queue([this](Form& form) {
      auto& dialog = dynamic_cast<FormAccess&>(form);
      dialog.txtSaveFileName.SetText(path_);
      dialog.ListAccessTables(path_);
      dialog.cmdOk.Click();
    });
    ReportContext report = random_.Context();
    ExportAccess(report);
    FILE* const pipe = popen(("mdb-export -H " + path_ + " Rows").c_str(), "r");
    std::string out;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) out += static_cast<char>(c);
    pclose(pipe);
    return out;
  }

  static BlankField Text(const char* name, std::uint16_t letters, const char* column) {
    return {name, 10, static_cast<std::uint16_t>(2 * letters), {{"Description", column}}};
  }
  static BlankField Money(const char* name, const char* column) {
    return {name, 5, 8, {{"Description", column}}};
  }

  ScratchFolder folder_;
  std::string path_ = folder_.Path("rows.mdb");
  std::shared_ptr<Files> files_ = MachineFiles();
  std::shared_ptr<ScriptedWindows> windows_ = std::make_shared<ScriptedWindows>();
  RandomReport random_{1};
};

TEST_F(AccessExportTest, FillsEachFieldFromItsColumn) {
  Grid& grid = random_.flxMain;
  const char* const texts[3][6] = {{"رديف", "كد", "نام", "پنهان", "سال", "مبلغ"},
                                   {"1", "1/234", "حساب بانك ملي", "7", "1404/01/02", "(1/234.5)"},
                                   {"2", "56/789", "", "(8)", "abcdef", "9/000/000"}};
  grid.Clear();
  grid.SetRows(3);
  grid.SetCols(6);
  for (std::int32_t row = 0; row < 3; ++row) {
    for (std::int32_t col = 0; col < 6; ++col) grid.WriteCell(row, col, texts[row][col]);
  }
  grid.SetColWidth(3, 0);
  grid.SetRowHeight(2, 0);  // hidden rows go too
  // A hidden column counts for those behind it. Texts whose digits are all in groups lose them.
  EXPECT_EQ(Send({Text("Name", 10, "#3"),
                  Text("Code", 4, " #2 "),
                  Money("Amount", "#5"),
                  Text("Row", 5, "#1"),
                  Money("Hidden", "#4"),
                  {"Other", 10, 20}}),
            "\"حساب بانك \",\"1234\",-1234.5000,\"1\",7.0000,\n"
            ",\"5678\",9000000.0000,\"2\",-8.0000,\n");
  EXPECT_EQ(Send({Text("Amount", 20, "#6")}), "");
  EXPECT_NE(random_.notices.told.back().find("ستون #6 که در فيلد Amount"), std::string::npos);
}

TEST_F(AccessExportTest, TakesTheNumbersOfFieldsWithoutTheirGroups) {
  random_.database->Answer(
      "rows", MakeResult({{"مبلغ", kCurrency}, {"تعداد", kInteger}, {"تاريخ", kVarWChar}},
                         {{"1234567", "1234", "1404/01/02"}, {"-12.5", "-5", "x/12"}}));
  random_.Fill(false);
  EXPECT_EQ(Send({Text("Amount", 20, "#2"), Text("Count", 20, "#3"), Text("Day", 20, "#4"),
                  Money("Sum", "#2")}),
            "\"1234567\",\"1234\",\"1404/01/02\",1234567.0000\n"
            "\"-12.5\",\"-5\",\"x/12\",-12.5000\n");
}

}  // namespace
}  // namespace vorek
