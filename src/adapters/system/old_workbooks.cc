#include <array>
#include <cstdlib>
#include <filesystem>
#include <utility>
#include <vector>

#include "adapters/system/child_process.h"
#include "adapters/system/system_files.h"
#include "vorek/error.h"
#include "vorek/system.h"
#include "vorek/workbook_converter.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kLimit{60000};

// A folder of its own that goes with it.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::error_code failed;
    const fs::path above = fs::temp_directory_path(failed);
    std::string pattern = (above / "vorek-convert-XXXXXX").string();
    if (failed || ::mkdtemp(pattern.data()) == nullptr) {
      throw Error(ErrorNumber::kPathAccess, "پوشه موقت براي تبديل الگو ساخته نشد.");
    }
    path_ = pattern;
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code failed;
    fs::remove_all(path_, failed);
  }
  const fs::path& Path() const { return path_; }

 private:
  fs::path path_;
};

std::string Fingerprint(const std::string& bytes) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  std::array<char, 17> text{};
  std::snprintf(text.data(), text.size(), "%016llx", static_cast<unsigned long long>(hash));
  return text.data() + ("-" + std::to_string(bytes.size()));
}

// Converted workbooks by the content of the old ones. Each old one is kept beside, so that nothing
// but the same bytes finds it.
class ConvertedStore {
 public:
  explicit ConvertedStore(const std::string& bytes) {
    const char* const cache = std::getenv("XDG_CACHE_HOME");
    const char* const home = std::getenv("HOME");
    if (cache != nullptr && *cache == '/') {
      folder_ = cache;
    } else if (home != nullptr && *home == '/') {
      folder_ = fs::path(home) / ".cache";
    }
    name_ = Fingerprint(bytes);
  }

  // What was made of these bytes, with charts or without.
  bool Find(const std::string& bytes, bool with_charts, std::string& made) const {
    if (folder_.empty()) return false;
    bool found = false;
    IgnoreErrors([&] {
      const SystemFiles files;
      if (files.Read(Path(".xls")) != bytes) return;
      made = files.Read(Path(with_charts ? ".xlsx" : ".plain.xlsx"));
      found = true;
    });
    return found;
  }

  void Keep(const std::string& bytes, bool with_charts, const std::string& made) const {
    if (folder_.empty()) return;
    IgnoreErrors([&] {
      SystemFiles files;
      files.MakeFoldersFor(Path(".xls"));
      files.WritePrivate(Path(".xls"), bytes);
      files.WritePrivate(Path(with_charts ? ".xlsx" : ".plain.xlsx"), made);
    });
  }

 private:
  std::string Path(const char* ending) const {
    return (folder_ / "vorek" / "workbooks" / (name_ + ending)).string();
  }

  fs::path folder_;
  std::string name_;
};

class OldWorkbooks : public WorkbookConverter {
 public:
  ConvertedWorkbook Convert(const std::string& bytes, const Question& question) override {
    std::string office = FindProgram("soffice");
    if (office.empty()) office = FindProgram("libreoffice");
    const std::string gnumeric = FindProgram("ssconvert");
    const ConvertedStore store(bytes);
    ConvertedWorkbook made;
    if (!office.empty() && Take(store, bytes, true, made)) return made;
    if (!office.empty() && Run(office, true, bytes, question, made.bytes)) {
      store.Keep(bytes, true, made.bytes);
      return made;
    }
    made.charts_lost = true;
    if (Take(store, bytes, false, made)) return made;
    if (!gnumeric.empty() && Run(gnumeric, false, bytes, question, made.bytes)) {
      store.Keep(bytes, false, made.bytes);
      return made;
    }
    const bool none = office.empty() && gnumeric.empty();
    throw Error(ErrorNumber::kInvalidCall,
                none ? "الگو به قالب قديمي اكسل است. براي تبديل آن بايد LibreOffice يا ssconvert "
                       "نصب شود."
                     : "تبديل الگو از قالب قديمي اكسل انجام نشد.");
  }

 private:
  static bool Take(const ConvertedStore& store, const std::string& bytes, bool with_charts,
                   ConvertedWorkbook& made) {
    return store.Find(bytes, with_charts, made.bytes);
  }

  // On a copy in a folder of its own: a lock of another run beside the file would stop it.
  static bool Run(const std::string& program, bool office, const std::string& bytes,
                  const Question& question, std::string& made) {
    const bool done = IgnoreErrors([&] {
      const ScratchFolder scratch;
      const fs::path in = scratch.Path() / "template.xls";
      const fs::path out = scratch.Path() / "made" / "template.xlsx";
      SystemFiles files;
      files.MakeFoldersFor(out.string());
      files.WritePrivate(in.string(), bytes);
      std::vector<std::string> words = {program, "--export-type=Gnumeric_Excel:xlsx", in.string(),
                                        out.string()};
      if (office) {
        words = {
            program,        "-env:UserInstallation=file://" + (scratch.Path() / "profile").string(),
            "--headless",   "--norestore",
            "--convert-to", "xlsx",
            "--outdir",     out.parent_path().string(),
            in.string()};
      }
      if (!RunChild(words, kLimit, question)) throw Error(ErrorNumber::kInternal, "not converted");
      made = files.Read(out.string());
    });
    question();  // a user who cancelled gets no other try
    return done;
  }
};

}  // namespace

std::shared_ptr<WorkbookConverter> MachineWorkbookConverter() {
  return std::make_shared<OldWorkbooks>();
}

}  // namespace vorek
