#ifndef VOREK_TESTS_SAMPLE_SAMPLE_DATABASE_H_
#define VOREK_TESTS_SAMPLE_SAMPLE_DATABASE_H_

#include <cstdlib>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>

#include "adapters/system/system_files.h"
#include "support/scratch_folder.h"
#include "vorek/script.h"
#include "vorek/sqlite.h"

namespace vorek {

// The sample in a temporary folder, gone with the object.
class SampleDatabase {
 public:
  SampleDatabase() {
    std::set<std::filesystem::path> scripts;
    for (const auto& entry : std::filesystem::directory_iterator("samples")) {
      if (entry.path().extension() == ".sql") scripts.insert(entry.path());
    }
    const auto connection = SqliteProvider()->Connect(ConnectionString() + ";Mode=Create");
    for (const auto& script : scripts) {
      RunScript(*connection, SystemFiles().Read(script.string()),
                {.timeout_seconds = 600, .progress = {}});
    }
  }

  std::string File() const { return folder_.Path("sample.db"); }
  std::string ConnectionString() const { return "Provider=VorekSQLite;Data Source=" + File(); }

 private:
  ScratchFolder folder_;
};

// Made once for all tests.
inline const SampleDatabase& Sample() {
  static const SampleDatabase sample;
  return sample;
}

}  // namespace vorek

#endif  // VOREK_TESTS_SAMPLE_SAMPLE_DATABASE_H_
