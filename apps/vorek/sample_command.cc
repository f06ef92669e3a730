#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

#include "command.h"
#include "sql_texts.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

struct SampleOptions {
  std::string folder;
  std::string from;
};

// An Access file that reports can be sent to, its user's alone as the database is; one that has
// rows already begins anew.
void CopyAccessFiles(const fs::path& from, const fs::path& to) {
  std::error_code failed;
  for (const fs::directory_entry& entry : fs::directory_iterator(from, failed)) {
    if (entry.path().extension() != ".mdb") continue;
    const fs::path copy = to / entry.path().filename();
    fs::copy_file(entry.path(), copy, fs::copy_options::overwrite_existing);
    fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write);
  }
}

void MakeSample(const SampleOptions& options) {
  const fs::path from = SqlTextFolder(options.from);
  const std::vector<fs::path> texts = SqlTexts(from);
  const fs::path folder(options.folder);
  fs::create_directories(folder);
  const fs::path database = folder / "sample.db";
  MakeDatabase(database, texts);
  CopyAccessFiles(from, folder);
  std::cout << database.string() << '\n';
}

}  // namespace

void AddSampleCommand(CLI::App& app) {
  auto options = std::make_shared<SampleOptions>();
  CLI::App* const command = app.add_subcommand(
      "sample", "Make the sample in a folder: the database DIR/sample.db, and an Access file");
  command->add_option("DIR", options->folder, "the folder; made if it isn't there")->required();
  command->add_option("--from", options->from, "folder of the SQL texts");
  command->callback([options] { WithFiles([&] { MakeSample(*options); }); });
}

}  // namespace vorek
