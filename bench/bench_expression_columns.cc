// The pass that fills a report's calculated columns: three formulas over a bound result, among them
// a running balance.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "grid/expression_columns.h"
#include "platform/memory_database.h"
#include "state/notices.h"
#include "vorek/evaluation.h"
#include "vorek/field_type.h"
#include "vorek/no_windows.h"
#include "vorek/system.h"

namespace vorek {
namespace {

class NoNotices : public Notices {
 public:
  void ShowMessage(const std::string&, const std::string&) override {}
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }
};

// Debit, credit (money), quantity and a document number.
ResultSetPtr Amounts(std::int64_t rows) {
  auto result = std::make_shared<ResultSet>();
  using Storage = ResultColumn::Storage;
  result->columns.emplace_back("Debit", kCurrency, Storage::kScaled, 4);
  result->columns.emplace_back("Credit", kCurrency, Storage::kScaled, 4);
  result->columns.emplace_back("Quantity", kInteger, Storage::kScaled, 0);
  for (std::int64_t row = 0; row < rows; ++row) {
    result->columns[0].AppendScaled((row * 7919 % 1000003) * 12500);
    result->columns[1].AppendScaled((row * 104729 % 999983) * 10000);
    result->columns[2].AppendScaled(row % 90 + 1);
  }
  result->rows = static_cast<std::size_t>(rows);
  return result;
}

struct Formula {
  const char* name;
  const char* general;
};

// A control's grid on a result of so many rows.
struct Report {
  Report(std::int64_t rows, const std::vector<Formula>& formulas) {
    database->Answer("rows", Amounts(rows));
    std::vector<MemoryRow> expressions;
    for (const Formula& formula : formulas) {
      expressions.push_back({formula.name, formula.general, std::nullopt, std::nullopt});
    }
    database->Answer("tblVorekReportExpression", MakeResult({{"Name", kVarWChar},
                                                             {"GeneralExpression", kVarWChar},
                                                             {"FirstRowExpression", kVarWChar},
                                                             {"JustShowPositiveValue", kInteger}},
                                                            expressions));
    process.data.Rebind("Provider=VorekMemory;");
    process.dten().rssqlQuery.Open("rows");
    grid.Bind(process.dten().rssqlQuery);
  }

  void Fill() {
    grid.SetCols(4);
    ReportContext report{process, state, grid, transpose, notices, evaluation};
    MakeExpressionColumns(report);
  }

  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  Process process{{{database}, std::make_shared<NoWindows>(), MachineClock()}};
  ReportState state;
  Grid grid{nullptr, "flxMain"};
  Grid transpose{nullptr, "flxTranspose"};
  NoNotices notices;
  EvaluationClass evaluation;
};

void Fill(benchmark::State& state, const std::vector<Formula>& formulas) {
  Report report(state.range(0), formulas);
  for (auto _ : state) report.Fill();
  state.SetItemsProcessed(state.iterations() * state.range(0) *
                          static_cast<std::int64_t>(formulas.size()));
}

void OneFormula(benchmark::State& state) { Fill(state, {{"rate", "(C1+C2*2)/C3"}}); }
void RunningBalance(benchmark::State& state) { Fill(state, {{"balance", "C1-C2+P4"}}); }
void ThreeFormulas(benchmark::State& state) {
  Fill(state, {{"balance", "C1-C2+P4"}, {"rate", "(C1+C2*2)/C3"}, {"part", "C5*C3/100"}});
}

BENCHMARK(OneFormula)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(RunningBalance)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(ThreeFormulas)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
