#include "sql_texts.h"

#include <algorithm>

#include "adapters/system/database_option.h"
#include "adapters/system/system_files.h"
#include "vorek/error.h"
#include "vorek/script.h"
#include "vorek/sqlite.h"

namespace vorek {

namespace fs = std::filesystem;

namespace {

void RunScripts(const fs::path& database, const std::vector<fs::path>& scripts) {
  const auto connection =
      SqliteProvider()->Connect(ConnectionStringOf(database.string()) + "Mode=Create;");
  const SystemFiles files;
  for (const fs::path& script : scripts) {
    try {
      RunScript(*connection, files.Read(script.string()), {.timeout_seconds = 600, .progress = {}});
    } catch (const Error& error) {
      throw Error(error.Number(), script.filename().string() + ": " + error.Description());
    }
  }
}

}  // namespace

fs::path SqlTextFolder(const std::string& given) {
  if (!given.empty()) return given;
  std::error_code ignored;
  const fs::path program = fs::read_symlink("/proc/self/exe", ignored);
  const fs::path installed = program.parent_path().parent_path() / "share" / "vorek" / "samples";
  return fs::is_directory(installed, ignored) ? installed : fs::path(VOREK_SAMPLES);
}

std::vector<fs::path> SqlTexts(const fs::path& folder) {
  std::vector<fs::path> scripts;
  std::error_code failed;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, failed)) {
    if (entry.path().extension() == ".sql") scripts.push_back(entry.path());
  }
  if (scripts.empty()) {
    throw Error(ErrorNumber::kFileNotFound, "There are no SQL texts in " + folder.string());
  }
  std::sort(scripts.begin(), scripts.end());
  return scripts;
}

void MakeDatabase(const fs::path& database, const std::vector<fs::path>& texts) {
  const fs::path part = database.string() + ".part";
  fs::remove(part);
  try {
    RunScripts(part, texts);
  } catch (const Error&) {
    fs::remove(part);
    throw;
  }
  fs::rename(part, database);
}

void WithFiles(const std::function<void()>& work) {
  try {
    work();
  } catch (const fs::filesystem_error& error) {
    throw Error(ErrorNumber::kPathAccess, error.what());
  }
}

}  // namespace vorek
