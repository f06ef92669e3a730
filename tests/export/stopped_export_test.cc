// Exports that are stopped on their way: by a disk that takes no more, or by the user.
#include <gtest/gtest.h>
#include <xlsxwriter.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/system/system_files.h"
#include "export/excel_export.h"
#include "export/table_export.h"
#include "export/template_fill.h"
#include "export/text_export.h"
#include "support/random_report.h"
#include "support/scratch_folder.h"
#include "vorek/system.h"
#include "vorek/xlsx.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

// Real files, of which the n-th write, overwrite or commit fails as on a full disk.
class FullDisk : public SystemFiles {
 public:
  std::unique_ptr<OutputFile> Create(const std::string& path) override {
    return std::make_unique<Output>(*this, SystemFiles::Create(path), path);
  }
  int fail_at = 0;  // 0 for never
  int done = 0;

 private:
  class Output : public OutputFile {
   public:
    Output(FullDisk& disk, std::unique_ptr<OutputFile> file, std::string path)
        : disk_(disk), file_(std::move(file)), path_(std::move(path)) {}
    void Write(std::string_view bytes) override {
      Count();
      file_->Write(bytes);
    }
    void Overwrite(std::uint64_t offset, std::string_view bytes) override {
      Count();
      file_->Overwrite(offset, bytes);
    }
    void Commit() override {
      Count();
      file_->Commit();
    }

   private:
    void Count() {
      if (++disk_.done != disk_.fail_at) return;
      throw Error(ErrorNumber::kPathAccess, path_ + ": No space left on device");
    }
    FullDisk& disk_;
    std::unique_ptr<OutputFile> file_;
    std::string path_;
  };
};

class OneDocument : public Documents {
 public:
  explicit OneDocument(std::string path) : path_(std::move(path)) {}
  std::string NewPath(const std::string&) override { return path_; }
  void Show(const std::string& path) override { shown.push_back(path); }
  std::vector<std::string> shown;

 private:
  std::string path_;
};

class KeptClipboard : public Clipboard {
 public:
  void Clear() override { text.clear(); }
  void Put(const std::string& put, const std::string&) override { text = put; }
  std::string text;
};

class StoppedExportTest : public testing::Test {
 protected:
  using Work = std::function<void(ReportContext&, const std::string& path)>;

  StoppedExportTest() {
    random_.process.services.files = disk_;
    random_.process.services.spreadsheet = XlsxSpreadsheet();
    random_.state.ReportDistributed = "توزيع شده";
    random_.state.QueryFields = {{"نام", kVarWChar}, {"مبلغ", kCurrency}};
    Grid& grid = random_.flxMain;
    grid.Clear();
    grid.SetRows(kRows);
    grid.SetCols(3);
    for (std::int32_t row = 0; row < kRows; ++row) {
      grid.WriteCell(row, 1, "سطر " + std::to_string(row) + std::string(300, 'x'));
      grid.WriteCell(row, 2, "(1/234)");
    }
    MakeTemplate();
  }

  std::string Path(const char* name) const { return folder_.Path(name); }

  void MakeTemplate() {
    lxw_workbook* const book = workbook_new(Path("template.xlsx").c_str());
    lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
    worksheet_write_string(sheet, 2, 0, "#2", nullptr);
    worksheet_write_string(sheet, 2, 1, "#3", nullptr);
    EXPECT_EQ(workbook_close(book), LXW_NO_ERROR);
  }

  std::vector<std::pair<std::string, Work>> Works() {
    return {{"workbook",
             [this](ReportContext& report, const std::string& path) {
               PlainMoney money(report);
               WriteNewWorkbook(report, money, {}, disk_->Create(path));
             }},
            {"template",
             [this](ReportContext& report, const std::string& path) {
               const PlainMoney money(report);
               FillExcelTemplate(report, random_.flxMain, Path("template.xlsx"), money,
                                 *disk_->Create(path));
             }},
            {"text", Written([](ReportContext& report, OutputFile& out) {
               WriteTextFile(report, {.remove_money = true}, out);
             })},
            {"json", Written(WriteJsonFile)},
            {"html", Written(WriteHtmlFile)}};
  }
  Work Written(std::function<void(ReportContext&, OutputFile&)> write) {
    return [this, write = std::move(write)](ReportContext& report, const std::string& path) {
      const auto out = disk_->Create(path);
      write(report, *out);
      out->Commit();
    };
  }

