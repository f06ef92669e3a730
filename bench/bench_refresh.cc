// From opening a report's query to the filled, numbered and coloured grid, beside a bare loop over
// the same statement that copies each column into a std::string.
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "catalog/data_session.h"
#include "engine/report_control.h"
#include "peak_memory.h"
#include "vorek/report.h"
#include "vorek/sqlite.h"
#include "vorek/system.h"

namespace vorek {
namespace {

constexpr const char* kQuery =
    "select ID, Code, Name, City, Note, Price, Amount, Total, Qty, Day from tblBench";

const char* const kSchema[] = {
    "create table tblVorekReport (ID int, Title nvarchar(100), Notes nvarchar(100), CreateDate "
    "datetime, SQLQuery nvarchar(max), MakeTree int, MakeTranspose bit, MakeMerge bit, MakeSecure "
    "bit, ShowDiagram bit, FormTypeID int, FontSize int, ReportRowHeight int)",
    "create table tblVorekReportLayout (ReportID int, ColumnNumber int, Alignment smallint, Width "
    "smallint, MergeType int, TransposeType int, MakeSum bit)",
    "create table tblVorekReportTranspose (ReportID int, ColumnNumber int, Alignment smallint, "
    "Width "
    "smallint, MergeType int)",
    "create table tblVorekReportExpression (ReportID int, ColumnNumber int, Name nvarchar(100))",
    "create table tblVorekSystemParameters (ID int, Value int)",
    "create table tblUser (ID int, FullName nvarchar(50), BranchID int)",
    "create table tblEmployee (ID int, FirstName nvarchar(50), SureName nvarchar(50))",
    "create table tblPosition (ID int, Name nvarchar(50))",
    "create table tblBench (ID int, Code int, Name nvarchar(50), City nvarchar(50), Note "
    "nvarchar(100), Price money, Amount money, Total money, Qty int, Day nvarchar(10))",
    "insert into tblBench values (1, 1000, N'شرکت بازرگاني شماره', N'تهران', N'شرح سند', 1250.5, "
    "1234567, 98765432.25, 3, '1404/01/01')"};

// A database of so many rows, made once in the folder for temporary files.
std::string Database(long rows) {
  const std::string file = (std::filesystem::temp_directory_path() /
                            ("vorek-bench-refresh-" + std::to_string(rows) + ".db"))
                               .string();
  const std::string connection = "Provider=VorekSQLite;Data Source=" + file;
  if (std::filesystem::exists(file)) return connection;
  DataSession session({SqliteProvider()});
  session.Rebind(connection + ";Mode=Create");
  Recordset& slot = session.Get().rssqlQuery;
  for (const char* text : kSchema) slot.Open(text);
  slot.Open("insert into tblVorekReport values (1, 'x', null, '2024-03-20', N'" +
            std::string(kQuery) + "', 0, 0, 0, 0, 0, null, -1, -1)");
  for (long made = 1; made < rows; made *= 2) {
    const std::string count = std::to_string(made);
    slot.Open("insert into tblBench select top " + std::to_string(std::min(made, rows - made)) +
              " ID + " + count + ", Code + 7, Name + N' ' + cast(ID + " + count +
              " as nvarchar(10)), City, Note + N' و', Price + 13.25, Amount + " + count +
              ", Total, (Qty + 5) % 90, Day from tblBench");
    // Names and notes must not grow with each doubling.
    slot.Open(
        "update tblBench set Name = left(Name, 19) + N' ' + cast(ID as nvarchar(10)), Note = "
        "left(Note, 9) where ID > " +
        count);
  }
  return connection;
}

void BM_Refresh(benchmark::State& state) {
  WorldOptions options;
  options.providers = {SqliteProvider()};
  AddSystemServices(options);
  World world(options);
  VorekReport1 report(world);
  report.SetOleConnectionString(Database(state.range(0)));
  report.SetUserID(1);
  ResetPeak();
  if (!report.View(1) || report.Rows() != state.range(0) + 1) state.SkipWithError("not shown");
  for (auto _ : state) {
    if (!report.Refresh()) state.SkipWithError("not refreshed");
  }
  state.counters["peak_MB"] = PeakMegabytes();
}

void BM_BareLoop(benchmark::State& state) {
  const std::string connection = Database(state.range(0));
  sqlite3* db = nullptr;
  sqlite3_open(connection.substr(connection.rfind('=') + 1).c_str(), &db);
  ResetPeak();
  for (auto _ : state) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, kQuery, -1, &statement, nullptr);
    std::vector<std::string> cells;
    while (sqlite3_step(statement) == SQLITE_ROW) {
      for (int column = 0; column < 10; ++column) {
        const unsigned char* const text = sqlite3_column_text(statement, column);
        cells.emplace_back(text == nullptr ? "" : reinterpret_cast<const char*>(text));
      }
    }
    sqlite3_finalize(statement);
    benchmark::DoNotOptimize(cells.data());
  }
  state.counters["peak_MB"] = PeakMegabytes();
  sqlite3_close(db);
}

void BM_SortColumn(benchmark::State& state) {
  WorldOptions options;
  options.providers = {SqliteProvider()};
  AddSystemServices(options);
  World world(options);
  VorekReport1 report(world);
  report.SetOleConnectionString(Database(1000000));
  report.View(1);
  Grid& grid = report.Impl().flxMain;
  grid.SetCol(static_cast<std::int32_t>(state.range(0)));
  for (auto _ : state) grid.Sort(static_cast<std::int32_t>(state.range(1)));
}

BENCHMARK(BM_BareLoop)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Refresh)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SortColumn)->Args({6, 3})->Args({3, 5})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
