#include "adapters/odbc/session.h"

#include <sqlext.h>

#include <array>
#include <chrono>
#include <utility>

#include "adapters/odbc/diagnostics.h"
#include "adapters/odbc/wide_text.h"
#include "platform/result_limit.h"
#include "text/utf8.h"

namespace vorek::odbc {
namespace {

Error TimeoutError() { return Error(ErrorNumber::kTimeout, "Query timeout expired"); }

}  // namespace

Session::Running::Running(Session& session, SQLHANDLE statement, int timeout_seconds)
    : session_(session) {
  {
    const std::lock_guard lock(session_.running_mutex_);
    session_.running_ = statement;
    session_.stop_ = Stop::kNone;
  }
  session_.deadline_.reset();
  if (timeout_seconds <= 0) return;
  session_.deadline_ = std::chrono::steady_clock::now() + std::chrono::seconds(timeout_seconds);
  // The server's own time-out is asked for too: it frees the server when we are gone.
  SQLSetStmtAttr(statement, SQL_ATTR_QUERY_TIMEOUT,
                 AttributeNumber(static_cast<std::size_t>(timeout_seconds)), 0);
  session_.watchdog_.Arm(*session_.deadline_, [&session] { session.StopAtDeadline(); });
}

Session::Running::~Running() {
  session_.watchdog_.Disarm();
  const std::lock_guard lock(session_.running_mutex_);
  session_.running_ = SQL_NULL_HANDLE;
}

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
  std::array<SQLWCHAR, 64> name{};
  SQLGetInfoW(handle_.Get(), SQL_DBMS_NAME, name.data(), static_cast<SQLSMALLINT>(sizeof name),
              nullptr);
  traits_.unicode = KnowsUnicode();
  traits_.is_sql_server = text::ContainsIgnoreCase(FromDriver(name, traits_.unicode), "SQL Server");
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

// The driver is told by the watchdog's thread: it may wait for a server that is gone.
bool Session::Cancel() noexcept {
  {
    const std::unique_lock lock(running_mutex_, std::try_to_lock);
    if (!lock.owns_lock()) return true;  // it is being told right now
    if (running_ == SQL_NULL_HANDLE) return false;
    Stop none = Stop::kNone;
    if (!stop_.compare_exchange_strong(none, Stop::kCancelled)) return true;
  }
  watchdog_.Arm(std::chrono::steady_clock::now(), [this] { CancelRunning(); });
  return true;
}

void Session::CancelRunning() noexcept {
  const std::lock_guard lock(running_mutex_);
  if (running_ != SQL_NULL_HANDLE && stop_ != Stop::kNone) SQLCancel(running_);
}

void Session::StopAtDeadline() noexcept {
  const std::lock_guard lock(running_mutex_);
  Stop none = Stop::kNone;
  if (running_ != SQL_NULL_HANDLE && stop_.compare_exchange_strong(none, Stop::kTimeout)) {
    SQLCancel(running_);
  }
}

void Session::ThrowIfStopped() const {
  if (stop_ == Stop::kTimeout) throw TimeoutError();
  if (stop_ == Stop::kCancelled) {
    throw Error(ErrorNumber::kCancelled, "Operation was cancelled.");
  }
}

// The server's clock and ours may differ by a little.
bool Session::IsOverdue() const {
  constexpr std::chrono::milliseconds kLeeway{250};
  return deadline_ && std::chrono::steady_clock::now() + kLeeway >= *deadline_;
}

// A statement that was told to stop fails with words about that; it is the reason that counts. A
// server that keeps the time-out itself may be ahead of the watchdog, and says "cancelled".
void Session::Fail(SQLHANDLE statement) const {
  ThrowIfStopped();
  const Error error = StatementError(statement, handle_.Get(), traits_);
  if (error.Is(ErrorNumber::kCancelled) && IsOverdue()) throw TimeoutError();
  throw error;
}

// A call that goes through may still hold an error, of a later row or a later statement.
void Session::Check(SQLRETURN code, SQLHANDLE statement) const {
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

// Many drivers put the preparation off until the columns are asked for.
ResultSetPtr Session::Describe(std::string_view text, int timeout_seconds) {
  const Statement statement(handle_.Get());
  const Running running(*this, statement.Get(), timeout_seconds);
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

ResultSetPtr Session::Execute(std::string_view text, int timeout_seconds,
                              const ResultLimits& limits, const Progress& progress) {
  const Statement statement(handle_.Get());
  const Running running(*this, statement.Get(), timeout_seconds);
  const SQLRETURN code = ExecuteDirect(statement.Get(), text);
  if (code != SQL_NO_DATA) Check(code, statement.Get());
  ResultSetPtr rows = ReadFirstRows(statement.Get(), limits, progress);
  if (rows != nullptr) FinishRest(statement.Get());
  return rows;
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
        ThrowIfStopped();
        if (read.rows < weighed + kUnweighed) return RefuseBeyond(limits, read.rows);
        weighed = read.rows;
        RefuseBeyond(limits, read);
      });
    }
    const SQLRETURN code = SQLMoreResults(statement);
    if (code == SQL_NO_DATA) return nullptr;
    Check(code, statement);
  }
}

// What stands behind the first rows in the same text is carried out, and its failure is one of the
// whole; its rows are nobody's.
void Session::FinishRest(SQLHANDLE statement) {
  for (;;) {
    const SQLRETURN code = SQLMoreResults(statement);
    if (code == SQL_NO_DATA) return;
    Check(code, statement);
  }
}

}  // namespace vorek::odbc
