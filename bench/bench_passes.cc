// The passes over a filled grid of a million rows by ten columns: totals, sorts, folded rows, cross
// tables, trees. Beside each stands its aim; the bare loops at the end do the least that such work
// takes with the standard library alone.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "grid/column_layout_pass.h"
#include "grid/column_sort.h"
#include "grid/cross_table.h"
#include "grid/expression_columns.h"
#include "grid/merged_rows.h"
#include "grid/report_context.h"
#include "grid/tree_rows.h"
#include "grid/tree_sort.h"
#include "peak_memory.h"
#include "platform/memory_database.h"
#include "totals/group_totals.h"
#include "totals/summary_rows.h"
#include "vorek/field_type.h"
#include "vorek/no_windows.h"
#include "vorek/system.h"

namespace vorek {
namespace {

constexpr std::int64_t kRows = 1000000;

class NoNotices : public Notices {
 public:
  void ShowMessage(const std::string&, const std::string&) override {}
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }
};

std::int64_t Mixed(std::int64_t row, std::int64_t salt) {
  auto x = static_cast<std::uint64_t>(row * 2654435761 + salt * 40503);
  x ^= x >> 29U;
  x *= 0xBF58476D1CE4E5B9U;
  return static_cast<std::int64_t>((x ^ (x >> 32U)) & 0x7FFFFFFFU);
}

// Columns: 1 ID, 2 key of 100,000 values, 3 one of 30 branches, 4 one of 2,000 customers, 5 a name
// of its own, 6 money, 7 money, 8 a whole number, 9 a double, 10 a date.
std::shared_ptr<ResultSet> MakeRows() {
  using Storage = ResultColumn::Storage;
  auto result = std::make_shared<ResultSet>();
  result->rows = kRows;
  std::vector<ResultColumn>& columns = result->columns;
  columns.emplace_back("ID", kInteger, Storage::kScaled);
  columns.emplace_back("كليد", kInteger, Storage::kScaled);
  columns.emplace_back("شعبه", kVarWChar, Storage::kText);
  columns.emplace_back("مشتري", kVarWChar, Storage::kText);
  columns.emplace_back("شرح", kVarWChar, Storage::kText);
  columns.emplace_back("مبلغ", kCurrency, Storage::kScaled, 4);
  columns.emplace_back("تخفيف", kCurrency, Storage::kScaled, 4);
  columns.emplace_back("تعداد", kInteger, Storage::kScaled);
  columns.emplace_back("نرخ", kDouble, Storage::kDouble);
  columns.emplace_back("تاريخ", kVarWChar, Storage::kText);
  for (std::int64_t row = 0; row < kRows; ++row) {
    columns[0].AppendScaled(row + 1);
    columns[1].AppendScaled(10000000 + Mixed(row, 1) % 100000);
    columns[2].AppendText("شعبه " + std::to_string(Mixed(row, 2) % 30));
    columns[3].AppendText("فروشگاه شماره " + std::to_string(Mixed(row, 3) % 2000));
    columns[4].AppendText("سند " + std::to_string(Mixed(row, 4)) + " از " + std::to_string(row));
    columns[5].AppendScaled(Mixed(row, 5) % 100000000000 - 5000000000);
    columns[6].AppendScaled(Mixed(row, 6) % 1000000000);
    columns[7].AppendScaled(Mixed(row, 7) % 5000);
    columns[8].AppendDouble(static_cast<double>(Mixed(row, 8) % 1000000) / 100);
    columns[9].AppendText("1404/0" + std::to_string(1 + row % 9) + "/1" + std::to_string(row % 10));
  }
  return result;
}

// A tree: 100,000 top rows of which the first has 10,000 children, the others one to ten.
std::shared_ptr<ResultSet> MakeTreeRows() {
  using Storage = ResultColumn::Storage;
  constexpr std::int64_t kTops = 100000;
  auto result = std::make_shared<ResultSet>();
  result->rows = kRows;
  result->columns.emplace_back("ID", kInteger, Storage::kScaled);
  result->columns.emplace_back("ParentID", kInteger, Storage::kScaled);
  result->columns.emplace_back("نام", kVarWChar, Storage::kText);
  result->columns.emplace_back("مبلغ", kCurrency, Storage::kScaled, 4);
  for (std::int64_t row = 0; row < kRows; ++row) {
    result->columns[0].AppendScaled(row + 1);
    if (row < kTops) {
      result->columns[1].AppendNull();
    } else {
      result->columns[1].AppendScaled(row < kTops + 10000 ? 1 : row % kTops + 1);
    }
    result->columns[2].AppendText("حساب " + std::to_string(Mixed(row, 1) % 5000));
    result->columns[3].AppendScaled(Mixed(row, 2) % 100000000000);
  }
  return result;
}

// A control's grid filled with one result.
class Filled {
 public:
  explicit Filled(const ResultSetPtr& rows, const std::string& filter = "") {
    database->Answer("tblVorekReportExpression", MakeResult({{"Name", kVarWChar}}, {}));
    database->Answer("tblVorekReportLayout", MakeResult({{"ColumnNumber", kInteger}}, {}));
    database->Answer("tblVorekReportTranspose", MakeResult({{"ColumnNumber", kInteger}}, {}));
    database->Answer("rows", rows);
    process.data.Rebind("Provider=VorekMemory;");
    state.ReportID = 7;
    state.QuerySource = "rows";
    Recordset& query = process.dten().rssqlQuery;
    query.SetFilter(filter);
    query.Open("rows");
    flxMain.Bind(query);
    state.QueryFields = FieldsOf(query);
    ReportContext report = Context();
    if (filter.empty()) FormCells(report, state.QueryFields);
    flxMain.NumberRows();
    process.main.ReportCache = {{7, "rows", static_cast<std::int16_t>(state.QueryFields.size())}};
  }
  ReportContext Context() { return {process, state, flxMain, flxTranspose, notices, evaluation}; }

