// A grid of 300,000 rows, with a sum, on some 10,000 pages: until the pages are counted, their
// totals known, and the first and the last one laid out.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "platform/memory_database.h"
#include "print/grid_print.h"
#include "support/random_report.h"
#include "totals/summary_rows.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

ResultSetPtr Invoices(std::int64_t rows) {
  auto result = std::make_shared<ResultSet>();
  result->columns.emplace_back("شماره", kInteger, ResultColumn::Storage::kScaled);
  result->columns.emplace_back("مشتري", kVarWChar, ResultColumn::Storage::kText);
  result->columns.emplace_back("مبلغ", kCurrency, ResultColumn::Storage::kScaled);
  for (std::int64_t row = 0; row < rows; ++row) {
    result->columns[0].AppendScaled(14030000 + row);
    result->columns[1].AppendText("بازرگاني شماره " + std::to_string(row % 2000));
    result->columns[2].AppendScaled(row * 1237);
  }
  result->rows = static_cast<std::size_t>(rows);
  return result;
}

void BM_Open(benchmark::State& state) {
  RandomReport report(1);
  report.database->Answer("rows", Invoices(state.range(0)));
  report.Fill(false);
  ReportContext context = report.Context();
  report.flxMain.SetCol(3);
  MakeSumRow(context);
  print::PageSetup setup;
  setup.landscape = true;
  std::size_t pages = 0;
  for (auto _ : state) {
    const print::PrintedColumns columns(ColumnView(report.flxMain), report.flxMain);
    const print::GridPrint print(context, columns, {"فاكتورها", "", ""}, setup);
    pages = print.PageCount();
    benchmark::DoNotOptimize(print.Page(0).size() + print.Page(pages - 1).size());
  }
  state.counters["pages"] = static_cast<double>(pages);
}

BENCHMARK(BM_Open)->Arg(300000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