  // Runs the work over an old file until it isn't stopped any more; returns how often it was. Each
  // time the old file stands whole, alone, and the grid shows its money.
  int RunUntilDone(const std::string& name, const Work& work, ErrorNumber number, int& stop_at) {
    const std::string path = Path("old");
    for (stop_at = 1; stop_at < 1000; ++stop_at) {
      SystemFiles().Write(path, "the old one");
      disk_->done = questions_ = 0;
      ReportContext report = random_.Context();
      try {
        work(report, path);
        EXPECT_NE(SystemFiles().Read(path), "the old one") << name;
        return stop_at - 1;
      } catch (const Error& error) {
        EXPECT_TRUE(error.Is(number)) << name << " " << error.Description();
        const bool full = number == ErrorNumber::kPathAccess;
        EXPECT_EQ(error.Description().find(path) == 0, full) << error.Description();
      }
      EXPECT_EQ(SystemFiles().Read(path), "the old one") << name << " " << stop_at;
      EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Folder()), fs::directory_iterator()),
                2)
          << name << " " << stop_at;
      EXPECT_EQ(random_.flxMain.TextMatrix(kRows - 1, 2), "(1/234)") << name;
    }
    ADD_FAILURE() << name << " never ends";
    return 0;
  }

  static constexpr std::int32_t kRows = 5000;
  RandomReport random_{1};
  std::shared_ptr<FullDisk> disk_ = std::make_shared<FullDisk>();
  ScratchFolder folder_;
  int questions_ = 0;
};

TEST_F(StoppedExportTest, AFullDiskLeavesTheOldFileWhereverItIsMet) {
  for (const auto& [name, work] : Works()) {
    EXPECT_GT(RunUntilDone(name, work, ErrorNumber::kPathAccess, disk_->fail_at), 1) << name;
  }
}

TEST_F(StoppedExportTest, ACancelLeavesTheOldFileAtWhicheverQuestion) {
  int cancel_at = 0;
  auto& windows = static_cast<ScriptedWindows&>(random_.process.windows());
  windows.on_question = [&] { return ++questions_ != cancel_at; };
  for (const auto& [name, work] : Works()) {
    // Of texts that two threads make, this one asks before each block that it takes.
    const int least = name == "template" ? 6 : name == "workbook" ? 1 + kRows / 4096 : 1;
    EXPECT_GE(RunUntilDone(name, work, ErrorNumber::kCancelled, cancel_at), least) << name;
  }
}

// The way over the clipboard ignores its errors, but a cancel is told, leaves no file, and a
// clipboard that is as before or whole.
TEST_F(StoppedExportTest, ACancelOfTheFastWayLeavesNoFile) {
  const std::string path = Path("fast.xlsx");
  const auto document = std::make_shared<OneDocument>(path);
  const auto clipboard = std::make_shared<KeptClipboard>();
  random_.process.services.documents = document;
  random_.process.services.clipboard = clipboard;
  auto& windows = static_cast<ScriptedWindows&>(random_.process.windows());
  int cancel_at = 0;
  windows.on_question = [&] { return ++questions_ != cancel_at; };
  std::vector<bool> copied;  // by the question at which it was cancelled
  do {
    ++cancel_at;
    questions_ = 0;
    clipboard->text = "before";
    windows.cancelled.clear();
    ReportContext report = random_.Context();
    ExportExcelFast(report);
    copied.push_back(clipboard->text == random_.flxMain.Clip());
    EXPECT_TRUE(copied.back() || clipboard->text == "before") << cancel_at;
    EXPECT_EQ(fs::exists(path), windows.cancelled.empty()) << cancel_at;
    EXPECT_EQ(document->shown.empty(), !windows.cancelled.empty()) << cancel_at;
  } while (windows.cancelled == std::vector<std::string>{"ساختن فايل لغو شد."});
  EXPECT_TRUE(windows.cancelled.empty());
  EXPECT_GE(cancel_at, 1 + 2 * (1 + kRows / 4096));  // through the table, and the sheet
  EXPECT_FALSE(copied.front());
  EXPECT_TRUE(copied.back());
  // The template of the other tests, and the workbook: nothing half made.
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Folder()), fs::directory_iterator()), 2);
}

}  // namespace
}  // namespace vorek
