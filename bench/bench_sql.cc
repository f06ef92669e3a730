// The embedded database: what a translation costs, and translated queries over 1,000,000 rows
// beside the same queries written by hand for SQLite, on plain tables, read by the same reader.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "adapters/sqlite/explain.h"
#include "adapters/sqlite/functions.h"
#include "adapters/sqlite/handle.h"
#include "adapters/sqlite/reader.h"
#include "vorek/database.h"
#include "vorek/sqlite.h"

namespace {

using vorek::DatabaseConnection;
using vorek::ExecuteOptions;
namespace sqlite = vorek::sqlite;

constexpr char kSchema[] = R"(
create table tblCustomer (ID int primary key, Name nvarchar(50), City nvarchar(30), RegionID int)
create table tblInvoice (ID int primary key, CustomerID int, Code nvarchar(12), Value money,
  Discount money, Quantity int, At datetime, Kind tinyint)
create index IX_Customer on tblInvoice (CustomerID)
create index IX_Code on tblInvoice (Code)
)";

constexpr char kPlainSchema[] = R"(
create table p_customer (id integer primary key, name text, city text, region integer);
create table p_invoice (id integer primary key, customer integer, code text, value integer,
  discount integer, quantity integer, at text, kind integer);
create index p_customer_ix on p_invoice (customer);
create index p_code_ix on p_invoice (code collate nocase);
insert into p_customer select * from tblCustomer;
insert into p_invoice select * from tblInvoice;
analyze;
)";

constexpr char kRows[] = R"(
with n(i) as (select 1 union all select i + 1 from n where i < 5000)
insert tblCustomer select i, 'Customer ' + cast(i as nvarchar(10)), 'City ' + cast(i % 40 as nvarchar(10)), i % 12 from n;
with n(i) as (select 1 union all select i + 1 from n where i < 1000000)
insert tblInvoice select i, cast(i as bigint) * 7919 % 5000 + 1, 'INV' + cast(i as nvarchar(12)), i * 31 % 100000 + 0.25, i % 100, i % 50 + 1,
  dateadd(day, i % 365, '2024-01-01'), i % 4 from n
)";

struct Query {
  const char* name;
  const char* text;
  const char* by_hand;
};

const std::vector<Query> kQueries = {
    {"Scan10", "select ID, CustomerID, Code, Value, Discount, Quantity, At, Kind from tblInvoice",
     "select id, customer, code, value, discount, quantity, at, kind from p_invoice"},
    {"Join",
     "select c.Name, i.Code, i.Value from tblInvoice i inner join tblCustomer c on c.ID = "
     "i.CustomerID where isnull(c.RegionID, 0) <> 3",
     "select c.name, i.code, i.value from p_invoice i join p_customer c on c.id = i.customer "
     "where ifnull(c.region, 0) <> 3"},
    {"GroupByNumber",
     "select CustomerID, sum(Value) as S, count(*) as N, avg(Quantity) as A from tblInvoice group "
     "by CustomerID",
     "select customer, sum(value), count(*), sum(quantity) / count(quantity) from p_invoice group "
     "by customer"},
    {"GroupByText",
     "select c.City, sum(i.Value - i.Discount) as Net from tblInvoice i inner join tblCustomer c "
     "on c.ID = i.CustomerID group by c.City order by Net desc",
     "select c.city, sum(i.value - i.discount) as net from p_invoice i join p_customer c on c.id = "
     "i.customer group by c.city collate nocase order by net desc"},
    {"Concatenation", "select Code + ' - ' + cast(Quantity as nvarchar(10)) as T from tblInvoice",
     "select code || ' - ' || cast(quantity as text) from p_invoice"},
    {"Lookup",
     "select i.ID, (select c.Name from tblCustomer c where c.ID = i.CustomerID) as N from "
     "tblInvoice i",
     "select i.id, (select c.name from p_customer c where c.id = i.customer) from p_invoice i"},
    {"SumOfMoney",
     "select sum(Value) as A, sum(Value * Quantity) as B, sum(Discount) as C from tblInvoice",
     "select sum(value), sum(value * quantity), sum(discount) from p_invoice"},
    {"CompareTexts",
     "select count(*) as A from tblInvoice where Code > 'inv5' and At >= '2024-06-01'",
     "select count(*) from p_invoice where code collate nocase > 'inv5' and at >= '2024-06-01 "
     "00:00:00.000'"},
    {"Case",
     "select sum(case when Kind = 1 then Value else 0 end) as A, sum(case Kind when 2 then "
     "Discount "
     "end) as B "
     "from tblInvoice",
     "select sum(case when kind = 1 then value else 0 end), sum(case kind when 2 then discount "
     "end) "
     "from p_invoice"},
};

