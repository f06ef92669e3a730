// Opening and scrolling a million rows by ten columns in a window: the grid of this project beside
// Qt's own table over the same rows.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollBar>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <memory>

#include "adapters/qt/grid_area.h"
#include "adapters/qt/presenter.h"
#include "catalog/data_session.h"
#include "platform/memory_database.h"
#include "vorek/field_type.h"
#include "widgets/basic_controls.h"

namespace vorek::qt {
namespace {

constexpr int kRows = 1'000'000;
constexpr int kCols = 10;

const std::vector<MemoryRow>& Records() {
  static const std::vector<MemoryRow> records = [] {
    std::vector<MemoryRow> rows(kRows);
    for (int row = 0; row < kRows; ++row) {
      auto& cells = rows[static_cast<std::size_t>(row)];
      for (int col = 0; col < kCols; ++col) {
        const std::string number = std::to_string(row % 9973 * (col + 1));
        cells.emplace_back(col % 3 == 0 ? "نام مشتري " + number : number);
      }
    }
    return rows;
  }();
  return records;
}

ResultSetPtr Result() {
  static const ResultSetPtr result = [] {
    std::vector<MemoryColumn> columns;
    for (int col = 0; col < kCols; ++col) {
      columns.push_back({"ستون " + std::to_string(col), col % 3 == 0 ? kVarWChar : kInteger});
    }
    return MakeResult(columns, Records());
  }();
  return result;
}

// A window with the grid, bound to the rows.
class GridWindow {
 public:
  GridWindow() {
    auto database = std::make_shared<MemoryDatabase>();
    database->Answer("rows", Result());
    session_ = std::make_unique<DataSession>(ProviderList{database});
    session_->Rebind("Provider=VorekMemory;");
    session_->Get().rssqlQuery.Open("rows");
    grid.Bind(session_->Get().rssqlQuery);
    grid.NumberRows();
    grid.SetRightToLeft(true);
    grid.Move(0, 0, 18000, 12000);
    presenter_ = std::make_unique<Presenter>(root_, window_);
    window_.resize(1300, 850);
    window_.show();
    area = window_.findChild<GridArea*>("flx");
    area->SyncBars();
  }
  void Paint() { benchmark::DoNotOptimize(area->viewport()->grab()); }

 private:
  std::unique_ptr<DataSession> session_;
  QWidget window_;
  Frame root_{nullptr, "root"};

 public:
  Grid grid{&root_, "flx"};
  GridArea* area = nullptr;

 private:
  std::unique_ptr<Presenter> presenter_;
};

// Rows that are in memory already, up to the first picture of them.
void GridFirstPaint(benchmark::State& state) {
  Result();
  for (auto step : state) GridWindow().Paint();
}
BENCHMARK(GridFirstPaint)->Unit(benchmark::kMillisecond);

void GridPageDown(benchmark::State& state) {
  GridWindow window;
  QScrollBar& bar = *window.area->verticalScrollBar();
  window.Paint();
  for (auto step : state) {
    bar.setValue(bar.value() + bar.pageStep());
    window.Paint();
  }
  state.counters["grid_bytes"] = static_cast<double>(window.grid.Memory());
}
BENCHMARK(GridPageDown)->Unit(benchmark::kMillisecond);

std::unique_ptr<QStandardItemModel> MakeModel() {
  auto model = std::make_unique<QStandardItemModel>(kRows, kCols);
  for (int row = 0; row < kRows; ++row) {
    for (int col = 0; col < kCols; ++col) {
      const auto& cell = Records()[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
      model->setItem(row, col, new QStandardItem(QString::fromStdString(*cell)));
    }
  }
  return model;
}

void PrepareView(QTableView& view, QStandardItemModel& model) {
  view.setLayoutDirection(Qt::RightToLeft);
  view.setModel(&model);
  view.resize(1300, 850);
  view.show();
}

void ItemModelFirstPaint(benchmark::State& state) {
  Records();
  for (auto step : state) {
    const std::unique_ptr<QStandardItemModel> model = MakeModel();
    QTableView view;
    PrepareView(view, *model);
    benchmark::DoNotOptimize(view.viewport()->grab());
  }
}
BENCHMARK(ItemModelFirstPaint)->Unit(benchmark::kMillisecond)->Iterations(1);

void ItemModelPageDown(benchmark::State& state) {
  const std::unique_ptr<QStandardItemModel> model = MakeModel();
  QTableView view;
  PrepareView(view, *model);
  QScrollBar& bar = *view.verticalScrollBar();
  for (auto step : state) {
    bar.setValue(bar.value() + bar.pageStep());
    benchmark::DoNotOptimize(view.viewport()->grab());
  }
}
BENCHMARK(ItemModelPageDown)->Unit(benchmark::kMillisecond);

// The same rows in a file, read by Qt's own model to their end, as a scroll bar over all of them
// needs.
class SqlRows {
 public:
  SqlRows() {
    database_ = QSqlDatabase::addDatabase("QSQLITE", "bench");
    database_.setDatabaseName(folder_.filePath("rows.db"));
    database_.open();
    QSqlQuery query(database_);
    query.exec("create table tblRows (c0, c1, c2, c3, c4, c5, c6, c7, c8, c9)");
    database_.transaction();
    query.prepare("insert into tblRows values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    for (const MemoryRow& row : Records()) {
      for (int col = 0; col < kCols; ++col) {
        query.bindValue(col, QString::fromStdString(*row[static_cast<std::size_t>(col)]));
      }
      query.exec();
    }
    database_.commit();
  }
  QSqlDatabase& Database() { return database_; }

 private:
  QTemporaryDir folder_;
  QSqlDatabase database_;
};

void SqlModelFirstPaint(benchmark::State& state) {
  static SqlRows rows;
  for (auto step : state) {
    QSqlTableModel model(nullptr, rows.Database());
    model.setTable("tblRows");
    model.select();
    while (model.canFetchMore()) model.fetchMore();
    if (model.rowCount() != kRows) state.SkipWithError("not all rows");
    QTableView view;
    view.setLayoutDirection(Qt::RightToLeft);
    view.setModel(&model);
    view.resize(1300, 850);
    view.show();
    benchmark::DoNotOptimize(view.viewport()->grab());
  }
}
BENCHMARK(SqlModelFirstPaint)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace vorek::qt

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
