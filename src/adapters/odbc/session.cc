#include "adapters/odbc/session.h"

#include <sqlext.h>

#include <array>
#include <utility>

#include "adapters/odbc/diagnostics.h"
#include "adapters/odbc/wide_text.h"
#include "platform/result_limit.h"
#include "text/utf8.h"

namespace vorek::odbc {
Session::Session(std::shared_ptr<Environment> environment)
    : environment_(std::move(environment)), handle_(environment_->Get()) {}

Session::~Session() {
  if (open_) SQLDisconnect(handle_.Get());
}

void Session::Open(const ConnectionText& text) {
  Connect(text);
  open_ = true;
  ReadTraits();
}

void Session::Connect(const ConnectionText& text) {
  SQLSetConnectAttrW(handle_.Get(), SQL_ATTR_LOGIN_TIMEOUT,
                     AttributeNumber(static_cast<std::size_t>(text.login_seconds)), 0);
  std::vector<SQLWCHAR> wide = ToWide(text.odbc);
  SQLSMALLINT length = 0;
  const SQLRETURN code =
      SQLDriverConnectW(handle_.Get(), nullptr, wide.data(), static_cast<SQLSMALLINT>(wide.size()),
                        nullptr, 0, &length, SQL_DRIVER_NOPROMPT);
  if (SQL_SUCCEEDED(code)) return;
  const Diagnostic diagnostic = ReadDiagnostic(SQL_HANDLE_DBC, handle_.Get(), true);
  throw Error(ErrorNumber::kConnection,
              WithoutPassword(ServerWords(diagnostic.message), text.password));
}

void Session::ReadTraits() {
  SQLUINTEGER extensions = 0;
  SQLGetInfoW(handle_.Get(), SQL_GETDATA_EXTENSIONS, &extensions, sizeof extensions, nullptr);
  traits_.get_any_column = (extensions & SQL_GD_ANY_COLUMN) != 0;
  traits_.get_bound_columns = (extensions & SQL_GD_BOUND) != 0;
  traits_.get_in_block = (extensions & SQL_GD_BLOCK) != 0;
  traits_.unicode = KnowsUnicode();
  traits_.is_sql_server = text::ContainsIgnoreCase(Name(SQL_DBMS_NAME), "SQL Server");
  traits_.cancel_needs_a_wait = text::ContainsIgnoreCase(Name(SQL_DRIVER_NAME), "tdsodbc");
}

std::string Session::Name(SQLUSMALLINT kind) const {
  std::array<SQLWCHAR, 64> name{};
  SQLGetInfoW(handle_.Get(), kind, name.data(), static_cast<SQLSMALLINT>(sizeof name), nullptr);
  return FromDriver(name, traits_.unicode);
}

// A driver without Unicode gets its texts from the driver manager cut to bytes, which this shows:
// alef cut to its lower byte is a quote. A driver that doesn't answer is taken for a newer one.
bool Session::KnowsUnicode() {
  std::vector<SQLWCHAR> text = ToWide("'\u0627'");
  text.push_back(0);
  std::array<SQLWCHAR, 16> same{};
  SQLINTEGER length = 0;
  const SQLRETURN code = SQLNativeSqlW(handle_.Get(), text.data(), SQL_NTS, same.data(),
                                       static_cast<SQLINTEGER>(same.size()), &length);
  return !SQL_SUCCEEDED(code) || same[1] == text[1];
}

// A statement that was told to stop fails with words about that; it is the reason that counts.
void Session::Fail(SQLHANDLE statement) {
  stopper_.Over();
  stopper_.ThrowIfStopped();
  throw stopper_.InOurWords(StatementError(statement, handle_.Get(), traits_));
}

// A call that goes through may still hold an error, of a later row or a later statement.
void Session::Check(SQLRETURN code, SQLHANDLE statement) {
  if (code == SQL_SUCCESS) return;
  const bool informs = code == SQL_SUCCESS_WITH_INFO &&
                       ReadDiagnostic(SQL_HANDLE_STMT, statement, traits_.unicode).IsInformation();
  if (!informs) Fail(statement);
}

SQLRETURN Session::ExecuteDirect(SQLHANDLE statement, std::string_view text) {
  if (!traits_.unicode) {
    std::vector<SQLCHAR> bytes(text.begin(), text.end());
    bytes.push_back(0);
    return SQLExecDirect(statement, bytes.data(), SQL_NTS);
  }
  std::vector<SQLWCHAR> wide = ToWide(text);
  wide.push_back(0);  // not every driver reads a length as one of characters
  return SQLExecDirectW(statement, wide.data(), SQL_NTS);
}

SQLRETURN Session::Prepare(SQLHANDLE statement, std::string_view text) {
  if (!traits_.unicode) {
    std::vector<SQLCHAR> bytes(text.begin(), text.end());
    bytes.push_back(0);
    return SQLPrepare(statement, bytes.data(), SQL_NTS);
  }
  std::vector<SQLWCHAR> wide = ToWide(text);
  wide.push_back(0);
  return SQLPrepareW(statement, wide.data(), SQL_NTS);
}

// What a cancel that came late may stop: a statement that nobody misses.
void Session::Settle() {
  if (!traits_.cancel_needs_a_wait || !stopper_.WasTold()) return;
  const Statement statement(handle_.Get());
  ExecuteDirect(statement.Get(), "select 1");
}

template <typename Work>
ResultSetPtr Session::Settled(Work work) {
  try {
    return work();
  } catch (...) {
    Settle();
    throw;
  }
}

ResultSetPtr Session::Describe(std::string_view text, int timeout_seconds) {
  return Settled([&] { return RunDescribe(text, timeout_seconds); });
}

ResultSetPtr Session::Execute(std::string_view text, int timeout_seconds,
                              const ResultLimits& limits, const Progress& progress) {
  return Settled([&] { return RunExecute(text, timeout_seconds, limits, progress); });
}

// Many drivers put the preparation off until the columns are asked for.
ResultSetPtr Session::RunDescribe(std::string_view text, int timeout_seconds) {
  const Statement statement(handle_.Get());
  const Stopper::Running running(stopper_, statement.Get(), timeout_seconds, traits_);
  SQLSMALLINT count = 0;
  const bool prepared = SQL_SUCCEEDED(Prepare(statement.Get(), text)) &&
                        SQL_SUCCEEDED(SQLNumResultCols(statement.Get(), &count));
  if (!prepared) Fail(statement.Get());
  if (count == 0) return nullptr;
  auto columns = std::make_shared<ResultSet>();
  for (ColumnDescription& column : DescribeColumns(statement.Get(), count, traits_.unicode)) {
    const ColumnPlan plan = PlanColumn(column, traits_.unicode);
    columns->columns.emplace_back(std::move(column.name), plan.ado_type, plan.storage, plan.scale);
  }
  return columns;
}

ResultSetPtr Session::RunExecute(std::string_view text, int timeout_seconds,
                                 const ResultLimits& limits, const Progress& progress) {
  const Statement statement(handle_.Get());
  Stopper::Running running(stopper_, statement.Get(), timeout_seconds, traits_);
  const SQLRETURN code = ExecuteDirect(statement.Get(), text);
  running.Sent();
  if (code != SQL_NO_DATA) Check(code, statement.Get());
  ResultSetPtr rows = ReadFirstRows(statement.Get(), limits, progress);
  if (rows != nullptr) FinishRest(statement.Get());
  stopper_.ThrowIfStopped();  // rows that a cancel cut off may look like all of them
  return rows;
}

// To the next result of the text; false behind the last one.
bool Session::NextResult(SQLHANDLE statement) {
  stopper_.ThrowIfStopped();
  const SQLRETURN code = SQLMoreResults(statement);
  if (code != SQL_NO_DATA) Check(code, statement);
  return code != SQL_NO_DATA;
}

// The first result that has columns; those of statements in front of it are passed over.
ResultSetPtr Session::ReadFirstRows(SQLHANDLE statement, const ResultLimits& limits,
                                    const Progress& progress) {
  constexpr std::size_t kUnweighed = 64;  // rows between two looks at the memory
  std::size_t weighed = 0;
  for (;;) {
    SQLSMALLINT columns = 0;
    SQLNumResultCols(statement, &columns);
    if (columns > 0) {
      RowReader reader(statement, traits_,
                       [this, statement](SQLRETURN code) { Check(code, statement); });
      return reader.Read(columns, [&](const ResultSet& read) {
        if (progress && !progress(read.rows)) Cancel();
        stopper_.ThrowIfStopped();
        if (read.rows < weighed + kUnweighed) return RefuseBeyond(limits, read.rows);
        weighed = read.rows;
        RefuseBeyond(limits, read);
      });
    }
    if (!NextResult(statement)) return nullptr;
  }
}

// What stands behind the first rows in the same text is carried out, and its failure is one of the
// whole; its rows are nobody's.
void Session::FinishRest(SQLHANDLE statement) {
  while (NextResult(statement)) continue;
}

}  // namespace vorek::odbc
