#ifndef VOREK_ADAPTERS_ODBC_SESSION_H_
#define VOREK_ADAPTERS_ODBC_SESSION_H_

#include <sql.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/odbc/connection_text.h"
#include "adapters/odbc/handle.h"
#include "adapters/odbc/row_reader.h"
#include "adapters/odbc/watchdog.h"
#include "vorek/database.h"
#include "vorek/result_set.h"

namespace vorek::odbc {

// An open connection of a driver and the statement that runs on it. Its calls return when the
// driver returns, which may be never: see Connection.
class Session {
 public:
  // Asked after each block with the rows read so far; false cancels.
  using Progress = std::function<bool(std::size_t rows)>;

  explicit Session(std::shared_ptr<Environment> environment);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Throws Error(kConnection).
  void Open(const ConnectionText& text);

  // As DatabaseConnection::Execute. progress may be empty.
  ResultSetPtr Execute(std::string_view text, int timeout_seconds, const ResultLimits& limits,
                       const Progress& progress);
  // As DatabaseConnection::Describe.
  ResultSetPtr Describe(std::string_view text, int timeout_seconds);

  // From any thread; doesn't wait for the driver. True if a statement runs.
  bool Cancel() noexcept;

 private:
  // Why a statement was told to stop.
  enum class Stop { kNone, kCancelled, kTimeout };

  // A statement while it runs: known to Cancel, and to the watchdog while it has a time-out.
  class Running {
   public:
    Running(Session& session, SQLHANDLE statement, int timeout_seconds);
    ~Running();

   private:
    Session& session_;
  };

  void Connect(const ConnectionText& text);
  void ReadTraits();
  bool KnowsUnicode();
  SQLRETURN ExecuteDirect(SQLHANDLE statement, std::string_view text);
  SQLRETURN Prepare(SQLHANDLE statement, std::string_view text);
  void StopAtDeadline() noexcept;
  void CancelRunning() noexcept;
  void ThrowIfStopped() const;
  bool IsOverdue() const;
  void Check(SQLRETURN code, SQLHANDLE statement) const;
  [[noreturn]] void Fail(SQLHANDLE statement) const;
  ResultSetPtr ReadFirstRows(SQLHANDLE statement, const ResultLimits& limits,
                             const Progress& progress);
  void FinishRest(SQLHANDLE statement);

  std::shared_ptr<Environment> environment_;
  ConnectionHandle handle_;
  bool open_ = false;
  DriverTraits traits_;
  std::mutex running_mutex_;
  SQLHANDLE running_ = SQL_NULL_HANDLE;
  std::atomic<Stop> stop_{Stop::kNone};
  std::optional<std::chrono::steady_clock::time_point> deadline_;  // of the running statement
  Watchdog watchdog_;
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_SESSION_H_
