#include "faults/stage.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "print/page_text.h"
#include "support/fixed_clock.h"
#include "vorek/access.h"
#include "vorek/print.h"
#include "vorek/sqlite.h"
#include "vorek/xlsx.h"
#include "vorek/xml.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

const std::string kProvider = "Provider=VorekSQLite;Data Source=";

class OneFolder : public Documents, public TemporaryFiles, public FileDialogs {
 public:
  explicit OneFolder(Stage& stage) : stage_(stage) {}
  std::string NewPath(const std::string&) override { return stage_.Path("document.xlsx"); }
  void Show(const std::string&) override {}
  std::string Folder() const override { return stage_.Path("temporary"); }
  std::string NewName() override { return "vorek-" + std::to_string(++names_) + ".tmp"; }
  void Delete(const std::string& path) override { fs::remove(path); }
  bool Save(FileDialogRequest& request) override { return Choose(request); }
  bool Open(FileDialogRequest& request) override { return Choose(request); }

 private:
  bool Choose(FileDialogRequest& request) const {
    const failing_memory::Pause pause;
    request.file_name = stage_.next_file;
    return !stage_.next_file.empty();
  }

  Stage& stage_;
  int names_ = 0;
};

class NoClipboard : public Clipboard {
 public:
  void Clear() override {}
  void Put(const std::string&, const std::string&) override {}
};

class NotedPages : public print::PrintOutput {
 public:
  explicit NotedPages(std::string& pages) : pages_(pages) {}
  void Show(std::shared_ptr<const print::Pages> document, const std::string&) override {
    const failing_memory::Pause pause;
    for (std::size_t page = 0; page < document->PageCount(); ++page) {
      for (const std::string& line : print::TextsOfPage(*document, page)) pages_ += line + "\n";
    }
  }

 private:
  std::string& pages_;
};

std::string SampleFile() {
  const char* const sample = std::getenv("VOREK_FAULTS_SAMPLE");
  if (sample == nullptr) throw std::runtime_error("VOREK_FAULTS_SAMPLE names no sample");
  return sample;
}

// Of a grid on show.
std::string Cells(const Grid& grid) {
  if (!grid.Visible()) return "-\n";
  std::string cells = "+\n";
  for (std::int32_t row = 0; row < grid.Rows(); ++row) {
    cells += std::to_string(grid.RowHeight(row) == 0) + " ";
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
      cells += grid.TextMatrix(row, col) + "|";
    }
    cells += "\n";
  }
  return cells;
}

}  // namespace

void NotedWindows::ShowModal(Form& form) {
  {
    const failing_memory::Pause pause;
    if (form.Name() == "FormMessage" || form.Name() == "FormError") {
      told.push_back(form.Name() + "|" + form.Caption() + "|" + form.MainText() + "|" +
                     form.DetailText());
    }
  }
  const auto answer = answers_.find(form.Name());
  if (answer != answers_.end()) answer->second(form);
  if (form.Shown()) form.CloseBox();
}

void NotedWindows::Show(Form& form) {
  const auto answer = answers_.find(form.Name());
  if (answer != answers_.end()) answer->second(form);
}

Stage::Stage() {
  std::string pattern = (fs::temp_directory_path() / "vorek-faults-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  folder_ = pattern;
  fs::create_directory(folder_ / "temporary");
  fs::copy(SampleFile(), folder_ / "sample.db");
  database = std::make_shared<FaultyDatabase>(SqliteProvider());
  settings = std::make_shared<FileSettings>(files, Path("settings.conf"));
  own_ = SqliteProvider()->Connect(kProvider + Path("sample.db"));
}

Stage::~Stage() {
  report.reset();
  world.reset();
  connection.reset();
  own_.reset();
  fs::remove_all(folder_);
}

WorldOptions Stage::Options() {
  const auto folder = std::make_shared<OneFolder>(*this);
  WorldOptions options;
  options.providers = {database};
  options.windows = windows;
  options.clock = std::make_shared<FixedClock>();
  options.files = files;
  options.settings = settings;
  options.file_dialogs = folder;
  options.function_file = Path("functions.fun");
  options.spreadsheet = XlsxSpreadsheet();
  options.documents = folder;
  options.clipboard = std::make_shared<NoClipboard>();
  options.temporary_files = folder;
  options.access_file = JetAccessFiles(files);
  options.print_jobs =
      PrintsThroughTemplates(options, PugiXmlReader(), std::make_shared<NotedPages>(pages));
  return options;
}

void Stage::Begin(std::int16_t user, std::int16_t position) {
  report.reset();
  world.reset();
  world = std::make_unique<World>(Options());
  report = std::make_unique<VorekReport1>(*world);
  report->SetOleConnectionString(kProvider + Path("sample.db"));
  report->SetUserID(user);
  report->SetPositionID(position);
  report->SetEmployeeID(1);
  report->Resize(12000, 9000);
}

std::unique_ptr<DatabaseConnection> Stage::Connect() {
  return database->Connect(kProvider + Path("sample.db"));
}

ResultSetPtr Stage::Query(const std::string& text) { return own_->Execute(text, {}); }

std::string Stage::Shown() {
  ReportControl& control = Control();
  return Cells(control.flxMain) + Cells(control.flxTranspose);
}

std::map<std::string, std::string> Stage::Files() const {
  std::map<std::string, std::string> found;
  for (const auto& entry : fs::recursive_directory_iterator(folder_)) {
    const std::string name = fs::relative(entry.path(), folder_).string();
    if (!entry.is_regular_file() || name.starts_with("sample.db")) continue;
    if (name.starts_with("temporary/")) continue;  // copies of stored templates stay there
    found[name] = SystemFiles().Read(entry.path().string());
  }
  return found;
}

}  // namespace vorek
