// What a step from row to row costs: the record behind it, by the metadata that is read once, for a
// report with a form of its own and for one whose rows name theirs; beside the same steps on a
// report that leads to no form.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "adapters/system/system_files.h"
#include "engine/report_control.h"
#include "vorek/report.h"
#include "vorek/script.h"
#include "vorek/sqlite.h"
#include "vorek/system.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

// The sample, in a file that the program leaves behind.
const std::string& Sample() {
  static const std::string connection = [] {
    const fs::path file = fs::temp_directory_path() / "vorek-bench-selection.db";
    fs::remove(file);
    std::string text = "Provider=VorekSQLite;Data Source=" + file.string() + ";Mode=Create";
    const auto database = SqliteProvider()->Connect(text);
    std::vector<fs::path> scripts;
    for (const fs::directory_entry& entry : fs::directory_iterator(VOREK_SAMPLES)) {
      if (entry.path().extension() == ".sql") scripts.push_back(entry.path());
    }
    std::sort(scripts.begin(), scripts.end());
    const SystemFiles files;
    for (const fs::path& script : scripts) {
      RunScript(*database, files.Read(script.string()), {.timeout_seconds = 600, .progress = {}});
    }
    return text;
  }();
  return connection;
}

void BM_NextRow(benchmark::State& state) {
  WorldOptions options;
  options.providers = {SqliteProvider()};
  AddSystemServices(options);
  World world(std::move(options));
  VorekReport1 report(world);
  report.SetUserID(1);
  report.SetPositionID(1);
  report.SetOleConnectionString(Sample());
  report.View(static_cast<std::int32_t>(state.range(0)));
  Grid& grid = report.Impl().flxMain;
  std::int32_t row = 1;
  for (auto _ : state) {
    row = row + 1 < grid.Rows() ? row + 1 : 1;
    grid.SelectByUser(row, 1, row, 1);
  }
  state.SetLabel(report.UniqueWC());
}

BENCHMARK(BM_NextRow)->Arg(201)->Arg(207)->Arg(221)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
