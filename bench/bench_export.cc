// A million rows by ten columns out to files: a workbook beside one of libxlsxwriter in its
// constant memory, text beside the bare write of its bytes; and templates that are filled.
#include <benchmark/benchmark.h>
#include <sys/stat.h>
#include <xlsxwriter.h>

#include <cstdio>
#include <memory>
#include <string>

#include "adapters/system/system_files.h"
#include "export/excel_export.h"
#include "export/template_fill.h"
#include "export/text_export.h"
#include "peak_memory.h"
#include "platform/memory_database.h"
#include "vorek/field_type.h"
#include "vorek/no_windows.h"
#include "vorek/system.h"
#include "vorek/xlsx.h"

namespace vorek {
namespace {

constexpr const char* kFile = "bench-export.tmp";

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

std::shared_ptr<ResultSet> MakeRows(std::int64_t rows) {
  using Storage = ResultColumn::Storage;
  auto result = std::make_shared<ResultSet>();
  result->rows = static_cast<std::size_t>(rows);
  std::vector<ResultColumn>& columns = result->columns;
  columns.emplace_back("ID", kInteger, Storage::kScaled);
  for (const char* const name : {"شعبه", "مشتري", "شرح", "تاريخ"}) {
    columns.emplace_back(name, kVarWChar, Storage::kText);
  }
  for (const char* const name : {"مبلغ", "تخفيف", "ماليات", "خالص"}) {
    columns.emplace_back(name, kCurrency, Storage::kScaled, 4);
  }
  columns.emplace_back("تعداد", kInteger, Storage::kScaled);
  for (std::int64_t row = 0; row < rows; ++row) {
    columns[0].AppendScaled(row + 1);
    columns[1].AppendText("شعبه " + std::to_string(Mixed(row, 2) % 30));
    columns[2].AppendText("فروشگاه شماره " + std::to_string(Mixed(row, 3) % 2000));
    columns[3].AppendText("سند " + std::to_string(Mixed(row, 4)));
    columns[4].AppendText("1404/0" + std::to_string(1 + row % 9) + "/1" + std::to_string(row % 10));
    for (std::size_t money = 5; money < 9; ++money) {
      columns[money].AppendScaled(Mixed(row, static_cast<std::int64_t>(money)) * 10000);
    }
    columns[9].AppendScaled(Mixed(row, 7) % 5000);
  }
  return result;
}

// A report of so many rows as a run leaves it.
struct FilledReport {
  explicit FilledReport(std::int64_t rows) {
    process.data.Rebind("Provider=VorekMemory;");
    database->Answer("rows", MakeRows(rows));
    process.dten().rssqlQuery.Open("rows");
    flxMain.Bind(process.dten().rssqlQuery);
    for (std::size_t i = 0; i < process.dten().rssqlQuery.FieldCount(); ++i) {
      const Recordset& query = process.dten().rssqlQuery;
      state.QueryFields.push_back({query.FieldName(i), query.FieldType(i)});
      if (query.FieldType(i) == kCurrency) {
        flxMain.ReformColumn(static_cast<std::int32_t>(i) + 1, CellForm::kMoney);
      }
    }
    process.dten().rssqlQuery.Close();
    flxMain.NumberRows();
    state.ReportDistributed = "توزيع شده";
  }
  ReportContext Context() { return {process, state, flxMain, flxTranspose, notices, evaluation}; }