std::string Path() {
  return (std::filesystem::temp_directory_path() / "vorek-bench-sql.db").string();
}

// The database, made once for all benchmarks of a run.
DatabaseConnection& Ours() {
  static const std::unique_ptr<DatabaseConnection> connection = [] {
    std::filesystem::remove(Path());
    auto made = vorek::SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=" + Path() +
                                                 ";Mode=Create");
    ExecuteOptions options;
    options.timeout_seconds = 0;
    made->Execute("begin tran", options);
    made->Execute(kSchema, options);
    made->Execute(kRows, options);
    made->Execute("commit", options);
    sqlite3* db = nullptr;
    sqlite3_open(Path().c_str(), &db);
    sqlite::RegisterFunctions(db);
    sqlite3_exec(db, kPlainSchema, nullptr, nullptr, nullptr);
    sqlite3_close(db);
    return made;
  }();
  return *connection;
}

sqlite3* Plain() {
  struct Closer {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
  };
  static const std::unique_ptr<sqlite3, Closer> plain([] {
    Ours();
    sqlite3* db = nullptr;
    sqlite3_open_v2(Path().c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_exec(db, "pragma cache_size = -65536", nullptr, nullptr, nullptr);
    return db;
  }());
  return plain.get();
}

void Translated(benchmark::State& state, const Query& query) {
  DatabaseConnection& connection = Ours();
  ExecuteOptions options;
  options.timeout_seconds = 0;
  std::size_t rows = 0;
  for (auto _ : state) rows = connection.Execute(query.text, options)->rows;
  state.counters["rows"] = static_cast<double>(rows);
}

void ByHand(benchmark::State& state, const Query& query) {
  sqlite3* db = Plain();
  // Typed as the translation's columns are, so that both are read alike.
  const vorek::ResultSetPtr typed = Ours().Execute(
      "select top 0 * from (" +
          std::string(query.text).substr(0, std::string(query.text).find(" order by")) + ") x",
      {});
  for (auto _ : state) {
    const sqlite::PreparedPtr statement = sqlite::Prepare(db, query.by_hand);
    std::vector<sqlite::OutputColumn> columns;
    for (const vorek::ResultColumn& column : typed->columns) {
      sqlite::Type type = sqlite::Make(sqlite::TypeKind::kBigInt);
      if (column.Kind() == vorek::ResultColumn::Storage::kText) {
        type = sqlite::MakeText(sqlite::TypeKind::kNVarChar, 50);
      }
      columns.push_back({column.Name(), type, true, false});
    }
    benchmark::DoNotOptimize(
        sqlite::ReadRows(db, statement.get(), columns, [](const vorek::ResultSet&) {}));
  }
}

// A report's text of the usual size, translated anew each time.
void Translation(benchmark::State& state) {
  DatabaseConnection& connection = Ours();
  const std::string text =
      "Select tblCustomer.ID, tblCustomer.Name as 'نام مشتري', IsNull(tblCustomer.City,'') as "
      "'شهر', sum(tblInvoice.Value - IsNull(tblInvoice.Discount,0)) as 'مبلغ خالص', count(*) as "
      "'تعداد', case when sum(tblInvoice.Quantity) > 100 then N'زياد' else N'کم' end as 'وضعيت' "
      "from tblInvoice inner join tblCustomer on tblInvoice.CustomerID = tblCustomer.ID Where "
      "(tblInvoice.CustomerID in (Select ID from tblCustomer Where RegionID = 3) or ''='') and "
      "tblInvoice.At >= '2024-01-01' and tblInvoice.Code like 'INV%' group by tblCustomer.ID, "
      "tblCustomer.Name, IsNull(tblCustomer.City,'') having sum(tblInvoice.Value) > 0 order by "
      "tblCustomer.Name";
  for (auto _ : state) benchmark::DoNotOptimize(sqlite::Explain(connection, text));
}
BENCHMARK(Translation)->Unit(benchmark::kMicrosecond);

// The same text again: its translation is kept.
void KeptTranslation(benchmark::State& state) {
  DatabaseConnection& connection = Ours();
  for (auto _ : state) {
    benchmark::DoNotOptimize(connection.Execute("select Name from tblCustomer where ID = 7", {}));
  }
}
BENCHMARK(KeptTranslation)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  for (const Query& query : kQueries) {
    benchmark::RegisterBenchmark((std::string(query.name) + "/translated").c_str(), Translated,
                                 query)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((std::string(query.name) + "/by_hand").c_str(), ByHand, query)
        ->Unit(benchmark::kMillisecond);
  }
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove(Path());
}