  // Adds a calculated column: money times two, with a "/" in most texts.
  void Calculate() {
    database->Answer("tblVorekReportExpression",
                     MakeResult({{"Name", kVarWChar},
                                 {"GeneralExpression", kVarWChar},
                                 {"FirstRowExpression", kVarWChar},
                                 {"JustShowPositiveValue", kInteger}},
                                {{"محاسبه", "C6*2", std::nullopt, std::nullopt}}));
    ReportContext report = Context();
    MakeExpressionColumns(report);
    database->Answer("tblVorekReportExpression", MakeResult({{"Name", kVarWChar}}, {}));
  }

  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  Process process{
      {.providers = {database}, .windows = std::make_shared<NoWindows>(), .clock = MachineClock()}};
  ReportState state;
  Grid flxMain{nullptr, "flxMain"};
  Grid flxTranspose{nullptr, "flxTranspose"};
  NoNotices notices;
  EvaluationClass evaluation;
};

const ResultSetPtr& Rows() {
  static const ResultSetPtr rows = MakeRows();
  return rows;
}
const ResultSetPtr& TreeRows() {
  static const ResultSetPtr rows = MakeTreeRows();
  return rows;
}

// Runs a pass on a freshly filled grid each time, the filling not counted; tells the memory that it
// takes over what the filled grid holds.
template <typename Prepare, typename Pass>
void Measure(benchmark::State& state, const ResultSetPtr& rows, const Prepare& prepare,
             const Pass& pass) {
  double extra = 0;
  for (auto _ : state) {
    state.PauseTiming();
    {
      Filled filled(rows);
      prepare(filled);
      ReportContext report = filled.Context();
      ResetPeak();
      const double before = PeakMegabytes();
      state.ResumeTiming();
      pass(report);
      state.PauseTiming();
      extra = std::max(extra, PeakMegabytes() - before);
    }
    state.ResumeTiming();
  }
  state.counters["extra_MB"] = extra;
}

void Nothing(Filled&) {}

void BM_SumMoney(benchmark::State& state) {  // 20 ms
  Measure(
      state, Rows(), [](Filled& f) { f.flxMain.SetCol(6); }, MakeSumRow);
}
void BM_SumCalculated(benchmark::State& state) {  // 60 ms
  Measure(
      state, Rows(),
      [](Filled& f) {
        f.Calculate();
        f.flxMain.SetCol(11);
      },
      MakeSumRow);
}
// By a number 0.1 s, by a text of 2,000 distinct ones 0.12 s, by one that never repeats 1 s.
void BM_Sort(benchmark::State& state) {
  Measure(state, Rows(), Nothing,
          [&](ReportContext& r) { SortflxMain(r, static_cast<std::int32_t>(state.range(0))); });
}
void BM_SortByHeaderWithSum(benchmark::State& state) {
  Measure(
      state, Rows(),
      [](Filled& f) {
        ReportContext report = f.Context();
        f.flxMain.SetCol(6);
        MakeSumRow(report);
      },
      [](ReportContext& r) { SortByHeader(r, 6); });
}
// 1,000,000 rows to 100,000, one column added, one joined: 0.4 s.
void BM_Fold(benchmark::State& state) {
  Measure(
      state, Rows(),
      [](Filled& f) {
        f.state.MakeMergeFlag = true;
        f.flxMain.Bind(f.process.dten().rssqlQuery);
        f.process.main.ColumnLayouts[2].merge_type = 1;
        f.process.main.ColumnLayouts[6].merge_type = 2;
        f.process.main.ColumnLayouts[4].merge_type = 3;
      },
      MakeFlexMerged);
}
// 30 base rows by 2,000 values, with one value column 0.25 s, with three 0.5 s.
void BM_CrossTable(benchmark::State& state) {
  Measure(
      state, Rows(),
      [&](Filled& f) {
        std::vector<MemoryRow> roles = {{"3", "4", "1000", "0", "2", "0"},
                                        {"4", "4", "1000", "0", "1", "0"}};
        f.database->Answer("tblVorekReportLayout", MakeResult({{"ColumnNumber", kInteger},
                                                               {"Alignment", kSmallInt},
                                                               {"Width", kInteger},
                                                               {"MergeType", kInteger},
                                                               {"TransposeType", kInteger},
                                                               {"MakeSum", kBoolean}},
                                                              roles));
        f.flxMain.SetCols(5 + static_cast<std::int32_t>(state.range(0)) - 2);
      },
      ApplyTranspose);
}

void BM_TreeMarks(benchmark::State& state) {  // 100,000 of 1,000,000: 0.1 s
  for (auto _ : state) {
    state.PauseTiming();
    {
      Filled tree(TreeRows(), "ParentID = NULL");
      tree.state.IDColumn = 0;
      tree.state.ParentIDColumn = 1;
      Recordset& query = tree.process.dten().rssqlQuery;
      ReportContext report = tree.Context();
      state.ResumeTiming();
      MarkTopRows(report, query);
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

void BM_TreeOpen(benchmark::State& state) {  // a row with 10,000 children: 0.05 s
  Filled tree(TreeRows(), "ParentID = NULL");
  tree.state.IDColumn = 0;
  tree.state.ParentIDColumn = 1;
  ReportContext report = tree.Context();
  MarkTopRows(report, tree.process.dten().rssqlQuery);
  for (auto _ : state) {
    ExpandTreeRow(report, 1);
    state.PauseTiming();
    CollapseTreeRow(report, 1);
    state.ResumeTiming();
  }
}

void BM_TreeSort(benchmark::State& state) {  // 100,000 top rows: 0.3 s
  Filled tree(TreeRows(), "ParentID = NULL");
  tree.state.IDColumn = 0;
  tree.state.ParentIDColumn = 1;
  ReportContext report = tree.Context();
  for (auto _ : state) SortTree(report, tree.flxMain, static_cast<std::int32_t>(state.range(0)));
}

// Subtotals of 10,000 groups, the rows sorted before: 1 s beyond the sort. The report numbers its
// columns otherwise, so that a result of its own shape is made: its key in column 1, four amounts
// from column 4 on.
const ResultSetPtr& LedgerRows() {
  static const ResultSetPtr rows = [] {
    using Storage = ResultColumn::Storage;
    auto result = std::make_shared<ResultSet>();
    result->rows = kRows;
    result->columns.emplace_back("حساب", kVarWChar, Storage::kText);
    result->columns.emplace_back("كد", kInteger, Storage::kScaled);
    result->columns.emplace_back("نام", kVarWChar, Storage::kText);
    for (const char* name : {"بدهكار", "بستانكار", "مانده بدهكار", "مانده بستانكار"}) {
      result->columns.emplace_back(name, kCurrency, Storage::kScaled, 4);
    }
    for (const char* name : {"تاريخ", "شرح", "مركز"}) {
      result->columns.emplace_back(name, kVarWChar, Storage::kText);
    }
    for (std::int64_t row = 0; row < kRows; ++row) {
      std::vector<ResultColumn>& columns = result->columns;
      columns[0].AppendText("حساب " + std::to_string(row / 100));
      columns[1].AppendScaled(row);
      columns[2].AppendText("فروشگاه شماره " + std::to_string(Mixed(row, 3) % 2000));
      for (std::size_t i = 3; i < 7; ++i) {
        columns[i].AppendScaled(Mixed(row, static_cast<std::int64_t>(i)) % 100000000000);
      }
      columns[7].AppendText("1404/01/1" + std::to_string(row % 10));
      columns[8].AppendText("سند " + std::to_string(Mixed(row, 4) % 5000));
      columns[9].AppendText("مركز " + std::to_string(row % 7));
    }
    return result;
  }();
  return rows;
}

void BM_GroupTotals(benchmark::State& state) {
  Measure(
      state, LedgerRows(),
      [](Filled& f) {
        f.state.ReportID = 2857;
        f.process.main.ReportCache.clear();
        f.flxMain.SetCol(1);
      },
      [&](ReportContext& r) { MakeGroupTotals(r, state.range(0) != 0, false); });
}

// --- The least that such work takes --------------------------------------------------------------

void BM_BareSortByText(benchmark::State& state) {
  std::vector<std::string> texts;
  for (std::int64_t row = 0; row < kRows; ++row) {
    texts.emplace_back(Rows()->columns[4].Text(static_cast<std::size_t>(row)));
  }
  for (auto _ : state) {
    std::vector<std::uint32_t> order(texts.size());
    for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return texts[a] < texts[b]; });
    benchmark::DoNotOptimize(order.data());
  }
}

void BM_BareCrossTable(benchmark::State& state) {
  const ResultSet& rows = *Rows();
  for (auto _ : state) {
    std::map<std::string, std::map<std::string, std::string>, std::less<>> table;
    for (std::size_t row = 0; row < rows.rows; ++row) {
      table[std::string(rows.columns[2].Text(row))][std::string(rows.columns[3].Text(row))] =
          rows.columns[4].Text(row);
    }
    benchmark::DoNotOptimize(table.size());
  }
}

BENCHMARK(BM_SumMoney)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SumCalculated)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort)->Arg(6)->Arg(8)->Arg(9)->Arg(4)->Arg(5)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SortByHeaderWithSum)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Fold)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CrossTable)->Arg(3)->Arg(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TreeMarks)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TreeOpen)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TreeSort)->Arg(3)->Arg(4)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GroupTotals)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareSortByText)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareCrossTable)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
