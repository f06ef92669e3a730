// 100,000 rows into the sample's Access file, which has a primary key: by themselves, and from a
// grid through the dialog.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "export/access_export.h"
#include "export/form_access.h"
#include "platform/memory_database.h"
#include "vorek/access.h"
#include "vorek/access_file.h"
#include "vorek/field_type.h"
#include "vorek/files.h"
#include "vorek/no_windows.h"
#include "vorek/system.h"
#include "vorek/temporary_files.h"

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

// Confirms the dialog's one table.
class Confirming : public NoWindows {
 public:
  explicit Confirming(std::string path) : path_(std::move(path)) {}
  void ShowModal(Form& form) override {
    auto& dialog = dynamic_cast<FormAccess&>(form);
    dialog.txtSaveFileName.SetText(path_);
    dialog.ListAccessTables(path_);
    dialog.cmdOk.Click();
  }

 private:
  std::string path_;
};

class Told : public Notices {
 public:
  void ShowMessage(const std::string& title, const std::string& text) override {
    told = title + ": " + text;
  }
  int ShowConfirm(const std::string&, const std::string&) override { return 2; }

  std::string told;
};

// Columns as the file's fields name them: the customer, a number, a date, an amount.
ResultSetPtr Invoices(std::int64_t rows) {
  using Storage = ResultColumn::Storage;
  auto result = std::make_shared<ResultSet>();
  result->columns.emplace_back("Customer", kVarWChar, Storage::kText);
  result->columns.emplace_back("InvoiceNumber", kInteger, Storage::kScaled);
  result->columns.emplace_back("InvoiceDate", kVarWChar, Storage::kText);
  result->columns.emplace_back("NetValue", kCurrency, Storage::kScaled, 4);
  for (std::int64_t row = 0; row < rows; ++row) {
    result->columns[0].AppendText("بازرگاني اروند");
    result->columns[1].AppendScaled(row);
    result->columns[2].AppendText("1403/01/25");
    result->columns[3].AppendScaled(row * 170000);
  }
  result->rows = static_cast<std::size_t>(rows);
  return result;
}

void BM_ExportGrid(benchmark::State& state) {
  const auto files = MachineFiles();
  const auto temporary = MachineTemporaryFiles();
  const std::string path = temporary->Folder() + "/" + temporary->NewName() + ".mdb";
  const auto database = std::make_shared<MemoryDatabase>();
  Process process({.providers = {database},
                   .windows = std::make_shared<Confirming>(path),
                   .clock = MachineClock(),
                   .files = files,
                   .access_file = JetAccessFiles(files)});
  process.data.Rebind("Provider=VorekMemory;");
  database->Answer("rows", Invoices(100000));
  process.dten().rssqlQuery.Open("rows");
  Grid main(nullptr, "flxMain");
  Grid transpose(nullptr, "flxTranspose");
  main.Bind(process.dten().rssqlQuery);
  main.ReformColumn(4, CellForm::kMoney);
  main.NumberRows();
  ReportState report_state;
  Told notices;
  EvaluationClass evaluation;
  ReportContext report{process, report_state, main, transpose, notices, evaluation};
  for (auto _ : state) {
    files->Write(path, files->Read(VOREK_SAMPLES "/invoices.mdb"));
    ExportAccess(report);
  }
  if (!notices.told.starts_with("موفقيت")) state.SkipWithError(notices.told.c_str());
  temporary->Delete(path);
}

BENCHMARK(BM_ExportGrid)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorek

BENCHMARK_MAIN();