  std::shared_ptr<MemoryDatabase> database = std::make_shared<MemoryDatabase>();
  Process process{{.providers = {database},
                   .windows = std::make_shared<NoWindows>(),
                   .clock = MachineClock(),
                   .files = MachineFiles(),
                   .spreadsheet = XlsxSpreadsheet()}};
  ReportState state;
  Grid flxMain{nullptr, "flxMain"};
  Grid flxTranspose{nullptr, "flxTranspose"};
  NoNotices notices;
  EvaluationClass evaluation;
};

FilledReport& Million() {
  static FilledReport report(1000000);
  return report;
}

void NoteSize(benchmark::State& state, double before) {
  struct stat found {};
  ::stat(kFile, &found);
  state.counters["file_MB"] = static_cast<double>(found.st_size) / (1 << 20);
  state.counters["over_MB"] = PeakMegabytes() - before;
}

template <typename Work>
void Measure(benchmark::State& state, const Work& work) {
  Million();
  ResetPeak();
  const double before = PeakMegabytes();
  for (auto _ : state) work();
  NoteSize(state, before);
  std::remove(kFile);
}

void Workbook(benchmark::State& state) {
  Measure(state, [] {
    ReportContext report = Million().Context();
    PlainMoney money(report);
    WriteNewWorkbook(report, money, {}, SystemFiles().Create(kFile));
    money.PutBack();
  });
}

void WorkbookByLibxlsxwriter(benchmark::State& state) {
  Measure(state, [] {
    lxw_workbook_options options = {};
    options.constant_memory = LXW_TRUE;
    lxw_workbook* const book = workbook_new_opt(kFile, &options);
    lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
    lxw_format* const format = workbook_add_format(book);
    format_set_num_format(format, "@");
    const Grid& grid = Million().flxMain;
    for (std::int32_t row = 0; row < grid.Rows(); ++row) {
      for (std::int32_t col = 1; col < grid.Cols(); ++col) {
        worksheet_write_string(sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(col - 1),
                               grid.TextMatrix(row, col).c_str(), format);
      }
    }
    workbook_close(book);
  });
}

void Text(benchmark::State& state, TextFileOptions::Kind kind) {
  Measure(state, [kind] {
    ReportContext report = Million().Context();
    TextFileOptions options;
    options.kind = kind;
    const auto out = SystemFiles().Create(kFile);
    WriteTextFile(report, options, *out);
    out->Commit();
  });
}
void Utf16Text(benchmark::State& state) { Text(state, TextFileOptions::Kind::kDelimited); }
void CommaText(benchmark::State& state) { Text(state, TextFileOptions::Kind::kComma); }

// The bytes of such a file, written in large pieces.
void BareWrite(benchmark::State& state) {
  const std::string piece(1 << 18, 'x');
  const std::int64_t bytes = state.range(0) << 20;
  for (auto _ : state) {
    const auto out = SystemFiles().Create(kFile);
    for (std::int64_t at = 0; at < bytes; at += 1 << 18) out->Write(piece);
    out->Commit();
  }
  std::remove(kFile);
}

// Twenty rows of ten cells, one of them the detail row, and sums below it.
std::string MakeTemplate() {
  const std::string path = "bench-template.xlsx";
  lxw_workbook* const book = workbook_new(path.c_str());
  lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
  for (lxw_row_t row = 0; row < 20; ++row) {
    for (lxw_col_t col = 0; col < 10; ++col) {
      const std::string marker = "#" + std::to_string(col + 2);
      if (row == 4) {
        worksheet_write_string(sheet, row, col, marker.c_str(), nullptr);
      } else if (row == 5) {
        const std::string letter(1, static_cast<char>('A' + col));
        worksheet_write_formula(sheet, row, col, ("=SUM(" + letter + "4:" + letter + "5)").c_str(),
                                nullptr);
      } else {
        worksheet_write_string(sheet, row, col, row == 2 ? "^-4" : "title", nullptr);
      }
    }
  }
  workbook_close(book);
  return path;
}

void FillTemplate(benchmark::State& state) {
  FilledReport filled(state.range(0));
  const std::string path = MakeTemplate();
  ResetPeak();
  const double before = PeakMegabytes();
  for (auto _ : state) {
    ReportContext report = filled.Context();
    const PlainMoney money(report);
    FillExcelTemplate(report, filled.flxMain, path, money, *SystemFiles().Create(kFile));
  }
  NoteSize(state, before);
  std::remove(kFile);
  std::remove(path.c_str());
}

BENCHMARK(FillTemplate)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(Workbook)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(WorkbookByLibxlsxwriter)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(Utf16Text)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(CommaText)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BareWrite)->Arg(230)->Arg(150)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
