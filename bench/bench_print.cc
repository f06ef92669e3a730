// Staged rows laid out by the sample's list of invoices, grouped with sums of groups and pages, and
// every page made as a painter asks for it.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <utility>

#include "peak_memory.h"
#include "platform/field_type.h"
#include "platform/files.h"
#include "print/print_document.h"
#include "print/template_job.h"
#include "vorek/system.h"
#include "vorek/xml.h"

namespace vorek {
namespace {

// Groups of ten rows.
ResultSetPtr Staged(std::int64_t rows) {
  auto result = std::make_shared<ResultSet>();
  result->columns.emplace_back("Sequence", kInteger, ResultColumn::Storage::kScaled);
  for (int c = 1; c <= 50; ++c) {
    result->columns.emplace_back("Column" + std::to_string(c), kVarWChar,
                                 ResultColumn::Storage::kText);
  }
  for (std::int64_t row = 0; row < rows; ++row) {
    result->columns[0].AppendScaled(row);
    result->columns[1].AppendText("بازرگاني شماره " + std::to_string(row / 10));
    result->columns[2].AppendText(std::to_string(14030000 + row));
    result->columns[3].AppendText("1403/05/12");
    for (std::size_t c = 4; c <= 50; ++c) {
      result->columns[c].AppendText(c == 4 ? std::to_string(row * 1237) : "");
    }
  }
  result->rows = static_cast<std::size_t>(rows);
  return result;
}

void BM_Pages(benchmark::State& state) {
  const auto files = MachineFiles();
  const print::PrintTemplate made =
      print::LoadTemplate(*files, PugiXmlReader(), VOREK_PRINT_TEMPLATES "/invoices.xml");
  const ResultSetPtr rows = Staged(state.range(0));
  ResetPeak();
  std::size_t items = 0;
  for (auto _ : state) {
    const print::PrintDocument document(made, {rows, {}});
    for (std::size_t page = 0; page < document.PageCount(); ++page) {
      items += document.Page(page).size();
    }
  }
  benchmark::DoNotOptimize(items);
  state.counters["peak MB"] = PeakMegabytes();
}

BENCHMARK(BM_Pages)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
