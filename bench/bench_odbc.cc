// Rows a second through the ODBC provider, beside a bare loop over the same driver with bound
// columns that copies nothing. It needs a server: VOREK_ODBC_BENCH holds the connection string of
// the provider, VOREK_ODBC_BENCH_BARE the same for the driver manager (docs/odbc.md tells how).

#include <benchmark/benchmark.h>
#include <sql.h>
#include <sqlext.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "vorek/database.h"
#include "vorek/odbc.h"

namespace {

constexpr const char* kQuery =
    "select n, n * 7 as code, 'مشتري شماره ' || n as name, '1404/01/05' as day, "
    "cast(n * 1.25 as numeric(18,2)) as amount, cast(n as double precision) as weight "
    "from generate_series(1, 200000) as t(n)";
constexpr int kRows = 200000;

void BM_Provider(benchmark::State& state) {
  const char* text = std::getenv("VOREK_ODBC_BENCH");
  if (text == nullptr) return state.SkipWithError("VOREK_ODBC_BENCH isn't set");
  const auto connection = vorek::OdbcProvider()->Connect(text);
  for (auto _ : state) benchmark::DoNotOptimize(connection->Execute(kQuery, {}));
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_Provider)->Unit(benchmark::kMillisecond);

struct BareColumn {
  SQLSMALLINT type;
  std::size_t width;
};

void FetchAll(SQLHSTMT statement) {
  constexpr std::size_t kBlock = 512;
  static constexpr BareColumn kColumns[] = {{SQL_C_SBIGINT, 8}, {SQL_C_SBIGINT, 8},
                                            {SQL_C_WCHAR, 128}, {SQL_C_WCHAR, 64},
                                            {SQL_C_CHAR, 64},   {SQL_C_DOUBLE, 8}};
  SQLULEN fetched = 0;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a number is given in the place of a pointer
  SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(kBlock), 0);
  SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
  std::vector<std::vector<char>> buffers;
  std::vector<std::vector<SQLLEN>> lengths;
  SQLUSMALLINT number = 0;
  for (const BareColumn& column : kColumns) {
    buffers.emplace_back(column.width * kBlock);
    lengths.emplace_back(kBlock);
    SQLBindCol(statement, ++number, column.type, buffers.back().data(),
               static_cast<SQLLEN>(column.width), lengths.back().data());
  }
  while (SQL_SUCCEEDED(SQLFetch(statement))) benchmark::DoNotOptimize(buffers);
}

void BM_BareLoop(benchmark::State& state) {
  const char* text = std::getenv("VOREK_ODBC_BENCH_BARE");
  if (text == nullptr) return state.SkipWithError("VOREK_ODBC_BENCH_BARE isn't set");
  SQLHENV environment = nullptr;
  SQLHDBC connection = nullptr;
  SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment);
  SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection);
  std::vector<SQLCHAR> open(text, text + std::strlen(text) + 1);
  SQLDriverConnect(connection, nullptr, open.data(), SQL_NTS, nullptr, 0, nullptr,
                   SQL_DRIVER_NOPROMPT);
  std::vector<SQLCHAR> query(kQuery, kQuery + std::strlen(kQuery) + 1);
  for (auto _ : state) {
    SQLHSTMT statement = nullptr;
    SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement);
    if (!SQL_SUCCEEDED(SQLExecDirect(statement, query.data(), SQL_NTS))) {
      state.SkipWithError("the query fails");
    }
    FetchAll(statement);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
  }
  state.SetItemsProcessed(state.iterations() * kRows);
  SQLDisconnect(connection);
  SQLFreeHandle(SQL_HANDLE_DBC, connection);
  SQLFreeHandle(SQL_HANDLE_ENV, environment);
}
BENCHMARK(BM_BareLoop)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
