// A quick search through 1,000,000 cells that none of them ends, beside the same search for bytes
// in the result's own columns; and a run's filter on a text and a number.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <string_view>

#include "catalog/recordset.h"
#include "grid/cell_search.h"
#include "vorek/field_type.h"

namespace vorek {
namespace {

constexpr std::size_t kRows = 1000000;

ResultSetPtr Rows() {
  static const ResultSetPtr rows = [] {
    auto result = std::make_shared<ResultSet>();
    result->columns.emplace_back("Name", kVarWChar, ResultColumn::Storage::kText);
    result->columns.emplace_back("Price", kCurrency, ResultColumn::Storage::kScaled, 4);
    for (std::size_t row = 0; row < kRows; ++row) {
      result->columns[0].AppendText("شركت بازرگاني تهران شماره " + std::to_string(row));
      const auto price = static_cast<std::int64_t>(row % 90001) * 12345;
      result->columns[1].AppendScaled(row % 3 == 0 ? -price : price);
    }
    result->rows = kRows;
    return ResultSetPtr(result);
  }();
  return rows;
}

void Search(benchmark::State& state, std::size_t field, CellForm form, std::string_view text) {
  const FieldSource source(Rows(), field, nullptr, form);
  std::string scratch;
  for (auto _ : state) {
    const CellSearch search(text);
    std::size_t found = 0;
    for (std::size_t row = 0; row < kRows; ++row) {
      found += search.FoundIn(source.Plain(row, scratch)) ? 1U : 0U;
    }
    benchmark::DoNotOptimize(found);
  }
}

void BM_SearchTexts(benchmark::State& state) { Search(state, 0, CellForm::kPlain, "اصفهان"); }
void BM_SearchRareLetter(benchmark::State& state) { Search(state, 0, CellForm::kPlain, "ژاله"); }
void BM_SearchMoney(benchmark::State& state) { Search(state, 1, CellForm::kMoney, "99999999"); }

void BM_BytesInTexts(benchmark::State& state) {
  const ResultColumn& column = Rows()->columns[0];
  for (auto _ : state) {
    std::size_t found = 0;
    for (std::size_t row = 0; row < kRows; ++row) {
      found += column.Text(row).find("اصفهان") == std::string_view::npos ? 0U : 1U;
    }
    benchmark::DoNotOptimize(found);
  }
}

void BM_FilterTextAndNumber(benchmark::State& state) {
  const ResultSetPtr rows = Rows();
  for (auto _ : state) {
    const RecordFilter filter("[Name] like '%تهران%99%' AND [Price] > 1000", *rows);
    std::size_t passed = 0;
    for (std::size_t row = 0; row < kRows; ++row) passed += filter.Matches(row) ? 1U : 0U;
    benchmark::DoNotOptimize(passed);
  }
}

BENCHMARK(BM_SearchTexts)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchRareLetter)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchMoney)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BytesInTexts)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FilterTextAndNumber)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
