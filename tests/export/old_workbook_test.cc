// Templates of the old binary format.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "adapters/system/child_process.h"
#include "adapters/system/system_files.h"
#include "export/template_fill.h"
#include "platform/memory_files.h"
#include "support/random_report.h"
#include "support/scratch_folder.h"
#include "vorek/system.h"
#include "vorek/workbook_converter.h"
#include "vorek/xlsx.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

// A folder with the programs that can be found, and no workbooks kept from before.
class OldWorkbookTest : public testing::Test {
 protected:
  OldWorkbookTest() : ssconvert_(FindProgram("ssconvert")), path_(std::getenv("PATH")) {
    ::setenv("XDG_CACHE_HOME", folder_.Folder().c_str(), 1);
  }
  ~OldWorkbookTest() override {
    ::setenv("PATH", path_.c_str(), 1);
    ::unsetenv("XDG_CACHE_HOME");
  }

  // From here on ssconvert alone is found: that is, `program`.
  void FindOnly(const std::string& program) {
    fs::create_symlink(program, folder_.Path("ssconvert"));
    ::setenv("PATH", folder_.Folder().c_str(), 1);
  }

  // A template with a detail row and a sum, in the old format.
  std::string MakeOldTemplate() const {
    const std::string made = folder_.Path("made.xlsx");
    lxw_workbook* const book = workbook_new(made.c_str());
    lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
    worksheet_write_string(sheet, 1, 0, "#2", nullptr);
    worksheet_write_string(sheet, 1, 1, "#3", nullptr);
    worksheet_write_formula(sheet, 2, 1, "=SUM(B1:B2)", nullptr);
    EXPECT_EQ(workbook_close(book), LXW_NO_ERROR);
    const std::string old = folder_.Path("old.xlt");
    EXPECT_TRUE(RunChild({ssconvert_, "--export-type=Gnumeric_Excel:excel_biff8", made, old},
                         std::chrono::seconds(30), [] {}));
    return SystemFiles().Read(old);
  }

  std::string ssconvert_;
  std::string path_;
  ScratchFolder folder_;
};

TEST_F(OldWorkbookTest, ATemplateOfTheOldFormatIsFilledAndItsLossIsTold) {
  RandomReport random(1);
  const auto files = std::make_shared<MemoryFiles>();
  files->contents["t.xlt"] = MakeOldTemplate();
  FindOnly(ssconvert_);
  random.process.services.files = files;
  random.process.services.spreadsheet = XlsxSpreadsheet();
  random.process.services.converter = MachineWorkbookConverter();
  Grid& grid = random.flxMain;
  grid.Clear();
  grid.SetRows(3);
  grid.SetCols(3);
  const char* const texts[3][3] = {{"", "نام", "مبلغ"}, {"1", "علي", "1/500"}, {"2", "رضا", "20"}};
  for (std::int32_t row = 0; row < 3; ++row) {
    for (std::int32_t col = 0; col < 3; ++col) grid.WriteCell(row, col, texts[row][col]);
  }
  random.state.ReportDistributed = "توزيع شده";
  random.state.QueryFields = {{"نام", kVarWChar}, {"مبلغ", kCurrency}};
  ReportContext report = random.Context();
  const PlainMoney money(report);
  const std::string note =
      FillExcelTemplate(report, grid, "t.xlt", money, *files->Create("made.xlsx"));
  EXPECT_NE(note.find("نمودار"), std::string::npos) << note;
  const auto made = XlsxSpreadsheet()->OpenTemplate(files->contents["made.xlsx"], "made", [] {});
  EXPECT_EQ(made->Text(3, 1), "علي");
  EXPECT_EQ(made->Text(3, 2), "1500");
  EXPECT_EQ(made->Text(4, 1), "رضا");
  EXPECT_EQ(made->Formula(5, 2), "=SUM(B1:B4)");
}

TEST_F(OldWorkbookTest, AConversionIsStoppedWithAllThatItStarted) {
  const std::string started = folder_.Path("started");
  SystemFiles().Write(folder_.Path("slow"),
                      "#!/bin/sh\n/bin/sleep 30 &\necho $! > " + started + "\nwait\n");
  ::chmod(folder_.Path("slow").c_str(), 0755);
  FindOnly(folder_.Path("slow"));
  const auto begin = std::chrono::steady_clock::now();
  const auto cancel = [&] {
    const bool runs = fs::exists(started) && fs::file_size(started) > 0;
    if (runs) throw Error(ErrorNumber::kCancelled, "لغو شد.");
  };
  try {
    MachineWorkbookConverter()->Convert("old bytes", cancel);
    ADD_FAILURE() << "not stopped";
  } catch (const Error& error) {
    EXPECT_TRUE(error.Is(ErrorNumber::kCancelled)) << error.Description();
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
  const pid_t child = std::stoi(SystemFiles().Read(started));
  for (int tries = 0; ::kill(child, 0) == 0 && tries < 100; ++tries) ::usleep(10000);
  // Whoever inherits it may not have taken its end yet: it doesn't sleep any more.
  const std::string state = "/proc/" + std::to_string(child) + "/stat";
  const std::string line = fs::exists(state) ? SystemFiles().Read(state) : ") Z";
  EXPECT_NE(line.find(") Z"), std::string::npos) << line;
}

}  // namespace
}  // namespace vorek
