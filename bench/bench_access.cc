// 100,000 rows into the sample's Access file, which has a primary key.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "platform/access_file.h"
#include "platform/files.h"
#include "platform/temporary_files.h"
#include "vorek/access.h"
#include "vorek/system.h"

namespace vorek {
namespace {

void BM_Append(benchmark::State& state) {
  const auto files = MachineFiles();
  const auto temporary = MachineTemporaryFiles();
  const std::string path = temporary->Folder() + "/" + temporary->NewName() + ".mdb";
  const auto access = JetAccessFiles(files);
  const std::vector<std::string> names = {"Customer", "InvoiceNumber", "InvoiceDate", "NetValue"};
  for (auto _ : state) {
    files->Write(path, files->Read(VOREK_SAMPLES "/invoices.mdb"));
    const auto connection = access->Open("Data Source=\"" + path + "\"");
    std::vector<std::string> values = {"'بازرگاني اروند'", "", "'1403/01/25'", ""};
    for (int row = 0; row < 100000; ++row) {
      values[1] = std::to_string(row);
      values[3] = std::to_string(row * 17);
      connection->Insert("Invoices", names, values);
    }
    connection->Close();
  }
  temporary->Delete(path);
}

BENCHMARK(BM_Append)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
