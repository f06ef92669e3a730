// Staged rows laid out by the sample's list of invoices, grouped with sums of groups and pages:
// every page made as a painter asks for it, and painted into a PDF; and the staging before it.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <utility>

#include "adapters/qt/print_painter.h"
#include "export/crystal_print.h"
#include "peak_memory.h"
#include "print/print_document.h"
#include "print/template_job.h"
#include "vorek/field_type.h"
#include "vorek/files.h"
#include "vorek/no_windows.h"
#include "vorek/sqlite.h"
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

print::PrintTemplate Invoices() {
  return print::LoadTemplate(*MachineFiles(), PugiXmlReader(),
                             VOREK_PRINT_TEMPLATES "/invoices.xml");
}

void BM_Pages(benchmark::State& state) {
  const ResultSetPtr rows = Staged(state.range(0));
  ResetPeak();
  std::size_t items = 0;
  for (auto _ : state) {
    const print::PrintDocument document(Invoices(), {rows, {}});
    for (std::size_t page = 0; page < document.PageCount(); ++page) {
      items += document.Page(page).size();
    }
  }
  benchmark::DoNotOptimize(items);
  state.counters["peak MB"] = PeakMegabytes();
}

BENCHMARK(BM_Pages)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_Pdf(benchmark::State& state) {
  const QTemporaryDir folder;
  const ResultSetPtr rows = Staged(state.range(0));
  ResetPeak();
  for (auto _ : state) {
    const print::PrintDocument document(Invoices(), {rows, {}});
    qt::WritePdf(document, folder.filePath("pages.pdf"));
    state.counters["pages"] = static_cast<double>(document.PageCount());
  }
  state.counters["peak MB"] = PeakMegabytes();
}

BENCHMARK(BM_Pdf)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// --- Staging
// --------------------------------------------------------------------------------------

class NoNotices : public Notices {
 public:
  void ShowMessage(const std::string&, const std::string&) override {}
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }
};

// A grid of ten columns in front of a database with the tables that rows are staged in.
struct StagedReport {
  StagedReport(const QString& folder, std::int32_t rows) {
    process.data.Rebind("Provider=VorekSQLite;Data Source=" + folder.toStdString() +
                        "/staged.db;Mode=Create");
    std::string columns;
    for (int c = 1; c <= 50; ++c) columns += ", Column" + std::to_string(c) + " nvarchar(200)";
    process.dten().rssqlGeneral1.Open(
        "create table tblVorekCrystalReport (UserID int, ReportID int, Sequence int" + columns +
        ")");
    state.UserID = 1;
    flxMain.SetRows(rows + 1);
    flxMain.SetCols(11);
    for (std::int32_t row = 1; row <= rows; ++row) {
      for (std::int32_t col = 1; col <= 10; ++col) {
        flxMain.WriteCell(row, col, "بازرگاني شماره " + std::to_string(row * col));
      }
    }
  }

  Process process{{.providers = {SqliteProvider()},
                   .windows = std::make_shared<NoWindows>(),
                   .clock = MachineClock()}};
  ReportState state;
  NoNotices notices;
  Grid flxMain{nullptr, "flxMain"};
  Grid flxTranspose{nullptr, "flxTranspose"};
  EvaluationClass evaluation;
  ReportContext context{process, state, flxMain, flxTranspose, notices, evaluation};
};

void BM_Stage(benchmark::State& state) {
  const QTemporaryDir folder;
  StagedReport report(folder.path(), static_cast<std::int32_t>(state.range(0)));
  for (auto _ : state) StageRows(report.context);
}

BENCHMARK(BM_Stage)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek

// Fonts need an application, and no screen.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
