#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

#include "adapters/system/database_option.h"
#include "adapters/system/system_files.h"
#include "command.h"
#include "platform/script.h"
#include "vorek/sqlite.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

struct SampleOptions {
  std::string folder;
  std::string from;
};

// The scripts lie beside an installed program, or where they were when it was built.
fs::path SampleFolder(const std::string& given) {
  if (!given.empty()) return given;
  std::error_code ignored;
  const fs::path program = fs::read_symlink("/proc/self/exe", ignored);
  const fs::path installed = program.parent_path().parent_path() / "share" / "vorek" / "samples";
  return fs::is_directory(installed, ignored) ? installed : fs::path(VOREK_SAMPLES);
}

std::vector<fs::path> Scripts(const fs::path& folder) {
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

// An Access file that reports can be sent to; one that has rows already begins anew.
void CopyAccessFiles(const fs::path& from, const fs::path& to) {
  std::error_code failed;
  for (const fs::directory_entry& entry : fs::directory_iterator(from, failed)) {
    if (entry.path().extension() != ".mdb") continue;
    const fs::path copy = to / entry.path().filename();
    fs::copy_file(entry.path(), copy, fs::copy_options::overwrite_existing);
    fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add);
  }
}

// Made beside its place and moved there when it is whole.
void MakeSample(const SampleOptions& options) {
  const fs::path from = SampleFolder(options.from);
  const std::vector<fs::path> scripts = Scripts(from);
  const fs::path folder(options.folder);
  fs::create_directories(folder);
  const fs::path whole = folder / "sample.db";
  const fs::path part = folder / "sample.db.part";
  fs::remove(part);
  try {
    RunScripts(part, scripts);
  } catch (const Error&) {
    fs::remove(part);
    throw;
  }
  fs::rename(part, whole);
  CopyAccessFiles(from, folder);
  std::cout << whole.string() << '\n';
}

}  // namespace

void AddSampleCommand(CLI::App& app) {
  auto options = std::make_shared<SampleOptions>();
  CLI::App* const command = app.add_subcommand(
      "sample", "Make the sample in a folder: the database DIR/sample.db, and an Access file");
  command->add_option("DIR", options->folder, "the folder; made if it isn't there")->required();
  command->add_option("--from", options->from, "folder of the SQL texts");
  command->callback([options] {
    try {
      MakeSample(*options);
    } catch (const std::filesystem::filesystem_error& error) {
      throw Error(ErrorNumber::kPathAccess, error.what());
    }
  });
}

}  // namespace vorek
